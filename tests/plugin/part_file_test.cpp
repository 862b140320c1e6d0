// SetMat and SetBendTable: files for one part or many.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;

using sim::ModelKind;
using sim::SimModel;
using test::ItemOf;
using test::Messages;
using test::Texts;
using test::Whole;

constexpr char kMaterial[] = R"({"format": "hostsim material", "version": 1, "bendTable": "FROM_STEEL"})";
constexpr char kBendTable[] = R"({"format": "hostsim bend table", "version": 1})";
constexpr wchar_t kMaterialDone[] = L"材料设置完成";
constexpr wchar_t kTableDone[] = L"钣金件批量折弯表设置完成";
constexpr wchar_t kFileNameTooLong[] = L"\t文件名称超过31个字符，未做任何改动！\t";
constexpr int kFeature = 3;
constexpr int kSurface = 5;

// PUMP holds BOLT and SUB twice, SUB holds PLATE, of sheet metal, and NUT; EMPTY holds nothing.
class PartFiles : public testing::Test {
protected:
    PartFiles() {
        sub.Place(plate, 2).Place(nut);
        pump.Place(bolt).Place(sub, 2).Place(empty);
        host.Open(pump);
        folder = test::MakeFolder(host, "data files");
    }
    void Choose(const std::wstring& name, const char* content) {
        test::WriteBytes(folder / name, content);
        host.AnswerFile((folder / name).wstring());
    }
    ProError SetMat(const std::wstring& name = L"Q235B.mtl") {
        Choose(name, kMaterial);
        return host.Run("SetMat");
    }
    ProError SetBendTable() {
        Choose(L"steel_2.bnd", kBendTable);
        return host.Run("SetBendTable");
    }
    // Names of the parts with this material, or with that bend table.
    Texts With(std::wstring_view material, std::wstring_view table = L"-") {
        Texts names;
        for (const SimModel* part : {&bolt, &nut, &plate})
            if (part->CurrentMaterial() == material || part->BendTable() == table)
                names.push_back(part->Name());
        return names;
    }
    Texts Option() { return host.State().configOptions[L"PRO_SHEET_MET_DIR"]; }

    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& empty = host.AddAssembly(L"EMPTY");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& nut = host.AddPart(L"NUT");
    SimModel& plate = host.AddSheetmetal(L"PLATE");
    fs::path folder;
};

TEST_F(PartFiles, MaterialGoesToEachPartOnce) {
    host.State().configOptions[L"PRO_MATERIAL_DIR"] = {folder.wstring()};
    // The choice begins in the folder of the option.
    test::WriteBytes(folder / L"Q235B.MAT", kMaterial);
    host.AnswerFile(L"Q235B.MAT");
    EXPECT_EQ(host.Run("SetMat"), PRO_TK_NO_ERROR);
    EXPECT_EQ(With(L"Q235B"), (Texts{L"BOLT", L"NUT", L"PLATE"}));
    EXPECT_EQ(plate.BendTable(), L"FROM_STEEL");
    EXPECT_EQ(plate.Regenerations(), 1);
    EXPECT_EQ(Messages(host), Texts{kMaterialDone});
    EXPECT_EQ(host.State().user.questions, Texts{L"请选择材料"});
    EXPECT_EQ(host.State().user.messageArea,
              (Texts{L"为钣金件设置材料时，请确认是否需要同时更改折弯表", L"零件：完成 3"}));
}

TEST_F(PartFiles, MaterialGoesToWhatIsSelected) {
    struct Case {
        std::vector<sim::Pick> picks;
        Texts parts, messages;
    };
    const Case cases[] = {
        {{Whole(bolt)}, {L"BOLT"}, {kMaterialDone}},
        // A component; a sub-assembly at one of its places, and a part in it besides.
        {{ItemOf(pump, kFeature, 1)}, {L"BOLT"}, {kMaterialDone}},
        {{ItemOf(pump, kFeature, 2), Whole(nut), ItemOf(pump, kFeature, 3)},
         {L"NUT", L"PLATE"},
         {kMaterialDone}},
        {{Whole(empty), Whole(nut)}, {L"NUT"}, {L"当前模型中没有零件", kMaterialDone}},
        {{ItemOf(bolt, kSurface, 1)}, {}, {kMaterialDone}},
        {{Whole(pump)}, {L"BOLT", L"NUT", L"PLATE"}, {kMaterialDone}},
    };
    int number = 0;
    for (const Case& one : cases) {
        SCOPED_TRACE(number);
        const std::wstring name = L"M" + std::to_wstring(number++);
        host.Select(one.picks);
        host.State().user.boxes.clear();
        EXPECT_EQ(SetMat(name + L".mtl"), PRO_TK_NO_ERROR);
        EXPECT_EQ(With(name), one.parts);
        EXPECT_EQ(Messages(host), one.messages);
    }
}

