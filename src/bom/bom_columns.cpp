// The columns of the bill of materials.

#include "bom/bom_columns.h"

namespace kv {

static constexpr std::wstring_view kModelName = L"模型名称";
static constexpr std::wstring_view kQuantity = L"模型数量";
static constexpr std::wstring_view kLevel = L"层级1";
static constexpr std::wstring_view kItemCode = L"层级2";

BomColumn BomColumnOf(std::wstring_view title, BomForm form) {
    if (title == kModelName) return BomColumn::ModelName;
    if (title == kQuantity) return BomColumn::Quantity;
    if (form == BomForm::Levels && title == kLevel) return BomColumn::Level;
    if (form == BomForm::Levels && title == kItemCode) return BomColumn::ItemCode;
    return BomColumn::Parameter;
}

}  // namespace kv
