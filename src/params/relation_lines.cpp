// Lines of relations.

#include "params/relation_lines.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace kv {

RelationLines LinesOfText(std::wstring_view text) {
    RelationLines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        if (end > 0) lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::wstring TextOfLines(const RelationLines& lines) {
    std::wstring text;
    for (const std::wstring& line : lines) text.append(text.empty() ? L"" : L"\n").append(line);
    return text;
}

RelationLines NewRelations(const RelationLines& old, const RelationLines& typed, RelationRule rule) {
    if (rule == RelationRule::Replace) return typed;
    RelationLines lines = old;
    if (rule == RelationRule::Append) {
        lines.insert(lines.end(), typed.begin(), typed.end());
        return lines;
    }
    const std::unordered_set<std::wstring_view> known(old.begin(), old.end());
    std::ranges::copy_if(typed, std::back_inserter(lines),
                         [&known](const std::wstring& line) { return !known.contains(line); });
    return lines;
}

}  // namespace kv
