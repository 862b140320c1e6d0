// KvExport: many drawings of the working directory, each to any of five formats.
//
// The dialog opens as its settings file says; the file is changed in a text editor only.

#include "export/kv_export.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <ProMdl.h>
#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"
#include "export/export_name.h"
#include "export/export_run.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/drawing_table.h"
#include "model/model_data.h"
#include "model/model_files.h"
#include "model/model_walk.h"
#include "settings/dialog_settings.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/shell.h"
#include "ui/table.h"

namespace kv {

static constexpr char kDialog[] = "KvExport";
static constexpr char kTable[] = "drw_list";
static constexpr char kScopeChoice[] = "SelDirRadio";
static constexpr char kWholeDirectory[] = "workDir";
static constexpr char kCurrentModel[] = "curMdl";
static constexpr char kNameInput[] = "Export_name";
static constexpr char kSeparatorInput[] = "separator";
static constexpr char kPdfCheck[] = "PDFCheck";
static constexpr char kProfileCheck[] = "PDFOptionCheck";
static constexpr char kMonochromeCheck[] = "PDFBlackCheck";
static constexpr char kOneFileCheck[] = "MultiSheetCheck";

static constexpr wchar_t kSettingsFile[] = L"KVconfig\\KvDrawingsIni.ini";
static constexpr wchar_t kColumnsSection[] = L"tableCols";
static constexpr DialogSetting kStoredTexts[] = {
    {kNameInput, SettingKind::Text, kContentKey, "drwNames"},
    {kSeparatorInput, SettingKind::Text, kContentKey, "Separator"},
};
// The entry for PDF is kept under a name that no button has, so that the PDF box always opens as the layout
// has it.
static constexpr DialogSetting kStoredChecks[] = {
    {"DWGCheck", SettingKind::Tick, kValueKey},       {"PDFCheck]", SettingKind::Tick, kValueKey},
    {"DXFCheck", SettingKind::Tick, kValueKey},       {"STPCheck", SettingKind::Tick, kValueKey},
    {"IGSCheck", SettingKind::Tick, kValueKey},       {kProfileCheck, SettingKind::Tick, kValueKey},
    {kMonochromeCheck, SettingKind::Tick, kValueKey}, {kOneFileCheck, SettingKind::Tick, kValueKey},
};

static constexpr wchar_t kDrawingFilter[] = L"*.drw";
static constexpr wchar_t kModelFilter[] = L"*.prt,*.asm";
static constexpr wchar_t kNoDrawings[] = L"当前工作目录下无工程图";
static constexpr wchar_t kNoModels[] = L"当前工作目录下无模型";
static constexpr wchar_t kNoSuchModel[] = L"当前模型不是组件/制造或零件，无法获取工程图";
static constexpr wchar_t kNothingSelected[] = L"\t\t请先选择需要导出的工程图\t\t";
static constexpr wchar_t kNoFormat[] = L"请先选择导出格式";
static constexpr wchar_t kNoProfile[] =
    L"\t未找到PDF打印配置文件 kvdop.dop，本次不导出PDF\t\n\n"
    L"制作方法：在主程序中打开任意工程图，选择导出PDF，在设置中调整各选项后保存配置，\n"
    L"文件命名为 kvdop.dop，放入插件的 KVconfig 文件夹或当前工作目录。";
static constexpr wchar_t kItems[] = L"工程图";
static constexpr wchar_t kDone[] = L"\t工程图批量导出已完成\t";
static constexpr wchar_t kNotExported[] = L"以下工程图或文件未能导出：";

struct ExportDialog {
    std::wstring directory;
    std::vector<std::wstring> drawings = {};  // of the whole working directory
    DrawingTable table = {{kDialog, kTable}};
    std::wstring report = {};  // path of the last run's
};

static void FillDialog(ExportDialog& dialog);
static void OnReverse(ExportDialog& dialog);
static void OnSelectAll(ExportDialog& dialog);
static void OnApply(ExportDialog& dialog);
static void OnEditSettings();
static void OnReadSettings(ExportDialog& dialog);
static void OnLoadParameters(ExportDialog& dialog);
static void OnLoadSheets(ExportDialog& dialog);
static void OnChooseScope(ExportDialog& dialog);
static void OnShowReport(const ExportDialog& dialog);
static bool IsReady(ExportRequest& request);
static void LoadCells(ExportDialog& dialog, DrawingCellsLoad load);
static void RestoreTexts(ExportDialog& dialog);
static ProError RequestGet(ExportRequest& request);
static ProError CurrentNamesGet(std::unordered_set<std::wstring>& names);
static std::vector<std::wstring> DrawingsNamed(const std::vector<std::wstring>& drawings,
                                               const std::unordered_set<std::wstring>& names);

ProError KvExport() {
    ProPath directory = {};
    ProError status = ProDirectoryCurrentGet(directory);
    if (Failed(status)) return status;
    ExportDialog dialog = {directory};
    std::vector<std::wstring> models;
    status = ModelFilesGet(kDrawingFilter, dialog.drawings);
    if (Failed(status)) return ShowFailure(kNoDrawings, status);
    status = ModelFilesGet(kModelFilter, models);
    if (Failed(status)) return ShowFailure(kNoModels, status);

    return RunDialog(kDialog,
                     {
                         Pressed<OnReverse>("reverseSel"),
                         Pressed<OnSelectAll>("selAll"),
                         Pressed<OnApply>("ApplyBt"),
                         Pressed<OnEditSettings>("KvOpenDrwIni"),
                         Pressed<OnReadSettings>("KvUpdateIni"),
                         Pressed<OnLoadParameters>("KvLoadParams"),
                         Pressed<OnLoadSheets>("KvLoadDrwInfo"),
                         Chosen<OnChooseScope>(kScopeChoice),
                         Pressed<OnShowReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillDialog);
}

static void FillDialog(ExportDialog& dialog) {
    // Without the host's consent the user selects as the layout lets them.
    (void)TableSelectionAllow({kDialog, kTable});
    RadioChoiceSet(kDialog, kScopeChoice, kWholeDirectory);
    ShowDrawings(dialog.table, dialog.drawings);
    RestoreTexts(dialog);
    DialogSettingsRestore(kDialog, SettingsPath(kSettingsFile), kStoredChecks);
}

static void OnReverse(ExportDialog& dialog) {
    ReverseSelection(dialog.table);
}

static void OnSelectAll(ExportDialog& dialog) {
    SelectAllDrawings(dialog.table);
}

static void OnApply(ExportDialog& dialog) {
    ExportRequest request;
    // A box that cannot be read might be the one that counts.
    if (Failed(RequestGet(request))) return;
    request.directory = dialog.directory;
    request.drawings = SelectedDrawings(dialog.table);
    if (!IsReady(request)) return;

    BatchRun run(kDialog, request.drawings.size());
    ExportDrawings(request, run);
    dialog.report = run.ReportPath();
    ShowFailures(kNotExported, run.Record());
    ShowCompletion(run, kDone);
}

// Whether there is anything to export; the user is told what is missing.
static bool IsReady(ExportRequest& request) {
    if (request.drawings.empty()) {
        ShowMessage(kNothingSelected);
        return false;
    }
    if (request.formats.empty()) {
        ShowMessage(kNoFormat);
        return false;
    }
    const auto isPdf = [](const ExportFormat* format) {
        return std::string_view(format->check) == kPdfCheck;
    };
    const bool wantsProfile = request.pdf.useProfile && std::ranges::any_of(request.formats, isPdf);
    if (wantsProfile && !PdfProfileExists(request.directory)) {
        ShowMessage(kNoProfile);
        std::erase_if(request.formats, isPdf);
    }
    return !request.formats.empty();
}

static void OnEditSettings() {
    const std::wstring path = SettingsPath(kSettingsFile);
    if (!path.empty()) EditTextFile(path);
}

static void OnReadSettings(ExportDialog& dialog) {
    RestoreTexts(dialog);
}

static void OnLoadParameters(ExportDialog& dialog) {
    if (!dialog.table.parameters.empty()) LoadCells(dialog, LoadParameters);
}

static void OnLoadSheets(ExportDialog& dialog) {
    LoadCells(dialog, LoadSheets);
}

static void LoadCells(ExportDialog& dialog, DrawingCellsLoad load) {
    BatchRun run(kDialog, dialog.table.drawings.size());
    load(dialog.table, run);
    dialog.report = run.ReportPath();
    TellCount(run, kItems);
    ShowCancelled(run);
}

static void OnShowReport(const ExportDialog& dialog) {
    ShowReport(dialog.report);
}

static void OnChooseScope(ExportDialog& dialog) {
    const std::string scope = RadioChoice(kDialog, kScopeChoice);
    if (scope == kWholeDirectory) ShowDrawings(dialog.table, dialog.drawings);
    if (scope != kCurrentModel) return;

    std::unordered_set<std::wstring> names;
    if (!Failed(CurrentNamesGet(names))) {
        ShowDrawings(dialog.table, DrawingsNamed(dialog.drawings, names));
        return;
    }
    // The choice has to tell what the table holds.
    RadioChoiceSet(kDialog, kScopeChoice, kWholeDirectory);
}

static void RestoreTexts(ExportDialog& dialog) {
    const std::wstring path = SettingsPath(kSettingsFile);
    ShowParameterColumns(dialog.table,
                         SplitAtCommas(WithoutBlanks(SettingRead(path, kColumnsSection, kContentKey))));
    DialogSettingsRestore(kDialog, path, kStoredTexts);
}

static ProError RequestGet(ExportRequest& request) {
    std::wstring name;
    std::wstring separator;
    ProError status = InputTextGet(kDialog, kNameInput, name);
    if (!Failed(status)) status = InputTextGet(kDialog, kSeparatorInput, separator);
    request.name = NameRuleFromTexts(name, separator);

    for (const ExportFormat& format : ExportFormats()) {
        bool wanted = false;
        if (!Failed(status)) status = CheckTickedGet(kDialog, format.check, wanted);
        if (wanted) request.formats.push_back(&format);
    }
    if (!Failed(status)) status = CheckTickedGet(kDialog, kProfileCheck, request.pdf.useProfile);
    if (!Failed(status)) status = CheckTickedGet(kDialog, kMonochromeCheck, request.pdf.monochrome);
    if (!Failed(status)) status = CheckTickedGet(kDialog, kOneFileCheck, request.oneFile);
    request.pdf.trueType = request.pdf.useProfile;
    return status;
}

// Names, in upper case, of the current model and of all its components. Without a model that can have
// drawings the user is told.
static ProError CurrentNamesGet(std::unordered_set<std::wstring>& names) {
    ProMdl current = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    const ProError status = CurrentSolidGet(current, type);
    if (Failed(status)) return ShowFailure(kNoSuchModel, status);
    if (type != PRO_MDL_ASSEMBLY && type != PRO_MDL_PART)
        return ShowFailure(kNoSuchModel, PRO_TK_INVALID_TYPE);

    std::vector<ProMdl> models;
    if (type == PRO_MDL_ASSEMBLY) {
        const ProError walked = DistinctModels(current, CollectAllComponents, models);
        if (Failed(walked)) return walked;
    }
    AddDistinct(models, current);
    for (ProMdl model : models) {
        std::wstring name;
        if (!Failed(ModelNameGet(model, name))) names.insert(UpperCase(name));
    }
    return PRO_TK_NO_ERROR;
}

// A drawing belongs to the model whose name it bears.
static std::vector<std::wstring> DrawingsNamed(const std::vector<std::wstring>& drawings,
                                               const std::unordered_set<std::wstring>& names) {
    std::vector<std::wstring> named;
    for (const std::wstring& drawing : drawings)
        if (names.contains(UpperCase(drawing))) named.push_back(drawing);
    return named;
}

}  // namespace kv
