// Texts of STEP files: escapes, and bytes beyond ASCII that stand in the file as they are.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

// What bytes beyond ASCII mean. The standard knows none of them; programs write what their machine has.
enum class RawBytes { kUtf8, kGbk, kLatin1 };

// One answer for all the texts of a file, since a short text alone may pass for either.
RawBytes RawBytesOf(const std::vector<std::string_view>& texts);

// The text between the quotes, with '' \\ \S\ \P \X\ \X2\ \X4\ resolved; an escape that is none stays as it
// is.
std::wstring StepText(std::string_view raw, RawBytes bytes);

}  // namespace sim