TEST_F(PartFiles, MaterialOfAPartIsItsOwnAndADrawingHasNone) {
    host.Open(plate);
    EXPECT_EQ(SetMat(), PRO_TK_NO_ERROR);
    EXPECT_EQ(With(L"Q235B"), Texts{L"PLATE"});
    host.Open(host.AddDrawing(L"BOLT", {L"A3"}, {&bolt}), sim::HostMode::kAssembly);
    EXPECT_EQ(SetMat(L"OTHER.mtl"), PRO_TK_NO_ERROR);
    EXPECT_EQ(With(L"OTHER"), Texts{});
    EXPECT_EQ(Messages(host), (Texts{kMaterialDone, kMaterialDone}));
}

TEST_F(PartFiles, AMaterialThatCannotBeHadIsInTheReport) {
    nut.SetReadOnly();
    Choose(L"BAD.mtl", "no material");
    EXPECT_EQ(host.Run("SetMat"), PRO_TK_NO_ERROR);
    EXPECT_EQ(test::LastReport(host).Reason(L"BOLT"), L"材料文件内容有误");
    EXPECT_EQ(test::LastReport(host).Reason(L"NUT"), L"模型只读或被锁定");
    EXPECT_EQ(host.State().user.messageArea.back(), L"零件：完成 0，失败 3");
    EXPECT_EQ(Messages(host), Texts{kMaterialDone});
}

TEST_F(PartFiles, NothingIsTouchedWhenTheFileWouldNotBeTheOneThatTheHostTakes) {
    EXPECT_NE(SetMat(std::wstring(32, L'M') + L".mtl"), PRO_TK_NO_ERROR);
    EXPECT_NE(SetMat(std::wstring(81, L'M') + L".mtl"), PRO_TK_NO_ERROR);
    test::WriteBytes(folder / "TWICE.mtl", kMaterial);
    EXPECT_NE(SetMat(L"TWICE.mat"), PRO_TK_NO_ERROR);
    host.State().report.Arm({"ProDirectoryChange", 1, PRO_TK_CANT_ACCESS});
    EXPECT_NE(SetMat(), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              (Texts{kFileNameTooLong, kFileNameTooLong,
                     L"\t同一目录中有同名的.mtl文件，主程序会读取它而不是所选的.mat文件，未做任何改动！\t",
                     L"\t无法进入材料文件所在目录，未做任何改动！\t"}));
    EXPECT_EQ(SetMat(std::wstring(31, L'M') + L".mtl"), PRO_TK_NO_ERROR);
    EXPECT_EQ(bolt.Materials().size(), 1u);
}

TEST_F(PartFiles, AnUnreadableSelectionStopsBoth) {
    host.State().desk.canAccessSelection = false;
    EXPECT_NE(host.Run("SetMat"), PRO_TK_NO_ERROR);
    EXPECT_NE(host.Run("SetBendTable"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), Texts(2, L"\t无法读取所选对象，未做任何改动！\t"));
}

TEST_F(PartFiles, CancellingTheChoiceSaysNothing) {
    host.AnswerFile(std::nullopt);
    EXPECT_EQ(host.Run("SetMat"), PRO_TK_USER_ABORT);
    host.AnswerFile(std::nullopt);
    EXPECT_EQ(host.Run("SetBendTable"), PRO_TK_USER_ABORT);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(PartFiles, BendTableGoesToSheetMetalOnlyAndTheOptionGoesBack) {
    host.State().configOptions[L"PRO_SHEET_MET_DIR"] = {folder.wstring()};
    test::WriteBytes(folder / "steel_2.bnd", kBendTable);
    host.AnswerFile(L"steel_2.bnd");
    EXPECT_EQ(host.Run("SetBendTable"), PRO_TK_NO_ERROR);
    EXPECT_EQ(With(L"-", L"steel_2"), Texts{L"PLATE"});
    // The host regenerates by itself, the command once more; the assembly at the end.
    EXPECT_EQ(plate.Regenerations(), 2);
    EXPECT_EQ(pump.Regenerations(), 1);
    EXPECT_EQ(pump.TreeRefreshes(), 1);
    EXPECT_EQ(Messages(host), Texts{kTableDone});
    EXPECT_EQ(Option(), Texts{folder.wstring()});
    EXPECT_EQ(host.State().user.messageArea.back(), L"钣金件：完成 1");
}

TEST_F(PartFiles, BendTableWithoutAnOptionBeforeLeavesAnEmptyOne) {
    host.Open(plate);
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.BendTable(), L"steel_2");
    // By the host alone, and as the current model.
    EXPECT_EQ(plate.Regenerations(), 2);
    EXPECT_EQ(Option(), Texts{L""});
    host.Open(bolt);
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    EXPECT_EQ(bolt.BendTable(), L"");
    EXPECT_EQ(Messages(host), (Texts{kTableDone, kTableDone}));
}

