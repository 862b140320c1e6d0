// A host without a plug-in, with one layout, one message file and icons in its text tree.

#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <ProUICmd.h>
#include <ProUIDialog.h>
#include <ProUIPushbutton.h>
#include <gtest/gtest.h>

#include "simulator/session/session.h"
#include "simulator/ui/sim_dialog.h"
#include "support/temp_directory.h"

namespace test {

using Lines = std::vector<std::string>;

inline constexpr char kUiLayout[] = R"((Dialog D
  (Components (InputPanel Name) (RadioGroup Kind) (OptionMenu Type) (OptionMenu Free) (CheckButton Sort)
    (Table List) (PushButton Ok) (PushButton Idle) (InputPanel Off) (InputPanel Hidden))
  (Resources
    (Name.MaxLen 5)
    (Kind.Names "all" "parts")
    (Kind.SelectedNames "all")
    (Type.Names "i" "r")
    (Type.Labels "integer" "real")
    (Type.SelectedNames "i")
    (Free.Editable True)
    (List.ColumnNames "num")
    (List.RowNames "1" "2")
    (Off.Sensitive False)
    (Hidden.Visible False)
    (.Layout (Grid (Rows 0 0 0 0 0 0 0 0 0 0) (Cols 1) Name Kind Type Free Sort List Ok Idle Off Hidden)))))";

inline constexpr char kUiMessages[] =
    "\xEF\xBB\xBFMenu\nMenu\n菜单\n\nRun\nRun\n运行\n\nRun_Help\nRuns.\n运行一次。\n\n"
    "Now %0w, %1d\nNow %0w, %1d\n%0w 现为 %1d\n\nNew name\nNew name:|||%0w\n新名称:|||%0w\n\n";

inline std::string Png(char side) {
    std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\0\0\0\0\0\x08\x06\0\0\0\0\0\0\0", 33);
    png[19] = png[23] = side;
    return png;
}

// Inputs of the host are not const.
inline char* C(const char* text) {
    return const_cast<char*>(text);
}
inline wchar_t* W(const wchar_t* text) {
    return const_cast<wchar_t*>(text);
}
inline wchar_t* File() {
    return W(L"kvMenu.txt");
}

class ToolkitUi : public testing::Test {
protected:
    ToolkitUi() {
        std::filesystem::create_directories(folder_ / "text/resource");
        Write("resource/D.res", kUiLayout);
        Write("resource/Broken.res", "(Dialog Broken");
        Write("kvMenu.txt", kUiMessages);
        Write("resource/Run.png", Png(16));
        Write("resource/Run_large.png", Png(32));
        Write("resource/Small.png", Png(16));
        Write("resource/Small_large.png", Png(16));
    }
    ~ToolkitUi() override { EXPECT_EQ(session.report.OpenItems(), Lines{}); }

    void Write(const char* file, const std::string& bytes) {
        folder_.Write(std::filesystem::path("text") / file, bytes);
    }

    Lines TakeViolations() {
        Lines violations = session.report.Violations();
        session.report.ClearViolations();
        return violations;
    }
    Lines TakeProblems() { return std::exchange(session.user.problems, {}); }

    // Opens D with these actions at Ok and the close box, lets the user play, and destroys it.
    void Play(std::function<void(sim::SimDialog&)> user, ProUIAction onOk = Nothing,
              ProUIAction onClose = Exit) {
        session.user.dialogs["D"].push_back(std::move(user));
        ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIPushbuttonActivateActionSet(C("D"), C("Ok"), onOk, this), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogCloseActionSet(C("D"), onClose, this), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogActivate(C("D"), nullptr), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogDestroy(C("D")), PRO_TK_NO_ERROR);
    }

    static void Nothing(char*, char*, ProAppData) {}
    static void Exit(char* dialog, char*, ProAppData) { ProUIDialogExit(dialog, 3); }

    uiCmdCmdId AddRun(uiCmdAccessFn access = nullptr) {
        uiCmdCmdId id = nullptr;
        EXPECT_EQ(
            ProCmdActionAdd(C("Run"), RunAction, uiProeImmediate, access, PRO_B_FALSE, PRO_B_FALSE, &id),
            PRO_TK_NO_ERROR);
        return id;
    }
    static int RunAction(uiCmdCmdId, uiCmdValue*, void*) {
        sim::Host().screen.loadedMacros = {L"first", L"last"};
        return PRO_TK_E_BUSY;
    }

    TempDirectory folder_;

public:
    sim::Session session{folder_.Path(), folder_.Path()};
    Lines log;
    std::pair<const char*, const char*> kept = {};
};

}  // namespace test
