// Files of other programs that become workspaces.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/cad/model_store.h"
#include "simulator/import/import.h"
#include "simulator/import/import_error.h"
#include "simulator/import/model_names.h"
#include "simulator/import/step_text.h"
#include "simulator/report/utf8.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::TempDirectory;
using Strings = std::vector<std::string>;

SimModel& Read(ModelStore& store, std::wstring_view name, ModelKind kind) {
    SimModel* model = nullptr;
    EXPECT_EQ(store.Retrieve(name, kind, model), PRO_TK_NO_ERROR) << Utf8(name);
    EXPECT_EQ(store.Problems(), Strings());
    return *model;
}

std::string Step(const std::string& data) {
    return "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('X;#1=Y'));\nENDSEC;\nDATA;\n" + data +
           "ENDSEC;\nEND-ISO-10303-21;\n";
}

// A product under the number `id`; its definition has the number 2 higher, its shape 4 higher.
std::string Product(int id, const std::string& number, const std::string& name, int context = 900) {
    const auto n = [id](int i) { return "#" + std::to_string(id + i); };
    return n(0) + "=PRODUCT('" + number + "','" + name + "','',(#1));\n" +              //
           n(1) + "=PRODUCT_DEFINITION_FORMATION('',''," + n(0) + ");\n" +              //
           n(2) + "=PRODUCT_DEFINITION('',''," + n(1) + ",#2);\n" +                     //
           n(3) + "=PRODUCT_DEFINITION_SHAPE('',''," + n(2) + ");\n" +                  //
           n(4) + "=SHAPE_REPRESENTATION('',(),#" + std::to_string(context) + ");\n" +  //
           n(5) + "=SHAPE_DEFINITION_REPRESENTATION(" + n(3) + "," + n(4) + ");\n";
}

// Use `id` of a component in an assembly, from the frame #`from` to the frame #`to`.
std::string Use(int id, int assembly, int component, const std::string& representations, int from, int to) {
    const auto n = [id](int i) { return "#" + std::to_string(id + i); };
    return n(0) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#" + std::to_string(assembly + 2) + ",#" +
           std::to_string(component + 2) + ",$);\n" + n(1) + "=PRODUCT_DEFINITION_SHAPE('',''," + n(0) +
           ");\n" + n(2) + "=ITEM_DEFINED_TRANSFORMATION('','',#" + std::to_string(from) + ",#" +
           std::to_string(to) + ");\n" + n(3) + "=(REPRESENTATION_RELATIONSHIP('',''," + representations +
           ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + n(2) +
           ")SHAPE_REPRESENTATION_RELATIONSHIP());\n" + n(4) + "=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" +
           n(3) + "," + n(1) + ");\n";
}

// The frame #100 is the origin, #110 lies at (1, 2, 3) with z along x and x along y.
const char kFrames[] =
    "#100=AXIS2_PLACEMENT_3D('',#101,$,$);\n#101=CARTESIAN_POINT('',(0.,0.,0.));\n"
    "#110=AXIS2_PLACEMENT_3D('',#111,#112,#113);\n#111=CARTESIAN_POINT('',(1.,2.,3.));\n"
    "#112=DIRECTION('',(1.,0.,0.));\n#113=DIRECTION('',(0.,2.,0.));\n";
const char kMillimetres[] =
    "#900=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#902,#901))"
    "REPRESENTATION_CONTEXT('',''));\n#901=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
    "#902=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n";
const char kInches[] =
    "#910=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#911))"
    "REPRESENTATION_CONTEXT('',''));\n#911=(CONVERSION_BASED_UNIT('INCH',#912)LENGTH_UNIT()NAMED_UNIT(#914));"
    "\n"
    "#912=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#913);\n"
    "#913=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n#914=DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0."
    ",0.);\n";

// What an import of the text under this name answers, and the refusal when it does not.
struct ImportOutcome {
    ImportReport report;
    std::string refusal;
};

ImportOutcome Import(const TempDirectory& folder, const std::string& name, const std::string& text) {
    folder.Write(name, text);
    try {
        return {ImportWorkspace(folder / name, folder / "made"), ""};
    } catch (const ImportError& error) {
        return {{}, error.what()};
    }
}

