// Scales of drawings and views, formats, and drawings from templates, as the host functions see them.

#include <string>
#include <vector>

#include <ProArray.h>
#include <ProDrawing.h>
#include <ProDrawingView.h>
#include <ProMdl.h>
#include <ProMessage.h>
#include <gtest/gtest.h>

#include "support/drawings.h"
#include "support/host_test.h"

namespace {

using sim::DrawingView;
using sim::ModelKind;
using sim::SimModel;
using sim::ViewType;
using test::Name;
using test::Solid;

class DrawingTest : public test::HostTest {
protected:
    ProView Handle(std::size_t view) { return reinterpret_cast<ProView>(&drawing.Views()[view]); }
    ProDrawing Drawing() { return reinterpret_cast<ProDrawing>(&drawing); }
    double Scale(SimModel* model, int sheet) {
        double scale = 0;
        EXPECT_EQ(ProDrawingScaleGet(Drawing(), model == nullptr ? nullptr : Solid(*model), sheet, &scale),
                  PRO_TK_NO_ERROR);
        return scale;
    }

    SimModel& pump = Part(L"PUMP");
    SimModel& nut = Part(L"NUT");
    SimModel& drawing = New(L"PUMP", ModelKind::kDrawing);
};

TEST_F(DrawingTest, HasAScaleForEachModelOnEachSheet) {
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), nullptr, 1, 2), PRO_TK_BAD_INPUTS);
    drawing.AddSheet(L"A3").AddSheet(L"A4");
    EXPECT_EQ(Scale(nullptr, 1), 1.0);
    drawing.AddShownModel(pump).AddShownModel(nut).SetCurrentSheet(2);
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), nullptr, 0, 0.5), PRO_TK_NO_ERROR);
    EXPECT_EQ(Scale(&pump, 2), 0.5);
    EXPECT_EQ(Scale(&nut, 2), 1.0);
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), Solid(nut), 1, 4), PRO_TK_NO_ERROR);
    EXPECT_EQ(Scale(&pump, 1), 1.0);
    EXPECT_EQ(Scale(&nut, 1), 4.0);
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), nullptr, 3, 2), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), Solid(Part(L"ALIEN")), 1, 2), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("ALIEN"));
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), nullptr, 1, 0), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("scale"));

    // All of it outlives the file.
    drawing.AddView(pump, 1).AddView(pump, 1);
    drawing.Views()[1].type = ViewType::kProjection;
    drawing.Views()[1].parent = drawing.Views()[0].id;
    drawing.Views()[0].scale = 3;
    ASSERT_EQ(ProMdlSave(&drawing), PRO_TK_NO_ERROR);
    ASSERT_TRUE(session.models.Erase(drawing));
    SimModel* read = nullptr;
    ASSERT_EQ(session.models.Retrieve(L"PUMP", ModelKind::kDrawing, read), PRO_TK_NO_ERROR);
    EXPECT_EQ(read->ScaleOn(2, pump), 0.5);
    EXPECT_EQ(read->ScaleOn(2, nut), 1.0);
    EXPECT_EQ(read->ScaleOn(1, nut), 4.0);
    EXPECT_EQ(read->ScaleOf(read->Views()[1]), 3.0);
}

TEST_F(DrawingTest, ViewsHaveTypesChildrenAndScales) {
    drawing.AddSheet(L"A3").AddSheet(L"A4").AddView(pump, 1).AddView(pump, 1).AddView(pump, 2);
    DrawingView& child = drawing.Views()[1];
    child.type = ViewType::kProjection;
    child.parent = drawing.Views()[0].id;

    ProViewType type = PRO_VIEW_GENERAL;
    EXPECT_EQ(ProDrawingViewTypeGet(Drawing(), Handle(1), &type), PRO_TK_NO_ERROR);
    EXPECT_EQ(type, PRO_VIEW_PROJECTION);
    ProView* children = nullptr;
    int count = 0;
    ASSERT_EQ(ProDrawingViewChildrenGet(Drawing(), Handle(0), &children, &count), PRO_TK_NO_ERROR);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(children[0], Handle(1));
    ProArray array = children;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProDrawingViewChildrenGet(Drawing(), Handle(2), &children, &count), PRO_TK_E_NOT_FOUND);

    // Only what the current window shows is scaled; a projected view follows its parent.
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(0), 2), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProDwgSheetRegenerate(Drawing(), 1), PRO_TK_GENERAL_ERROR);
    session.desk.Open(drawing);
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(0), 2), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(1), 2), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(2), 2), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProDwgSheetRegenerate(Drawing(), 2), PRO_TK_NO_ERROR);
    double scale = 0;
    EXPECT_EQ(ProDrawingViewScaleGet(Drawing(), Handle(1), &scale), PRO_TK_NO_ERROR);
    EXPECT_EQ(scale, 2.0);
    ProBoolean isOwn = PRO_B_TRUE;
    EXPECT_EQ(ProDrawingViewScaleIsUserdefined(Drawing(), Handle(1), &isOwn), PRO_TK_NO_ERROR);
    EXPECT_EQ(isOwn, PRO_B_FALSE);

    session.strict.hiddenSheetRefused = true;
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(2), 4), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProDwgSheetRegenerate(Drawing(), 2), PRO_TK_GENERAL_ERROR);
    drawing.SetReadOnly();
    EXPECT_EQ(ProDrawingViewScaleSet(Drawing(), Handle(0), 4), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(ProDrawingScaleSet(Drawing(), nullptr, 1, 4), PRO_TK_CANT_MODIFY);
}

