// The recorded clicks in the host's dialog for replacing a component.

#include "assembly/replace_macro.h"

namespace kv {

// Older releases open the command and its file dialog in another way. Every blank counts.
static constexpr wchar_t kOldStart[] =
    L"~ Command `ProCmdReplace` ;"
    L"~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio`1  `Unrelated Component`;"
    L"~ Activate `gen_repl_dlg` `PB_NewComp`;"
    L"~ Trail `UI Desktop` `DLG_PREVIEW_POST` `file_open`;"
    L"`file_open:Ph_list.Filelist:<NULL>`;"
    L"~ Activate `file_open` `Current Dir`;"
    L"~ Activate `file_open` `Ph_list.Filelist`1  `";
static constexpr wchar_t kStart[] =
    L"~`rmb_popup` `PopupMenu`;"
    L"~ Command `ProCmdReplComp@PopupMenuGraphicWinStack` ;"
    L"~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio` 1 `Unrelated Component`;"
    L"~ Activate `gen_repl_dlg` `PB_NewComp`;"
    L"~ Activate `file_open` `Current Dir`;"
    L"~ Activate `file_open` `Ph_list.Filelist` 1 `";
static constexpr wchar_t kEnd[] = L"`;~ Activate `gen_repl_dlg` `DoneBtn`;";

static constexpr const wchar_t* kOldReleases[] = {L"5.0", L"Creo 1.0", L"Creo 2.0"};

std::wstring ReplaceMacro(const std::wstring& release, const std::wstring& fileName) {
    bool isOld = false;
    for (const wchar_t* old : kOldReleases) isOld = isOld || release == old;
    return (isOld ? kOldStart : kStart) + fileName + kEnd;
}

}  // namespace kv
