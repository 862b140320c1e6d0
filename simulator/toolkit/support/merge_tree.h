// The element tree of a merge feature, checked node by node.

#pragma once

#include <optional>
#include <string>

#include <ProElement.h>

#include "simulator/session/session.h"

namespace sim {

// What a tree asks for.
struct MergeRequest {
    std::wstring name;
    Pick part;
    bool isNestedBySelection = false;  // the placement stands below the selection of the part
};

// Nothing, with a violation, for a tree that lacks an element, has one twice, in a wrong place or with a
// wrong value, or has one that no merge has.
std::optional<MergeRequest> ReadMergeTree(Session& host, ProElement tree);

}  // namespace sim
