// KvNewDrw: a drawing from the template that the settings name for a sheet size and a type of model.
//
// A model that has a drawing gets that one opened. The dialog closes once a drawing was made: that is in
// front then.

#include "drawing/kv_new_drw.h"

#include <string>

#include "base/status.h"
#include "base/text.h"
#include "drawing/drawing_creation.h"
#include "drawing/drawing_target.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kDialog[] = "KvNewDrw";
static constexpr char kTypeChoice[] = "RadioType";
static constexpr char kSizeChoice[] = "RadioSize";
static constexpr char kTemplatePanel[] = "TemplateFile";
static constexpr char kStatePanel[] = "TemplateState";
static constexpr char kAssembly[] = "asm";
static constexpr char kPart[] = "prt";
static constexpr char kUsualSize[] = "A3";
// What the sections of the templates end in, behind the size.
static constexpr wchar_t kAssemblySections[] = L"Asmpath";
static constexpr wchar_t kPartSections[] = L"Prtpath";

static constexpr wchar_t kNotConfigured[] = L"\t当前所选模板未配置，请在 柯凡设置 功能中配置后再试。\t";
static constexpr wchar_t kNotRetrieved[] = L"当前模板无法检索，请检查模板设置是否正确。\n";
static constexpr wchar_t kStateNone[] = L"未配置";
static constexpr wchar_t kStateFound[] = L"文件存在";
static constexpr wchar_t kStateMissing[] = L"文件不存在";

struct NewDrawingDialog {
    DrawingTarget target = {};
    LoadedTemplates templates = {};
};

static void FillDialog(NewDrawingDialog& dialog);
static void OnChoose();
static void OnCreate(NewDrawingDialog& dialog);
static std::wstring ChosenPath();
static const wchar_t* StateOf(const std::wstring& path);

ProError KvNewDrw() {
    NewDrawingDialog dialog;
    const DrawingTarget& target = dialog.target;
    ProError status = DrawingTargetGet(dialog.target);
    if (Failed(status)) return status;
    if (OpenExistingDrawing(target, DrawingDisplay::Plain, status)) return status;
    if (!NameFitsDrawing(target)) return PRO_TK_LINE_TOO_LONG;

    return RunDialog(kDialog,
                     {
                         Chosen<OnChoose>(kTypeChoice),
                         Chosen<OnChoose>(kSizeChoice),
                         Pressed<OnCreate>("KvCreateDrw"),
                         Closes("Close"),
                     },
                     dialog, FillDialog);
}

static void FillDialog(NewDrawingDialog& dialog) {
    if (dialog.target.type == PRO_MDL_ASSEMBLY) RadioChoiceSet(kDialog, kTypeChoice, kAssembly);
    if (dialog.target.type == PRO_MDL_PART) RadioChoiceSet(kDialog, kTypeChoice, kPart);
    RadioChoiceSet(kDialog, kSizeChoice, kUsualSize);
    OnChoose();
}

static void OnChoose() {
    const std::wstring path = ChosenPath();
    InputTextSet(kDialog, kTemplatePanel, path);
    InputTextSet(kDialog, kStatePanel, StateOf(path));
}

static void OnCreate(NewDrawingDialog& dialog) {
    const std::wstring path = ChosenPath();
    if (path.empty()) {
        ShowMessage(kNotConfigured);
        return;
    }
    // A path of no drawing's name cannot be retrieved.
    DrawingTemplate source = {path, {}, {}};
    (void)TemplateFromPath(path, source);
    bool inMemory = false;
    if (Failed(dialog.templates.Load(source, inMemory))) {
        ShowMessage((kNotRetrieved + path).c_str());
        return;
    }
    ProDrawing drawing = nullptr;
    if (Failed(DrawingCreate(dialog.target, source, inMemory, drawing))) return;
    if (!Failed(ShowDrawing(dialog.target.name, drawing, DrawingDisplay::Current))) DialogClose(kDialog);
}

// Path of the template for the chosen size and type; empty when none is configured.
static std::wstring ChosenPath() {
    const std::string type = RadioChoice(kDialog, kTypeChoice);
    const std::string size = RadioChoice(kDialog, kSizeChoice);
    if ((type != kAssembly && type != kPart) || size.empty()) return {};
    const std::wstring section = WideName(size) + (type == kAssembly ? kAssemblySections : kPartSections);
    std::wstring path = SettingRead(SettingsPath(kCommonSettings), section.c_str(), kPathKey);
    return WithoutBlanks(path).empty() ? std::wstring() : path;
}

static const wchar_t* StateOf(const std::wstring& path) {
    if (path.empty()) return kStateNone;
    DrawingTemplate source;
    return !Failed(TemplateFromPath(path, source)) && TemplateExists(source) ? kStateFound : kStateMissing;
}

}  // namespace kv
