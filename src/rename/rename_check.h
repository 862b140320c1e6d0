// The check of all new names before anything is renamed.
#pragma once

#include <span>
#include <string>

#include "model/batch_run.h"
#include "rename/rename_tree.h"
#include "rename/reverse_table.h"

namespace kv {

// Tries every new name, row by row, and stops at the first bad one, which a box tells. Each name is proven by
// a model that is made of it, saved, erased and deleted again; the reverse table knows of every such model.
//
// run     records each row; its cancel is told, too
// Cost    4 host calls a row
// Errors  of the host for a bad name, PRO_TK_USER_ABORT for a cancel, PRO_TK_CANT_WRITE without reverse table
[[nodiscard]] ProError NamesCheck(std::span<const RenameRow> rows, const WorkFolder& folder,
                                  ReverseTable& table, BatchRun& run);

// What is wrong with the rows, in words and with their numbers, without making anything: the first twenty and
// how many more. Empty when nothing is.
std::wstring FaultList(std::span<const RenameRow> rows, const RenameTree& tree, const WorkFolder& folder);

}  // namespace kv
