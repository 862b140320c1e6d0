// Dimensions that the user picks in a drawing: reading and writing their texts.
#pragma once

#include <string>
#include <vector>

#include <ProDimension.h>
#include <ProDrawing.h>

#include "drawing/dimension_text.h"

namespace kv {

struct DimensionItem {
    ProDimension item;
    std::wstring symbol = {};
    std::wstring value = {};
    std::wstring owner = {};  // name of the model or drawing
    DimensionLines lines = {};
    ProDimensionValueDisplay display = PRO_DIMVALUEDISPLAY_NOMINAL;
    bool isReadOnly = false;  // as its owner is
};

// The dimensions that are selected, each once; others are passed over. None is no failure.
std::vector<DimensionItem> SelectedDimensions();

// Lets the user pick dimensions, at most `maximum` of them, kNoLimit for any number. Errors: those of
// ProSelect: PRO_TK_USER_ABORT when the user cancels.
[[nodiscard]] ProError DimensionsPick(int maximum, std::vector<DimensionItem>& picked);

// Gives a dimension another text. Errors: those of the host's calls.
[[nodiscard]] ProError DimensionTextWrite(DimensionItem& dimension, const DimensionLines& lines);

[[nodiscard]] ProError DimensionDisplayWrite(DimensionItem& dimension, ProDimensionValueDisplay display);

// Texts as they were when a command began.
class DimensionUndo {
public:
    // Before the first change of a dimension; later ones count for nothing.
    void Keep(const DimensionItem& dimension);
    const std::vector<DimensionItem>& Kept() const { return kept_; }

private:
    std::vector<DimensionItem> kept_;
};

// Gives a dimension text and display of an earlier state. Errors: those of the host's calls.
[[nodiscard]] ProError DimensionRestore(const DimensionItem& former);

bool IsSameDimension(const DimensionItem& one, const DimensionItem& other);

// Shows the changes on the current sheet.
void DimensionsShow(ProDrawing drawing);

}  // namespace kv
