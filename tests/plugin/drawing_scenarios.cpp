// Drawings from templates, and sheet scales.

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

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
    };
}

}  // namespace test
