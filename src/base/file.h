// Small files read and written as a whole.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <ProToolkit.h>

namespace kv {

// Creates a file with this content. PRO_TK_E_FOUND when there is one already, which is left alone;
// PRO_TK_CANT_WRITE for everything else.
[[nodiscard]] ProError NewFileWrite(const std::wstring& path, std::string_view content);

// Writes the content, in place of any earlier file. PRO_TK_CANT_WRITE.
[[nodiscard]] ProError FileWrite(const std::wstring& path, std::string_view content);

// Reads a file of at most `limit` bytes. PRO_TK_CANT_OPEN; PRO_TK_LINE_TOO_LONG for a longer file.
[[nodiscard]] ProError FileRead(const std::wstring& path, std::size_t limit, std::string& content);

}  // namespace kv
