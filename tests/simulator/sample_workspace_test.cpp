// The sample workspace: its files are sound, its size is what the pages say, its scripts play.

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/cad/folder_index.h"
#include "simulator/cad/model_file.h"
#include "simulator/cad/model_store.h"
#include "simulator/host/sim_host.h"
#include "simulator/import/import.h"
#include "simulator/report/utf8.h"
#include "simulator/ui/user_script.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using Names = std::set<std::string>;

fs::path Samples() {
    return fs::path(Wide(KORVANE_SAMPLES_DIR));
}

fs::path Conveyor() {
    return Samples() / "roller_conveyor";
}

// Every model of the folder with all that it names.
std::vector<SimModel*> LoadAll(ModelStore& store) {
    for (const ModelFile& file : store.NewestFiles(store.WorkingDirectory())) {
        SimModel* model = nullptr;
        EXPECT_EQ(store.Retrieve(file.name, file.kind, model), PRO_TK_NO_ERROR) << Utf8(file.name);
    }
    return store.All();
}

// What a walk through all components meets.
struct Size {
    int placements = 0;
    int levels = 0;
    Names models;
    Names leftOut;  // suppressed, internal or missing
};

void Measure(const SimModel& assembly, int level, Size& size) {
    for (const Feature& feature : assembly.Features()) {
        const std::wstring& name =
            feature.component == nullptr ? feature.missingName : feature.component->Name();
        ++size.placements;
        size.levels = std::max(size.levels, level);
        size.models.insert(Utf8(name));
        if (feature.status != kFeatureActive || !feature.isVisible) size.leftOut.insert(Utf8(name));
        if (feature.component != nullptr) Measure(*feature.component, level + 1, size);
    }
}

TEST(SampleWorkspace, EveryFileIsSoundAndOneComponentIsMissing) {
    for (const fs::directory_entry& entry : fs::directory_iterator(Conveyor())) {
        const auto parts = ParseModelFileName(entry.path().filename().wstring());
        ASSERT_TRUE(parts && parts->version > 0) << Utf8(entry.path().filename().wstring());
        EXPECT_NO_THROW((void)ReadModelFile(entry.path(), parts->name, parts->kind)) << Utf8(parts->name);
    }

    ModelStore store(Conveyor());
    Names missing;
    for (const SimModel* model : LoadAll(store)) {
        // As the host would save it, so that a change of a model shows as the lines that changed.
        EXPECT_EQ(ModelFileText(*model), test::ReadBytes(model->origin));
        for (const Feature& feature : model->Features())
            if (feature.component == nullptr) missing.insert(Utf8(feature.missingName));
        for (const DrawingView& view : model->Views())
            if (view.model == nullptr) missing.insert(Utf8(view.missingModel));
    }
    EXPECT_EQ(missing, Names{"BUY_CONTROL_BOX"});
    EXPECT_EQ(store.Problems(), std::vector<std::string>());
}

TEST(SampleWorkspace, HasTheSizeThatThePagesGive) {
    ModelStore store(Conveyor());
    SimModel* top = nullptr;
    ASSERT_EQ(store.Retrieve(L"roller_conveyor", ModelKind::kAssembly, top), PRO_TK_NO_ERROR);
    Size size;
    Measure(*top, 1, size);
    EXPECT_EQ(size.placements, 234);
    EXPECT_EQ(size.models.size(), 59U);
    EXPECT_EQ(size.levels, 3);
    EXPECT_EQ(size.leftOut, (Names{"BUY_CONTROL_BOX", "BUY_STOP_BUTTON", "TEST_CARTON_600X400"}));
}

TEST(SampleWorkspace, DrawingsAreNamedAfterTheModelTheyShow) {
    ModelStore store(Conveyor());
    int drawings = 0;
    for (SimModel* drawing : LoadAll(store)) {
        if (drawing->Kind() != ModelKind::kDrawing) continue;
        ++drawings;
        ASSERT_FALSE(drawing->ShownModels().empty()) << Utf8(drawing->Name());
        EXPECT_EQ(Utf8(drawing->ShownModels().front()->Name()), Utf8(drawing->Name()));
        for (const DrawingSheet& sheet : drawing->Sheets()) {
            SimModel* format = store.Find(sheet.format, ModelKind::kFormat);
            ASSERT_NE(format, nullptr) << Utf8(sheet.format);
            EXPECT_EQ(Utf8(format->Sheets().front().size), Utf8(sheet.size)) << Utf8(drawing->Name());
        }
    }
    EXPECT_EQ(drawings, 16);
}

