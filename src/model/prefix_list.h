// Name prefixes that keep models out of a batch.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Upper-cased prefixes.
using PrefixList = std::vector<std::wstring>;

// The prefixes of a user's text, split at commas of either width; empty pieces are dropped. Blanks belong to
// a prefix: where they do not count the caller removes them first.
PrefixList PrefixListFromText(std::wstring_view text);

// Whether a name begins with one of the prefixes, in any letter case.
bool HasPrefix(const PrefixList& prefixes, std::wstring_view name);

}  // namespace kv
