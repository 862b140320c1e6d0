#include "ui/icon_file.h"

#include "ui/text_file.h"

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

std::string IconFault(const std::filesystem::path& file, unsigned side) {
    const std::string bytes = ReadBytes(file).value_or("");
    const std::string_view header = std::string_view(bytes).substr(0, kHeaderEnd);
    if (header.size() < kHeaderEnd || !header.starts_with(kSignature) || header.substr(12, 4) != "IHDR")
        return "is no PNG file";
    const unsigned width = BigEndian(header.substr(16, 4));
    const unsigned height = BigEndian(header.substr(20, 4));
    if (width == side && height == side) return {};
    return "measures " + std::to_string(width) + "x" + std::to_string(height) + " pixels instead of " +
           std::to_string(side) + "x" + std::to_string(side);
}

}  // namespace sim