TEST(SampleScripts, PlayOneAfterTheOther) {
    const test::TempDirectory folder;
    fs::copy(Samples(), folder.Path(), fs::copy_options::recursive);
    fs::create_directory(folder / "backup");
    HostSetup setup;
    setup.workspace = folder / "roller_conveyor";
    SimHost host(setup);
    SimModel* top = host.Retrieve(L"roller_conveyor", ModelKind::kAssembly);
    ASSERT_NE(top, nullptr);
    host.Open(*top);
    host.Spreadsheet().Install();

    const std::vector<std::pair<std::string, std::string>> plays = {
        {"add_project_number", "KvParams"},
        {"update_project_number", "KvParams"},
        {"sheetmetal_finish", "KvParams"},
        {"outline_and_sheets", "KvParams"},
        {"backup", "KvBackup"},
        {"settings", "KvConfig"},
        {"bom_lists", "KvBom"},
        {"bom_export", "KvBom"},
        {"bom_page", "KvBom"},
        {"bom_compare", "KvBom"},
        {"export_drawings", "KvExport"},
        {"add_relations", "KvRelations"},
        {"set_material", "SetMat"},
        {"set_bend_table", "SetBendTable"},
        {"set_units", "SetUnit"},
        {"random_colours", "BatchColor"},
        {"stock", "KvBox"},
        {"small_parts", "KvSimRep"},
    };
    // They have tests of their own.
    Names played = {"open_drawing.user",    "clone_screw.user",         "clone_hanger.user",
                    "merge_drive.user",     "merge_plate.user",         "rename.user",
                    "drawing_by_size.user", "configure_templates.user", "drawing_by_format.user",
                    "one_scale.user",       "dimension_texts.user",     "single_dimension.user",
                    "replace_format.user",  "fix_components.user"};
    for (const auto& [script, command] : plays) {
        const fs::path file = folder / "scripts" / (script + ".user");
        played.insert(Utf8(file.filename().wstring()));
        EXPECT_EQ(LoadUserScript(file, host.State().user, host.State().models), std::vector<std::string>());
        EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR) << script;
        EXPECT_EQ(host.TakeProblems(), std::vector<std::string>()) << script;
    }
    Names scripts;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder / "scripts"))
        scripts.insert(Utf8(entry.path().filename().wstring()));
    EXPECT_EQ(played, scripts);

    const auto value = [&](std::wstring_view model, ModelKind kind, std::wstring_view parameter) {
        return Utf8(host.Retrieve(model, kind)->Parameter(parameter));
    };
    EXPECT_EQ(value(L"bearing_unit", ModelKind::kAssembly, L"项目号"), "P24-117-B");
    EXPECT_EQ(value(L"std_iso4762_m6x20", ModelKind::kPart, L"项目号"), "");
    EXPECT_EQ(value(L"左护罩", ModelKind::kPart, L"表面处理"), "喷塑 RAL 9006");
    EXPECT_EQ(value(L"roller_tube", ModelKind::kPart, L"表面处理"), "镀锌");
    const SimModel& guard = *host.Retrieve(L"左护罩", ModelKind::kPart);
    EXPECT_EQ(guard.Relations().lines.size(), 2u);
    EXPECT_EQ(Utf8(guard.CurrentMaterial()), "q235b");
    EXPECT_EQ(Utf8(guard.BendTable()), "steel_k045");
    EXPECT_EQ(Utf8(top->PrincipalUnits().name), "Inch Pound Second (IPS)");
    // The overall size shows that the placements, turned ones among them, fit together.
    EXPECT_EQ(value(L"roller_conveyor", ModelKind::kAssembly, L"外形尺寸"), "1200×823×750");
    EXPECT_EQ(value(L"roller_conveyor", ModelKind::kAssembly, L"图幅"), "A1,A3,A3");
    EXPECT_TRUE(host.Retrieve(L"leg_tube", ModelKind::kPart)->look);
    EXPECT_NE(value(L"roller_conveyor", ModelKind::kAssembly, L"下料尺寸"), "");
    EXPECT_NE(top->ActiveRepresentation(), sim::kMasterRepresentation);
    EXPECT_TRUE(fs::exists(folder / "backup" / "roller_unit.drw.1"));
    EXPECT_TRUE(fs::exists(folder / "roller_conveyor" / "roller_conveyor_bom.xlsx"));
    EXPECT_EQ(Utf8(test::ReadSettings(L"KvConfig.ini", L"SetLastDir", L"value")), "1");
    EXPECT_EQ(host.ExportedFiles().size(), 98u);
    EXPECT_TRUE(host.Exported(L"PDF/RC12-40-01_左护罩-2.pdf"));
}

