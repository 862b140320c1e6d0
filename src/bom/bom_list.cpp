// What the bill of materials lists: one walk through the assembly, all the rest without a host call.

#include "bom/bom_list.h"

#include <utility>

#include "base/status.h"

namespace kv {

ProError BomSourceGet(ProMdl assembly, BomSource& source) {
    WalkResult walk;
    const ProError status = ModelWalk(assembly, CollectAllComponents, walk);
    if (Failed(status)) return status;

    walk.distinct.push_back({assembly, PRO_MDL_ASSEMBLY});
    source.models = NamesOf(walk.distinct);
    source.placed = std::move(walk.models);
    source.left = walk.left;
    return PRO_TK_NO_ERROR;
}

BomList SummedBom(const BomSource& source) {
    BomList list = {BomForm::Summed, {}, {}};
    for (const ModelCount& entry : CountModels(source.models, source.placed, NameMatch::Exact))
        list.items.push_back({entry.model, entry.count, 0});
    return list;
}

BomList LevelBom(const BomSource& source, int deepest) {
    BomList list = {BomForm::Levels, LevelTree(source.models, source.placed), {}};
    for (unsigned int node = 0; node < list.tree.size(); ++node)
        if (list.tree[node].level <= deepest)
            list.items.push_back({list.tree[node].model, list.tree[node].count, node});
    return list;
}

}  // namespace kv
