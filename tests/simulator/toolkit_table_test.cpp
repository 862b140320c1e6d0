// The host's tables, drawing areas and family tables, called as the plug-in calls them: what works, what is
// refused, and what counts as misuse.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ProFaminstance.h>
#include <ProFamtable.h>
#include <ProMdl.h>
#include <ProSkeleton.h>
#include <ProUIDialog.h>
#include <ProUIDrawingarea.h>
#include <ProUITable.h>
#include <ProUtil.h>

#include "simulator/cad/model_file.h"
#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/ui/sim_dialog.h"
#include "support/temp_directory.h"
#include "support/toolkit_ui.h"

namespace {

using namespace sim;
using test::C;
using test::W;
using Names = std::vector<std::string>;

constexpr char kTableLayout[] = R"((Dialog D
  (Components (Table List) (DrawingArea Area))
  (Resources
    (List.ColumnNames "num")
    (List.ColumnLabels "No")
    (Area.Images "mark.gif" "lost.gif" "mark.png")
    (.Layout (Grid (Rows 0 0) (Cols 1) List Area)))))";

class ToolkitTable : public testing::Test {
protected:
    ToolkitTable() {
        std::filesystem::create_directories(folder_ / "text/resource");
        folder_.Write("text/resource/D.res", kTableLayout);
        folder_.Write("text/resource/mark.gif", "GIF89a");
        folder_.Write("text/resource/mark.png", "PNG");
        EXPECT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
    }
    ~ToolkitTable() override {
        ProUIDialogDestroy(C("D"));
        EXPECT_EQ(session.report.OpenItems(), Names{});
    }
    std::size_t TakeViolations() {
        const std::size_t count = session.report.Violations().size();
        session.report.ClearViolations();
        return count;
    }
    Table& List() { return session.screen.FindDialog("D")->Find("List")->table; }
    Names RowNames() {
        Names names;
        for (const Table::Line& row : List().Rows()) names.push_back(row.name);
        return names;
    }
    ProError Insert(char* after, std::vector<char*> names) {
        return ProUITableRowsInsert(C("D"), C("List"), after, static_cast<int>(names.size()), names.data());
    }

    test::TempDirectory folder_;
    Session session{folder_.Path(), folder_.Path()};
};

TEST_F(ToolkitTable, InsertsAndDeletesLinesByName) {
    EXPECT_EQ(Insert(nullptr, {C("1"), C("2")}), PRO_TK_NO_ERROR);
    EXPECT_EQ(Insert(C("1"), {C("3")}), PRO_TK_NO_ERROR);
    EXPECT_EQ(RowNames(), (Names{"1", "3", "2"}));
    char* columns[] = {C("a"), C("b")};
    EXPECT_EQ(ProUITableColumnsInsert(C("D"), C("List"), C("num"), 2, columns), PRO_TK_NO_ERROR);
    wchar_t* labels[] = {W(L"n"), W(L"A"), W(L"B")};
    EXPECT_EQ(ProUITableColumnlabelsSet(C("D"), C("List"), 3, labels), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUITableCellLabelSet(C("D"), C("List"), C("3"), C("b"), W(L"x")), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUITableCellBackgroundColorSet(C("D"), C("List"), C("3"), C("b"), 17), PRO_TK_NO_ERROR);
    EXPECT_EQ(List().Cell("3", "b")->background, 17);
    char* gone[] = {C("1"), C("2")};
    EXPECT_EQ(ProUITableRowsDelete(C("D"), C("List"), 2, gone), PRO_TK_NO_ERROR);
    EXPECT_EQ(RowNames(), Names{"3"});
    EXPECT_EQ(TakeViolations(), 0u);
}

TEST_F(ToolkitTable, RefusesWhatItDoesNotHave) {
    ASSERT_EQ(Insert(nullptr, {C("1")}), PRO_TK_NO_ERROR);
    wchar_t* labels[] = {W(L"n"), W(L"A")};
    wchar_t* label = nullptr;
    const std::vector<ProError> answers = {
        Insert(nullptr, {C("1")}),
        Insert(C("9"), {C("2")}),
        Insert(nullptr, {C("2"), C("2")}),
        Insert(nullptr, {}),
        ProUITableColumnlabelsSet(C("D"), C("List"), 2, labels),
        ProUITableCellLabelSet(C("D"), C("List"), C("1"), C("9"), W(L"")),
        ProUITableCellLabelSet(C("D"), C("List"), C("1"), C("num"), nullptr),
        ProUITableCellLabelGet(C("D"), C("Area"), C("1"), C("num"), &label),
        ProUITableCellBackgroundColorSet(C("D"), C("List"), C("1"), C("num"), -1),
    };
    for (const ProError answer : answers) EXPECT_NE(answer, PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeViolations(), answers.size());
    EXPECT_EQ(RowNames(), Names{"1"});
}

TEST_F(ToolkitTable, KeepsCellsWithTheirNamesWhenTheUserSortsAndFilters) {
    ASSERT_EQ(Insert(nullptr, {C("1"), C("2"), C("3")}), PRO_TK_NO_ERROR);
    const wchar_t* texts[] = {L"b", L"a", L"b"};
    for (int row = 1; row <= 3; ++row)
        ProUITableCellLabelSet(C("D"), C("List"), C(std::to_string(row).c_str()), C("num"),
                               W(texts[row - 1]));
    Dialog& dialog = *session.screen.FindDialog("D");
    dialog.active = true;
    ASSERT_TRUE(List().SortRows("num", false));
    EXPECT_EQ(RowNames(), (Names{"2", "1", "3"}));
    ASSERT_TRUE(List().Filter("num", L"b"));
    EXPECT_EQ(SimDialog(session.screen, session.user, dialog).Rows("List"), (Names{"1", "3"}));
    dialog.active = false;

    int count = 0;
    char** names = nullptr;
    EXPECT_EQ(ProUITableRownamesGet(C("D"), C("List"), &count, &names), PRO_TK_NO_ERROR);
    EXPECT_EQ(count, 3) << "out of sight is not gone";
    EXPECT_EQ(ProStringarrayFree(names, count), PRO_TK_NO_ERROR);
}

