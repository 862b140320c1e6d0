// Simplified representations of assemblies.

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/cad/model.h"
#include "simulator/report/utf8.h"

namespace sim {

static bool LeadsTo(const std::vector<int>& path, const std::vector<int>& below) {
    return path.size() <= below.size() && std::equal(path.begin(), path.end(), below.begin());
}

int SimModel::AddRepresentation(Representation representation) {
    int last = 0;
    for (const Representation& other : representations_) last = std::max(last, other.id);
    representation.id = last + 1;
    representations_.push_back(std::move(representation));
    modified_ = true;
    return last + 1;
}

Representation* SimModel::FindRepresentation(int id) {
    const auto found = std::ranges::find(representations_, id, &Representation::id);
    return found == representations_.end() ? nullptr : &*found;
}

Representation* SimModel::FindRepresentation(std::wstring_view name) {
    const std::wstring upper = UpperName(name);
    const auto found = std::ranges::find_if(
        representations_, [&upper](const Representation& other) { return UpperName(other.name) == upper; });
    return found == representations_.end() ? nullptr : &*found;
}

void SimModel::RemoveRepresentation(int id) {
    std::erase_if(representations_, [id](const Representation& other) { return other.id == id; });
    modified_ = true;
}

// The item nearest above the end of the path counts. What holds an included component is never left out.
bool SimModel::IsLeftOut(const std::vector<int>& path) const {
    const auto active = std::ranges::find(representations_, activeRepresentation_, &Representation::id);
    if (active == representations_.end()) return false;
    RepAction action = active->usual;
    std::size_t nearest = 0;
    for (const RepItem& item : active->items) {
        if (LeadsTo(item.path, path) && item.path.size() >= nearest) {
            action = item.action;
            nearest = item.path.size();
        } else if (item.action == RepAction::kInclude && LeadsTo(path, item.path)) {
            return false;
        }
    }
    return action == RepAction::kExclude;
}

}  // namespace sim
