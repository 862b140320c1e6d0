#include "simulator/layout/text_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Line and column of the byte at `offset`; columns count bytes, which is what counts while no encoding is
// known.
std::string BytePlace(std::string_view bytes, std::size_t offset, const std::filesystem::path& file) {
    const std::string_view before = bytes.substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    return FindingPlace(file, static_cast<int>(lines) + 1, static_cast<int>(offset - lineStart) + 1);
}

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

// Offset of the first byte that begins no UTF-8 character, npos: none.
std::size_t FirstInvalid(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t length = SequenceLength(static_cast<unsigned char>(bytes[at]));
        if (length == 0 || !IsUtf8(bytes.substr(at, length)) || at + length > bytes.size()) return at;
        at += length;
    }
    return std::string_view::npos;
}

}  // namespace

std::optional<std::string> ReadBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string FindingPlace(const std::filesystem::path& file, int line, int column) {
    return Utf8(file.wstring()) + ":" + std::to_string(line) + ":" + std::to_string(column) + ": ";
}

std::optional<std::wstring> DecodeTextFile(std::string_view bytes, const std::filesystem::path& file,
                                           std::vector<std::string>& errors, bool markNeeded) {
    const bool marked = bytes.starts_with(kByteOrderMark);
    if (marked) bytes.remove_prefix(kByteOrderMark.size());
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto foreign = std::find_if_not(bytes.begin(), bytes.end(), isAscii);
    if (markNeeded && !marked && foreign != bytes.end()) {
        const auto offset = static_cast<std::size_t>(foreign - bytes.begin());
        errors.push_back(BytePlace(bytes, offset, file) +
                         "expected ASCII characters only, the file has no byte-order mark");
        return std::nullopt;
    }
    if (!IsUtf8(bytes)) {
        errors.push_back(BytePlace(bytes, FirstInvalid(bytes), file) + "expected UTF-8");
        return std::nullopt;
    }
    std::wstring text = Wide(bytes);
    std::erase(text, L'\r');
    return text;
}

}  // namespace sim
