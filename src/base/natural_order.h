// The order in which people sort texts. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// What a text is sorted by: numbers first, by value; then texts, by their digits and letters; empty ones
// last.
struct NaturalKey {
    int rank = 0;  // 0 a number, 1 a text, 2 nothing
    double number = 0;
    std::wstring text;  // upper case
};

// The key of a text. A text that is a number from end to end, with "." as its point, counts as one unless
// `isCode`: in a code such as 1.10 each part between points is a number of its own.
NaturalKey NaturalKeyOf(std::wstring_view text, bool isCode = false);

// Below 0, 0 or above 0: the first comes before, beside or behind the second. M2 comes before M10, and letter
// case does not count.
int NaturalCompare(const NaturalKey& one, const NaturalKey& other);

}  // namespace kv
