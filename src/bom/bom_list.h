// What the bill of materials lists, before it is shown.
#pragma once

#include <vector>

#include "bom/bom_columns.h"
#include "bom/bom_tree.h"
#include "model/model_count.h"

namespace kv {

// One item of a list. Skeleton models are still among them.
struct BomItem {
    unsigned int model;  // index
    unsigned int count;
    unsigned int node;  // in the tree; without meaning in the summed list
};

struct BomList {
    BomForm form = BomForm::Summed;
    std::size_t placements = 0;  // below the assembly
    std::vector<NamedModel> models;
    std::vector<BomNode> tree;  // of the level list
    std::vector<BomItem> items;
};

// Each distinct model below the assembly with its number on all levels, in the order of first meeting.
// Errors: those of ModelWalk.
[[nodiscard]] ProError SummedBomGet(ProMdl assembly, BomList& list);

// The assembly and what is below it down to level `deepest`, each item with its number under its parent.
// Errors: those of ModelWalk.
[[nodiscard]] ProError LevelBomGet(ProMdl assembly, int deepest, BomList& list);

}  // namespace kv
