// KvMdlNameCopy and KvMdlRename: one model, selected or picked.

#include <string>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/rename_check.h"
#include "support/scenario.h"

namespace {

using sim::PromptAnswer;
using sim::SimHost;
using test::Messages;
using test::Texts;

// PUMP { SUB { BOLT } } on disk and open, with a drawing of BOLT.
class QuickRename : public testing::Test {
protected:
    QuickRename() {
        test::ArrangePump(host);
        EXPECT_EQ(host.State().models.Save(*host.State().models.current), PRO_TK_NO_ERROR);
        host.AddDrawingFile(L"BOLT", {L"A4"}, {&test::Bolt(host)});
    }
    void Answer(PromptAnswer::Kind kind, const std::wstring& text = {}) { host.AnswerPrompt({kind, text}); }
    const std::wstring& LastLine() { return host.State().user.messageArea.back(); }

    SimHost host;
};

TEST_F(QuickRename, CopiesTheNameOfTheSelectedOrPickedModel) {
    sim::SimModel& sub = *host.State().models.Find(L"SUB", sim::ModelKind::kAssembly);
    host.Select({test::ItemOf(sub, 3, 1)});  // the component feature of BOLT
    EXPECT_EQ(host.Run("KvMdlNameCopy"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().user.clipboard, L"BOLT");
    EXPECT_EQ(LastLine(), L"模型名称已复制到剪贴板");

    host.Select({});
    host.AnswerPick({false, {test::Whole(sub)}});
    EXPECT_EQ(host.Run("KvMdlNameCopy"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().user.clipboard, L"SUB");
    // A pick that ends with nothing, or by Esc, is the end.
    host.AnswerPick({false, {}});
    host.AnswerPick({true, {}});
    EXPECT_NE(host.Run("KvMdlNameCopy"), PRO_TK_NO_ERROR);
    EXPECT_NE(host.Run("KvMdlNameCopy"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_EQ(host.State().user.clipboard, L"SUB");
}

TEST_F(QuickRename, TellsWhenTheClipboardIsTaken) {
    host.State().user.clipboardBusy = true;
    host.Select({test::Whole(test::Bolt(host))});
    EXPECT_EQ(host.Run("KvMdlNameCopy"), PRO_TK_E_BUSY);
    EXPECT_EQ(Messages(host), Texts{L"\t剪贴板被其他程序占用，名称未复制\t"});
}

TEST_F(QuickRename, RenamesTheModelAloneAndSavesIt) {
    sim::SimModel& part = test::Bolt(host);
    host.Select({test::Whole(part)});
    Answer(PromptAnswer::Kind::kTyped, L"B OLT 2");
    EXPECT_EQ(host.Run("KvMdlRename"), PRO_TK_NO_ERROR);
    EXPECT_EQ(part.Name(), L"BOLT2");
    EXPECT_TRUE(test::HasModelFile(host.WorkingDirectory(), L"bolt2.prt"));
    EXPECT_FALSE(test::HasModelFile(host.WorkingDirectory(), L"bolt2.drw"));
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_NE(LastLine().find(L"使用它的组件未保存"), std::wstring::npos);
}

TEST_F(QuickRename, DoesNothingForNothingAndRefusesInOneBox) {
    sim::SimModel& part = test::Bolt(host);
    host.Select({test::Whole(part)});
    host.AddPart(L"NUT");
    Answer(PromptAnswer::Kind::kEnter);
    EXPECT_EQ(host.Run("KvMdlRename"), PRO_TK_NO_ERROR);
    Answer(PromptAnswer::Kind::kEscape);
    EXPECT_EQ(host.Run("KvMdlRename"), PRO_TK_MSG_USER_QUIT);
    EXPECT_EQ(Messages(host), Texts());
    for (const std::wstring& name : {std::wstring(L"NUT"), std::wstring(L"A.B"), std::wstring(32, L'X')}) {
        Answer(PromptAnswer::Kind::kTyped, name);
        EXPECT_NE(host.Run("KvMdlRename"), PRO_TK_NO_ERROR);
    }
    part.SetReadOnly();
    Answer(PromptAnswer::Kind::kTyped, L"FREE");
    EXPECT_EQ(host.Run("KvMdlRename"), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(Messages(host), Texts(4, L"\t无法重命名，新名称无效或已存在，或模型不可修改\t"));
    EXPECT_EQ(part.Name(), L"BOLT");
}

}  // namespace
