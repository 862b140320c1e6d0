// Command icons: PNG files of 16 and 32 pixels.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sim {

// "KvBom_large.png" for "KvBom.png".
std::string LargeIconName(std::string_view icon);

// What is wrong with the icon as a PNG file of `side` times `side` pixels; empty: nothing.
std::string IconFault(const std::filesystem::path& file, unsigned side);

}  // namespace sim
