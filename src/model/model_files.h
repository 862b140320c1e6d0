// Model files of the working directory.
#pragma once

#include <string>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// Names, without extension, of the models in the newest files of the working directory.
//
// filter  masks separated by commas, such as L"*.prt,*.asm"
// Errors  PRO_TK_E_NOT_FOUND when there are none, else those of ProFilesList
[[nodiscard]] ProError ModelFilesGet(const wchar_t* filter, std::vector<std::wstring>& names);

}  // namespace kv