TEST(ImportStep, PlacesInTheUnitsOfTheAssemblyWhicheverSideIsTheComponent) {
    const struct {
        const char* claim;
        int assemblyContext, componentContext;
        const char* representations;
        int from, to;
        Vec3 origin, x;  // of the component in the assembly
    } cases[] = {
        {"as the standard has it", 900, 900, "#24,#14", 100, 110, {1, 2, 3}, {0, 1, 0}},
        {"turned round", 900, 900, "#14,#24", 110, 100, {1, 2, 3}, {0, 1, 0}},
        {"from a frame that is not the origin", 900, 900, "#24,#14", 110, 100, {-2, -3, -1}, {0, 0, 1}},
        {"inches in millimetres", 900, 910, "#24,#14", 110, 100, {-50.8, -76.2, -25.4}, {0, 0, 1}},
        {"millimetres in inches", 910, 900, "#24,#14", 100, 110, {1, 2, 3}, {0, 1, 0}},
    };
    for (const auto& item : cases) {
        const TempDirectory folder;
        const ImportOutcome made =
            Import(folder, "a.stp",
                   Step(Use(30, 10, 20, item.representations, item.from, item.to) + kMillimetres + kInches +
                        kFrames + Product(10, "", "A", item.assemblyContext) +
                        Product(20, "", "B", item.componentContext)));
        ASSERT_EQ(made.refusal, "") << item.claim;
        ModelStore models(folder / "made");
        const SimModel& top = Read(models, L"A", ModelKind::kAssembly);
        const Matrix& found = top.Features()[0].placement;
        const double numbers[] = {item.x.x, item.x.y, item.x.z, item.origin.x, item.origin.y, item.origin.z};
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_NEAR(found[i < 3 ? 0 : 3][i % 3], numbers[i], 1e-12) << item.claim << i;
        EXPECT_EQ(top.PrincipalUnits().length, item.assemblyContext == 900 ? L"mm" : L"in") << item.claim;
    }
}

// Everything that a reader of lines would trip over.
TEST(ImportStep, PassesOverShapesCommentsAndForeignProducts) {
    const TempDirectory folder;
    const ImportOutcome made = Import(
        folder, "a.p21",
        Step("/* #7=PRODUCT('; */\n#50=(BOUNDED_SURFACE()B_SPLINE_SURFACE(1,1,((#1),(#2)),.F.)"
             "RATIONAL_B_SPLINE_SURFACE(((1.,2.))));\n#51=CLOSED_SHELL('it''s ; here',(#52,\n#53));\n" +
             Product(10, "A-1", " a;b''c\n(d) ") + kMillimetres +
             "#60=PRODUCT('DOC','','',());#61=PRODUCT_DEFINITION_FORMATION('','',#60);\n"
             "#62 = PRODUCT_DEFINITION ('','',#61,$) ;\n" +
             Product(20, "A-1", "A B C D", 910)));
    ASSERT_EQ(made.refusal, "");
    EXPECT_EQ(made.report.tops, (Strings{"A_B_C_D.PRT", "A_B_C_D-2.PRT"}));
    EXPECT_EQ(made.report.notes, (Strings{"products left out, as they have neither a shape nor a place: 1",
                                          "line 13: \" a;b'c(d) \" is called a_b_c_d",
                                          "line 24: \"A B C D\" is called A_B_C_D-2"}));
}

TEST(ImportStep, ReadsNames) {
    const struct {
        std::string raw;
        RawBytes bytes;
        std::wstring text;
    } cases[] = {
        {"it''s \\\\ 2", RawBytes::kUtf8, L"it's \\ 2"},
        {"\\X2\\624B67C4\\X0\\ 2", RawBytes::kUtf8, L"手柄 2"},
        {"\\X2\\D83DDE00\\X0\\\\X4\\0001F600\\X0\\", RawBytes::kUtf8, L"\xD83D\xDE00\xD83D\xDE00"},
        {"\\X\\D8\\S\\X", RawBytes::kUtf8, L"ØØ"},
        {"\\PE\\\\S\\1", RawBytes::kUtf8, L"Б"},
        {"\xE8\xBD\xB4", RawBytes::kUtf8, L"轴"},
        // The second byte of the first character is a stroke, that of the second one a letter.
        {"\x81\x5C\x81\x58 1", RawBytes::kGbk, L"乗乆 1"},
        {"\xD8 5", RawBytes::kLatin1, L"Ø 5"},
        {"\\X2\\12\\X0\\ \\Q\\ \\X\\G0", RawBytes::kUtf8, L"\\X2\\12\\X0\\ \\Q\\ \\X\\G0"},
    };
    for (const auto& item : cases) EXPECT_EQ(StepText(item.raw, item.bytes), item.text) << item.raw;
    EXPECT_EQ(RawBytesOf({"abc", "\xE8\xBD\xB4"}), RawBytes::kUtf8);
    EXPECT_EQ(RawBytesOf({"abc", "\xD6\xE1"}), RawBytes::kGbk);
    EXPECT_EQ(RawBytesOf({"\xD8"}), RawBytes::kLatin1);
}

