// Numbers from texts.

#include "base/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

#include "base/status.h"

namespace kv {

// What the standard conversions skip in front of a number.
static constexpr wchar_t kSpaces[] = L" \t\n\v\f\r";
static constexpr wchar_t kLastAscii = 0x7F;

static std::string NumberStart(std::wstring_view text, const char* starts);

// Unlike the standard conversions of texts this knows no locale, and it is the same with every compiler.
template <typename Number>
static ProError NumberFromText(std::wstring_view text, const char* starts, Number& number) {
    number = 0;
    const std::string digits = NumberStart(text, starts);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc()) return PRO_TK_NO_ERROR;
    number = 0;
    return error == std::errc::result_out_of_range ? PRO_TK_NOT_VALID : PRO_TK_NO_ERROR;
}

ProError IntegerFromText(std::wstring_view text, int& number) {
    return NumberFromText(text, "0123456789", number);
}

ProError RealFromText(std::wstring_view text, double& number) {
    const ProError status = NumberFromText(text, "0123456789.", number);
    return !Failed(status) && !std::isfinite(number) ? PRO_TK_NOT_VALID : status;
}

// The part of a text that a number can be read from, without blanks and "+"; empty when the text begins with
// anything else. Words like "inf" count as no number.
static std::string NumberStart(std::wstring_view text, const char* starts) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpaces), text.size()));
    if (text.starts_with(L'+')) {
        text.remove_prefix(1);
        if (text.starts_with(L'-')) return {};
    }
    std::string number;
    for (const wchar_t character : text) {
        if (character > kLastAscii) break;
        number.push_back(static_cast<char>(character));
    }
    const std::size_t first = number.starts_with('-') ? 1 : 0;
    const bool isNumber = number.find_first_of(starts, first) == first;
    return isNumber ? number : std::string();
}

}  // namespace kv
