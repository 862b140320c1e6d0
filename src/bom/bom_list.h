// What the bill of materials lists, before it is shown.
#pragma once

#include <vector>

#include "bom/bom_columns.h"
#include "bom/bom_tree.h"
#include "model/model_count.h"

namespace kv {

// What one walk met below an assembly: all that both lists are made of.
struct BomSource {
    std::vector<NamedModel> models;   // the assembly itself last
    std::vector<PlacedModel> placed;  // in the order of the walk
    LeftCounts left = {};
};

// One item of a list. Skeleton models are still among them.
struct BomItem {
    unsigned int model;  // index
    unsigned int count;
    unsigned int node;  // in the tree; without meaning in the summed list
};

struct BomList {
    BomForm form = BomForm::Summed;
    std::vector<BomNode> tree;  // of the level list
    std::vector<BomItem> items;
};

// Errors: those of ModelWalk.
[[nodiscard]] ProError BomSourceGet(ProMdl assembly, BomSource& source);

// Each distinct model below the assembly with its number on all levels, in the order of first meeting.
BomList SummedBom(const BomSource& source);

// The assembly and what is below it down to level `deepest`, each item with its number under its parent.
BomList LevelBom(const BomSource& source, int deepest);

}  // namespace kv
