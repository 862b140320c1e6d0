// Dimensions that the user picks in a drawing, on the toolkit's calls.

#include "drawing/dimension_item.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <span>

#include <ProMdl.h>
#include <ProSelection.h>
#include <ProWindows.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "model/selection.h"

namespace kv {

static constexpr char kDimensionFilter[] = "dimension,ref_dim";

static std::vector<DimensionItem> DimensionsOf(std::span<ProSelection> selections);
static ProError DimensionRead(DimensionItem& dimension);

std::vector<DimensionItem> SelectedDimensions() {
    SelectionArray selections;
    if (Failed(SelectionRead(selections))) return {};
    return DimensionsOf(Items(selections));
}

ProError DimensionsPick(int maximum, std::vector<DimensionItem>& picked) {
    ProSelection* selections = nullptr;
    int count = 0;
    const ProError status = ProSelect(HostName(kDimensionFilter), maximum, nullptr, nullptr, nullptr, nullptr,
                                      &selections, &count);
    if (Failed(status)) return status;
    picked.clear();
    if (selections != nullptr && count > 0)
        picked = DimensionsOf({selections, static_cast<std::size_t>(count)});
    return PRO_TK_NO_ERROR;
}

ProError DimensionTextWrite(DimensionItem& dimension, const DimensionLines& lines) {
    std::vector<wchar_t*> pointers;
    for (const std::wstring& line : lines) pointers.push_back(HostText(line.c_str()));
    HostArray<wchar_t*> text;
    ProError status = ArrayAlloc(text);
    if (!Failed(status)) status = ArrayAppend(text, std::span<wchar_t*>(pointers));
    if (!Failed(status)) status = ProDimensionTextWstringsSet(&dimension.item, text.Get());
    if (!Failed(status)) dimension.lines = lines;
    return status;
}

ProError DimensionDisplayWrite(DimensionItem& dimension, ProDimensionValueDisplay display) {
    const ProError status = ProDimensionValuedisplaySet(&dimension.item, display);
    if (!Failed(status)) dimension.display = display;
    return status;
}

void DimensionUndo::Keep(const DimensionItem& dimension) {
    const auto isKept = [&](const DimensionItem& kept) { return IsSameDimension(kept, dimension); };
    if (std::ranges::none_of(kept_, isKept)) kept_.push_back(dimension);
}

ProError DimensionRestore(const DimensionItem& former) {
    DimensionItem dimension = former;
    ProError status = DimensionTextWrite(dimension, former.lines);
    ProDimensionValueDisplay display = PRO_DIMVALUEDISPLAY_NOMINAL;
    if (!Failed(status)) status = ProDimensionValuedisplayGet(&dimension.item, &display);
    if (Failed(status) || display == former.display) return status;
    return DimensionDisplayWrite(dimension, former.display);
}

bool IsSameDimension(const DimensionItem& one, const DimensionItem& other) {
    return one.item.owner == other.item.owner && one.item.type == other.item.type &&
           one.item.id == other.item.id;
}

void DimensionsShow(ProDrawing drawing) {
    int sheet = 0;
    if (!Failed(ProDrawingCurrentSheetGet(drawing, &sheet))) ProDwgSheetRegenerate(drawing, sheet);
    ProWindowRepaint(PRO_VALUE_UNUSED);
}

static std::vector<DimensionItem> DimensionsOf(std::span<ProSelection> selections) {
    std::vector<DimensionItem> dimensions;
    for (ProSelection selection : selections) {
        DimensionItem dimension = {SelectedItem(selection)};
        const bool isOne = dimension.item.type == PRO_DIMENSION || dimension.item.type == PRO_REF_DIMENSION;
        const bool isListed = std::ranges::any_of(
            dimensions, [&](const DimensionItem& listed) { return IsSameDimension(listed, dimension); });
        // A text that cannot be read is not there to be changed.
        if (!isOne || isListed || Failed(DimensionRead(dimension))) continue;
        dimensions.push_back(std::move(dimension));
    }
    return dimensions;
}

// What is only for the user to see may be missing.
static ProError DimensionRead(DimensionItem& dimension) {
    HostTexts text;
    ProError status = text.Received(ProDimensionTextWstringsGet(&dimension.item, text.Receive()));
    if (!Failed(status)) status = ProDimensionValuedisplayGet(&dimension.item, &dimension.display);
    if (Failed(status)) return status;
    for (const wchar_t* line : Items(text)) dimension.lines.emplace_back(line == nullptr ? L"" : line);

    ProBoolean canModify = PRO_B_FALSE;
    const ProError asked = ProMdlIsModifiable(dimension.item.owner, PRO_B_FALSE, &canModify);
    // The host refuses the text itself where it must.
    dimension.isReadOnly = !Failed(asked) && canModify != PRO_B_TRUE;
    ProName symbol = {};
    double value = 0;
    std::array<wchar_t, 32> number = {};
    if (!Failed(ProDimensionSymbolGet(&dimension.item, symbol))) dimension.symbol = symbol;
    if (!Failed(ProDimensionValueGet(&dimension.item, &value))) {
        std::swprintf(number.data(), number.size(), L"%.6g", value);
        dimension.value = number.data();
    }
    return ModelNameGet(dimension.item.owner, dimension.owner);
}

}  // namespace kv
