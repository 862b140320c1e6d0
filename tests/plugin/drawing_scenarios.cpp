// Drawings from templates, and sheet scales.

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ProObjects.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/drawings.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

using sim::DrawingView;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::ViewType;

static void ArrangeBolt(SimHost& host) {
    host.Open(host.AddPart(L"BOLT"));
    WriteTemplate(TemplateFolder(), "kv", "A4");
}

static void ArrangeFormat(SimHost& host) {
    ArrangeBolt(host);
    const std::filesystem::path folder = MakeFolder(host, "formats");
    WriteFormat(folder, "frame", "A2");
    host.AnswerFile((folder / "frame.frm.1").wstring());
}

// A selected component, and its template in a folder of its own.
static void ArrangeSize(SimHost& host) {
    ArrangePump(host);
    host.Select({Whole(Bolt(host))});
    const std::filesystem::path folder = MakeFolder(host, "templates");
    WriteTemplate(folder, "size_a3", "A3");
    ChangeSetting(L"KvConfig.ini", L"A3Prtpath", L"path", (folder / "size_a3.drw").wstring());
    host.OnDialog("KvNewDrw", [](SimDialog& dialog) {
        dialog.Choose("RadioSize", L"A0").Press("KvCreateDrw").Choose("RadioSize", L"A3");
        dialog.Press("KvCreateDrw");
    });
}

// The drawing is there already.
static void ArrangeExisting(SimHost& host) {
    ArrangePumpWithDrawing(host);
    host.Select({Whole(Bolt(host))});
}

// Whatever fails, nothing is written among the templates, and a drawing that will be is told.
static void TemplatesAreAsTheyWere(SimHost& host) {
    for (const std::wstring& file : FilesIn(TemplateFolder()))
        EXPECT_TRUE(file == L"README.md" || file == L"kv.drw.1") << std::filesystem::path(file);
    const SimModel* drawing = DrawingOf(host, L"BOLT");
    const bool isElsewhere = drawing != nullptr && drawing->directory != host.WorkingDirectory();
    const bool isTold = std::ranges::any_of(Messages(host), [](const std::wstring& text) {
        return text.starts_with(L"\t新工程图将保存在模板所在的目录");
    });
    EXPECT_TRUE(!isElsewhere || isTold);
}

// Where the drawing is not found the command asks for more, which the user then cancels.
static Scenario OpenExisting(const std::string& command) {
    Scenario scenario = CommandScenario(command, ArrangeExisting, TemplatesAreAsTheyWere, "Existing");
    scenario.act = [command](SimHost& host) {
        host.AnswerFile(std::nullopt);
        host.OnDialog("KvNewDrw", [](SimDialog& dialog) { dialog.Press("Close"); });
        host.Run(command);
        host.ForgetAnswers();
    };
    return scenario;
}

// Two sheets; on the second a view with a scale of its own and one made from it, and a view of another model.
static SimModel& ScaledDrawing(SimHost& host) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A3", L"A4"}, {&bolt});
    drawing.AddView(host.AddPart(L"NUT"), 2);
    DrawingView& main = drawing.Views()[1];
    main.scale = 0.5;
    drawing.AddView(bolt, 2);
    DrawingView& child = drawing.Views()[3];
    child.type = ViewType::kProjection;
    child.parent = drawing.Views()[1].id;
    return drawing;
}

static void ArrangeScales(SimHost& host) {
    host.Open(ScaledDrawing(host));
}

static void ArrangeAskedScale(SimHost& host) {
    ArrangeScales(host);
    host.AnswerPrompt({sim::PromptAnswer::Kind::kTyped, L"0.25"});
}

// Whatever fails: views without a scale of their own get none, and the drawing's scale changes on its first
// sheet alone.
static void OwnScalesChangeOnly(SimHost& host) {
    const SimModel& drawing = *DrawingOf(host, L"BOLT");
    for (const std::size_t view : {0u, 2u, 3u}) EXPECT_FALSE(drawing.Views()[view].scale);
    EXPECT_EQ(drawing.Sheets()[1].scale, 1.0);
}

static void ArrangeCheck(SimHost& host) {
    SimModel& drawing = ScaledDrawing(host);
    drawing.SetCurrentSheet(2);
    host.Store(drawing);
    host.AddDrawingFile(L"EMPTY", {L"A4"});
    WriteBytes(host.WorkingDirectory() / "damaged.drw.1", "{");
}

// The check looks, and changes nothing.
static void NothingIsModified(SimHost& host) {
    for (const SimModel* model : host.State().models.All())
        EXPECT_TRUE(model->Kind() != sim::ModelKind::kDrawing || !model->IsModified());
    EXPECT_FALSE(std::filesystem::exists(host.WorkingDirectory() / "bolt.drw.2"));
}

// BOLT has two dimensions, the second with a text; LOCKED, which is read-only, has one.
static void ArrangeDimensions(SimHost& host) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& locked = host.AddPart(L"LOCKED");
    bolt.AddDimension(L"d1", 30).AddDimension(L"d2", 12.5);
    bolt.Dimensions()[1].text = {L"2×@D", L"通孔"};
    locked.AddDimension(L"d1", 1).SetReadOnly();
    host.Open(host.AddDrawing(L"BOLT", {L"A3"}, {&bolt, &locked}));
}

static sim::Pick DimensionOf(SimHost& host, const wchar_t* model, int id) {
    return ItemOf(*host.State().models.Find(model, sim::ModelKind::kPart), PRO_DIMENSION, id);
}

