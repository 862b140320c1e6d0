#include "simulator/import/model_names.h"

#include <algorithm>
#include <array>
#include <optional>

#include "simulator/cad/folder_index.h"
#include "simulator/cad/model_words.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

// Blanks and controls outside ASCII, and what stands for an unreadable character.
bool IsUnfit(wchar_t c) {
    return (c >= 0x80 && c <= 0xA0) || c == 0x3000 || (c >= 0x2000 && c <= 0x200F) || c == 0xFEFF ||
           c == 0xFFFD || !IsModelName(std::wstring_view(&c, 1));
}

std::wstring WithUnderscores(std::wstring_view text) {
    std::wstring name;
    bool isGap = false;
    for (const wchar_t c : text) {
        if (IsUnfit(c)) {
            isGap = true;
            continue;
        }
        // Neither in front nor at the end.
        if (isGap && !name.empty()) name += L'_';
        isGap = false;
        name += c;
    }
    return name;
}

// Never in the middle of a pair that makes one character.
std::wstring Cut(std::wstring name, std::size_t length) {
    if (name.size() <= length) return name;
    const bool isFirstOfPair = length > 0 && name[length - 1] >= 0xD800 && name[length - 1] <= 0xDBFF;
    name.resize(isFirstOfPair ? length - 1 : length);
    return name;
}

bool IsDevice(std::wstring_view name) {
    constexpr std::array<std::wstring_view, 4> kDevices = {L"CON", L"PRN", L"AUX", L"NUL"};
    const std::wstring upper = UpperName(name);
    if (std::ranges::find(kDevices, upper) != kDevices.end()) return true;
    const bool isNumbered = upper.starts_with(L"COM") || upper.starts_with(L"LPT");
    return isNumbered && upper.size() == 4 && upper[3] >= L'0' && upper[3] <= L'9';
}

}  // namespace

std::wstring ModelNames::Take(std::wstring_view product, ModelKind kind) {
    const std::optional<ModelFile> file = ParseModelFileName(product);
    std::wstring base = WithUnderscores(file ? std::wstring_view(file->name) : product);
    if (base.empty()) base = L"UNNAMED";
    if (IsDevice(base)) base += L'_';
    base = Cut(std::move(base), kLongestName);
    std::wstring name = base;
    int& next = next_.try_emplace({kind, UpperName(base)}, 2).first->second;
    while (!taken_.insert({kind, UpperName(name)}).second) {
        const std::wstring number = L"-" + std::to_wstring(next++);
        name = Cut(base, kLongestName - number.size()) + number;
    }
    return name;
}

std::wstring ParameterName(std::wstring_view title) {
    std::wstring name = Cut(WithUnderscores(title), kLongestName);
    std::ranges::replace(name, L'-', L'_');
    return name;
}

}  // namespace sim
