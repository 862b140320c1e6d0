// Models on disk and in memory.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/cad/generate.h"
#include "simulator/cad/model_file.h"
#include "simulator/cad/model_store.h"
#include "simulator/report/utf8.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::TempDirectory;

// Names of the files in a folder, in order.
std::vector<std::string> Files(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file()) names.insert(Utf8(entry.path().filename().wstring()));
    return {names.begin(), names.end()};
}

using Names = std::vector<std::string>;

SimModel* Retrieved(ModelStore& store, std::wstring_view name, ModelKind kind) {
    SimModel* model = nullptr;
    EXPECT_EQ(store.Retrieve(name, kind, model), PRO_TK_NO_ERROR) << Utf8(name);
    return model;
}

const Matrix kQuarterTurn = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 0.1, 1}}};

TEST(ModelFile, GivesBackPartsAndAssemblies) {
    const TempDirectory folder;
    {
        ModelStore store(folder.Path());
        SimModel& bolt = *store.Create(L"螺栓_M8", ModelKind::kPart, ModelSubtype::kSheetmetal);
        bolt.AddBlock(1, 2.5, 1e-7).SetBodyCount(2).AddCoordinateSystem(L"坐标系", kQuarterTurn);
        bolt.SetParameter(L"Material", std::wstring(L"钢 \"x\" \u2714"))
            .SetParameter(L"MASS", 0.1)
            .SetParameter(L"COUNT", -7);
        bolt.SetParameter(L"READY", true)
            .SetParameter(L"WHOLE", 2.0)
            .LockParameter(L"COUNT")
            .DriveByRelation(L"MASS");
        SimModel& pump = *store.Create(L"Pump", ModelKind::kAssembly);
        pump.Place(bolt).AddFeature(923);
        pump.Place(bolt, {.status = 5,
                          .statusFlags = 130,
                          .isVisible = false,
                          .isHidden = true,
                          .placement = kQuarterTurn});
        Feature& freed = *pump.FindFeature(1);
        freed.constraints = {{6, 1, 2, true}};
        freed.initial = kQuarterTurn;
        freed.isFrozen = freed.isMovable = freed.isUnplaced = true;
        bolt.AddDimension(L"d1", 5).AddDimension(L"d2", 6);
        bolt.Dimensions()[1] = {L"d2", 6, false, true, {L"Ø@D", L"均布"}, 2};
        pump.SetReadOnly();
        ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(Files(folder.Path()), (Names{"pump.asm.1", "螺栓_m8.prt.1"}));

    ModelStore store(folder.Path());
    SimModel& pump = *Retrieved(store, L"PUMP", ModelKind::kAssembly);
    EXPECT_EQ(Utf8(pump.Name()), "Pump");
    EXPECT_TRUE(pump.IsReadOnly());
    EXPECT_FALSE(pump.IsModified());
    ASSERT_EQ(pump.Features().size(), 3u);
    SimModel* bolt = store.Find(L"螺栓_m8", ModelKind::kPart);
    ASSERT_NE(bolt, nullptr);
    EXPECT_EQ(pump.Features()[0].component, bolt);
    const Feature& freed = *pump.FindFeature(1);
    ASSERT_EQ(freed.constraints.size(), 1u);
    EXPECT_TRUE(freed.constraints[0].isOfInterface);
    EXPECT_EQ(freed.initial, kQuarterTurn);
    EXPECT_TRUE(freed.isFrozen && freed.isMovable && freed.isUnplaced);
    EXPECT_EQ(pump.FindFeature(2)->type, 923);
    EXPECT_EQ(pump.FindFeature(2)->initial, std::nullopt);
    EXPECT_EQ(pump.FindFeature(2)->component, nullptr);
    const Feature& last = *pump.FindFeature(3);
    EXPECT_EQ(last.component, bolt);
    EXPECT_EQ(last.status, 5);
    EXPECT_EQ(last.statusFlags, 130u);
    EXPECT_FALSE(last.isVisible);
    EXPECT_TRUE(last.isHidden);
    EXPECT_EQ(last.placement, kQuarterTurn);

    EXPECT_EQ(bolt->Subtype(), ModelSubtype::kSheetmetal);
    EXPECT_EQ(bolt->BodyCount(), 2);
    ASSERT_EQ(bolt->Surfaces().size(), 6u);
    EXPECT_EQ(bolt->Surfaces()[5]->box.maximum.y, 2.5);
    EXPECT_EQ(bolt->Surfaces()[5]->box.maximum.z, 1e-7);
    EXPECT_EQ(bolt->CoordinateSystems().at(0).placement, kQuarterTurn);
    EXPECT_EQ(Utf8(bolt->Parameter(L"material")), "钢 \"x\" \u2714");
    EXPECT_EQ(bolt->FindParameter(L"MASS")->value, ParameterValue(0.1));
    EXPECT_TRUE(bolt->FindParameter(L"MASS")->relationDriven);
    EXPECT_EQ(bolt->FindParameter(L"COUNT")->value, ParameterValue(-7));
    EXPECT_TRUE(bolt->FindParameter(L"COUNT")->locked);
    EXPECT_EQ(bolt->FindParameter(L"READY")->value, ParameterValue(true));
    EXPECT_EQ(bolt->FindParameter(L"WHOLE")->value, ParameterValue(2.0));
    ASSERT_EQ(bolt->Dimensions().size(), 2u);
    EXPECT_EQ(bolt->Dimensions()[0].text, std::vector<std::wstring>{L"@D"});
    EXPECT_EQ(bolt->Dimensions()[1].text, (std::vector<std::wstring>{L"Ø@D", L"均布"}));
    EXPECT_TRUE(bolt->Dimensions()[1].isReference);
    EXPECT_EQ(bolt->Dimensions()[1].valueDisplay, 2);
    // New items do not take identifiers that the file has used.
    bolt->AddSurface({});
    EXPECT_EQ(bolt->Surfaces()[6]->id, 8);
}

TEST(ModelFile, GivesBackDrawingsAndManufacturingModels) {
    const TempDirectory folder;
    {
        ModelStore store(folder.Path());
        SimModel& pump = *store.Create(L"PUMP", ModelKind::kAssembly);
        SimModel& drawing = *store.Create(L"PUMP", ModelKind::kDrawing);
        drawing.AddSheet(L"A3").AddSheet(L"A4").AddView(pump, 2).AddView(pump, 1);
        drawing.Sheets()[1] = {L"A4", L"详图", 0.5, L"a4_frame"};
        drawing.Views()[0].scale = 2.0;
        drawing.AddTable(2, L"title", true);
        SimModel& mould = *store.Create(L"MOULD", ModelKind::kManufacturing, ModelSubtype::kMould);
        mould.SetMfgAssembly(pump);
        ASSERT_EQ(store.Save(drawing), PRO_TK_NO_ERROR);
        ASSERT_EQ(store.Save(mould), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(Files(folder.Path()), (Names{"mould.mfg.1", "pump.asm.1", "pump.drw.1"}));

    ModelStore store(folder.Path());
    SimModel& drawing = *Retrieved(store, L"pump", ModelKind::kDrawing);
    SimModel* pump = store.Find(L"PUMP", ModelKind::kAssembly);
    ASSERT_NE(pump, nullptr);
    EXPECT_EQ(drawing.ShownModels(), std::vector<SimModel*>{pump});
    ASSERT_EQ(drawing.Sheets().size(), 2u);
    EXPECT_EQ(Utf8(drawing.Sheets()[1].name), "详图");
    EXPECT_EQ(drawing.Sheets()[1].scale, 0.5);
    EXPECT_EQ(Utf8(drawing.Sheets()[1].format), "a4_frame");
    ASSERT_EQ(drawing.Tables().size(), 1u);
    EXPECT_EQ(drawing.Tables()[0].sheet, 2);
    EXPECT_TRUE(drawing.Tables()[0].isFromFormat);
    ASSERT_EQ(drawing.Views().size(), 2u);
    EXPECT_EQ(drawing.Views()[0].sheet, 2);
    EXPECT_EQ(drawing.Views()[0].model, pump);
    EXPECT_EQ(drawing.Views()[0].scale, 2.0);
    EXPECT_FALSE(drawing.Views()[1].scale.has_value());
    SimModel& mould = *Retrieved(store, L"mould", ModelKind::kManufacturing);
    EXPECT_EQ(mould.MfgAssembly(), pump);
    EXPECT_EQ(mould.Subtype(), ModelSubtype::kMould);
}

TEST(ModelFile, NamesThePlaceOfADamage) {
    const std::string head = R"({"format": "hostsim model", "version": 1, "name": "P", "kind": "part")";
    const std::string bolt = R"({"id": 1, "model": "bolt.prt")";
    const struct {
        std::string text, problem;
    } cases[] = {
        {"", "p.prt.1:1: expected JSON"},
        {"{\n  \"format\": \"hostsim model\",\n  \"version\": }", "p.prt.1:3: expected JSON"},
        {head + ",\n\n\"surfaces\": [", "p.prt.1:3: expected JSON"},
        {head + ",\n\"subtype\": \"\xff\"}", "p.prt.1:2: expected JSON"},
        {"[]", "p.prt.1: /: expected an object"},
        {R"({"format": "something else"})", "p.prt.1: /format: expected \"hostsim model\""},
        {R"({"format": "hostsim model", "version": 2})",
         "p.prt.1: /version: expected a whole number from 1 to 1"},
        {R"({"format": "hostsim model", "version": 1, "name": "P", "kind": "assembly"})",
         "p.prt.1: /kind: expected \"part\""},
        {head + R"(, "colour": 3})", "p.prt.1: /: expected no key \"colour\" here"},
        {head + R"(, "features": [{"id": 1, "type": 5}, {"id": 1, "type": 5}]})",
         "p.prt.1: /features/1/id: expected an identifier"},
        {head + R"(, "features": [{"type": 5}]})", "p.prt.1: /features/0: expected the key \"id\""},
        {head + R"(, "features": [)" + bolt + R"(, "type": 5}]})",
         "p.prt.1: /features/0: expected either \"model\" or \"type\""},
        {head + R"(, "features": [{"id": 1, "model": "bolt"}]})",
         "p.prt.1: /features/0/model: expected a model as"},
        {head + R"(, "features": [)" + bolt + R"(, "status": "asleep"}]})",
         "p.prt.1: /features/0/status: expected one of"},
        {head + R"(, "features": [)" + bolt +
             R"(, "placement": [[1,0,0,0],[0,1,0,0],[0,0,1,2],[0,0,0,1]]}]})",
         "p.prt.1: /features/0/placement/2: expected a last column"},
        {head + R"(, "features": [)" + bolt + R"(, "origin": [1, 2]}]})",
         "p.prt.1: /features/0/origin: expected a list of 3 numbers"},
        {head + R"(, "parameters": [{"name": "A", "type": "integer", "value": 1.5}]})",
         "p.prt.1: /parameters/0/value: expected a whole number"},
        {head + R"(, "parameters": [{"name": "A", "type": "integer", "value": 4294967296}]})",
         "p.prt.1: /parameters/0/value: expected a whole number"},
        {head + R"(, "parameters": [{"name": "A", "type": "string", "value": ")" + std::string(81, 'x') +
             R"("}]})",
         "p.prt.1: /parameters/0/value: expected at most 80 characters"},
        {head +
             R"(, "parameters": [{"name": "A", "type": "real", "value": 1}, {"name": "a", "type": "real", "value": 2}]})",
         "p.prt.1: /parameters/1/name: expected a name of its own"},
        {head + R"(, "surfaces": [{"id": 1, "minimum": [0, 2, 0], "maximum": [1, 1, 1]}]})",
         "p.prt.1: /surfaces/0: expected a minimum"},
        {head + R"(, "views": [{"id": 1, "sheet": 1, "model": "bolt.prt"}]})",
         "p.prt.1: /views/0/sheet: expected"},
        // Numbers that no variable of the host holds.
        {head + R"(, "features": [], "surfaces": [{"id": 1}, {"id": 2, "minimum": [0, [], -1e999]}]})",
         "p.prt.1: /surfaces/1/minimum/2: expected a number between"},
        {"1e999", "p.prt.1: /: expected a number between"},
        // What a reader passes over: the file was cut, pasted or copied by hand.
        {head + "}\n]", "p.prt.1:2: expected JSON"},
        {head + "}\n" + std::string(3, '\0') + "{}", "p.prt.1:2: expected no zero byte"},
        {head + R"(, "features": [{"id": 1, "type": 5, "name": "a:\"b", "id": 2}]})",
         "p.prt.1: /features/0/id: expected each key once"},
        {R"({"format": "hostsim model", "version": 1, "name": "Q", "kind": "part"})",
         "p.prt.1: /name: expected \"P\", as the file is called"},
        {head + R"(, "features": [{"id": 2147483647, "type": 5}]})",
         "p.prt.1: /features/0/id: expected a whole number from 1 to 2147483646"},
    };
    const TempDirectory folder;
    for (const auto& item : cases) {
        folder.Write("p.prt.1", item.text);
        ModelStore store(folder.Path());
        SimModel* model = nullptr;
        EXPECT_EQ(store.Retrieve(L"P", ModelKind::kPart, model), PRO_TK_GENERAL_ERROR) << item.text;
        EXPECT_EQ(model, nullptr);
        ASSERT_EQ(store.Problems().size(), 1u) << item.text;
        EXPECT_EQ(store.Problems()[0].substr(0, item.problem.size()), item.problem) << item.text;
    }
}

