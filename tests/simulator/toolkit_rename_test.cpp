// The host's renaming, trial models, copies in table cells and the clipboard, called as a plug-in calls them.

#include <filesystem>
#include <string>

#include <ProMdl.h>
#include <ProSolid.h>
#include <ProUITable.h>
#include <ProUtil.h>

#include "simulator/ui/sim_dialog.h"
#include "support/host_test.h"
#include "support/rename_check.h"
#include "support/toolkit_ui.h"

namespace {

using namespace sim;
using test::Buffer;
using MdlName = Buffer<PRO_MDLNAME_SIZE>;

class HostRename : public test::HostTest {
protected:
    ProError Rename(SimModel& model, const wchar_t* name) {
        return ProMdlnameRename(&model, MdlName(name).text);
    }
    bool HasFile(const wchar_t* file) const { return std::filesystem::exists(folder / file); }
};

TEST_F(HostRename, ReachesWhatIsInMemoryAndNoFile) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP").Place(bolt);
    SimModel& other = Assembly(L"OTHER").Place(bolt);
    ASSERT_EQ(session.models.Save(pump) + session.models.Save(other), 0);
    ASSERT_TRUE(session.models.Erase(other));
    ASSERT_EQ(Rename(bolt, L"BOLT2"), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.models.Find(L"bolt2", ModelKind::kPart), &bolt);
    EXPECT_EQ(session.models.Find(L"BOLT", ModelKind::kPart), nullptr);
    EXPECT_FALSE(HasFile(L"bolt2.prt.1"));
    EXPECT_FALSE(pump.IsModified());
    // The trap: what was not in memory looks for the old file once that is gone.
    session.models.renameTakesOldFiles = true;
    ASSERT_EQ(ProMdlSave(&pump), PRO_TK_NO_ERROR);
    EXPECT_TRUE(HasFile(L"bolt2.prt.1"));
    EXPECT_FALSE(HasFile(L"bolt.prt.1"));
    EXPECT_EQ(test::MissingIn(folder.Path()), std::set<std::wstring>{L"OTHER.asm needs BOLT.prt"});
}

