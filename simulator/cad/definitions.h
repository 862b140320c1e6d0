// What the plug-in defines piece by piece before the host makes something of it: constraints of components,
// element trees of features.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/cad/pick.h"
#include "simulator/memory/handle_set.h"

namespace sim {

struct ConstraintDefinition {
    int type = -1;  // the host's constraint type; -1: none was set
    std::optional<Pick> assemblyReference, componentReference;
};

struct ElementValue {
    int type = 0;  // the host's kind of value; 0: not filled
    int number = 0;
    std::wstring text;
    std::optional<Pick> selection;
};

struct Element {
    int id = 0;
    std::optional<ElementValue> value;
    std::vector<const void*> children;  // handles
    bool isChild = false;               // it belongs to a tree
};

// A simplified representation that is being put together.
struct RepresentationDefinition {
    Representation representation;
};

struct Definitions {
    HandleSet<RepresentationDefinition> representations{"data of a representation", 0x5D000000};
    HandleSet<Element> elements{"element", 0x7D000000, Account::kElement};
    HandleSet<ElementValue> values{"value", 0x8D000000, Account::kElement};
    HandleSet<ConstraintDefinition> constraints{"constraint", 0x6D000000};
};

}  // namespace sim
