// What the user picks in the graphics window.

#pragma once

#include <vector>

#include "simulator/cad/model.h"

namespace sim {

// A model or an item in it.
struct Pick {
    SimModel* model = nullptr;
    int type = 0;                // the host's item type code; 0: the model itself
    int id = 0;                  // the item's identifier in its model
    std::vector<int> path;       // component feature ids from the top assembly down
    SimModel* root = nullptr;    // the assembly that the path begins in; null: the open one
    bool isWithoutPath = false;  // a selection that a program made of an item alone
};

// The item's type number; a pick of a model itself has the model's.
inline int ItemType(const Pick& pick) {
    return pick.type == 0 ? static_cast<int>(pick.model->Kind()) : pick.type;
}

}  // namespace sim
