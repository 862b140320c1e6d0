// The columns of the bill of materials.

#include "bom/bom_columns.h"

namespace kv {

BomColumn BomColumnOf(std::wstring_view title, BomForm form) {
    if (title == kBomNameTitle) return BomColumn::ModelName;
    if (title == kBomQuantityTitle) return BomColumn::Quantity;
    if (form == BomForm::Levels && title == kBomLevelTitle) return BomColumn::Level;
    if (form == BomForm::Levels && title == kBomCodeTitle) return BomColumn::ItemCode;
    return BomColumn::Parameter;
}

}  // namespace kv
