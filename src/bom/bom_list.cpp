// What the bill of materials lists: one walk through the assembly, all the rest without a host call.

#include "bom/bom_list.h"

#include "base/status.h"

namespace kv {

ProError SummedBomGet(ProMdl assembly, BomList& list) {
    WalkResult walk;
    const ProError status = ModelWalk(assembly, CollectAllComponents, walk);
    if (Failed(status)) return status;

    list.form = BomForm::Summed;
    list.placements = walk.models.size();
    list.models = NamesOf(walk.distinct);
    for (const ModelCount& entry : CountModels(list.models, walk.models, NameMatch::Exact))
        list.items.push_back({entry.model, entry.count, 0});
    return PRO_TK_NO_ERROR;
}

ProError LevelBomGet(ProMdl assembly, int deepest, BomList& list) {
    WalkResult walk;
    const ProError status = ModelWalk(assembly, CollectAllComponents, walk);
    if (Failed(status)) return status;

    list.form = BomForm::Levels;
    list.placements = walk.models.size();
    walk.distinct.push_back({assembly, PRO_MDL_ASSEMBLY});
    list.models = NamesOf(walk.distinct);
    list.tree = LevelTree(list.models, walk.models);
    for (unsigned int node = 0; node < list.tree.size(); ++node)
        if (list.tree[node].level <= deepest)
            list.items.push_back({list.tree[node].model, list.tree[node].count, node});
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