TEST_F(DrawingTest, TakesAFormatAndItsSize) {
    drawing.AddSheet(L"A4").AddView(pump, 1);
    SimModel& format = New(L"FRAME", ModelKind::kFormat).AddSheet(L"A1").AddSheet(L"A2");
    EXPECT_EQ(ProDrawingFormatAdd(Drawing(), 1, Solid(pump), &format, 2), PRO_TK_NO_ERROR);
    EXPECT_EQ(drawing.Sheets()[0].size, L"A2");
    EXPECT_EQ(drawing.Sheets()[0].format, L"FRAME");
    EXPECT_EQ(ProDrawingFormatAdd(Drawing(), 1, nullptr, &format, 3), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProDrawingFormatAdd(Drawing(), 1, nullptr, &pump, 1), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("of another type"));
}

// ---- Creation

class CreationTest : public DrawingTest {
protected:
    CreationTest() { test::WriteTemplate(folder.Path(), "start", "A3"); }

    ProError Create(const wchar_t* name, const wchar_t* source) {
        ProModel model = {L"NUT", L"PRT"};
        const ProError status = ProDrawingFromTmpltCreate(Name(name).text, Name(source).text, &model,
                                                          PRODWGCREATE_DISPLAY_DRAWING, &made, &errors);
        if (status == PRO_TK_NO_ERROR || status == PRO_TK_DWGCREATE_ERRORS) {
            EXPECT_EQ(ProDwgcreateErrsFree(&errors), PRO_TK_NO_ERROR);
        }
        return status;
    }

    ProDrawing made = nullptr;
    ProDwgcreateErrs errors = nullptr;
};

TEST_F(CreationTest, MakesADrawingOfTheModelAndShowsIt) {
    EXPECT_EQ(Create(L"NUT", L"start.drw"), PRO_TK_NO_ERROR);
    SimModel* created = session.models.Find(L"NUT", ModelKind::kDrawing);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(reinterpret_cast<SimModel*>(made), created);
    EXPECT_EQ(created->Views().size(), 2u);
    EXPECT_EQ(created->Views()[1].model, &nut);
    EXPECT_TRUE(session.desk.IsShown(*created));
    EXPECT_EQ(session.models.Find(L"START", ModelKind::kDrawing), nullptr);
    EXPECT_EQ(Create(L"NUT", L"start"), PRO_TK_E_FOUND);
}

TEST_F(CreationTest, LooksForTheTemplateByItsName) {
    EXPECT_EQ(Create(L"NUT", L"stop"), PRO_TK_E_NOT_FOUND);
    session.strict.templateExtensionRefused = true;
    EXPECT_EQ(Create(L"NUT", L"start.drw"), PRO_TK_E_NOT_FOUND);
    session.strict.pathAsNameRefused = true;
    EXPECT_EQ(Create(L"NUT", L".\\start"), PRO_TK_E_NOT_FOUND);
    session.strict.pathAsNameRefused = false;
    EXPECT_EQ(Create(L"NUT", L".\\start"), PRO_TK_NO_ERROR);
}

TEST_F(CreationTest, MakesWhatItCanOfATemplateWithErrors) {
    test::WriteTemplate(folder.Path(), "broken", "A3", R"({"id":1,"sheet":1,"type":"projection"})");
    EXPECT_EQ(Create(L"NUT", L"broken"), PRO_TK_DWGCREATE_ERRORS);
    EXPECT_EQ(session.models.Find(L"NUT", ModelKind::kDrawing), static_cast<void*>(made));
    EXPECT_EQ(ProDwgcreateErrsFree(&errors), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));
}

TEST_F(CreationTest, PutsTheDrawingWhereTheHostWorksOrWhereItsModelIs) {
    const auto other = folder.Path() / "other";
    test::WriteTemplate(other, "start", "A3");
    nut.directory = folder.Path();
    ASSERT_EQ(session.models.ChangeDirectory(L"other"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(L"ONE", L"start"), PRO_TK_NO_ERROR);
    session.strict.newDrawingJoinsModel = true;
    EXPECT_EQ(Create(L"TWO", L"start"), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.models.Find(L"ONE", ModelKind::kDrawing)->directory, other);
    EXPECT_EQ(session.models.Find(L"TWO", ModelKind::kDrawing)->directory, folder.Path());
}

// ---- Reading a number

TEST_F(DrawingTest, AsksAgainForWhatIsNoNumber) {
    session.screen.prompt = sim::Prompt{L"Scale", L"", false};
    for (const wchar_t* text : {L"one", L"1 2", L"9", L"0.5"})
        session.user.prompts.push_back({sim::PromptAnswer::Kind::kTyped, text});
    double range[2] = {0, 1};
    double answer = 0;
    EXPECT_EQ(ProMessageDoubleRead(range, &answer), PRO_TK_NO_ERROR);
    EXPECT_EQ(answer, 0.5);
    EXPECT_EQ(ProMessageDoubleRead(nullptr, &answer), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("no prompt"));
}

}  // namespace
