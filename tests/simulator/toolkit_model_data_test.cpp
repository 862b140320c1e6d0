// The host's relations, units, materials and bend tables.

#include <string>
#include <vector>

#include <ProArray.h>
#include <ProMaterial.h>
#include <ProMdl.h>
#include <ProMdlUnits.h>
#include <ProRelSet.h>
#include <ProSheetmetal.h>
#include <gtest/gtest.h>

#include "simulator/cad/model_file.h"
#include "simulator/cad/relation_check.h"
#include "support/host_test.h"

namespace {

using namespace sim;
using test::Name;
using test::Solid;

using RelationLines = std::vector<std::wstring>;

TEST(RelationCheck, TakesWhatTheHostTakes) {
    const RelationNames names = {[](std::wstring_view name) { return name == L"长度" || name == L"MASS"; },
                                 [](std::wstring_view name) { return name == L"d1"; }};
    const std::vector<RelationLines> good = {
        {L""},
        {L"/* anything ((", L"d1 = 10"},
        {L"\td1=-2.5e-3*(长度+1)^2/max(1, MASS)\r"},
        {L"new = \"text, (\"", L"other = new + 'x'"},
        {L"IF d1 > 5 & 长度 <= 3", L"a = 1", L"ELSE", L"IF !(d1==2)", L"a = 2", L"ENDIF", L"endif"},
        {L"d1 = 1 + \\", L"2"},
        {L"x = d1:5 + PI"},
        {L"x = if(d1 > 5, 1, 2)", L"y = exists(\"d9\")"},
    };
    for (const RelationLines& lines : good)
        EXPECT_EQ(ReadRelations(lines, names).fault, "") << lines.back().size();
    const std::vector<std::pair<RelationLines, std::string>> broken = {
        {{L"d1"}, "line 1: expected ="},
        {{L"d1 = "}, "line 1: expected a number"},
        {{L"", L"d1 = (1"}, "line 2: expected )"},
        {{L"d1 = 1 2"}, "line 1: expected an operator"},
        {{L"d1 == 1"}, "line 1: expected a number"},
        {{L"a = \"text"}, "line 1: expected the end of a text"},
        {{L"a = nothing"}, "not nothing"},
        {{L"a = later", L"later = 1"}, "not later"},
        {{L"d2 = 1"}, "expected a dimension of the model, not d2"},
        {{L"a = wrong(1)"}, "expected a function that the host has, not wrong"},
        {{L"a = sin(1"}, "expected )"},
        {{L"a = 1e"}, "expected an exponent"},
        {{L"ELSE"}, "no ELSE here"},
        {{L"IF d1 > 1", L"ELSE", L"ELSE"}, "line 3: expected no ELSE here"},
        {{L"ENDIF"}, "no ENDIF here"},
        {{L"IF d1 > 1", L"a = 1"}, "expected an ENDIF"},
        {{L"a = 1 + \\"}, "goes on"},
        {{L"a = " + std::wstring(200, L'(')}, "less than 100"},
    };
    for (const auto& [lines, fault] : broken)
        EXPECT_NE(ReadRelations(lines, names).fault.find(fault), std::string::npos)
            << ReadRelations(lines, names).fault;
}

class HostModelData : public test::HostTest {
protected:
    ProModelitem Item(SimModel& model) {
        ProModelitem item{};
        EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
        return item;
    }
    ProError Set(ProRelset& set, RelationLines lines) {
        std::vector<ProWstring> list;
        for (std::wstring& line : lines) list.push_back(line.data());
        return ProRelsetRelationsSet(&set, list.data(), static_cast<int>(list.size()));
    }
    ProWstring* NewLines(int count = 0) {
        ProArray array = nullptr;
        EXPECT_EQ(ProArrayAlloc(count, sizeof(ProWstring), 1, &array), PRO_TK_NO_ERROR);
        return static_cast<ProWstring*>(array);
    }