TEST(Import, MakesNamesLegalAndUnique) {
    const std::wstring longName(40, L'X');
    const struct {
        std::wstring product, model;
    } cases[] = {
        {L"  Bolt M8x20 (zinc)  ", L"Bolt_M8x20_zinc"},
        {L"bolt.prt.3", L"bolt"},
        {L"BOLT", L"BOLT-2"},
        {L"Bolt", L"Bolt-3"},
        {L"bolt-2", L"bolt-2-2"},
        {L"", L"UNNAMED"},
        {L"///", L"UNNAMED-2"},
        {L"com1", L"com1_"},
        {L"轴　Ø8", L"轴_Ø8"},
        {longName, std::wstring(31, L'X')},
        {longName, std::wstring(29, L'X') + L"-2"},
        {std::wstring(30, L'Y') + L"\xD83D\xDE00", std::wstring(30, L'Y')},
    };
    ModelNames names;
    for (const auto& item : cases)
        EXPECT_EQ(Utf8(names.Take(item.product, ModelKind::kPart)), Utf8(item.model));
    EXPECT_EQ(names.Take(L"BOLT", ModelKind::kAssembly), L"BOLT");
}

TEST(Import, RefusesWithTheLineAndLeavesNothing) {
    const std::string structure = Product(10, "", "A") + Product(20, "", "B") + kMillimetres;
    const std::string table = "level,name,number\n";
    const struct {
        std::string file, text, refusal;
    } cases[] = {
        {"a.stp", "solid x\n", "a.stp:1: expected ISO-10303-21; at the beginning"},
        {"a.stp", "", "a.stp:1: expected ISO-10303-21; at the beginning"},
        {"a.stp", "ISO-10303-21;\nDATA;\n#1=PRODUCT('a", "a.stp:3: expected a closing '"},
        {"a.stp", "ISO-10303-21;\nDATA;\n#1=X('a');\n",
         "a.stp:4: expected END-ISO-10303-21; at the end: the file breaks off"},
        {"a.stp", Step("#1=X((1.,2.);\n"), "a.stp:6: expected \")\" before the end of the statement"},
        {"a.stp", Step("#1 X();\n"), "a.stp:6: expected \"=\" after the number of the instance"},
        {"a.stp", Step("#1=PRODUCT('a',,);\n"), "a.stp:6: expected a value"},
        {"a.stp", Step("#1=PRODUCT('a');\n"), "a.stp:6: expected PRODUCT with at least 3 values"},
        {"a.stp", Step("#1=PRODUCT" + std::string(50, '(') + ";\n"),
         "a.stp:6: expected at most 32 brackets in each other"},
        {"a.stp", Step(Product(10, "", "A") + "#10=PRODUCT('','','',());\n"),
         "a.stp:12: expected a number other than #10, which an instance has already"},
        {"a.stp", Step("#1=X();\n"), "a.stp: expected a product structure (PRODUCT_DEFINITION)"},
        {"a.stp", Step("#1=PRODUCT_DEFINITION('','',#2,#3);\n"),
         "a.stp:6: expected PRODUCT_DEFINITION_FORMATION under #2"},
        {"a.stp", Step(structure + Use(30, 10, 20, "#24,#14", 100, 110)),
         "a.stp:24: expected AXIS2_PLACEMENT_3D under #100"},
        {"a.stp",
         Step(structure +
              "#100=AXIS2_PLACEMENT_3D('',#101,#102,#102);\n#101=CARTESIAN_POINT('',(0.,0.,0.));\n"
              "#102=DIRECTION('',(0.,0.,1.));\n" +
              Use(30, 10, 20, "#24,#14", 100, 100)),
         "a.stp:21: expected two directions that differ"},
        {"a.stp",
         Step(structure + kFrames + Use(30, 10, 20, "#24,#14", 100, 110) +
              Use(40, 20, 10, "#14,#24", 100, 110)),
         "a.stp:8: expected a product that does not contain itself"},
        {"a.csv", "", "a.csv:1: expected a first line with the titles of the columns"},
        {"a.csv", "level,number\n", "a.csv:1: expected a column \"name\""},
        {"a.csv", "name,type\n", "a.csv:1: expected either a column \"level\" or a column \"parent\""},
        {"a.csv", table, "a.csv:2: expected a row with a model"},
        {"a.csv", table + "0,A,1\n2,B,1\n", "a.csv:3: expected a level from 0 to 1"},
        {"a.csv", table + "0,A,1\n1,B,0\n", "a.csv:3: expected a whole number from 1 to 10000, not \"0\""},
        {"a.csv", table + "0,\"A\nB\",1\n1,,1\n", "a.csv:4: expected the name of a model"},
        {"a.csv", table + "0,\"A", "a.csv:2: expected a closing quote"},
        {"a.csv", table + "0,A,\n1,S,\n2,B,\n1,S,\n2,C,\n",
         "a.csv:5: expected the components that S has in line 3"},
        {"a.csv", table + "0,A.prt,\n1,B,\n", "a.csv:2: expected the type assembly: A has components"},
        {"a.csv", "parent,name\n,A\nX,B\n",
         "a.csv:3: expected a parent that is the name of an assembly in another row, not \"X\""},
        {"a.csv", "parent,name\nA,B\nB,A\n", "a.csv:2: expected a product that does not contain itself"},
        {"a.csv", "name,parent,type\nA,,screw\n",
         "a.csv:2: expected the type part, assembly, sheetmetal or skeleton, not \"SCREW\""},
        {"a.txt", "", "a.txt: expected a STEP file (.stp, .step, .p21) or a .csv"},
    };
    for (const auto& item : cases) {
        const TempDirectory folder;
        EXPECT_EQ(Import(folder, item.file, item.text).refusal, item.refusal);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1) << item.refusal;
    }
    // A folder with something in it stays as it is, an empty one becomes the workspace.
    const TempDirectory folder;
    fs::create_directory(folder / "made");
    folder.Write("made/mine.txt", "x");
    EXPECT_NE(Import(folder, "a.csv", table + "0,A,1\n").refusal.find("is not empty"), std::string::npos);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "made"), {}), 1);
    fs::remove(folder / "made/mine.txt");
    EXPECT_EQ(Import(folder, "a.csv", table + "0,A,1\n").refusal, "");
    EXPECT_TRUE(fs::exists(folder / "made/a.prt.1"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
}

TEST(ImportCsv, TakesLevelsParentsAndParameters) {
    const struct {
        std::string text, note;
    } cases[] = {
        // Listed again with its components and without them; a later value does not count.
        {"Level,Name,Type,Number,Coat-ing\r\n1,TOP,,,\r\n2,SUB,asm,2,\r\n3,BOLT,,3,zinc\r\n2,BOLT,,,black\r\n"
         "2,SUB,asm,1,\r\n3,BOLT,,3,\r\n2,SUB,asm,1,\r\n,,,,\r\n",
         "line 5: Coat_ing of BOLT stays \"zinc\", as it is above"},
        {"\xEF\xBB\xBFparent;name;type;number;Coat_ing\nTOP;SUB;asm;4;\nsub.asm;bolt;;3;zinc\n;TOP;;1;\nTOP;"
         "bolt;;;",
         ""},
        {"\xC9\xCF\xBC\xB6\t\xCA\xFD\xC1\xBF\t\xC4\xA3\xD0\xCD\xC3\xFB\xB3\xC6\tCoat_ing\nTOP\t4\tSUB.ASM\t\n"
         "SUB\t3\tBOLT\tzinc\n\t\tTOP\t\nTOP\t\tBOLT\t\n",
         ""},
    };
    for (const auto& item : cases) {
        const TempDirectory folder;
        const ImportOutcome made = Import(folder, "a.csv", item.text);
        ASSERT_EQ(made.refusal, "") << item.text;
        EXPECT_EQ(made.report.tops, Strings{"TOP.ASM"});
        EXPECT_EQ(made.report.models, 3U);
        EXPECT_EQ(made.report.components, 8U);
        if (!item.note.empty()) {
            EXPECT_EQ(made.report.notes.back(), item.note);
        }
        ModelStore models(folder / "made");
        EXPECT_EQ(Read(models, L"TOP", ModelKind::kAssembly).Features().size(), 5U);
        EXPECT_EQ(models.Find(L"SUB", ModelKind::kAssembly)->Features().size(), 3U);
        EXPECT_EQ(models.Find(L"BOLT", ModelKind::kPart)->Parameter(L"Coat_ing"), L"zinc");
    }
}

}  // namespace