TEST_F(PartFiles, BendTableForASelectionWithoutSheetMetalEndsAtOnce) {
    for (SimModel* model : {&bolt, &empty}) {
        host.State().configOptions.erase(L"PRO_SHEET_MET_DIR");
        host.Select({Whole(*model), ItemOf(plate, kSurface, 1)});
        EXPECT_EQ(SetBendTable(), PRO_TK_E_NOT_FOUND);
        EXPECT_EQ(fs::path(Option().at(0)), folder / "");
    }
    EXPECT_EQ(Messages(host), Texts(2, L"当前模型中没有钣金件"));
    EXPECT_EQ(pump.Regenerations() + pump.TreeRefreshes(), 0);
    host.State().configOptions.erase(L"PRO_SHEET_MET_DIR");
    host.Select({Whole(bolt), Whole(plate)});
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.Regenerations(), 1);
    EXPECT_EQ(host.LastMessage(), kTableDone);
}

TEST_F(PartFiles, AnAssemblyWithoutPartsIsTold) {
    host.Open(empty);
    EXPECT_EQ(SetMat(), PRO_TK_NO_ERROR);
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              (Texts{L"当前模型中没有零件", kMaterialDone, L"当前模型中没有子钣金件", kTableDone}));
}

TEST_F(PartFiles, AFailedWalkIsToldAndTheEndIsReached) {
    host.State().report.Arm({"ProSolidFeatVisit", 0, PRO_TK_BAD_INPUTS});
    EXPECT_EQ(SetMat(), PRO_TK_NO_ERROR);
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    host.Select({Whole(sub)});
    EXPECT_EQ(SetBendTable(), PRO_TK_NO_ERROR);
    host.State().report.DisarmAll();
    host.State().report.Arm({"ProArrayAlloc", 0, PRO_TK_GENERAL_ERROR});
    EXPECT_NE(SetMat(), PRO_TK_NO_ERROR);
    host.State().report.DisarmAll();
    EXPECT_EQ(Messages(host), (Texts{L"未找到子零件", kMaterialDone, L"未找到子钣金件", kTableDone,
                                     L"未找到钣金件", kTableDone, L"ProArray Alloc error"}));
}

TEST_F(PartFiles, AnOptionThatCannotBeSetStopsBeforeAnyPart) {
    host.State().report.Arm({"ProConfigoptSet", 1, PRO_TK_GENERAL_ERROR});
    EXPECT_NE(SetBendTable(), PRO_TK_NO_ERROR);
    host.State().report.DisarmAll();
    EXPECT_EQ(plate.BendTable(), L"");
    EXPECT_EQ(Messages(host), Texts{L"\t无法读取或设置配置选项 pro_sheet_met_dir，未做任何改动！\t"});
}

long long CostOf(int models, const std::string& command) {
    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (int i = 0; i < models; ++i) pump.Place(host.AddSheetmetal(L"PLATE" + std::to_wstring(i)));
    host.Open(pump);
    const fs::path folder = test::MakeFolder(host, "data");
    const fs::path file = folder / (command == "SetMat" ? "steel.mtl" : "steel.bnd");
    test::WriteBytes(file, command == "SetMat" ? kMaterial : kBendTable);
    host.AnswerFile(file.wstring());
    EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR);
    return host.Calls();
}

// A placement costs the walk at most 7 calls.
TEST(PartFileCost, IsAtMostFourHostCallsAModelBesidesTheWalk) {
    for (const char* command : {"SetMat", "SetBendTable"})
        EXPECT_LE(CostOf(110, command) - CostOf(10, command), 100 * (7 + 4)) << command;
}

}  // namespace
