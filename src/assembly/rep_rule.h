// What a simplified representation is to leave out. Plain rules, without a host call.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "model/selection.h"

namespace kv {

// One placement, in pre-order: a component stands before what is below it.
struct RepPlacement {
    int level;           // 1 for a component of the assembly
    int id;              // of the component feature
    unsigned int model;  // among the distinct ones
};

struct RepRule {
    bool keepsOnly = false;              // only what is selected stays
    std::vector<bool> models;            // by model: left out wherever it is placed; may be shorter
    std::vector<ComponentIds> selected;  // left out, or kept, with all that is below them
};

struct RepPlan {
    // What the representation names: left out, or kept where only these are kept. None is below another.
    std::vector<ComponentIds> items;
    // Placements, those below a named one too. An assembly that holds a kept one is kept.
    std::size_t leftOut = 0;
    std::size_t kept = 0;
};

RepPlan PlanRepresentation(std::span<const RepPlacement> placements, const RepRule& rule);

// Whether a text can be a representation's name: 1 to 31 characters, none of them a blank.
bool IsRepName(const std::wstring& name);

}  // namespace kv
