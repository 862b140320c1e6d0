// Parameter values as texts.

#include "model/parameter_text.h"

#include <charconv>
#include <iterator>
#include <limits>

namespace kv {

static constexpr wchar_t kYes[] = L"是";
static constexpr wchar_t kNo[] = L"否";
static constexpr int kDecimals = 3;
// The longest fixed-point text: sign, all digits before the point, the point, the decimals.
static constexpr std::size_t kNumberSize = std::numeric_limits<double>::max_exponent10 + kDecimals + 8;

static std::wstring RealText(double real);

std::optional<std::wstring> ParameterText(const ProParamvalue& value) {
    switch (value.type) {
        case PRO_PARAM_STRING:
            return value.value.s_val;
        case PRO_PARAM_INTEGER:
            return std::to_wstring(value.value.i_val);
        case PRO_PARAM_DOUBLE:
            return RealText(value.value.d_val);
        case PRO_PARAM_BOOLEAN:
            if (value.value.l_val == 1) return kYes;
            return value.value.l_val == 0 ? kNo : L"";
        default:
            return std::nullopt;
    }
}

// The conversion knows no locale: the point is "." on every machine.
static std::wstring RealText(double real) {
    char text[kNumberSize];
    const auto end = std::to_chars(text, std::end(text), real, std::chars_format::fixed, kDecimals);
    return {text, end.ptr};
}

}  // namespace kv
