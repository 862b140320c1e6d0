// The one recorded macro that the host does more with than keep its text: the clicks by which the selected
// component is replaced by a model of the working directory.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sim {

// The file that such a macro names, "pump-1.prt"; nothing for any other text, and for one that was recorded
// on another release than the host's: a single click that does not fit, and nothing happens.
std::optional<std::wstring> ReplacingFile(std::wstring_view macro, std::string_view release);

}  // namespace sim
