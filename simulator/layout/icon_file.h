// Command icons: PNG files of 16 and 32 pixels.

#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace sim {

// "KvBom_large.png" for "KvBom.png".
std::string LargeIconName(std::string_view icon);

// The icons in a folder, listed once: a plug-in asks for a hundred of them at every start.
class IconFolder {
public:
    explicit IconFolder(const std::filesystem::path& folder);

    bool Has(std::string_view file) const;
    // What is wrong with the icon as a PNG file of `side` times `side` pixels; empty: nothing. What was read
    // of a file is kept for the process until the file changes.
    std::string Fault(std::string_view file, unsigned side) const;

private:
    struct Stamp {
        std::uint64_t size;
        std::uint64_t written;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    struct Header {
        Stamp stamp;
        std::string bytes;
    };

    const std::string& HeaderOf(const std::wstring& file, const Stamp& stamp) const;

    std::filesystem::path folder_;
    std::map<std::wstring, Stamp> files_;
};

}  // namespace sim