TEST(SampleScripts, OpenTheDrawingOfASelectedComponent) {
    test::ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    HostSetup setup;
    setup.workspace = Conveyor();
    SimHost host(setup);
    SimModel* top = host.Retrieve(L"roller_conveyor", ModelKind::kAssembly);
    ASSERT_NE(top, nullptr);
    host.Open(*top);
    const User& user = host.State().user;
    const fs::path script = Samples() / "scripts" / "open_drawing.user";
    ASSERT_EQ(LoadUserScript(script, host.State().user, host.State().models), std::vector<std::string>());
    EXPECT_TRUE(user.rightClicks);
    // The way names a component that is there.
    SimModel* place = top;
    for (const int id : user.selected.at(0).path) place = place->FindFeature(id)->component;
    EXPECT_EQ(place, user.selected.at(0).model);

    EXPECT_TRUE(host.RightClick().empty()) << "the first one only installs the entries";
    EXPECT_EQ(host.RunFromPopup("KvOpenDrw"), PRO_TK_E_NOT_FOUND) << "nothing is selected";
    EXPECT_EQ(host.TakeProblems().size(), 1u);
    host.Select(user.selected);
    EXPECT_EQ(host.RunFromPopup("KvOpenDrw"), PRO_TK_NO_ERROR);
    ASSERT_NE(host.State().models.current, nullptr);
    EXPECT_EQ(host.State().models.current->Kind(), ModelKind::kDrawing);
    EXPECT_EQ(Utf8(host.State().models.current->Name()), "DRIVE_SHAFT");
    EXPECT_EQ(host.State().screen.CurrentPopup(), nullptr);
}

TEST(SampleScripts, MakeDrawingsScaleAndRename) {
    const test::TempDirectory folder;
    fs::copy(Samples(), folder.Path(), fs::copy_options::recursive);
    HostSetup setup;
    setup.workspace = folder / "roller_conveyor";
    SimHost host(setup);
    const auto play = [&](const char* script, const char* command, const wchar_t* open, ModelKind kind) {
        host.Open(*host.Retrieve(open, kind));
        EXPECT_EQ(LoadUserScript(folder / "scripts" / script, host.State().user, host.State().models),
                  std::vector<std::string>());
        host.Select(std::exchange(host.State().user.selected, {}));
        EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR) << script;
        EXPECT_EQ(host.TakeProblems(), std::vector<std::string>()) << script;
    };
    play("configure_templates.user", "KvConfig", L"side_guide", ModelKind::kAssembly);
    play("drawing_by_size.user", "KvNewDrw", L"side_guide", ModelKind::kAssembly);
    EXPECT_NE(host.State().models.Find(L"side_guide", ModelKind::kDrawing), nullptr);
    const fs::path own = host.PluginHome() / "tp" / "kv.drw.1";
    fs::copy_file(folder / "templates" / "kv.drw.1", own, fs::copy_options::overwrite_existing);
    play("drawing_by_format.user", "NewDraw", L"drive_base_plate", ModelKind::kPart);
    fs::remove(own);
    const SimModel* drawing = host.State().models.Find(L"drive_base_plate", ModelKind::kDrawing);
    ASSERT_NE(drawing, nullptr);
    EXPECT_EQ(Utf8(drawing->Sheets()[0].format), "TITLEBLOCK_A3");
    play("one_scale.user", "SameScale", L"drive_shaft", ModelKind::kDrawing);
    play("dimension_texts.user", "KvDimModify", L"drive_shaft", ModelKind::kDrawing);
    play("single_dimension.user", "KvSingleDim", L"drive_shaft", ModelKind::kDrawing);
    EXPECT_EQ(host.Retrieve(L"drive_shaft", ModelKind::kPart)->Dimensions()[1].text,
              std::vector<std::wstring>{L"总长 @D"});
    play("replace_format.user", "KvFrmReplace", L"drive_shaft", ModelKind::kDrawing);
    EXPECT_TRUE(fs::exists(host.WorkingDirectory() / "bearing_housing.drw.2"));
    play("rename.user", "KvRename", L"roller_conveyor", ModelKind::kAssembly);
    EXPECT_TRUE(fs::exists(host.WorkingDirectory() / "rc2_roller_unit.drw.1"));
}

