#include "simulator/cad/folder_index.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include <windows.h>

#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

// Coarser than the tick of any file system's clock: what happened longer ago than this before the folder was
// read is in what was read.
constexpr std::int64_t kSettled = std::int64_t{100} * 10'000;

constexpr std::array<std::pair<ModelKind, std::wstring_view>, 5> kExtensions = {{
    {ModelKind::kAssembly, L"asm"},
    {ModelKind::kPart, L"prt"},
    {ModelKind::kManufacturing, L"mfg"},
    {ModelKind::kDrawing, L"drw"},
    {ModelKind::kFormat, L"frm"},
}};

std::int64_t Ticks(const FILETIME& time) {
    return static_cast<std::int64_t>(time.dwHighDateTime) << 32 |
           static_cast<std::int64_t>(time.dwLowDateTime);
}

std::int64_t Now() {
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    return Ticks(time);
}

// 0 when the folder does not exist.
std::int64_t ChangeTime(const fs::path& folder) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(folder.c_str(), GetFileExInfoStandard, &data) == 0) return 0;
    return Ticks(data.ftLastWriteTime);
}

std::wstring Key(std::wstring_view name, ModelKind kind) {
    return std::wstring(ExtensionOf(kind)) + L'/' + UpperName(name);
}

// A version as the host writes it: digits without leading zero; 0 for anything else.
int ParseVersion(std::wstring_view text) {
    const bool isNumber = !text.empty() && text.size() <= 9 && text[0] != L'0' &&
                          std::ranges::all_of(text, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    return isNumber ? std::stoi(std::wstring(text)) : 0;
}

}  // namespace

bool IsModelName(std::wstring_view name) {
    const auto isNamePart = [](wchar_t c) {
        return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') ||
               c == L'_' || c == L'-' || c >= 0x80;
    };
    return !name.empty() && std::ranges::all_of(name, isNamePart);
}

std::wstring_view ExtensionOf(ModelKind kind) {
    return std::ranges::find(kExtensions, kind, &std::pair<ModelKind, std::wstring_view>::first)->second;
}

std::optional<ModelKind> KindOf(std::wstring_view extension) {
    const std::wstring upper = UpperName(extension);
    for (const auto& [kind, text] : kExtensions)
        if (upper == UpperName(text)) return kind;
    return std::nullopt;
}

std::optional<ModelFile> ParseModelFileName(std::wstring_view fileName) {
    std::wstring_view rest = fileName;
    std::size_t dot = rest.rfind(L'.');
    if (dot == std::wstring_view::npos) return std::nullopt;
    const int version = ParseVersion(rest.substr(dot + 1));
    if (version > 0) {
        rest = rest.substr(0, dot);
        dot = rest.rfind(L'.');
        if (dot == std::wstring_view::npos) return std::nullopt;
    }
    const auto kind = KindOf(rest.substr(dot + 1));
    if (!kind || dot == 0) return std::nullopt;
    return ModelFile{{}, std::wstring(rest.substr(0, dot)), std::wstring(ExtensionOf(*kind)), *kind, version};
}

const ModelFile* FolderIndex::Newest(std::wstring_view name, ModelKind kind, bool mayBeNew) {
    Refresh();
    const std::wstring key = Key(name, kind);
    auto found = newest_.find(key);
    std::error_code error;
    const bool isGone = found != newest_.end() && !fs::exists(found->second.path, error);
    if (isGone || (found == newest_.end() && !mayBeNew && !IsSettled())) {
        Scan();
        found = newest_.find(key);
    }
    return found == newest_.end() ? nullptr : &found->second;
}

std::vector<ModelFile> FolderIndex::All() {
    Scan();
    std::vector<std::pair<std::wstring, ModelFile>> named;
    for (const auto& [key, file] : newest_) named.emplace_back(UpperName(file.name), file);
    const auto rank = [](const ModelFile& file) {
        return std::ranges::find(kExtensions, file.kind, &std::pair<ModelKind, std::wstring_view>::first) -
               kExtensions.begin();
    };
    std::ranges::sort(named, [&](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : rank(a.second) < rank(b.second);
    });
    std::vector<ModelFile> files;
    files.reserve(named.size());
    for (auto& [name, file] : named) files.push_back(std::move(file));
    return files;
}

void FolderIndex::Wrote(const ModelFile& file) {
    Take(file);
    changed_ = ChangeTime(folder_);
    ownChange_ = true;
}

void FolderIndex::Refresh() {
    const bool isSure = IsSettled() || ownChange_;
    if (!isKnown_ || !isSure || changed_ != ChangeTime(folder_)) Scan();
}

void FolderIndex::Scan() {
    newest_.clear();
    // The times first: what changes while the folder is being read is then noticed the next time.
    changed_ = ChangeTime(folder_);
    read_ = Now();
    isKnown_ = true;
    ownChange_ = false;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        std::optional<ModelFile> file = ParseModelFileName(entry->path().filename().wstring());
        if (!file || file->version == 0) continue;
        file->path = entry->path();
        Take(std::move(*file));
    }
}

void FolderIndex::Take(ModelFile file) {
    const auto [place, isNew] = newest_.try_emplace(Key(file.name, file.kind), file);
    if (!isNew && place->second.version < file.version) place->second = std::move(file);
}

bool FolderIndex::IsSettled() const {
    return read_ - changed_ > kSettled;
}

}  // namespace sim
