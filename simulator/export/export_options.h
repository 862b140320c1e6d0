// The option sets that the plug-in fills before an export.

#pragma once

#include <map>
#include <vector>

#include <ProIntf3Dexport.h>
#include <ProUtil.h>

#include "simulator/memory/handle_set.h"

namespace sim {

// Which sheets a 2D export holds.
struct SheetChoice {
    Pro2dExportSheetOption option = PRO2DEXPORT_CURRENT_TO_MODEL_SPACE;
    int modelSpaceSheet = 0;  // 0: none was named
    std::vector<int> paperSpaceSheets;
};

using PdfOptions = std::map<int, int>;  // what was set, by option number

struct InclusionChoice {
    bool datums = false;
    bool blanked = false;
    bool facetted = false;
};

struct LayerChoice {
    bool autoIds = false;
};

struct ExportOptions {
    HandleSet<SheetChoice> sheetChoices{"2D export data", 0x2D000000};
    HandleSet<PdfOptions> pdf{"PDF options", 0x3D000000};
    HandleSet<InclusionChoice> inclusions{"output inclusion", 0x4D000000};
    HandleSet<LayerChoice> layers{"output layer options", 0x5D000000};
};

}  // namespace sim
