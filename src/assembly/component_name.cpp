// How new components are named.

#include "assembly/component_name.h"

#include <iterator>

namespace kv {

static constexpr std::wstring_view kSeriesEnd = L"_00";
static constexpr wchar_t kMergeStem[] = L"合并";
static constexpr std::size_t kMostDigits = 9;

std::wstring SeriesBase(std::wstring_view assembly) {
    if (assembly.ends_with(kSeriesEnd)) assembly.remove_suffix(kSeriesEnd.size());
    return std::wstring(assembly);
}

std::wstring NumberedName(const std::wstring& base, int number) {
    return base + L"-" + std::to_wstring(number);
}

std::wstring NumberedAssemblyName(const std::wstring& base, int number) {
    return base + (number < 10 ? L"_0" : L"_") + std::to_wstring(number);
}

std::wstring MergeName(int number) {
    return kMergeStem + std::to_wstring(number);
}

int MergeNumber(std::wstring_view name) {
    if (!name.starts_with(kMergeStem)) return 0;
    name.remove_prefix(std::size(kMergeStem) - 1);
    // More digits than a number holds are a name of somebody's own.
    const bool isNumber = !name.empty() && name.size() <= kMostDigits &&
                          name.find_first_not_of(L"0123456789") == std::wstring_view::npos;
    int number = 0;
    if (isNumber)
        for (const wchar_t digit : name) number = 10 * number + (digit - L'0');
    return number;
}

}  // namespace kv
