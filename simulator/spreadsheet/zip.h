// Archives in the ZIP format, as far as workbook files need it: no encryption, nothing above 4 GB.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct ZipEntry {
    std::string name;
    std::string content;
};

// The bytes of an archive; the same entries always give the same bytes.
std::string ZipBytes(const std::vector<ZipEntry>& entries);

// Contents by name. Nothing when the bytes are no archive or an entry is damaged (its checksum differs).
std::optional<std::map<std::string, std::string>> ZipContents(std::string_view bytes);

}  // namespace sim
