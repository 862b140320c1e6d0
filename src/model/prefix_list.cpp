// Name prefixes, without a host call.

#include "model/prefix_list.h"

#include <algorithm>

#include "base/text.h"

namespace kv {

PrefixList PrefixListFromText(std::wstring_view text) {
    return SplitAtCommas(UpperCase(text));
}

bool HasPrefix(const PrefixList& prefixes, std::wstring_view name) {
    if (prefixes.empty()) return false;
    const std::wstring upper = UpperCase(name);
    const auto begins = [&upper](const std::wstring& prefix) { return upper.starts_with(prefix); };
    return std::ranges::any_of(prefixes, begins);
}

}  // namespace kv
