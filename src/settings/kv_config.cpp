// KvConfig: the common settings in one dialog.
//
// Radio groups choose, input panels hold the drawing templates by sheet size. Every group and panel is named
// like the section it edits. Saving leaves the dialog open.

#include "settings/kv_config.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_file.h"
#include "base/status.h"
#include "base/text.h"
#include "settings/dialog_settings.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/open_file.h"
#include "ui/prompt.h"
#include "ui/shell.h"

namespace kv {

static constexpr char kDialog[] = "KvConfig";
static constexpr char kSaved[] = "Settings saved";
static constexpr wchar_t kPathTooLong[] = L"\t模板路径超过254个字符，无法保存，请选择其他位置的模板\t";
static constexpr wchar_t kTemplateFilter[] = L"*.drw";

static constexpr const char* kChoicesInReadingOrder[] = {
    "SetLastDir",      "AsmAssembly",      "PrtAssembly",
    "SmtAssembly",     "RmbDisable",       "TweViewsUseAutoMainView",
    "CompCopyAutoNum", "KvRandomColorOpt", "KvExportDwgDIr",
    "KvExportPdfDIr",  "KvExportStpDir",   "KvCountForInstance",
};
static constexpr const char* kChoicesInSavingOrder[] = {
    "SetLastDir",       "AsmAssembly",        "PrtAssembly",    "SmtAssembly",
    "CompCopyAutoNum",  "KvExportDwgDIr",     "KvExportPdfDIr", "KvExportStpDir",
    "KvRandomColorOpt", "KvCountForInstance", "RmbDisable",     "TweViewsUseAutoMainView",
};

// What the commands take for a value that is not set, by the group's button. The other groups have none.
struct UnsetChoice {
    const char* group;
    const char* button;
};
static constexpr UnsetChoice kUnsetChoices[] = {
    {"SetLastDir", "0"},
    {"AsmAssembly", "0"},
    {"PrtAssembly", "0"},
    {"SmtAssembly", "0"},
    {"RmbDisable", "1"},
    {"KvExportDwgDIr", "workDir"},
    {"KvExportPdfDIr", "workDir"},
    {"KvExportStpDir", "workDir"},
    {"KvCountForInstance", "false"},
    {"KvRandomColorOpt", "0"},
    {"TweViewsUseAutoMainView", "0"},
};

// One drawing template: its panel, the button that picks a file for it, and the title of that choice.
struct TemplateRow {
    const char* panel;
    const char* picker;
    const wchar_t* title;
};

// clang-format off
static constexpr TemplateRow kTemplates[] = {
    // panel         picker       title
    {"A0Asmpath",    "SelA0Asm",  L"请选择A0组件模板"},
    {"A0Prtpath",    "SelA0Prt",  L"请选择A0零件模板"},
    {"A1Asmpath",    "SelA1Asm",  L"请选择A1组件模板"},
    {"A1Prtpath",    "SelA1Prt",  L"请选择A1零件模板"},
    {"A2Asmpath",    "SelA2Asm",  L"请选择A2组件模板"},
    {"A2Prtpath",    "SelA2Prt",  L"请选择A2零件模板"},
    {"A3Asmpath",    "SelA3Asm",  L"请选择A3组件模板"},
    {"A3Prtpath",    "SelA3Prt",  L"请选择A3零件模板"},
    {"A4Asmpath",    "SelA4Asm",  L"请选择A4组件模板"},
    {"A4Prtpath",    "SelA4Prt",  L"请选择A4零件模板"},
    {"A4HAsmpath",   "SelA4HAsm", L"请选择A4横向组件模板"},
    {"A4HPrtpath",   "SelA4HPrt", L"请选择A4横向零件模板"},
};
// clang-format on

struct ConfigDialog {
    ShownSettings shown = {};  // in saving order
};

static void FillDialog(ConfigDialog& dialog);
static void OnSave(ConfigDialog& dialog);
static void OnPickTemplate(const char* component);
static void OnReports();
static std::vector<DialogSetting> SettingsOf(std::span<const char* const> choices);

ProError KvConfig() {
    ConfigDialog dialog;
    DialogRows<ConfigDialog> rows = {Pressed<OnSave>("save"), Pressed<OnReports>("KvReports"),
                                     Closes("Close")};
    for (const TemplateRow& row : kTemplates) rows.push_back(Pressed<OnPickTemplate>(row.picker));
    return RunDialog(kDialog, rows, dialog, FillDialog);
}

static void FillDialog(ConfigDialog& dialog) {
    for (const UnsetChoice& unset : kUnsetChoices) RadioChoiceSet(kDialog, unset.group, unset.button);
    DialogSettingsRestore(kDialog, SettingsPath(kCommonSettings), SettingsOf(kChoicesInReadingOrder));
    dialog.shown = DialogSettingsShown(kDialog, SettingsOf(kChoicesInSavingOrder));
}

static void OnSave(ConfigDialog& dialog) {
    DialogSettingsSave(kDialog, SettingsPath(kCommonSettings), SettingsOf(kChoicesInSavingOrder),
                       dialog.shown);
    DisplayMessage(kSaved);
}

static void OnPickTemplate(const char* component) {
    const auto pressed = [picker = std::string_view(component)](const TemplateRow& row) {
        return picker == row.picker;
    };
    const TemplateRow* row = std::ranges::find_if(kTemplates, pressed);
    if (row == std::end(kTemplates)) return;

    std::wstring file;
    if (Failed(ModelFileChoose(row->title, kTemplateFilter, file))) return;
    if (file.size() > kLongestSetting) {
        ShowMessage(kPathTooLong);
        return;
    }
    InputTextSet(kDialog, row->panel, file);
}

static void OnReports() {
    std::wstring folder;
    if (!Failed(RunFolderGet(kReportFolder, folder))) ShowFolder(folder);
}

// The choices and behind them the templates.
static std::vector<DialogSetting> SettingsOf(std::span<const char* const> choices) {
    std::vector<DialogSetting> settings;
    for (const char* group : choices) settings.push_back({group, SettingKind::RadioChoice, kValueKey});
    for (const TemplateRow& row : kTemplates) settings.push_back({row.panel, SettingKind::Text, kPathKey});
    return settings;
}

}  // namespace kv
