// NewPart, NewAsm, NewSmt: a new component from the host's template.
//
// The copy of the template gets the next free name of the activated assembly's series and is placed at the
// assembly's origin; where the settings say so it is tied to the default coordinate system. Nothing is taken
// back when a later step fails.

#include "assembly/new_component.h"

#include <string>

#include <ProMdl.h>

#include "assembly/assembly_texts.h"
#include "assembly/csys_constraint.h"
#include "assembly/new_model.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/run_reasons.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNameTooLong[] = L"新建模型名称长度不能超过32位";
static constexpr wchar_t kNameIllegalStart[] = L"新建模型名称“";
static constexpr wchar_t kNameIllegalEnd[] = L"”非法，请修改后再试！";
static constexpr wchar_t kNotMadeStart[] = L"\t新模型“";
static constexpr wchar_t kNotMadeEnd[] = L"”创建失败：";
static constexpr std::size_t kLongestNewName = 32;

// What sets the three commands apart.
struct NewComponentKind {
    const char* command;
    const wchar_t* option;   // configuration option that names the template
    ProMdlfileType type;     // of the template, and of the models that take a name
    const wchar_t* setting;  // section that says whether the component is constrained
    bool loadsFirst;         // the template is loaded before the activated model is looked at
    const wchar_t* noTemplate;
    const wchar_t* noSystem;
};

static constexpr NewComponentKind kPart = {"NewPart", kPartTemplateOption, PRO_MDLFILE_PART, L"PrtAssembly",
                                           false,     kNoPartTemplate,     kNoSystemInPart};
static constexpr NewComponentKind kAssembly = {
    "NewAsm",
    L"template_designasm",
    PRO_MDLFILE_ASSEMBLY,
    L"AsmAssembly",
    true,
    L"\t组件模板加载失败，请确认template_designasm选项是否配置正确\t",
    L"\t组件模板无坐标系,无法缺省装配新零件\t"};
static constexpr NewComponentKind kSheetmetal = {
    "NewSmt",
    L"template_sheetmetalpart",
    PRO_MDLFILE_PART,
    L"SmtAssembly",
    false,
    L"\t钣金件模板加载失败，请确认template_sheetmetalpart选项是否配置正确\t",
    L"\t钣金件模板无坐标系,无法缺省装配新零件\t"};

static ProError NewComponent(const NewComponentKind& kind);
static ProError TemplateLoad(const NewComponentKind& kind, const std::wstring& path, ProMdl& model);
static ProError NameGet(const NewComponentKind& kind, ProMdl assembly, std::wstring& name);
static ProError MakeComponent(const NewComponentKind& kind, ProMdl model, ProMdl assembly, NewModel& copy);
static ProError ShowNotMade(const std::wstring& name, ProError status);
static bool IsConstrained(const wchar_t* setting);

ProError NewPart() {
    return NewComponent(kPart);
}

ProError NewAsm() {
    return NewComponent(kAssembly);
}

ProError NewSmt() {
    return NewComponent(kSheetmetal);
}

static ProError NewComponent(const NewComponentKind& kind) {
    std::wstring path;
    ProMdl model = nullptr;
    ProMdl assembly = nullptr;
    ProError status = TemplatePathGet(kind.option, path);
    if (Failed(status)) return ShowFailure(kind.noTemplate, status);
    if (kind.loadsFirst) status = TemplateLoad(kind, path, model);
    if (!Failed(status)) status = ActiveAssemblyGet(kNoAssemblyForNew, assembly);
    if (!Failed(status) && !kind.loadsFirst) status = TemplateLoad(kind, path, model);

    NewModel copy;
    if (!Failed(status)) status = NameGet(kind, assembly, copy.name);
    return Failed(status) ? status : MakeComponent(kind, model, assembly, copy);
}

static ProError TemplateLoad(const NewComponentKind& kind, const std::wstring& path, ProMdl& model) {
    const ProError status = ModelLoadByType(path, kind.type, model);
    return Failed(status) ? ShowFailure(kind.noTemplate, status) : status;
}

static ProError NameGet(const NewComponentKind& kind, ProMdl assembly, std::wstring& name) {
    std::wstring own;
    ProError status = ModelNameGet(assembly, own);
    if (Failed(status)) return status;
    status = FreeNameGet({SeriesBase(own), NumberedName, kind.type, kLongestNewName}, name);
    if (status == PRO_TK_LINE_TOO_LONG) return ShowFailure(kNameTooLong, status);
    return Failed(status) ? ShowNotMade(name, status) : status;
}

static ProError MakeComponent(const NewComponentKind& kind, ProMdl model, ProMdl assembly, NewModel& copy) {
    BatchRun run(kind.command, 1);
    if (!run.Begin(copy.name)) return PRO_TK_USER_ABORT;
    ProError status = Recorded(run, copy, kStepCopy, CopyMake(model, copy));
    if (Failed(status)) {
        ShowNotMade(copy.name, status);
    } else {
        CopySave(run, copy);
        status = CopyPlace(run, assembly, copy);
        if (!Failed(status) && IsConstrained(kind.setting))
            status = ConstrainBySystems(run, assembly, copy, kind.noSystem);
    }
    TellMade(run, copy);
    return status;
}

// A name that the host does not take is told as such.
static ProError ShowNotMade(const std::wstring& name, ProError status) {
    const std::wstring reason = ReasonText({name, kStepCopy, status});
    const bool isIllegal = status == PRO_TK_BAD_INPUTS || name.size() >= kLongestNewName;
    const std::wstring text = isIllegal ? kNameIllegalStart + name + kNameIllegalEnd
                                        : kNotMadeStart + name + kNotMadeEnd + reason + L"\t";
    return ShowFailure(text.c_str(), status);
}

static bool IsConstrained(const wchar_t* setting) {
    return WithoutBlanks(SettingRead(SettingsPath(kCommonSettings), setting, kValueKey)) == kSettingOn;
}

}  // namespace kv
