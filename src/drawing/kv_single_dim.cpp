// KvSingleDim: the text of one dimension after the other, as the user types it.

#include "drawing/kv_single_dim.h"

#include <string>
#include <utility>
#include <vector>

#include <ProDrawing.h>

#include "base/status.h"
#include "drawing/dimension_item.h"
#include "drawing/dimension_text.h"
#include "drawing/scale_push.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kTextDialog[] = "KvSingleDim";
static constexpr char kTextArea[] = "DimText";
static constexpr char kTextOwner[] = "DimInfo";
static constexpr char kHideCheck[] = "HideValue";

static constexpr wchar_t kDrawingOnly[] = L"\t此功能仅工程图环境可用！\t";
static constexpr wchar_t kOwnerReadOnly[] = L"\t尺寸所在的模型只读，不能修改：\t\n";
static constexpr wchar_t kValueMissing[] = L"\t文字中必须有且只有一个“{尺寸}”，或勾选“不显示数值”\t";
static constexpr wchar_t kLineTooLong[] = L"\t文字的一行不能超过80个字符\t";
static constexpr wchar_t kTextRefused[] = L"\t主程序未接受此文字，尺寸未改动\t";
static constexpr wchar_t kUndoRefused[] = L"\t有尺寸的文字未能恢复\t";

struct TextDialog {
    ProDrawing drawing = nullptr;
    DimensionItem dimension = {};
    DimensionUndo undo = {};
    bool goesOn = false;
};

static void FillTextDialog(TextDialog& dialog);
static void OnTakeText(TextDialog& dialog);
static void OnUndoText(TextDialog& dialog);
static ProError TextAndDisplayWrite(DimensionItem& dimension, const DimensionLines& lines, bool isHidden);

ProError KvSingleDim() {
    TextDialog dialog;
    ProError status = CurrentDrawingGet(dialog.drawing);
    if (Failed(status)) return ShowFailure(kDrawingOnly, status);
    do {
        dialog.goesOn = false;
        std::vector<DimensionItem> picked;
        // A pick that the user ends with nothing ends the command.
        if (Failed(DimensionsPick(1, picked)) || picked.empty()) return PRO_TK_NO_ERROR;
        dialog.dimension = std::move(picked.front());
        if (dialog.dimension.isReadOnly) {
            ShowMessage((kOwnerReadOnly + dialog.dimension.owner).c_str());
            dialog.goesOn = true;
            continue;
        }
        status = RunDialog(kTextDialog,
                           {Pressed<OnTakeText>("OK"), Pressed<OnUndoText>("KvUndo"), Closes("Close")},
                           dialog, FillTextDialog);
    } while (!Failed(status) && dialog.goesOn);
    return status;
}

static void FillTextDialog(TextDialog& dialog) {
    const DimensionItem& dimension = dialog.dimension;
    InputTextSet(kTextDialog, kTextOwner,
                 dimension.symbol + L" = " + dimension.value + L"  (" + dimension.owner + L")");
    AreaTextSet(kTextDialog, kTextArea, DimensionTextShown(dimension.lines, L"\n"));
    CheckTickedSet(kTextDialog, kHideCheck, dimension.display == PRO_DIMVALUEDISPLAY_HIDE);
}

static void OnTakeText(TextDialog& dialog) {
    std::wstring text;
    bool isHidden = false;
    if (Failed(AreaTextGet(kTextDialog, kTextArea, text))) return;
    if (Failed(CheckTickedGet(kTextDialog, kHideCheck, isHidden))) return;
    DimensionLines lines;
    const ProError made = DimensionTextTyped(text, isHidden, lines);
    if (Failed(made)) {
        ShowMessage(made == PRO_TK_LINE_TOO_LONG ? kLineTooLong : kValueMissing);
        return;
    }
    dialog.undo.Keep(dialog.dimension);
    if (Failed(TextAndDisplayWrite(dialog.dimension, lines, isHidden))) {
        ShowMessage(kTextRefused);
        return;
    }
    DimensionsShow(dialog.drawing);
    dialog.goesOn = true;
    DialogClose(kTextDialog);
}

static void OnUndoText(TextDialog& dialog) {
    bool isWhole = true;
    for (const DimensionItem& former : dialog.undo.Kept()) {
        if (Failed(DimensionRestore(former))) {
            isWhole = false;
        } else if (IsSameDimension(former, dialog.dimension)) {
            dialog.dimension = former;
        }
    }
    DimensionsShow(dialog.drawing);
    FillTextDialog(dialog);
    if (!isWhole) ShowMessage(kUndoRefused);
}

// Both or none. A value that shows in another way than plainly keeps it unless it is to be hidden.
static ProError TextAndDisplayWrite(DimensionItem& dimension, const DimensionLines& lines, bool isHidden) {
    const DimensionLines before = dimension.lines;
    ProError status = lines == before ? PRO_TK_NO_ERROR : DimensionTextWrite(dimension, lines);
    const bool wasHidden = dimension.display == PRO_DIMVALUEDISPLAY_HIDE;
    if (Failed(status) || isHidden == wasHidden) return status;
    status =
        DimensionDisplayWrite(dimension, isHidden ? PRO_DIMVALUEDISPLAY_HIDE : PRO_DIMVALUEDISPLAY_NOMINAL);
    if (Failed(status) && lines != before) (void)DimensionTextWrite(dimension, before);
    return status;
}

}  // namespace kv
