// What ties a component to its assembly, and freeing it.
#pragma once

#include <string>
#include <vector>

#include <ProAsmcomp.h>
#include <ProMdl.h>

namespace kv {

struct ComponentTies {
    ProAsmcomp component;
    std::wstring name;            // of its model, with the component's number: "BOLT (#2)"
    std::vector<int> types = {};  // of its constraints, by the host's numbers
    std::wstring leftOut = {};    // why it is not to be freed; empty: it may be
    bool isMovable = false;       // as a connection or an interface leaves it
};

// Reads a component of `assembly`, or of another one, which leaves it out. What cannot be read leaves it out
// as well.
//
// Cost  6 host calls and one for each constraint
ComponentTies TiesRead(ProMdl assembly, const ProAsmcomp& component);

// What a component gets instead of its constraints.
enum class Released {
    Fixed,  // one constraint that fixes it
    Free,   // none
};

// Replaces the constraints; the component stays where it is.
//
// step    what fails, in words
// Errors  those of the host's calls; PRO_TK_NO_CHANGE for a component that has no constraint to lose;
//         PRO_TK_NOT_VALID when it does not stand where it did, or has a constraint that the host does not
//         take away
[[nodiscard]] ProError TiesRelease(ComponentTies& ties, Released released, const wchar_t*& step);

}  // namespace kv