TEST_F(ToolkitTable, SelectsRowsWhereThePolicyAllowsIt) {
    char* dialog = C("D");
    char* table = C("List");
    std::vector<char*> rows = {C("1"), C("2")};
    ASSERT_EQ(ProUITableRowsInsert(dialog, table, nullptr, 2, rows.data()), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUITableRowCellsSelect(dialog, table, 2, rows.data()), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations(), 1U) << "a single cell is all that the policy allows";
    ASSERT_EQ(ProUITableSelectionpolicySet(dialog, table, PROUISELPOLICY_MULTIPLE), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUITableRowCellsSelect(dialog, table, 2, rows.data()), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUITableRowCellsDeselect(dialog, table, 1, rows.data()), PRO_TK_NO_ERROR);
    int count = 0;
    char** names = nullptr;
    ASSERT_EQ(ProUITableSelectednamesGet(dialog, table, &count, &names), PRO_TK_NO_ERROR);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(std::string(names[0]) + names[1], "2num");
    EXPECT_EQ(ProStringarrayFree(names, count), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUITableRowsDelete(dialog, table, 1, &rows[1]), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUITableSelectedrownamesGet(dialog, table, &count, &names), PRO_TK_NO_ERROR);
    EXPECT_EQ(count, 0);
}

TEST_F(ToolkitTable, DrawsOnlyImagesThatTheAreaHas) {
    ProUIPoint corner = {0, 0};
    const auto draw = [&](const char* image) {
        return ProUIDrawingareaImageDraw(C("D"), C("Area"), C(image), &corner);
    };
    EXPECT_EQ(draw("mark.gif"), PRO_TK_GENERAL_ERROR) << "not shown yet";
    session.screen.FindDialog("D")->active = true;
    EXPECT_EQ(draw("mark.gif"), PRO_TK_NO_ERROR);
    for (const char* image : {"lost.gif", "mark.png", "other.gif"})
        EXPECT_EQ(draw(image), PRO_TK_GENERAL_ERROR);
    session.screen.FindDialog("D")->active = false;
    EXPECT_EQ(TakeViolations(), 4u);
}

// A file keeps the ties; a new column reaches the instances, but not over what they have.
TEST_F(ToolkitTable, FamilyTablesGrowAndAreKept) {
    SimModel& generic = *session.models.Create(L"BOLT", ModelKind::kPart);
    SimModel& instance = *session.models.Create(L"BOLT_M8", ModelKind::kPart);
    SimModel& own = *session.models.Create(L"BOLT_M10", ModelKind::kPart);
    generic.SetParameter(L"LEN", 20);
    instance.MakeInstanceOf(generic);
    own.MakeInstanceOf(generic).SetParameter(L"len", 40);
    ProMdl found = nullptr;
    EXPECT_EQ(ProFaminstanceGenericGet(&instance, PRO_B_TRUE, &found), PRO_TK_NO_ERROR);
    EXPECT_EQ(found, &generic);
    EXPECT_EQ(ProFaminstanceGenericGet(&generic, PRO_B_TRUE, &found), PRO_TK_E_NOT_FOUND);

    ProModelitem item;
    ProParameter parameter;
    ProFamtable table;
    ProFamtableItem column;
    ProName name = L"LEN";
    ASSERT_EQ(ProMdlToModelitem(&generic, &item), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProParameterInit(&item, name, &parameter), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProFamtableInit(&generic, &table), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProParameterToFamtableItem(&parameter, &column), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProFamtableItemAdd(&table, &column), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProFamtableItemAdd(&table, &column), PRO_TK_E_FOUND);
    EXPECT_EQ(instance.Parameter(L"LEN"), L"20");
    EXPECT_EQ(own.Parameter(L"LEN"), L"40");
    ProFamtable foreign;
    ASSERT_EQ(ProFamtableInit(&own, &foreign), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProFamtableItemAdd(&foreign, &column), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations(), 1u) << "a column of another model";

    ASSERT_EQ(session.models.Save(own), PRO_TK_NO_ERROR);
    ModelStore later(folder_.Path());
    SimModel* read = nullptr;
    ASSERT_EQ(later.Retrieve(L"BOLT_M10", ModelKind::kPart, read), PRO_TK_NO_ERROR);
    ASSERT_NE(read->Generic(), nullptr);
    EXPECT_TRUE(read->Generic()->HasFamilyColumn(L"len"));
    EXPECT_EQ(ModelFileText(*read), ModelFileText(own));
    std::filesystem::remove(folder_ / "bolt.prt.1");
    ModelStore lost(folder_.Path());
    ASSERT_EQ(lost.Retrieve(L"BOLT_M10", ModelKind::kPart, read), PRO_TK_NO_ERROR);
    EXPECT_TRUE(read->IsInstance());
    EXPECT_EQ(read->Generic(), nullptr);
    EXPECT_EQ(ModelFileText(*read), ModelFileText(own)) << "the name of the lost generic is kept";
}

}  // namespace