static void ArrangeTexts(SimHost& host) {
    ArrangeDimensions(host);
    host.Select({DimensionOf(host, L"BOLT", 1), DimensionOf(host, L"LOCKED", 1)});
    host.AnswerPick({false, {DimensionOf(host, L"BOLT", 1), DimensionOf(host, L"BOLT", 2)}});
    for (int i = 0; i < 3; ++i) host.AnswerPick({true, {}});
    host.OnDialog("KvDimModify", [](SimDialog& dialog) {
        dialog.Type("DimPrefix", L"4").Press("InsTimes").Press("ApplyBt").Press("KvPickAgain");
    });
    host.OnDialog("KvDimModify", [](SimDialog& dialog) {
        dialog.Choose("DimRule", L"替换").Press("KvPreview").Press("ApplyBt").Press("KvDefault");
        dialog.Press("KvUndo");
    });
}

static void ArrangeSingleText(SimHost& host) {
    ArrangeDimensions(host);
    for (const int id : {1, 2}) host.AnswerPick({false, {DimensionOf(host, L"BOLT", id)}});
    for (int i = 0; i < 3; ++i) host.AnswerPick({false, {}});
    host.OnDialog("KvSingleDim",
                  [](SimDialog& dialog) { dialog.Type("DimText", L"见表").Check("HideValue").Press("OK"); });
    host.OnDialog("KvSingleDim",
                  [](SimDialog& dialog) { dialog.Press("KvUndo").Type("DimText", L"Ø{尺寸}").Press("OK"); });
}

// Whatever fails: no dimension loses its value, and what is read-only stays.
static void ValuesAreShownOnce(SimHost& host) {
    for (const SimModel* model : host.State().models.All())
        for (const sim::Dimension& dimension : model->Dimensions()) {
            std::wstring text;
            for (const std::wstring& line : dimension.text) text += line;
            const std::size_t value = text.find(L"@D");
            EXPECT_NE(value, std::wstring::npos);
            EXPECT_EQ(text.find(L"@D", value + 1), std::wstring::npos);
            EXPECT_TRUE(!model->IsReadOnly() || text == L"@D");
        }
}

// The dialogs and picks that a fault does not let happen are no problem.
static Scenario Picking(Scenario scenario) {
    scenario.act = [act = scenario.act](SimHost& host) {
        act(host);
        host.ForgetAnswers();
    };
    return scenario;
}

// BOLT has two sheets, one with a table of its format; NUT has one and is open, and changed by the user.
static void ArrangeFormats(SimHost& host) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A3", L"A4"}, {&bolt});
    drawing.Sheets()[0].format = L"OLD";
    drawing.AddTable(1, L"typed", true).SetCurrentSheet(2);
    host.Store(drawing);
    SimModel& nut = host.AddDrawing(L"NUT", {L"A4"}, {&bolt});
    host.Store(nut);
    SimModel& open = *host.Retrieve(L"NUT", sim::ModelKind::kDrawing);
    open.SetParameter(L"NOTE", std::wstring(L"of the user"));
    host.Open(open);
    const std::filesystem::path folder = MakeFolder(host, "formats");
    WriteFormat(folder, "frame", "A2");
    host.AnswerFile((folder / "frame.frm.1").wstring());
    host.OnDialog("KvFrmReplace", [](SimDialog& dialog) {
        dialog.Press("selAll").Press("KvLoadFormats").Press("KvChooseFormat").Press("KvPlan");
        dialog.Check("ReplaceTables").Press("ApplyBt");
    });
}

// Whatever fails: a file has one new version at most, and that one is wholly done; what is open stays as it
// was.
static void FormatsAreWholeOrOld(SimHost& host) {
    EXPECT_FALSE(std::filesystem::exists(host.WorkingDirectory() / "nut.drw.2"));
    EXPECT_FALSE(std::filesystem::exists(host.WorkingDirectory() / "bolt.drw.3"));
    if (SimModel* loaded = DrawingOf(host, L"BOLT")) host.State().models.Erase(*loaded);
    SimModel* bolt = host.Retrieve(L"BOLT", sim::ModelKind::kDrawing);
    ASSERT_NE(bolt, nullptr);
    const bool isNew = std::filesystem::exists(host.WorkingDirectory() / "bolt.drw.2");
    EXPECT_EQ(bolt->Sheets()[0].format, isNew ? L"frame" : L"OLD");
    EXPECT_EQ(bolt->Sheets()[1].format, isNew ? L"frame" : L"");
    // A host that denies the tables is believed.
    if (host.State().report.FaultedFunction() == "ProDrawingTablesCollect") return;
    EXPECT_EQ(bolt->Tables().size(), isNew ? 0U : 1U);
}

std::vector<Scenario> DrawingScenarios() {
    return {
        CommandScenario("NewDraw", ArrangeFormat, TemplatesAreAsTheyWere),
        OpenExisting("NewDraw"),
        CommandScenario("KvNewDrw", ArrangeSize, TemplatesAreAsTheyWere),
        OpenExisting("KvNewDrw"),
        CommandScenario("SameScale", ArrangeAskedScale, OwnScalesChangeOnly),
        CommandScenario("KvUpdateSheetScale", ArrangeScales, OwnScalesChangeOnly),
        CommandScenario("KvUpdateMainViewScale", ArrangeScales, OwnScalesChangeOnly),
        CommandScenario("KvDrwScaleCheck", ArrangeCheck, NothingIsModified),
        Picking(CommandScenario("KvDimModify", ArrangeTexts, ValuesAreShownOnce)),
        Picking(CommandScenario("KvSingleDim", ArrangeSingleText, ValuesAreShownOnce)),
        CommandScenario("KvFrmReplace", ArrangeFormats, FormatsAreWholeOrOld),
    };
}

}  // namespace test
