// The assembly as a tree of numbered items.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "model/model_count.h"

namespace kv {

// One item: all placements of a name under one parent.
struct BomNode {
    unsigned int model;     // index of the first one placed
    unsigned int count;     // under the parent
    unsigned int parent;    // index of its node; of the root itself
    unsigned int position;  // among the parent's children, from 1
    int level;              // 0 for the root
};

// The nodes in depth-first order, a node before its children, children in the order of first placement.
//
// A name that a parent has already counts one more there, whatever its type, and what is below it is not
// entered again.
//
// models  those of the walk, and behind them the top assembly
// placed  the placements of the walk, in its order
// Cost    a fixed amount of work and memory for each placement
std::vector<BomNode> LevelTree(std::span<const NamedModel> models, std::span<const PlacedModel> placed);

// "0" for the root, "3" for its third child, "3.1" for the first child of that.
std::wstring ItemCode(std::span<const BomNode> tree, unsigned int node);

}  // namespace kv
