// The rename itself, and the way back.
#pragma once

#include <span>

#include <ProMdl.h>

#include "model/batch_run.h"
#include "rename/rename_tree.h"
#include "rename/reverse_table.h"

namespace kv {

// What both directions work on.
struct RenameTask {
    ProMdl current = nullptr;  // the manufacturing model above the tree, or its top
    const RenameTree& tree;
    WorkFolder& folder;
    ReverseTable& table;
    BatchRun& run;
};

// Renames the models of the rows with the drawings of their names, row by row, and saves them. Then every
// assembly with a renamed model below it is saved once more, bottom-up, and every drawing that shows one:
// what was written before names models as they were called then. That is done after a cancel, too.
//
// No file that was there is written over or deleted. A row that fails is recorded and leaves its model as it
// was; one whose model is not in the tree is recorded as not found.
//
// Cost    at most 10 host calls a row, and one for each model with a drawing that is in no row
void ModelsRename(const RenameTask& task, std::span<const RenameRow> rows);

// Takes the renames back. A model that is gone, and one whose old name is taken, is recorded and left alone.
void ModelsRenameBack(const RenameTask& task, std::span<const RenameChange> changes);

}  // namespace kv
