// The clipboard of Windows.
#pragma once

#include <string>

#include <ProToolkit.h>

namespace kv {

// Puts a text on the clipboard. PRO_TK_E_BUSY while another program keeps it; PRO_TK_OUT_OF_MEMORY;
// PRO_TK_GENERAL_ERROR. What was on it is lost only once it is ours.
[[nodiscard]] ProError ClipboardTextSet(const std::wstring& text);

}  // namespace kv
