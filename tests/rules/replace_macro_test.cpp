// The recorded clicks for replacing a component, byte by byte.

#include <string>

#include <gtest/gtest.h>

#include "assembly/replace_macro.h"

namespace {

constexpr wchar_t kOld[] =
    LR"(~ Command `ProCmdReplace` ;~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio`1  `Unrelated Component`;~ Activate `gen_repl_dlg` `PB_NewComp`;~ Trail `UI Desktop` `DLG_PREVIEW_POST` `file_open`;`file_open:Ph_list.Filelist:<NULL>`;~ Activate `file_open` `Current Dir`;~ Activate `file_open` `Ph_list.Filelist`1  `BOLT-1.prt`;~ Activate `gen_repl_dlg` `DoneBtn`;)";
constexpr wchar_t kNew[] =
    LR"(~`rmb_popup` `PopupMenu`;~ Command `ProCmdReplComp@PopupMenuGraphicWinStack` ;~ Select `gen_repl_dlg` `ByCompPH.rpl_method_radio` 1 `Unrelated Component`;~ Activate `gen_repl_dlg` `PB_NewComp`;~ Activate `file_open` `Current Dir`;~ Activate `file_open` `Ph_list.Filelist` 1 `BOLT-1.prt`;~ Activate `gen_repl_dlg` `DoneBtn`;)";

TEST(ReplaceMacro, IsTheRecordedTextOfTheRelease) {
    for (const wchar_t* release : {L"5.0", L"Creo 1.0", L"Creo 2.0"})
        EXPECT_EQ(kv::ReplaceMacro(release, L"BOLT-1.prt"), kOld) << testing::PrintToString(release);
    // Only the whole name tells an old release.
    for (const wchar_t* release :
         {L"", L"5.00", L"5.0 M010", L"15.0", L"5", L"Creo 3.0", L"Creo 2.0 M010", L"creo 2.0", L"hostsim 9"})
        EXPECT_EQ(kv::ReplaceMacro(release, L"BOLT-1.prt"), kNew) << testing::PrintToString(release);
}

}  // namespace
