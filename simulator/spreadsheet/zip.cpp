#include "simulator/spreadsheet/zip.h"

#include <cstdint>

#include <zlib.h>

namespace sim {

namespace {

constexpr std::uint32_t kLocalMark = 0x04034B50;
constexpr std::uint32_t kCentralMark = 0x02014B50;
constexpr std::uint32_t kEndMark = 0x06054B50;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kUtf8Names = 0x0800;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kFirstDay = 0x0021;  // 1 January 1980
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kCentralSize = 46;
constexpr std::size_t kEndSize = 22;
constexpr int kRawWindow = -15;  // a deflate stream without header
constexpr int kMemoryLevel = 8;

void Add16(std::string& bytes, std::size_t value) {
    bytes += static_cast<char>(value & 0xFFU);
    bytes += static_cast<char>(value >> 8 & 0xFFU);
}

void Add32(std::string& bytes, std::size_t value) {
    Add16(bytes, value & 0xFFFFU);
    Add16(bytes, value >> 16 & 0xFFFFU);
}

std::uint32_t Read(std::string_view bytes, std::size_t at, int size) {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return value;
}

std::uint32_t Checksum(std::string_view content) {
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
}

void Connect(z_stream& stream, std::string_view input, std::string& output) {
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
}

std::string Deflated(std::string_view content) {
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kRawWindow, kMemoryLevel, Z_DEFAULT_STRATEGY);
    std::string output(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    Connect(stream, content, output);
    deflate(&stream, Z_FINISH);
    output.resize(stream.total_out);
    deflateEnd(&stream);
    return output;
}

std::optional<std::string> Inflated(std::string_view bytes, std::size_t size) {
    z_stream stream = {};
    if (inflateInit2(&stream, kRawWindow) != Z_OK) return std::nullopt;
    std::string output(size, '\0');
    Connect(stream, bytes, output);
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    if (result != Z_STREAM_END || stream.total_out != size) return std::nullopt;
    return output;
}

// The fields that a local header and a directory entry share, from the version on.
std::string CommonFields(const ZipEntry& entry, std::size_t packed) {
    std::string fields;
    Add16(fields, kVersion);
    Add16(fields, kUtf8Names);
    Add16(fields, kDeflated);
    Add16(fields, 0);
    Add16(fields, kFirstDay);
    Add32(fields, Checksum(entry.content));
    Add32(fields, packed);
    Add32(fields, entry.content.size());
    Add16(fields, entry.name.size());
    Add16(fields, 0);
    return fields;
}

// One entry by its directory record at `at`. Nothing: damaged.
std::optional<ZipEntry> EntryAt(std::string_view bytes, std::size_t at) {
    if (at + kCentralSize > bytes.size() || Read(bytes, at, 4) != kCentralMark) return std::nullopt;
    const std::uint32_t method = Read(bytes, at + 10, 2);
    const std::uint32_t checksum = Read(bytes, at + 16, 4);
    const std::size_t packed = Read(bytes, at + 20, 4);
    const std::size_t size = Read(bytes, at + 24, 4);
    const std::size_t nameSize = Read(bytes, at + 28, 2);
    const std::size_t local = Read(bytes, at + 42, 4);
    if (at + kCentralSize + nameSize > bytes.size() || local + kLocalSize > bytes.size()) return std::nullopt;
    if (Read(bytes, local, 4) != kLocalMark) return std::nullopt;
    const std::size_t data = local + kLocalSize + Read(bytes, local + 26, 2) + Read(bytes, local + 28, 2);
    if (data + packed > bytes.size()) return std::nullopt;

    const std::string_view stored = bytes.substr(data, packed);
    std::optional<std::string> content;
    if (method == kStored) content = std::string(stored);
    if (method == kDeflated) content = Inflated(stored, size);
    if (!content || Checksum(*content) != checksum) return std::nullopt;
    return ZipEntry{std::string(bytes.substr(at + kCentralSize, nameSize)), std::move(*content)};
}

}  // namespace

std::string ZipBytes(const std::vector<ZipEntry>& entries) {
    std::string bytes;
    std::string directory;
    for (const ZipEntry& entry : entries) {
        const std::string packed = Deflated(entry.content);
        const std::string fields = CommonFields(entry, packed.size());
        Add32(directory, kCentralMark);
        Add16(directory, kVersion);
        directory += fields;
        Add16(directory, 0);  // comment
        Add16(directory, 0);  // disk
        Add16(directory, 0);  // attributes
        Add32(directory, 0);
        Add32(directory, bytes.size());
        directory += entry.name;
        Add32(bytes, kLocalMark);
        bytes += fields;
        bytes += entry.name;
        bytes += packed;
    }
    const std::size_t start = bytes.size();
    bytes += directory;
    Add32(bytes, kEndMark);
    Add32(bytes, 0);  // disks
    Add16(bytes, entries.size());
    Add16(bytes, entries.size());
    Add32(bytes, directory.size());
    Add32(bytes, start);
    Add16(bytes, 0);  // comment
    return bytes;
}

std::optional<std::map<std::string, std::string>> ZipContents(std::string_view bytes) {
    std::string mark;
    Add32(mark, kEndMark);
    const std::size_t end = bytes.rfind(mark);
    if (end == std::string_view::npos || end + kEndSize > bytes.size()) return std::nullopt;
    const std::uint32_t count = Read(bytes, end + 10, 2);
    std::size_t at = Read(bytes, end + 16, 4);
    std::map<std::string, std::string> contents;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::optional<ZipEntry> entry = EntryAt(bytes, at);
        if (!entry) return std::nullopt;
        at += kCentralSize + entry->name.size() + Read(bytes, at + 30, 2) + Read(bytes, at + 32, 2);
        contents[entry->name] = std::move(entry->content);
    }
    return contents;
}

}  // namespace sim
