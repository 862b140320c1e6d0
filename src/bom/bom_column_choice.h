// The choice of the columns.
#pragma once

#include <string>
#include <vector>

#include "bom/bom_sheet.h"

namespace kv {

// A column that a list can have.
struct ColumnOffer {
    std::wstring title;
    unsigned int models = 0;  // listed models with a parameter of this name
    bool isReserved = false;  // no parameter
    bool isChosen = false;
};

// The columns of the list, in their order, then the other reserved ones, then the other parameters that its
// models have, by name. Names that differ in letter case alone are one.
//
// parameters  names by listed model, each model once
std::vector<ColumnOffer> ColumnOffersOf(const BomSheet& sheet,
                                        const std::vector<std::vector<std::wstring>>& parameters);

// Lets the user choose among the parameters of the listed models, and their order. False when the user
// cancels.
//
// Cost    2 host calls a listed model, and those of the dialog
// Errors  shown; titles stay as they are
bool BomColumnsChoose(const BomSheet& sheet, std::vector<std::wstring>& titles);

}  // namespace kv
