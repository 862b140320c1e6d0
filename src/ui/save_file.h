// The choice of a file to write.
#pragma once

#include <string>

namespace kv {

// Lets the user choose where to save, from the desktop folder on; a file in the way is asked about.
//
// name       what is proposed, with its extension
// filter     pairs of a name and a mask, each with '|' behind it, and one more '|' at the end
// extension  what every name ends in, with its dot; a name with another ending gets it behind that
// Empty when the user cancels, and for a path longer than Windows takes.
std::wstring SaveFileChoose(const std::wstring& name, std::wstring filter, const wchar_t* extension);

// A chosen path with this ending. Where it is added and a file is in the way, the user is asked: nobody has
// asked about that name yet. Empty when the user says no, and for a path longer than Windows takes.
std::wstring WithExtension(std::wstring path, const wchar_t* extension);

}  // namespace kv
