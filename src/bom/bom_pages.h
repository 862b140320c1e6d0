// The bill of materials, and what changed since an earlier one, as pages.
#pragma once

#include <string>
#include <vector>

#include "bom/bom_changes.h"
#include "bom/bom_page.h"
#include "bom/bom_sheet.h"

namespace kv {

// What a page tells of itself besides its lists.
struct PageFacts {
    std::wstring title;
    std::wstring model;
    std::wstring time;
    int deepest = 0;  // level of the list by level
};

// Both lists on one page, each under its own columns: the tree and the summed list.
std::string BomPage(const BomSheet& levels, const BomSheet& summed, const PageFacts& facts,
                    const PageParts& parts);

// The changes as a list.
std::string ChangesPage(const std::vector<ChangeLine>& lines, const std::wstring& earlier,
                        const PageFacts& facts, const PageParts& parts);

}  // namespace kv
