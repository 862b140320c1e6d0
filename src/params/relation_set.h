// The relations of a model, on the host's calls.
#pragma once

#include <ProRelSet.h>

#include "params/relation_lines.h"

namespace kv {

// Initial relations are solved before a model is regenerated, the others after it.
enum class RelationKind { Initial, AfterRegeneration };

struct RelationSet {
    ProModelitem item = {};  // of the model
    RelationKind kind = RelationKind::Initial;
    bool found = false;
    ProRelset handle = {};  // all zero for a model without such a set
    RelationLines lines;
};

// Looks the set of a model up and reads it. A model without one is no failure.
//
// Errors  of reading the lines of a set that is there: whoever writes to it would lose them
[[nodiscard]] ProError RelationSetGet(ProMdl model, RelationKind kind, RelationSet& set);

// Makes a set for a model that was found to have none. The host makes initial ones only, and `kind` tells so.
// Errors: those of ProRelsetCreate, PRO_TK_E_FOUND among them.
[[nodiscard]] ProError RelationSetCreate(RelationSet& set);

// Puts these lines in place of those of the set. Errors: those of ProRelsetRelationsSet.
[[nodiscard]] ProError RelationSetWrite(RelationSet& set, const RelationLines& lines);

}  // namespace kv
