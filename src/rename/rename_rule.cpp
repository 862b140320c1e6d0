// New names by rule.

#include "rename/rename_rule.h"

#include <algorithm>

#include "base/text.h"

namespace kv {

static std::wstring Replaced(const std::wstring& text, const std::wstring& find, const std::wstring& by);

std::wstring NameByRule(const RenameRule& rule, const std::wstring& name, std::size_t place) {
    std::wstring result = rule.prefix + Replaced(name, rule.find, rule.replacement) + rule.suffix;
    if (!rule.start) return result;
    const std::wstring number = std::to_wstring(*rule.start + static_cast<long long>(place));
    const auto digits = static_cast<std::size_t>(std::max(rule.digits, 0));
    if (number.size() < digits) result.append(digits - number.size(), L'0');
    return result + number;
}

// Upper-casing changes no length: places in one text are places in the other.
static std::wstring Replaced(const std::wstring& text, const std::wstring& find, const std::wstring& by) {
    if (find.empty()) return text;
    const std::wstring upper = UpperCase(text);
    const std::wstring wanted = UpperCase(find);
    std::wstring result;
    std::size_t place = 0;
    for (std::size_t next = upper.find(wanted); next != std::wstring::npos;
         next = upper.find(wanted, place)) {
        result.append(text, place, next - place).append(by);
        place = next + find.size();
    }
    return result.append(text, place);
}

}  // namespace kv
