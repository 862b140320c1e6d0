// Component paths from what a walk lists.

#include "model/component_path.h"

#include <algorithm>
#include <span>

#include "base/status.h"
#include "model/model_walk.h"

namespace kv {

static int PathIds(const WalkResult& walk, std::span<const ProAsmcomp> components, std::size_t place,
                   ProIdTable ids);

ProError FirstPathGet(ProMdl top, ProMdl model, ProAsmcomppath& path) {
    ProIdTable ids = {};
    int count = 0;
    if (model != top) {
        WalkResult walk;
        const ProError status = ModelWalk(top, CollectAllComponents, walk, FeatureList::Made);
        if (Failed(status)) return status;
        const auto found = std::ranges::find(walk.models, model, &PlacedModel::model);
        if (found == walk.models.end()) return PRO_TK_E_NOT_FOUND;
        const std::span<const ProAsmcomp> components = Items(walk.components);
        // A host that does not tell the size of its array.
        if (components.size() != walk.models.size()) return PRO_TK_GENERAL_ERROR;
        count = PathIds(walk, components, static_cast<std::size_t>(found - walk.models.begin()), ids);
    }
    return ProAsmcomppathInit(static_cast<ProSolid>(top), ids, count, &path);
}

// A component stands behind the one that holds it: what holds the entry at `place` is the nearest one before
// it that lies a level higher. Answers how many identifiers there are.
static int PathIds(const WalkResult& walk, std::span<const ProAsmcomp> components, std::size_t place,
                   ProIdTable ids) {
    const int count = walk.models[place].level;
    int level = count;
    for (std::size_t i = place + 1; i-- > 0 && level > 0;) {
        if (walk.models[i].level != level) continue;
        ids[--level] = components[i].id;
    }
    return count;
}

}  // namespace kv
