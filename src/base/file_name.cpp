// Names of files.

#include "base/file_name.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace kv {

static constexpr wchar_t kForbidden[] = L"<>:\"/\\|?*";
static constexpr wchar_t kFirstPrintable = L' ';
static constexpr std::wstring_view kDevices[] = {L"CON", L"PRN", L"AUX", L"NUL"};
static constexpr wchar_t kPortNumbers[] = L"0123456789¹²³";

static bool IsDeviceName(std::wstring_view text);

std::wstring FileNameText(std::wstring text) {
    const auto isForbidden = [](wchar_t character) {
        return character < kFirstPrintable ||
               std::wstring_view(kForbidden).find(character) != std::wstring_view::npos;
    };
    std::replace_if(text.begin(), text.end(), isForbidden, L'_');
    return IsDeviceName(text) ? L'_' + text : text;
}

// Windows takes such a name for a device, with any extension and in any letter case.
static bool IsDeviceName(std::wstring_view text) {
    std::wstring name = UpperCase(text.substr(0, text.find(L'.')));
    while (name.ends_with(L' ')) name.pop_back();
    if (std::ranges::find(kDevices, name) != std::end(kDevices)) return true;
    if (name.size() != 4 || std::wstring_view(kPortNumbers).find(name.back()) == std::wstring_view::npos)
        return false;
    return name.starts_with(L"COM") || name.starts_with(L"LPT");
}

}  // namespace kv
