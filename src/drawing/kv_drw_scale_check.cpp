// KvDrwScaleCheck: sheets on which a main view has another scale than the sheet, in all drawings of the
// working directory.
//
// Nothing is changed: each drawing is on the same sheet again afterwards. Drawings stay in the host's memory,
// for the user may have had them there before.

#include "drawing/kv_drw_scale_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <ProDrawing.h>
#include <ProDrawingView.h>
#include <ProMdl.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "drawing/scale_push.h"
#include "model/batch_run.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"
#include "model/model_files.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kCommand[] = "KvDrwScaleCheck";
static constexpr wchar_t kDrawingFilter[] = L"*.drw";
static constexpr wchar_t kItems[] = L"工程图";
static constexpr wchar_t kNoDrawings[] = L"当前工作目录下无工程图";
static constexpr wchar_t kNotChecked[] = L"以下工程图未能检查：";
static constexpr wchar_t kFound[] = L"以下工程图中存在主视图比例与页面比例不符，请检查：";
static constexpr wchar_t kNoneFound[] =
    L"当前工作目录中工程图已检查完毕，不存在主视图比例与页面比例不符情况。";
static constexpr wchar_t kSheetLine[] = L"\n图纸'";
static constexpr wchar_t kSheetNumber[] = L"' 第";
static constexpr wchar_t kSheetEnd[] = L"页";
static constexpr wchar_t kMore[] = L"\n……\n共";
static constexpr wchar_t kWholeList[] = L"页，完整列表见报告：\n";

static constexpr wchar_t kStepViews[] = L"读取视图";
static constexpr wchar_t kStepSheet[] = L"切换页面";
static constexpr wchar_t kStepScales[] = L"读取比例";
static constexpr wchar_t kStepAgrees[] = L"比例相符";
static constexpr wchar_t kStepDiffers[] = L"比例不符";

// Scales that differ by no more are the same.
static constexpr double kTolerance = 1e-7;
// A longer list would not fit on the screen.
static constexpr std::size_t kListedSheets = 40;

// What was found in all drawings so far.
struct Check {
    BatchRun& run;
    std::wstring lines = {};  // one for each sheet, as many as are shown
    std::size_t sheets = 0;
};

// A drawing while it is checked.
struct CheckedDrawing {
    ProDrawing drawing = nullptr;
    std::wstring file;                        // name of its file
    std::wstring name;                        // read when it is needed
    std::vector<std::vector<ProView>> views;  // by sheet
    bool agrees = true;
};

// The scales of a main view.
struct MainScales {
    double own = 0;
    double ofSheet = 0;  // of the view's model there
};

static void CheckFile(const std::wstring& file, Check& check);
static ProError DrawingGet(CheckedDrawing& checked, const wchar_t*& step);
static ProError ViewsBySheetGet(CheckedDrawing& checked);
static void CheckSheet(CheckedDrawing& checked, int sheet, Check& check);
static bool Differs(const CheckedDrawing& checked, ProView view, int sheet, RunEntry& entry);
static ProError ScalesGet(ProDrawing drawing, ProView view, int sheet, MainScales& scales);
static bool AreSame(double one, double other);
static std::wstring ScalesNote(int sheet, const MainScales& scales);
static void AddFinding(CheckedDrawing& checked, int sheet, Check& check);
static void ShowResult(const Check& check);

ProError KvDrwScaleCheck() {
    std::vector<std::wstring> files;
    const ProError status = ModelFilesGet(kDrawingFilter, files);
    if (Failed(status)) return ShowFailure(kNoDrawings, status);

    BatchRun run(kCommand, files.size());
    Check check = {run};
    for (const std::wstring& file : files)
        if (run.Begin(file)) CheckFile(file, check);
    TellCount(run, kItems);
    ShowFailures(kNotChecked, run.Record());
    ShowResult(check);
    return PRO_TK_NO_ERROR;
}

static void CheckFile(const std::wstring& file, Check& check) {
    CheckedDrawing checked;
    checked.file = file;
    const wchar_t* step = kStepDrawing;
    const ProError status = DrawingGet(checked, step);
    if (Failed(status)) {
        check.run.Add({file, step, status});
        return;
    }
    SheetTurn turn(checked.drawing);
    for (std::size_t i = 0; i < checked.views.size(); ++i) {
        if (checked.views[i].empty()) continue;
        const int sheet = static_cast<int>(i) + 1;
        const ProError turned = turn.To(sheet);
        if (Failed(turned)) {
            checked.agrees = false;
            check.run.Add({file, kStepSheet, turned});
        } else {
            CheckSheet(checked, sheet, check);
        }
    }
    if (checked.agrees) check.run.Add({file, kStepAgrees});
}