TEST(ModelStore, SavesTheNextVersionOfWhatHasChanged) {
    const TempDirectory folder;
    ModelStore store(folder.Path());
    SimModel& bolt = *store.Create(L"BOLT", ModelKind::kPart);
    SimModel& frame = *store.Create(L"FRAME", ModelKind::kAssembly);
    SimModel& pump = *store.Create(L"PUMP", ModelKind::kAssembly);
    frame.Place(bolt);
    pump.Place(frame).Place(bolt);
    ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    bolt.SetParameter(L"A", 1);
    ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    EXPECT_EQ(Files(folder.Path()),
              (Names{"bolt.prt.1", "bolt.prt.2", "frame.asm.1", "pump.asm.1", "pump.asm.2"}));

    // Versions count as numbers, and what somebody else has written meanwhile is neither missed nor written
    // over.
    fs::copy_file(folder / "bolt.prt.2", folder / "bolt.prt.9");
    fs::copy_file(folder / "bolt.prt.1", folder / "bolt.prt.10");
    EXPECT_EQ(store.NewestFile(L"Bolt", ModelKind::kPart, folder.Path()).version, 10);
    ASSERT_EQ(store.Save(bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(bolt.origin.filename(), "bolt.prt.11");
    fs::remove(folder / "bolt.prt.11");
    EXPECT_EQ(store.NewestFile(L"Bolt", ModelKind::kPart, folder.Path()).version, 10);
    ModelStore other(folder.Path());
    EXPECT_FALSE(Retrieved(other, L"bolt", ModelKind::kPart)->HasParameter(L"A"));

    // A value that no file can hold, and a folder that is gone.
    bolt.SetParameter(L"A", std::numeric_limits<double>::infinity());
    EXPECT_EQ(store.Save(bolt), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(store.Save(pump), PRO_TK_CHECKOUT_CONFLICT);
    frame.directory = folder / "gone";
    EXPECT_EQ(store.Save(frame), PRO_TK_GENERAL_ERROR);
    for (const std::string& name : Files(folder.Path()))
        EXPECT_EQ(name.find(".tmp"), std::string::npos) << name;
}

TEST(ModelStore, ListsTheNewestFileOfEveryModel) {
    const TempDirectory folder;
    for (const char* name : {"pump.drw.1", "PUMP.prt.2", "pump.prt.10", "pump.asm.1", "a.frm.3", "pump.prt.x",
                             "pump.txt.1", "pump.prt.007", "~pump.tmp", "pump.prt", ".prt.1"})
        folder.Write(name, "");
    ModelStore store(folder.Path());
    Names listed;
    for (const ModelFile& file : store.NewestFiles(folder.Path()))
        listed.push_back(Utf8(file.path.filename().wstring()));
    EXPECT_EQ(listed, (Names{"a.frm.3", "pump.asm.1", "pump.prt.10", "pump.drw.1"}));
}

TEST(ModelStore, LoadsAssembliesThatContainThemselves) {
    const TempDirectory folder;
    const std::string head = R"({"format": "hostsim model", "version": 1, "kind": "assembly", "name": )";
    folder.Write("a.asm.1",
                 head + R"("A", "features": [{"id": 1, "model": "a.asm"}, {"id": 2, "model": "b.asm"}]})");
    folder.Write("b.asm.1", head + R"("B", "features": [{"id": 1, "model": "a.asm"}]})");
    ModelStore store(folder.Path());
    SimModel& a = *Retrieved(store, L"A", ModelKind::kAssembly);
    SimModel& b = *store.Find(L"B", ModelKind::kAssembly);
    EXPECT_EQ(a.Features()[0].component, &a);
    EXPECT_EQ(a.Features()[1].component, &b);
    EXPECT_EQ(b.Features()[0].component, &a);
    a.SetModified(true);
    EXPECT_EQ(store.Save(b), PRO_TK_NO_ERROR);
    EXPECT_EQ(Files(folder.Path()), (Names{"a.asm.1", "a.asm.2", "b.asm.1", "b.asm.2"}));
}

TEST(ModelStore, KeepsComponentsThatCannotBeLoaded) {
    const TempDirectory folder;
    {
        ModelStore store(folder.Path());
        SimModel& pump = *store.Create(L"PUMP", ModelKind::kAssembly);
        for (const wchar_t* name : {L"GOOD", L"BROKEN", L"ABSENT"})
            pump.Place(*store.Create(name, ModelKind::kPart));
        pump.Place(*store.Find(L"BROKEN", ModelKind::kPart));
        ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    }
    fs::rename(folder / "absent.prt.1", folder / "kept");
    folder.Write("broken.prt.2", "no model");
    {
        ModelStore store(folder.Path());
        SimModel& pump = *Retrieved(store, L"PUMP", ModelKind::kAssembly);
        EXPECT_EQ(pump.Features()[0].component, store.Find(L"GOOD", ModelKind::kPart));
        EXPECT_EQ(pump.Features()[0].status, kFeatureActive);
        for (const std::size_t missing : {1u, 2u, 3u}) {
            EXPECT_EQ(pump.Features()[missing].component, nullptr);
            EXPECT_EQ(pump.Features()[missing].status, kFeatureSuppressed);
        }
        EXPECT_EQ(Utf8(pump.Features()[2].missingName), "ABSENT");
        ASSERT_EQ(store.Problems().size(), 1u);
        EXPECT_EQ(store.Problems()[0].substr(0, 15), "broken.prt.2:1:");
        EXPECT_EQ(store.DeadEnds(),
                  (Names{"pump.asm.1: /features/1/model: BROKEN.prt leads to no model that can be read",
                         "pump.asm.1: /features/2/model: ABSENT.prt leads to no model that can be read",
                         "pump.asm.1: /features/3/model: BROKEN.prt leads to no model that can be read"}));
        ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    }
    // The saved assembly still knows them, as active as they were.
    fs::rename(folder / "kept", folder / "absent.prt.1");
    fs::remove(folder / "broken.prt.2");
    ModelStore store(folder.Path());
    for (const Feature& feature : Retrieved(store, L"PUMP", ModelKind::kAssembly)->Features()) {
        EXPECT_NE(feature.component, nullptr) << feature.id;
        EXPECT_EQ(feature.status, kFeatureActive) << feature.id;
    }
}

TEST(ModelStore, TellsWhatAFileNamesInVain) {
    const TempDirectory folder;
    const std::string head = R"({"format": "hostsim model", "version": 1, "name": )";
    folder.Write("p.asm.1", head + R"("P", "kind": "assembly", "features": [)"
                                   R"({"id": 1, "model": "a.prt", "status": "suppressed"},)"
                                   R"({"id": 2, "model": "../a.prt"},)"
                                   R"({"id": 3, "type": 1238, "reference": "b.prt"}]})");
    folder.Write("p.drw.1", head + R"("P", "kind": "drawing", "sheets": [{"size": "A3"}],)"
                                   R"("models": ["p.asm", "c.prt"],)"
                                   R"("views": [{"id": 1, "sheet": 1, "model": "d.prt"}]})");
    ModelStore store(folder.Path());
    (void)Retrieved(store, L"P", ModelKind::kDrawing);
    Names dead = store.DeadEnds();
    std::ranges::sort(dead);
    EXPECT_EQ(dead,
              (Names{"p.asm.1: /features/1/model: ../a.prt leads out of the workspace; a model is named "
                     "without a folder",
                     "p.asm.1: /features/2/reference: b.prt leads to no model that can be read",
                     "p.drw.1: /models/1: c.prt leads to no model that can be read",
                     "p.drw.1: /views/0/model: d.prt leads to no model that can be read"}));
}

// The next save would have no name that is a model's.
TEST(ModelStore, CountsNoFurtherThanAFileNameTells) {
    const TempDirectory folder;
    ModelStore store(folder.Path());
    SimModel& bolt = *store.Create(L"BOLT", ModelKind::kPart);
    ASSERT_EQ(store.Save(bolt), PRO_TK_NO_ERROR);
    fs::copy_file(folder / "bolt.prt.1", folder / "bolt.prt.999999998");
    EXPECT_EQ(store.Save(bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(store.Save(bolt), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(Files(folder.Path()), (Names{"bolt.prt.1", "bolt.prt.999999998", "bolt.prt.999999999"}));
    ModelStore other(folder.Path());
    SimModel* model = nullptr;
    EXPECT_EQ(other.Retrieve(L"BOLT", ModelKind::kPart, model), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(other.Problems(), Names{"bolt.prt.999999999: expected a version below 999999999, as the next "
                                      "save counts on from it"});
}

TEST(ModelStore, LoadsByPath) {
    const TempDirectory folder, elsewhere;
    {
        ModelStore store(elsewhere.Path());
        SimModel& bolt = *store.Create(L"螺栓", ModelKind::kPart);
        ASSERT_EQ(store.Save(store.Create(L"PUMP", ModelKind::kAssembly)->Place(bolt)), PRO_TK_NO_ERROR);
        bolt.SetParameter(L"A", 2);
        ASSERT_EQ(store.Save(bolt), PRO_TK_NO_ERROR);
    }
    const struct {
        fs::path path;
        ModelKind kind;
        ProError status;
    } cases[] = {
        {elsewhere / L"螺栓", ModelKind::kPart, PRO_TK_NO_ERROR},
        {elsewhere / L"螺栓.PRT", ModelKind::kPart, PRO_TK_NO_ERROR},
        {elsewhere / L"螺栓.prt.1", ModelKind::kPart, PRO_TK_NO_ERROR},
        {elsewhere / L"螺栓.prt.7", ModelKind::kPart, PRO_TK_E_NOT_FOUND},
        {elsewhere / L"螺栓.prt", ModelKind::kAssembly, PRO_TK_INVALID_FILE},
        {elsewhere / L"螺栓", ModelKind::kAssembly, PRO_TK_E_NOT_FOUND},
        {L"螺栓", ModelKind::kPart, PRO_TK_E_NOT_FOUND},
    };
    for (const auto& item : cases) {
        ModelStore store(folder.Path());
        SimModel* model = nullptr;
        EXPECT_EQ(store.Load(item.path, item.kind, model), item.status) << Utf8(item.path.wstring());
        ASSERT_EQ(model != nullptr, item.status == PRO_TK_NO_ERROR);
        if (model == nullptr) continue;
        EXPECT_EQ(model->HasParameter(L"A"), item.path.extension() != ".1");
        EXPECT_EQ(model->directory, elsewhere.Path());
    }
    // Components beside their assembly are found, although the working directory does not have them.
    ModelStore store(folder.Path());
    SimModel* pump = nullptr;
    ASSERT_EQ(store.Load(elsewhere / "pump.asm", ModelKind::kAssembly, pump), PRO_TK_NO_ERROR);
    EXPECT_NE(pump->Features()[0].component, nullptr);
}

TEST(ModelStore, BacksUpWithEverythingBelow) {
    const TempDirectory folder, target;
    ModelStore store(folder.Path());
    SimModel& bolt = *store.Create(L"BOLT", ModelKind::kPart);
    SimModel& pump = *store.Create(L"PUMP", ModelKind::kAssembly);
    pump.Place(bolt);
    ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    EXPECT_EQ(store.Backup(pump, target / "gone"), PRO_TK_INVALID_DIR);
    ASSERT_EQ(store.Backup(bolt, target.Path()), PRO_TK_NO_ERROR);
    ASSERT_EQ(store.Backup(pump, target.Path()), PRO_TK_NO_ERROR);
    EXPECT_EQ(Files(target.Path()), (Names{"bolt.prt.1", "pump.asm.1"}));
    // From now on saves go there too.
    bolt.SetParameter(L"A", 1);
    ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    EXPECT_EQ(Files(target.Path()), (Names{"bolt.prt.1", "bolt.prt.2", "pump.asm.1", "pump.asm.2"}));
    EXPECT_EQ(Files(folder.Path()), (Names{"bolt.prt.1", "pump.asm.1"}));
}

TEST(ModelStore, ErasesOnlyWhatNobodyUses) {
    const TempDirectory folder;
    ModelStore store(folder.Path());
    SimModel& bolt = *store.Create(L"BOLT", ModelKind::kPart);
    SimModel& pump = *store.Create(L"PUMP", ModelKind::kAssembly);
    pump.Place(bolt, 2).Place(pump);
    EXPECT_FALSE(store.Erase(bolt));
    EXPECT_TRUE(store.Erase(pump));
    EXPECT_TRUE(store.Erase(bolt));
    EXPECT_EQ(store.FromHandle(&pump), nullptr);
    SimModel* again = store.Create(L"pump", ModelKind::kAssembly);
    ASSERT_NE(again, nullptr);
    EXPECT_NE(again, &pump);
    EXPECT_EQ(store.Create(L"Pump", ModelKind::kAssembly), nullptr);
    EXPECT_NE(store.Create(std::wstring(31, L'X'), ModelKind::kPart), nullptr);
    EXPECT_EQ(store.Create(std::wstring(32, L'X'), ModelKind::kPart), nullptr);
}

TEST(ModelStore, ChangesTheWorkingDirectory) {
    const TempDirectory folder;
    fs::create_directories(folder / L"图纸" / L"A");
    folder.Write("file", "");
    const fs::path processDirectory = fs::current_path();
    ModelStore store(folder.Path());
    EXPECT_EQ(store.ChangeDirectory(L"图纸\\A\\"), PRO_TK_NO_ERROR);
    EXPECT_EQ(store.WorkingDirectory(), folder / L"图纸" / L"A");
    EXPECT_EQ(store.ChangeDirectory(L".."), PRO_TK_NO_ERROR);
    EXPECT_EQ(store.WorkingDirectory(), folder / L"图纸");
    EXPECT_EQ(store.ChangeDirectory((folder.Path() / "file").wstring()), PRO_TK_INVALID_DIR);
    EXPECT_EQ(store.ChangeDirectory(L"gone"), PRO_TK_INVALID_DIR);
    EXPECT_EQ(store.ChangeDirectory(L""), PRO_TK_INVALID_NAME);
    EXPECT_EQ(store.WorkingDirectory(), folder / L"图纸");
    EXPECT_EQ(fs::current_path(), processDirectory);
}

// Placements and levels under the model as a whole walk meets them.
struct Walked {
    long long placements = 0;
    int depth = 0;
};

Walked Walk(SimModel& model, std::map<SimModel*, Walked>& known) {
    if (const auto found = known.find(&model); found != known.end()) return found->second;
    Walked walked;
    for (const Feature& feature : model.Features()) {
        const Walked below = Walk(*feature.component, known);
        walked.placements += 1 + below.placements;
        walked.depth = std::max(walked.depth, 1 + below.depth);
    }
    known[&model] = walked;
    return walked;
}

TEST(Generate, MakesTheSizeAndDepthAskedFor) {
    const struct {
        int placements, depth;
    } cases[] = {{100000, 6}, {10000, 2}, {1000, 1}, {50, 5}, {200, 20}, {3, 3}, {1, 1}};
    const TempDirectory folder;
    for (const auto& item : cases) {
        ModelStore store(folder.Path());
        SimModel& top = GenerateAssembly(store, item.placements, item.depth, 7);
        std::map<SimModel*, Walked> known;
        const Walked walked = Walk(top, known);
        EXPECT_EQ(walked.placements, item.placements) << item.depth;
        EXPECT_EQ(walked.depth, item.depth) << item.placements;
        if (item.placements < 1000) continue;
        EXPECT_NEAR(static_cast<double>(known.size()), item.placements / 10.0, item.placements / 100.0);
    }
    ModelStore one(folder.Path()), two(folder.Path());
    EXPECT_EQ(ModelFileText(GenerateAssembly(one, 500, 3, 1)),
              ModelFileText(GenerateAssembly(two, 500, 3, 1)));
}

}  // namespace
