// Files of runs, on the Windows file calls.

#include "base/run_file.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>

#include <windows.h>

// The C form of the next header: helpers of its C++ form need a language extension.
#define CINTERFACE
#include <shlobj.h>

#include "base/csv.h"
#include "base/file.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kHome[] = L"Korvane\\";
static constexpr wchar_t kExtension[] = L".csv";
static constexpr std::wstring_view kLineEnd = L"\r\n";
static constexpr char kMark[] = "\xEF\xBB\xBF";
static constexpr std::size_t kKeptFiles = 100;
// Two runs in one millisecond are told apart by waiting for the next.
static constexpr int kNameTries = 20;
// A time in a name: digits stand for themselves, "0" for any digit.
static constexpr std::wstring_view kStampForm = L"00000000-000000-000";

static std::wstring TimeStamp();
static std::wstring_view StampOf(std::wstring_view name);
static void DeleteOldFiles(const std::wstring& folder);

ProError RunFolderGet(const wchar_t* folder, std::wstring& path) {
    wchar_t root[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathW(nullptr, root, CSIDL_LOCAL_APPDATA, TRUE)) return PRO_TK_INVALID_DIR;
    std::wstring made = WithBackslash(root) + kHome;
    ProError status = FolderMake(made);
    made += folder;
    if (!Failed(status)) status = FolderMake(made);
    if (!Failed(status)) path = WithBackslash(made);
    return status;
}

std::vector<std::wstring> RunFilesNewestFirst(const wchar_t* folder, const char* command) {
    std::wstring place;
    if (Failed(RunFolderGet(folder, place))) return {};
    std::vector<std::wstring> names = FileNamesIn(place, (WideName(command) + L"_*" + kExtension).c_str());
    std::erase_if(names, [](const std::wstring& name) { return StampOf(name).empty(); });
    std::ranges::sort(names, std::ranges::greater(), [](const std::wstring& name) { return StampOf(name); });
    for (std::wstring& name : names) name.insert(0, place);
    return names;
}

std::vector<std::wstring> RunFilesToDelete(std::vector<std::wstring> names, std::size_t kept) {
    std::erase_if(names, [](const std::wstring& name) { return StampOf(name).empty(); });
    if (names.size() <= kept) return {};
    std::ranges::sort(names, std::ranges::greater(), [](const std::wstring& name) { return StampOf(name); });
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(kept));
    return names;
}

std::wstring NewestRunFile(const wchar_t* folder, const char* command) {
    std::wstring path;
    if (Failed(RunFolderGet(folder, path))) return {};
    std::vector<std::wstring> names = FileNamesIn(path, (WideName(command) + L"_*" + kExtension).c_str());
    std::erase_if(names, [](const std::wstring& name) { return StampOf(name).empty(); });
    const auto newest = std::ranges::max_element(names, std::ranges::less(),
                                                 [](const std::wstring& name) { return StampOf(name); });
    return newest == names.end() ? std::wstring() : path + *newest;
}

RunFile::~RunFile() {
    if (file_ != nullptr) CloseHandle(file_);
}

ProError RunFile::Create(const wchar_t* folder, const char* command) {
    std::wstring place;
    const ProError status = RunFolderGet(folder, place);
    if (Failed(status)) return status;

    const std::wstring start = place + WideName(command) + L"_";
    const std::wstring end = L"_" + std::to_wstring(GetCurrentProcessId()) + kExtension;
    for (int tries = 0; tries < kNameTries && file_ == nullptr; ++tries) {
        if (tries > 0) Sleep(1);
        std::wstring path = start;
        path.append(TimeStamp()).append(end);
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            if (GetLastError() == ERROR_FILE_EXISTS) continue;
            return PRO_TK_CANT_WRITE;
        }
        file_ = file;
        path_ = std::move(path);
    }
    if (file_ == nullptr) return PRO_TK_CANT_WRITE;
    DeleteOldFiles(place);
    return BytesWrite(kMark);
}

