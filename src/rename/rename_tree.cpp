// The models that a rename is about.

#include "rename/rename_tree.h"

#include <utility>

#include <ProUtil.h>

#include "base/file.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "model/model_walk.h"

namespace kv {

static const wchar_t* TypeText(ProMdlType type);

ProError RenameTreeGet(ProMdl top, RenameTree& tree) {
    WalkResult walk;
    TreeModel first = {top, {}, kAssemblyType};
    ProError status = ModelNameGet(top, first.name);
    if (!Failed(status)) status = ModelWalk(top, CollectAllComponents, walk);
    if (Failed(status)) return status;

    // The caller keeps its tree until this one is whole.
    RenameTree read;
    read.models.push_back(std::move(first));
    // Places in the tree of the walk's models: an assembly that contains itself is there already.
    std::vector<std::size_t> places;
    for (const DistinctModel& met : walk.distinct) {
        places.push_back(met.model == top ? 0 : read.models.size());
        if (met.model == top) continue;
        TreeModel& model = read.models.emplace_back(TreeModel{met.model, {}, TypeText(met.type)});
        // A model without a readable name cannot be asked for by it, and its row says so.
        (void)ModelNameGet(met.model, model.name);
    }
    std::vector<TreeEntry> entries;
    entries.reserve(walk.models.size());
    for (const PlacedModel& placed : walk.models) {
        const std::size_t place = places[placed.index];
        ++read.models[place].placements;
        entries.push_back({placed.level, place});
    }
    read.ties = TiesOf(entries);
    for (std::size_t i = 0; i < read.models.size(); ++i)
        read.places.try_emplace(NameSet::KeyOf(read.models[i].name, read.models[i].type), i);
    tree = std::move(read);
    return PRO_TK_NO_ERROR;
}

const TreeModel* FindRow(const RenameTree& tree, const RenameRow& row) {
    const auto place = tree.places.find(NameSet::KeyOf(row.oldName, TypeOf(row)));
    return place == tree.places.end() ? nullptr : &tree.models[place->second];
}

ProError WorkFolderGet(WorkFolder& folder) {
    ProPath path = {};
    const ProError status = ProDirectoryCurrentGet(path);
    if (Failed(status)) return status;
    folder.path = WithBackslash(path);
    for (const std::wstring& name : FileNamesIn(folder.path, L"*")) folder.names.AddFile(name);
    return status;
}

ProMdlfileType FileTypeOf(std::wstring_view type) {
    if (type == kDrawingType) return PRO_MDLFILE_DRAWING;
    return type == kPartType ? PRO_MDLFILE_PART : PRO_MDLFILE_ASSEMBLY;
}

bool IsInSession(const std::wstring& name, std::wstring_view type) {
    ProMdlName text;
    ProMdl found = nullptr;
    return !Failed(CopyText(name, text)) && !Failed(ProMdlnameInit(text, FileTypeOf(type), &found));
}

static const wchar_t* TypeText(ProMdlType type) {
    if (type == PRO_MDL_PART) return kPartType;
    return type == PRO_MDL_ASSEMBLY ? kAssemblyType : L"";
}

}  // namespace kv
