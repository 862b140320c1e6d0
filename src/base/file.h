// Files as a whole: reading, writing, moving; folders.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// Creates a file with this content. PRO_TK_E_FOUND when there is one already, which is left alone;
// PRO_TK_CANT_WRITE for everything else.
[[nodiscard]] ProError FileNewWrite(const std::wstring& path, std::string_view content);

// Writes the content, in place of any earlier file. PRO_TK_CANT_WRITE.
[[nodiscard]] ProError FileWrite(const std::wstring& path, std::string_view content);

// Writes the content to a new file in the same folder and moves it into place: an earlier file stays as it is
// until the new one is whole, and nothing is left of one that fails. PRO_TK_CANT_WRITE.
[[nodiscard]] ProError FileReplace(const std::wstring& path, std::string_view content);

// Reads a file of at most `limit` bytes. PRO_TK_CANT_OPEN; PRO_TK_LINE_TOO_LONG for a longer file.
[[nodiscard]] ProError FileRead(const std::wstring& path, std::size_t limit, std::string& content);

// Whether a file is there but may not be changed now, because of its rights or because it is open elsewhere.
bool FileIsLocked(const std::wstring& path);

// Gives a file another name in its folder, so that its place is free. Empty when there is no such file or it
// cannot be moved.
std::wstring FileSetAside(const std::wstring& path);

// Brings a file that was set aside back to its place, or does away with it. Nothing happens for no name.
void FileBringBack(const std::wstring& aside, const std::wstring& path);
void FileDelete(const std::wstring& path);

bool FileExists(const std::wstring& path);

// Moves a file to its final name. An earlier file of that name stays whole until then if both are in the same
// folder. PRO_TK_CANT_WRITE.
[[nodiscard]] ProError FileMove(const std::wstring& from, const std::wstring& to);

// Makes a folder unless it is there. PRO_TK_INVALID_DIR.
[[nodiscard]] ProError FolderMake(const std::wstring& path);

// Whether two paths name the same folder, letter case, kind and number of strokes at the end apart.
bool IsSamePath(std::wstring_view one, std::wstring_view other);

// Names of the files in a folder, without sub-folders; `path` as WithBackslash gives it, `pattern` such as
// L"*.csv".
std::vector<std::wstring> FileNamesIn(const std::wstring& path, const wchar_t* pattern);

// The path of a folder with a backslash at its end.
std::wstring WithBackslash(std::wstring folder);

}  // namespace kv