ProError RunFile::RowWrite(std::span<const std::wstring> cells) {
    return BytesWrite(Utf8Text(CsvLine(cells)));
}

ProError RunFile::Flush() {
    return file_ != nullptr && FlushFileBuffers(file_) ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

ProError RunFile::RowReserve(std::span<const std::wstring> cells, std::size_t width) {
    std::wstring line = CsvLine(cells);
    line.replace(line.size() - kLineEnd.size(), kLineEnd.size(), L",");
    const std::string start = Utf8Text(line);
    ProError status = BytesWrite(start);
    LARGE_INTEGER here = {};
    if (!Failed(status) && !SetFilePointerEx(file_, {}, &here, FILE_CURRENT)) status = PRO_TK_CANT_WRITE;
    if (Failed(status)) return status;
    reservedAt_ = here.QuadPart;
    reservedWidth_ = width;
    return BytesWrite(std::string(width, ' ') + "\r\n");
}

ProError RunFile::ReservedWrite(const std::wstring& text) {
    const std::string bytes = Utf8Text(text);
    if (bytes.size() != text.size() || bytes.size() > reservedWidth_) return PRO_TK_CANT_WRITE;
    LARGE_INTEGER place = {};
    place.QuadPart = reservedAt_;
    if (file_ == nullptr || !SetFilePointerEx(file_, place, nullptr, FILE_BEGIN)) return PRO_TK_CANT_WRITE;
    const ProError status = BytesWrite(bytes);
    return SetFilePointerEx(file_, {}, nullptr, FILE_END) ? status : PRO_TK_CANT_WRITE;
}

ProError RunFile::BytesWrite(std::string_view bytes) {
    DWORD written = 0;
    const bool done = file_ != nullptr &&
                      WriteFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                      written == bytes.size();
    return done ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

static std::wstring TimeStamp() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    std::array<wchar_t, 32> text = {};
    const int length =
        std::swprintf(text.data(), text.size(), L"%04u%02u%02u-%02u%02u%02u-%03u", now.wYear, now.wMonth,
                      now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    return {text.data(), static_cast<std::size_t>(std::max(length, 0))};
}

// The time in a name "COMMAND_TIME_PROCESS.csv"; empty for a name of any other form.
static std::wstring_view StampOf(std::wstring_view name) {
    const auto isDigit = [](wchar_t character) { return character >= L'0' && character <= L'9'; };
    const auto isNamePart = [&](wchar_t character) {
        return isDigit(character) || (character >= L'A' && character <= L'Z') ||
               (character >= L'a' && character <= L'z');
    };
    if (!name.ends_with(kExtension)) return {};
    name.remove_suffix(std::size(kExtension) - 1);

    const std::size_t first = name.find(L'_');
    const std::size_t second = name.find(L'_', first == std::wstring_view::npos ? first : first + 1);
    if (first == std::wstring_view::npos || second == std::wstring_view::npos) return {};
    const std::wstring_view command = name.substr(0, first);
    const std::wstring_view stamp = name.substr(first + 1, second - first - 1);
    const std::wstring_view process = name.substr(second + 1);
    const auto fits = [&](wchar_t found, wchar_t form) {
        return form == L'0' ? isDigit(found) : found == form;
    };
    const bool isOurs = !command.empty() && std::ranges::all_of(command, isNamePart) &&
                        std::ranges::equal(stamp, kStampForm, fits) && !process.empty() &&
                        std::ranges::all_of(process, isDigit);
    return isOurs ? stamp : std::wstring_view();
}

static void DeleteOldFiles(const std::wstring& folder) {
    std::vector<std::wstring> names = FileNamesIn(folder, L"*.csv");
    for (const std::wstring& name : RunFilesToDelete(std::move(names), kKeptFiles)) FileDelete(folder + name);
}

}  // namespace kv
