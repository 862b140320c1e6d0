// The order in which people sort texts.

#include "base/natural_order.h"

#include <algorithm>
#include <cstddef>

#include "base/number.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static bool IsNumber(std::wstring_view text);
static std::size_t DigitsEnd(std::wstring_view text, std::size_t from);
static int CompareDigits(std::wstring_view one, std::wstring_view other);
static int CompareTexts(std::wstring_view one, std::wstring_view other);

NaturalKey NaturalKeyOf(std::wstring_view text, bool isCode) {
    if (text.empty()) return {2, 0, {}};
    double number = 0;
    if (!isCode && IsNumber(text) && !Failed(RealFromText(text, number))) return {0, number, {}};
    return {1, 0, UpperCase(text)};
}

int NaturalCompare(const NaturalKey& one, const NaturalKey& other) {
    if (one.rank != other.rank) return one.rank < other.rank ? -1 : 1;
    if (one.rank == 1) return CompareTexts(one.text, other.text);
    return one.number < other.number ? -1 : one.number > other.number ? 1 : 0;
}

static bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

// A sign, digits, and digits behind a point.
static bool IsNumber(std::wstring_view text) {
    if (text.starts_with(L'-') || text.starts_with(L'+')) text.remove_prefix(1);
    const std::size_t whole = DigitsEnd(text, 0);
    if (whole == 0) return false;
    if (whole == text.size()) return true;
    return text[whole] == L'.' && whole + 1 < text.size() && DigitsEnd(text, whole + 1) == text.size();
}

static std::size_t DigitsEnd(std::wstring_view text, std::size_t from) {
    while (from < text.size() && IsDigit(text[from])) ++from;
    return from;
}

// Numbers of any length.
static int CompareDigits(std::wstring_view one, std::wstring_view other) {
    one.remove_prefix(std::min(one.find_first_not_of(L'0'), one.size()));
    other.remove_prefix(std::min(other.find_first_not_of(L'0'), other.size()));
    if (one.size() != other.size()) return one.size() < other.size() ? -1 : 1;
    return one.compare(other);
}

static int CompareTexts(std::wstring_view one, std::wstring_view other) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < one.size() && j < other.size()) {
        if (IsDigit(one[i]) && IsDigit(other[j])) {
            const std::size_t end = DigitsEnd(one, i);
            const std::size_t otherEnd = DigitsEnd(other, j);
            const int order = CompareDigits(one.substr(i, end - i), other.substr(j, otherEnd - j));
            if (order != 0) return order;
            i = end;
            j = otherEnd;
            continue;
        }
        if (one[i] != other[j]) return one[i] < other[j] ? -1 : 1;
        ++i;
        ++j;
    }
    const std::size_t left = one.size() - i;
    const std::size_t otherLeft = other.size() - j;
    return left < otherLeft ? -1 : left > otherLeft ? 1 : 0;
}

}  // namespace kv
