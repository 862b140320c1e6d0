// Constraints of components in words.
#pragma once

#include <span>
#include <string>

namespace kv {

// The kinds of these constraints, by the host's numbers, in their order; empty for none.
std::wstring ConstraintWords(std::span<const int> types);

}  // namespace kv
