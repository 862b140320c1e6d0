#include "simulator/ui/replace_macro.h"

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr std::wstring_view kOldStart =
    L"~ Command `ProCmdReplace` ;"
    L"~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio`1  `Unrelated Component`;"
    L"~ Activate `gen_repl_dlg` `PB_NewComp`;"
    L"~ Trail `UI Desktop` `DLG_PREVIEW_POST` `file_open`;"
    L"`file_open:Ph_list.Filelist:<NULL>`;"
    L"~ Activate `file_open` `Current Dir`;"
    L"~ Activate `file_open` `Ph_list.Filelist`1  `";
constexpr std::wstring_view kStart =
    L"~`rmb_popup` `PopupMenu`;"
    L"~ Command `ProCmdReplComp@PopupMenuGraphicWinStack` ;"
    L"~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio` 1 `Unrelated Component`;"
    L"~ Activate `gen_repl_dlg` `PB_NewComp`;"
    L"~ Activate `file_open` `Current Dir`;"
    L"~ Activate `file_open` `Ph_list.Filelist` 1 `";
constexpr std::wstring_view kEnd = L"`;~ Activate `gen_repl_dlg` `DoneBtn`;";

// Releases before the dialog was changed.
constexpr std::array<std::string_view, 3> kOldReleases = {"5.0", "Creo 1.0", "Creo 2.0"};

}  // namespace

std::optional<std::wstring> ReplacingFile(std::wstring_view macro, std::string_view release) {
    const bool isOld = std::ranges::find(kOldReleases, release) != kOldReleases.end();
    const std::wstring_view start = isOld ? kOldStart : kStart;
    const bool isWhole =
        macro.size() > start.size() + kEnd.size() && macro.starts_with(start) && macro.ends_with(kEnd);
    if (!isWhole) return std::nullopt;
    return std::wstring(macro.substr(start.size(), macro.size() - start.size() - kEnd.size()));
}

}  // namespace sim
