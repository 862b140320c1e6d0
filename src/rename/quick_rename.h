// The commands on the name of one model, KvMdlNameCopy and KvMdlRename.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Both work on the model of the selected component or, without one, let the user pick a component. An ended
// pick and Esc end them quietly.

// Puts the model's name on the clipboard. Errors: those of picking, of reading the name, of the clipboard.
[[nodiscard]] ProError KvMdlNameCopy();

// Asks for a new name, renames the model and saves it, and nothing else. Errors: those of picking, renaming
// and saving; PRO_TK_E_FOUND for a name in use.
[[nodiscard]] ProError KvMdlRename();

}  // namespace kv
