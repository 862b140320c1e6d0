// The models that a rename is about, and the working directory's names.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include <ProMdl.h>

#include "rename/rename_plan.h"

namespace kv {

struct TreeModel {
    ProMdl model = nullptr;
    std::wstring name;
    std::wstring type;           // empty for neither part nor assembly
    std::size_t placements = 0;  // the top itself has none
};

struct RenameTree {
    // The top first, then what is below it in the order of first meeting, each once.
    std::vector<TreeModel> models;
    std::vector<TreeTie> ties;
    // Places in `models` by NameSet::KeyOf.
    std::unordered_map<std::wstring, std::size_t> places;
};

// Walks through an assembly. Costs a host call a model besides the walk. Errors: those of ModelWalk; of
// reading the top's name.
[[nodiscard]] ProError RenameTreeGet(ProMdl top, RenameTree& tree);

// The model of a row; null when the tree has none.
const TreeModel* FindRow(const RenameTree& tree, const RenameRow& row);

struct WorkFolder {
    std::wstring path;  // with a backslash at its end
    NameSet names;      // of the model files in it
};

// Lists the working directory, once. Errors: those of ProDirectoryCurrentGet.
[[nodiscard]] ProError WorkFolderGet(WorkFolder& folder);

// The type code of "prt", "asm" or "drw".
ProMdlfileType FileTypeOf(std::wstring_view type);

// Whether the host has a model of this name in memory, were it only waiting to be erased.
bool IsInSession(const std::wstring& name, std::wstring_view type);

}  // namespace kv