TEST_F(HostRename, RefusesNamesInUseAndNamesThatAreNone) {
    SimModel& bolt = Part(L"BOLT");
    Part(L"NUT");
    Assembly(L"SUB");
    for (const std::wstring& name :
         {std::wstring(L"nut"), std::wstring(), std::wstring(32, L'X'), std::wstring(L"A.B")})
        EXPECT_EQ(Rename(bolt, name.c_str()), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(Rename(bolt, L"SUB"), PRO_TK_NO_ERROR) << "of another type";
    EXPECT_EQ(Rename(bolt.SetReadOnly(), L"FREE"), PRO_TK_CANT_MODIFY);
}

TEST_F(HostRename, MakesTrialModelsWhoseNamesAreFreeAtOnceOrLater) {
    const auto make = [](const wchar_t* name, ProType type, ProSolid& solid) {
        return ProSolidMdlnameCreate(MdlName(name).text, type, &solid);
    };
    for (const bool waits : {false, true}) {
        session.strict.eraseWaits = waits;
        ProSolid trial = nullptr;
        ASSERT_EQ(make(L"TRIAL", PRO_PART, trial), PRO_TK_NO_ERROR);
        ProSolid second = nullptr;
        EXPECT_EQ(make(L"trial", PRO_PART, second), PRO_TK_E_FOUND);
        EXPECT_EQ(make(L"A B", PRO_PART, second), PRO_TK_GENERAL_ERROR);
        EXPECT_EQ(make(std::wstring(32, L'X').c_str(), PRO_PART, second), PRO_TK_LINE_TOO_LONG);
        EXPECT_EQ(make(L"D", PRO_DRAWING, second), PRO_TK_BAD_INPUTS);
        EXPECT_EQ(ProMdlErase(trial), PRO_TK_NO_ERROR);
        ProMdl found = nullptr;
        const ProError asked = ProMdlnameInit(MdlName(L"TRIAL").text, PRO_MDLFILE_PART, &found);
        EXPECT_EQ(asked, waits ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND);
        session.desk.EndCommand();
        EXPECT_EQ(session.models.Find(L"TRIAL", ModelKind::kPart), nullptr);
    }
}

TEST_F(HostRename, SavesToTheWorkingDirectoryWhereTheOptionSaysSo) {
    SimModel& bolt = Part(L"BOLT");
    bolt.directory = folder / "lib";
    std::filesystem::create_directories(folder / "lib");
    ASSERT_EQ(ProMdlSave(&bolt), PRO_TK_NO_ERROR);
    EXPECT_TRUE(HasFile(L"lib/bolt.prt.1"));
    ASSERT_EQ(ProConfigoptSet(test::W(L"override_store_back"), test::W(L"yes")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProMdlSave(&bolt), PRO_TK_NO_ERROR);
    EXPECT_TRUE(HasFile(L"bolt.prt.1"));
}

// ---- Copies in cells

class CellCopies : public test::ToolkitUi {
protected:
    CellCopies() {
        Write("resource/T.res", R"((Dialog T
  (Components (Table List))
  (Resources (List.ColumnNames "a" "b") (List.RowNames "1" "2") (.Layout (Grid (Rows 0) (Cols 1) List))))
(TableLayout List (Components (InputPanel in)) (Resources (in.MaxLen 5))))");
        EXPECT_EQ(ProUIDialogCreate(test::C("T"), test::C("T")), PRO_TK_NO_ERROR);
    }
    ~CellCopies() override { ProUIDialogDestroy(test::C("T")); }
    static ProError Copy(const char* row, const char* name, const char* source = "in") {
        return ProUITableCellComponentCopy(test::C("T"), test::C("List"), test::C(row), test::C("b"),
                                           test::C("T"), test::C(source), test::C(name));
    }
};

TEST_F(CellCopies, AreInputsOfTheirOwnThatOutliveTheirRows) {
    ASSERT_EQ(Copy("1", "in1"), PRO_TK_NO_ERROR);
    session.user.dialogs["T"].push_back([](SimDialog& dialog) {
        dialog.Type("in1", L"abc");
        EXPECT_EQ(dialog.Cell("List", "1", "b"), L"abc");
    });
    ASSERT_EQ(ProUIDialogCloseActionSet(test::C("T"), Exit, nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIDialogActivate(test::C("T"), nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeProblems(), test::Lines());
    char* row = test::C("1");
    ASSERT_EQ(ProUITableRowsDelete(test::C("T"), test::C("List"), 1, &row), PRO_TK_NO_ERROR);
    EXPECT_EQ(Copy("2", "in1"), PRO_TK_GENERAL_ERROR) << "the name is taken";
    const auto show = [](const char* name) {
        return ProUITableCellComponentNameSet(test::C("T"), test::C("List"), test::C("2"), test::C("b"),
                                              test::C(name));
    };
    EXPECT_EQ(show("in7"), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(show("in1"), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeViolations(), test::Lines());
    const auto drop = [] {
        return ProUITableCellComponentDelete(test::C("T"), test::C("List"), test::C("2"), test::C("b"));
    };
    EXPECT_EQ(drop(), PRO_TK_NO_ERROR);
    EXPECT_EQ(drop(), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(Copy("2", "in1"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Copy("2", "in2", "List"), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations().size(), 1U);
}

TEST_F(CellCopies, TheFocusIsWhereTheUserIs) {
    char* row = nullptr;
    char* column = nullptr;
    EXPECT_EQ(ProUITableFocusCellGet(test::C("T"), test::C("List"), &row, &column), PRO_TK_GENERAL_ERROR);
    session.user.dialogs["T"].push_back([](SimDialog& dialog) { dialog.SelectRows("List", {"2"}); });
    ASSERT_EQ(ProUIDialogCloseActionSet(test::C("T"), Exit, nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIDialogActivate(test::C("T"), nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUITableFocusCellGet(test::C("T"), test::C("List"), &row, &column), PRO_TK_NO_ERROR);
    EXPECT_STREQ(row, "2");
    EXPECT_STREQ(column, "a");
    EXPECT_EQ(ProStringFree(row) + ProStringFree(column), 0);
}

}  // namespace
