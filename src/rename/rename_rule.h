// New names by rule. Plain rules, without a host call.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kv {

// What is to be done to a name, in this order.
struct RenameRule {
    std::wstring find;  // in any letter case, every occurrence; empty: nothing is replaced
    std::wstring replacement;
    std::wstring prefix;
    std::wstring suffix;
    std::optional<int> start;  // number behind the name of the first row; nothing: no number
    int digits = 1;            // at least; shorter numbers get zeros in front
};

// The new name of the row at `place`, counted from 0.
std::wstring NameByRule(const RenameRule& rule, const std::wstring& name, std::size_t place);

}  // namespace kv
