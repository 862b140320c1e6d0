// Text files: their bytes, encoding and places in them.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// All bytes of a file; nullopt: it cannot be read.
std::optional<std::string> ReadBytes(const std::filesystem::path& file);

// "file:line:column: " in front of a finding; line and column from 1.
std::string FindingPlace(const std::filesystem::path& file, int line, int column);

// The text of a UTF-8 file without its byte-order mark, line ends as "\n". Nullopt, and one finding in
// `errors`, when the bytes are no UTF-8. `markNeeded`: other than ASCII characters need the mark, as in all
// files that the host reads (without it the host takes them for another encoding).
std::optional<std::wstring> DecodeTextFile(std::string_view bytes, const std::filesystem::path& file,
                                           std::vector<std::string>& errors, bool markNeeded = true);

}  // namespace sim
