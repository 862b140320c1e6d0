#include "assembly/rep_rule.h"

#include <algorithm>

#include <ProToolkit.h>

namespace kv {

// Whether sorted paths hold one that begins with `start`.
static bool AnyBelow(const std::vector<ComponentIds>& sorted, const ComponentIds& start) {
    const auto first = std::ranges::lower_bound(sorted, start);
    return first != sorted.end() && first->size() >= start.size() &&
           std::equal(start.begin(), start.end(), first->begin());
}

RepPlan PlanRepresentation(std::span<const RepPlacement> placements, const RepRule& rule) {
    std::vector<ComponentIds> selected = rule.selected;
    std::ranges::sort(selected);
    RepPlan plan;
    ComponentIds path;
    int namedLevel = 0;  // of the named component that this one is below; 0: none
    for (const RepPlacement& placed : placements) {
        path.resize(static_cast<std::size_t>(placed.level) - 1);
        path.push_back(placed.id);
        if (placed.level <= namedLevel) namedLevel = 0;
        const bool isModel = placed.model < rule.models.size() && rule.models[placed.model];
        const bool isNamed = namedLevel == 0 && (isModel || std::ranges::binary_search(selected, path));
        if (isNamed) {
            namedLevel = placed.level;
            plan.items.push_back(path);
        }
        const bool holdsKept = rule.keepsOnly && namedLevel == 0 && AnyBelow(selected, path);
        const bool isKept = rule.keepsOnly ? namedLevel != 0 || holdsKept : namedLevel == 0;
        ++(isKept ? plan.kept : plan.leftOut);
    }
    return plan;
}

bool IsRepName(const std::wstring& name) {
    const auto isBlank = [](wchar_t character) {
        return character == L' ' || character == L'\t' || character == L'\u3000';
    };
    return !name.empty() && name.size() < PRO_NAME_SIZE && std::ranges::none_of(name, isBlank);
}

}  // namespace kv