TEST(SampleScripts, BuildInTheDriveUnit) {
    const test::TempDirectory folder;
    fs::copy(Samples(), folder.Path(), fs::copy_options::recursive);
    HostSetup setup;
    setup.workspace = folder / "roller_conveyor";
    SimHost host(setup);
    host.State().configOptions[L"TEMPLATE_SOLIDPART"] = {L"../templates/start_part.prt"};
    const auto play = [&](const char* script, const char* command, const wchar_t* open) {
        host.Open(*host.Retrieve(open, ModelKind::kAssembly));
        User& user = host.State().user;
        EXPECT_EQ(LoadUserScript(folder / "scripts" / script, user, host.State().models),
                  std::vector<std::string>());
        host.Select(std::exchange(user.selected, {}));
        for (const Pick& pick : std::exchange(user.activated, {})) host.Activate(*pick.model);
        EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR) << script;
        EXPECT_EQ(host.TakeProblems(), std::vector<std::string>()) << script;
    };
    test::ChangeSetting(L"KvConfig.ini", L"CompCopyAutoNum", L"value", L"byUser");
    play("clone_screw.user", "CloneAndReplace", L"roller_conveyor");
    test::ChangeSetting(L"KvConfig.ini", L"CompCopyAutoNum", L"value", L"byComp");
    play("clone_hanger.user", "CloneComp", L"drive_unit");
    play("fix_components.user", "KvRemoveCons", L"drive_unit");
    play("merge_drive.user", "KvMerge", L"drive_unit");
    play("merge_plate.user", "KvMergeTo", L"drive_unit");

    SimModel& unit = *host.Retrieve(L"drive_unit", ModelKind::kAssembly);
    EXPECT_EQ(Utf8(unit.FindFeature(16)->component->Name()), "DRIVE_SCREW");
    ASSERT_GE(unit.Features().size(), 2u);
    EXPECT_EQ(Utf8(unit.Features()[unit.Features().size() - 2].component->Name()), "DRIVE_HANGER-1");
    EXPECT_EQ(host.Retrieve(L"drive_frame", ModelKind::kPart)->Features().size(), 3u);
    EXPECT_EQ(host.Retrieve(L"drive_base_plate", ModelKind::kPart)->Features().size(), 2u);
    EXPECT_EQ(host.Boxes().size(), 0u);
}

TEST(SampleImport, BecomesTheSameWorkspaceFromBothForms) {
    const test::TempDirectory folder;
    const fs::path samples = Samples() / "import";
    const ImportReport step = ImportWorkspace(samples / "hand_pump.stp", folder / "step");
    EXPECT_EQ(step.tops, std::vector<std::string>{"HAND_PUMP.ASM"});
    EXPECT_EQ(step.models, 7U);
    EXPECT_EQ(step.components, 9U);
    EXPECT_EQ(step.notes.size(), 7U);

    ModelStore models(folder / "step");
    SimModel* top = nullptr;
    ASSERT_EQ(models.Retrieve(L"HAND_PUMP", ModelKind::kAssembly, top), PRO_TK_NO_ERROR);
    const SimModel& pump = *top;
    EXPECT_EQ(pump.Parameter(L"PRODUCT_ID"), L"HP-00");
    EXPECT_EQ(pump.Parameter(L"DESCRIPTION"), L"手压泵");
    ASSERT_EQ(pump.Features().size(), 7U);
    EXPECT_EQ(pump.Features()[2].component, models.Find(L"手柄_L_320", ModelKind::kPart));
    EXPECT_EQ(pump.Features()[2].placement,
              (Matrix{{{0, 0, 1, 0}, {0, -1, 0, 0}, {1, 0, 0, 0}, {0, 45, 118, 1}}}));
    EXPECT_EQ(pump.Features()[4].placement,
              (Matrix{{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {-30, 30, 8, 1}}}));
    EXPECT_NE(models.Find(L"Valve_seat_Ø_18", ModelKind::kPart), nullptr);

    const ImportReport table = ImportWorkspace(samples / "hand_pump.csv", folder / "table");
    EXPECT_EQ(table.tops, step.tops);
    EXPECT_EQ(table.components, step.components);
    EXPECT_EQ(table.notes, std::vector<std::string>());
    ModelStore listed(folder / "table");
    ASSERT_EQ(listed.Retrieve(L"HAND_PUMP", ModelKind::kAssembly, top), PRO_TK_NO_ERROR);
    EXPECT_EQ(listed.Find(L"iso_4762_m8x20", ModelKind::kPart)->Parameter(L"名称"), L"内六角螺钉, M8×20");
}

}  // namespace