// A drawing without a view has nothing that could differ.
static ProError DrawingGet(CheckedDrawing& checked, const wchar_t*& step) {
    ProMdl model = nullptr;
    ProError status = ModelRetrieveByType(checked.file, PRO_MDLFILE_DRAWING, model);
    if (Failed(status)) return status;
    checked.drawing = static_cast<ProDrawing>(model);

    step = kStepViews;
    status = ViewsBySheetGet(checked);
    return status == PRO_TK_E_NOT_FOUND ? PRO_TK_NO_ERROR : status;
}

static ProError ViewsBySheetGet(CheckedDrawing& checked) {
    HostArray<ProView> views;
    int sheets = 0;
    ProError status = ViewsGet(checked.drawing, views);
    if (!Failed(status)) status = ProDrawingSheetsCount(checked.drawing, &sheets);
    if (Failed(status)) return status;

    checked.views.resize(static_cast<std::size_t>(std::max(sheets, 0)));
    for (ProView view : Items(views)) {
        int sheet = 0;
        status = ProDrawingViewSheetGet(checked.drawing, view, &sheet);
        // An erased view stands on no sheet.
        if (status == PRO_TK_E_NOT_FOUND) continue;
        if (Failed(status)) return status;
        if (sheet >= 1 && sheet <= sheets) checked.views[static_cast<std::size_t>(sheet) - 1].push_back(view);
    }
    return PRO_TK_NO_ERROR;
}

static void CheckSheet(CheckedDrawing& checked, int sheet, Check& check) {
    bool isFound = false;
    for (ProView view : checked.views[static_cast<std::size_t>(sheet) - 1]) {
        RunEntry entry = {checked.file, kStepDiffers};
        if (!Differs(checked, view, sheet, entry)) continue;
        checked.agrees = false;
        isFound = isFound || !Failed(entry.status);
        check.run.Add(std::move(entry));
    }
    if (isFound) AddFinding(checked, sheet, check);
}

// Whether it is a main view with another scale than the sheet, or cannot be known to be none: the entry
// tells.
static bool Differs(const CheckedDrawing& checked, ProView view, int sheet, RunEntry& entry) {
    ProViewType type = PRO_VIEW_PROJECTION;
    MainScales scales;
    entry.status = ProDrawingViewTypeGet(checked.drawing, view, &type);
    if (!Failed(entry.status) && type != PRO_VIEW_GENERAL) return false;
    if (!Failed(entry.status)) entry.status = ScalesGet(checked.drawing, view, sheet, scales);
    if (Failed(entry.status)) {
        entry.step = kStepScales;
        return true;
    }
    if (AreSame(scales.own, scales.ofSheet)) return false;
    entry.note = ScalesNote(sheet, scales);
    return true;
}

static ProError ScalesGet(ProDrawing drawing, ProView view, int sheet, MainScales& scales) {
    ProSolid solid = nullptr;
    ProError status = ProDrawingViewSolidGet(drawing, view, &solid);
    if (!Failed(status)) status = ProDrawingScaleGet(drawing, solid, sheet, &scales.ofSheet);
    return Failed(status) ? status : ProDrawingViewScaleGet(drawing, view, &scales.own);
}

// What the numbers themselves are rounded by does not count as a difference.
static bool AreSame(double one, double other) {
    const double rounding = std::numeric_limits<double>::epsilon() * std::max(std::abs(one), std::abs(other));
    return std::abs(one - other) <= kTolerance + rounding;
}

static std::wstring ScalesNote(int sheet, const MainScales& scales) {
    std::array<wchar_t, 96> text = {};
    std::swprintf(text.data(), text.size(), L"第%d页：主视图比例 %.10g，页面比例 %.10g", sheet, scales.own,
                  scales.ofSheet);
    return text.data();
}

// A drawing whose name cannot be read goes by its file's.
static void AddFinding(CheckedDrawing& checked, int sheet, Check& check) {
    if (checked.name.empty() && Failed(ModelNameGet(checked.drawing, checked.name)))
        checked.name = checked.file;
    ++check.sheets;
    if (check.sheets <= kListedSheets)
        check.lines += kSheetLine + checked.name + kSheetNumber + std::to_wstring(sheet) + kSheetEnd;
}

static void ShowResult(const Check& check) {
    if (check.sheets == 0) {
        ShowCompletion(check.run, kNoneFound);
        return;
    }
    std::wstring text = kFound + check.lines;
    if (check.sheets > kListedSheets)
        text += kMore + std::to_wstring(check.sheets) + kWholeList + check.run.ReportPath();
    ShowMessage(text.c_str());
    ShowCancelled(check.run);
}

}  // namespace kv
