// Programs started for the user.
#pragma once

namespace kv {

// Shows a folder in the Windows explorer.
void ShowFolder(const wchar_t* folder);

}  // namespace kv