    SimModel& bolt = Part(L"BOLT");
};

TEST_F(HostModelData, RelationsAreMadeReadAndRefusedAsAWhole) {
    ProModelitem item = Item(bolt);
    ProRelset set{};
    EXPECT_EQ(ProModelitemToRelset(&item, &set), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProRelsetPostregenerationInit(&bolt, &set), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(ProRelsetCreate(&item, &set), PRO_TK_NO_ERROR);
    ProRelset second{};
    EXPECT_EQ(ProRelsetCreate(&item, &second), PRO_TK_E_FOUND);
    bolt.SetParameter(L"SIZE", 1.0);
    EXPECT_EQ(Set(set, {L"size = 2", L"b = size"}), PRO_TK_NO_ERROR);
    EXPECT_TRUE(bolt.FindParameter(L"SIZE")->relationDriven);
    EXPECT_EQ(Set(set, {L"a = 1", L"a ="}), PRO_TK_GENERAL_ERROR);

    ProWstring* lines = NewLines();
    ASSERT_EQ(ProRelsetRelationsGet(&set, &lines), PRO_TK_NO_ERROR);
    EXPECT_STREQ(lines[1], L"b = size");
    EXPECT_EQ(ProRelsetRelationsGet(&set, &lines), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("not empty"));
    EXPECT_EQ(ProWstringproarrayFree(lines), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProRelsetDelete(&set), PRO_TK_NO_ERROR);
    EXPECT_TRUE(bolt.Relations().exists && bolt.Relations().lines.empty());
    EXPECT_FALSE(bolt.FindParameter(L"SIZE")->relationDriven);
    bolt.SetReadOnly();
    EXPECT_EQ(Set(set, {L"a = 1"}), PRO_TK_CANT_MODIFY);
}

TEST_F(HostModelData, RelationSetsOfNobodyAreRefused) {
    ProRelset zero{};
    EXPECT_EQ(Set(zero, {L"a = 1"}), PRO_TK_BAD_INPUTS);
    ProRelset item = Item(bolt);
    EXPECT_EQ(Set(item, {L"a = 1"}), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no host function has filled"));
    bolt.SetRelations({});
    ProModelitem owner = Item(bolt);
    ASSERT_EQ(ProModelitemToRelset(&owner, &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProRelsetRelationsSet(&item, nullptr, 2), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("fewer lines"));
    EXPECT_EQ(ProRelsetRelationsSet(&item, nullptr, 0), PRO_TK_NO_ERROR);
    session.strict.emptyRelationsRefused = true;
    EXPECT_EQ(ProRelsetRelationsSet(&item, nullptr, 0), PRO_TK_BAD_INPUTS);
}

TEST_F(HostModelData, UnitSystemsAreMadeOfDifferentQuantities) {
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(2, sizeof(ProUnititem), 1, &array), PRO_TK_NO_ERROR);
    auto* units = static_cast<ProUnititem*>(array);
    EXPECT_EQ(ProUnitInit(&bolt, Name(L"parsec").text, units), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(ProUnitInit(&bolt, Name(L"in").text, &units[0]), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUnitInit(&bolt, Name(L"mm").text, &units[1]), PRO_TK_NO_ERROR);
    const auto create = [&](ProUnitsystemType type, const wchar_t* name, SimModel& model) {
        return ProMdlUnitsystemCreate(&model, type, Name(name).text, units, nullptr);
    };
    EXPECT_EQ(create(PRO_UNITSYSTEM_MLT, L"two", bolt), PRO_TK_E_AMBIGUOUS);
    ASSERT_EQ(ProUnitInit(&bolt, Name(L"g").text, &units[1]), PRO_TK_NO_ERROR);
    EXPECT_EQ(create(PRO_UNITSYSTEM_FLT, L"own", bolt), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(create(PRO_UNITSYSTEM_MLT, L"own", Part(L"NUT")), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("for this model"));
    EXPECT_EQ(create(PRO_UNITSYSTEM_MLT, L"own", bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(create(PRO_UNITSYSTEM_MLT, L"OWN", bolt), PRO_TK_E_FOUND);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);

    ProUnitsystem system{};
    ASSERT_EQ(ProMdlPrincipalunitsystemGet(&bolt, &system), PRO_TK_NO_ERROR);
    EXPECT_STREQ(system.name, L"millimeter Newton Second (mmNs)");
    EXPECT_EQ(ProMdlPrincipalunitsystemSet(&bolt, &system, PRO_UNITCONVERT_SAME_SIZE, PRO_B_TRUE, 0),
              PRO_TK_BAD_INPUTS);
}

TEST_F(HostModelData, MaterialsComeFromTheFirstFolderAndTheFirstExtension) {
    constexpr char kSteel[] = R"({"format": "hostsim material", "version": 1})";
    constexpr char kOther[] = R"({"format": "hostsim material", "version": 1, "bendTable": "T"})";
    SimModel& plate = New(L"PLATE", ModelKind::kPart, ModelSubtype::kSheetmetal);
    const auto read = [&](const wchar_t* name) { return ProMaterialfileRead(Solid(plate), Name(name).text); };
    EXPECT_EQ(read(L"STEEL"), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProMaterialfileRead(Solid(Assembly(L"PUMP")), Name(L"STEEL").text), PRO_TK_INVALID_TYPE);
    std::filesystem::create_directory(folder / "library");
    session.configOptions[L"PRO_MATERIAL_DIR"] = {(folder / "library").wstring()};
    folder.Write("library/STEEL.mtl", kOther);
    ASSERT_EQ(read(L"STEEL"), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.FindMaterial(L"steel")->bendTable, L"T");
    folder.Write("STEEL.mat", kSteel);
    ASSERT_EQ(read(L"STEEL"), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.Materials().size(), 1u);
    EXPECT_EQ(plate.FindMaterial(L"steel")->bendTable, L"");
    folder.Write("STEEL.mtl", "{}");
    EXPECT_EQ(read(L"STEEL"), PRO_TK_INVALID_FILE);

    ProMaterial material{L"BRASS", Solid(plate)};
    EXPECT_EQ(ProMaterialCurrentSet(&material), PRO_TK_E_NOT_FOUND);
    plate.AddMaterial({L"BRASS", L"T"});
    session.configOptions[L"MATERIAL_UPDATE_SMT_BEND_TABLE"] = {L"never_replace"};
    EXPECT_EQ(ProMaterialCurrentSet(&material), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.BendTable(), L"");
    session.configOptions.clear();
    EXPECT_EQ(ProMaterialCurrentSet(&material), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.BendTable(), L"T");
}

TEST_F(HostModelData, BendTablesComeFromTheFolderOfTheOption) {
    SimModel& plate = New(L"PLATE", ModelKind::kPart, ModelSubtype::kSheetmetal);
    const auto apply = [&](SimModel& part, ProBoolean fromFile) {
        return ProSmtPartBendtableApply(Solid(part), Name(L"T").text, fromFile);
    };
    EXPECT_EQ(apply(bolt, PRO_B_TRUE), PRO_TK_BAD_CONTEXT);
    EXPECT_EQ(apply(plate, PRO_B_TRUE), PRO_TK_CANT_OPEN);
    std::filesystem::create_directory(folder / "tables");
    session.configOptions[L"PRO_SHEET_MET_DIR"] = {(folder / "tables").wstring()};
    folder.Write("tables/T.bnd", R"({"format": "hostsim bend table", "version": 1})");
    EXPECT_EQ(apply(plate, PRO_B_TRUE), PRO_TK_NO_ERROR);
    EXPECT_EQ(plate.BendTable(), L"T");
    session.configOptions.clear();
    EXPECT_EQ(apply(plate, PRO_B_FALSE), PRO_TK_NO_ERROR);
    EXPECT_EQ(apply(plate, PRO_B_TRUE), PRO_TK_CANT_OPEN);
    EXPECT_EQ(plate.Regenerations(), 2);
}

TEST_F(HostModelData, IsKeptInModelFiles) {
    bolt.SetParameter(L"SIZE", 1.0).AddDimension(L"d1", 25.4).AddDimension(L"d2", 30, true);
    bolt.SetRelations({L"size = d1", L""}).SetRelations({}, RelationKind::kPost);
    bolt.AddUnitSystem({L"own", L"in", L"g", L"", L"sec", L"C"}).SetPrincipalUnits(L"OWN", true);
    bolt.AddMaterial({L"STEEL", L"T"});
    bolt.SetCurrentMaterial(L"STEEL");
    bolt.SetBendTable(L"T");
    const auto file = folder.Write("bolt.prt.1", ModelFileText(bolt));
    const ModelFileContent content = ReadModelFile(file, L"BOLT", ModelKind::kPart);
    EXPECT_EQ(ModelFileText(*content.model), ModelFileText(bolt));
    EXPECT_EQ(content.model->PrincipalUnits().length, L"in");
    EXPECT_DOUBLE_EQ(content.model->FindDimension(L"D1")->value, 1);
    EXPECT_TRUE(content.model->Relations(RelationKind::kPost).exists);
    EXPECT_EQ(content.model->CurrentMaterial(), L"STEEL");

    for (const char* wrong :
         {R"("units": "nothing")", R"("material": "GOLD")", R"("unitSystems": [])",
          R"("unitSystems": [{"name": "x", "length": "kg", "mass": "g", "time": "sec"}])",
          R"("unitSystems": [{"name": "x", "length": "mm", "time": "sec"}])",
          R"("dimensions": [{"symbol": "d1", "value": 1}, {"symbol": "D1", "value": 1}])"}) {
        const auto bad = folder.Write("bad.prt.1", R"({"format": "hostsim model", "version": 1, "name": "BAD",
            "kind": "part", )" + std::string(wrong) + "}");
        EXPECT_THROW(ReadModelFile(bad, L"BAD", ModelKind::kPart), ModelFileError) << wrong;
    }
}

}  // namespace
