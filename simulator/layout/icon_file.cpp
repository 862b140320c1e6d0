#include "simulator/layout/icon_file.h"

#include <windows.h>

#include "simulator/layout/text_file.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr std::size_t kHeaderEnd = 33;  // signature, then the IHDR chunk

unsigned BigEndian(std::string_view bytes) {
    unsigned value = 0;
    for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

}  // namespace

std::string LargeIconName(std::string_view icon) {
    const std::size_t dot = icon.rfind('.');
    if (dot == std::string_view::npos) return std::string(icon) + "_large";
    return std::string(icon.substr(0, dot)) + "_large" + std::string(icon.substr(dot));
}

IconFolder::IconFolder(const std::filesystem::path& folder) : folder_(folder) {
    const auto joined = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; };
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW((folder / "*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
        files_[entry.cFileName] = {
            joined(entry.nFileSizeHigh, entry.nFileSizeLow),
            joined(entry.ftLastWriteTime.dwHighDateTime, entry.ftLastWriteTime.dwLowDateTime)};
    } while (FindNextFileW(search, &entry));
    FindClose(search);
}

bool IconFolder::Has(std::string_view file) const {
    return files_.contains(Wide(file));
}

std::string IconFolder::Fault(std::string_view file, unsigned side) const {
    const auto found = files_.find(Wide(file));
    if (found == files_.end()) return "is missing";
    const std::string_view header = HeaderOf(found->first, found->second);
    if (header.size() < kHeaderEnd || !header.starts_with(kSignature) || header.substr(12, 4) != "IHDR")
        return "is no PNG file";
    const unsigned width = BigEndian(header.substr(16, 4));
    const unsigned height = BigEndian(header.substr(20, 4));
    if (width == side && height == side) return {};
    return "measures " + std::to_string(width) + "x" + std::to_string(height) + " pixels instead of " +
           std::to_string(side) + "x" + std::to_string(side);
}

const std::string& IconFolder::HeaderOf(const std::wstring& file, const Stamp& stamp) const {
    static std::map<std::filesystem::path, Header> headers;
    const std::filesystem::path path = folder_ / file;
    Header& header = headers[path];
    if (header.bytes.empty() || header.stamp != stamp)
        header = {stamp, ReadBytes(path).value_or("").substr(0, kHeaderEnd)};
    return header.bytes;
}

}  // namespace sim
