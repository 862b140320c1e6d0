// KvParams: the two parameters with computed values, outline and sheet sizes.

#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "plugin/kv_params_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Matrix;
using sim::SimModel;
using test::KvParams;
using test::Messages;
using test::Names;
using test::Texts;
using namespace std::string_literals;

constexpr wchar_t kNoAssemblyForSizes[] = L"当前环境不是组件/制造，无法执行此操作";
constexpr wchar_t kOutlineDone[] = L"外形尺寸参数批量创建/更新完成";
constexpr wchar_t kSheetsDone[] = L"图幅大小参数批量创建/更新完成";

// ---- Outline

struct OutlineOfPart {
    std::array<double, 3> size;
    bool ordered;
    const wchar_t* decimals;
    const wchar_t* expected;
};

TEST_F(KvParams, WritesTheOutlineOfAPart) {
    const OutlineOfPart cases[] = {
        {{100, 50.5, 20}, true, L"2", L"100×50.5×20"},
        {{20, 100, 50}, false, L"2", L"20×100×50"},
        {{20, 100, 50}, true, L"2", L"100×50×20"},
        {{20, 50, 100}, true, L"2", L"100×50×20"},
        {{50, 20, 100}, true, L"2", L"100×50×20"},
        {{50, 100, 20}, true, L"2", L"100×50×20"},
        {{100, 20, 50}, true, L"2", L"100×50×20"},
        {{5, 2, 5}, true, L"2", L"5×5×2"},
        {{12.3456, 7.89, 1}, false, L"0", L"12×8×1"},
        {{12.3456, 7.89, 1}, false, L"1", L"12.3×7.9×1"},
        {{12.3456, 7.89, 1}, false, L"4", L"12.3456×7.89×1"},
        {{1234567.8, 999999.7, 123456.78}, false, L"2", L"1.23457e+06×1e+06×123457"},
        {{0.004, 0.00012, 0}, false, L"4", L"0.004×0.0001×0"},
    };
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& [size, sorted, digits, expected] = cases[i];
        SimModel& block = Block(L"BLOCK" + std::to_wstring(i), size[0], size[1], size[2]);
        pump.Place(block);
        ordered = sorted;
        decimals = digits;
        Derive(pump, "KvOutline", L"Part");
        EXPECT_EQ(block.Parameter(L"OUT"), expected);
    }
}

TEST_F(KvParams, MeasuresAllSurfacesOfAPart) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& part = host.AddPart(L"CASE");
    part.AddSurface({{-10, 2, 0}, {-5, 4, 1}}).AddSurface({{5, -2.5, 7}, {15.5, 3, 8}});
    pump.Place(part);
    Derive(pump, "KvOutline");
    EXPECT_EQ(part.Parameter(L"OUT"), L"25.5×6.5×8");
}

// A quarter turn about z, then a shift: x' = shift - y, y' = x.
Matrix QuarterTurn(double shift) {
    return {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {shift, 0, 0, 1}}};
}

TEST_F(KvParams, MeasuresAnAssemblyThroughThePlacesOfItsParts) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& remote = Block(L"REMOTE", 1000, 1000, 1000);
    // In SUB the block fills x 10..20, y 0..20, z 0..30; in PUMP x 80..100, y 10..20, z 0..30.
    sub.Place(Block(L"BLOCK", 10, 20, 30), {.placement = sim::TranslationMatrix(10, 0, 0)});
    pump.Place(sub, {.placement = QuarterTurn(100)}).Place(Block(L"CUBE", 5, 5, 5));
    pump.Place(remote, {.status = 5}).Place(remote, {.isVisible = false});
    Derive(pump, "KvOutline");
    EXPECT_EQ(sub.Parameter(L"OUT"), L"10×20×30");
    EXPECT_EQ(pump.Parameter(L"OUT"), L"100×20×30");
}

TEST_F(KvParams, MeasuresATurnedSurfaceByTwoCornersOfItsBox) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& part = host.AddPart(L"FACE").AddSurface({{0, 0, 0}, {10, 10, 5}});
    const double s = std::sqrt(0.5);
    pump.Place(part, {.placement = {{{s, s, 0, 0}, {-s, s, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}});
    Derive(pump, "KvOutline");
    // The diagonal of the face lies along y; its two other corners do not count.
    EXPECT_EQ(pump.Parameter(L"OUT"), L"0×14.14×5");
    EXPECT_EQ(part.Parameter(L"OUT"), L"10×10×5");
}

TEST_F(KvParams, MeasuresEveryPlacementOfARepeatedAssembly) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& row = host.AddAssembly(L"ROW");
    SimModel& cube = Block(L"CUBE", 1, 1, 1);
    row.Place(cube).Place(cube, {.placement = sim::TranslationMatrix(9, 0, 0)});
    for (const double y : {0.0, 4.0, -7.0}) pump.Place(row, {.placement = sim::TranslationMatrix(0, y, 0)});
    Derive(pump, "KvOutline", L"Asm");
    EXPECT_EQ(row.Parameter(L"OUT"), L"10×1×1");
    EXPECT_EQ(pump.Parameter(L"OUT"), L"10×12×1");
}

TEST_F(KvParams, MeasuresAssembliesAsDeepAsTheHostGoes) {
    // ASM30 holds ASM29 and so on down to ASM1, which holds the cube.
    SimModel* top = &host.AddAssembly(L"ASM1").Place(Block(L"CUBE", 1, 1, 1));
    for (int level = 2; level <= 30; ++level)
        top = &host.AddAssembly(L"ASM" + std::to_wstring(level)).Place(*top);
    Derive(*top, "KvOutline");
    EXPECT_EQ(Messages(host), Texts{kOutlineDone});
    // From ASM25 the cube is 25 levels down, the last that the host can name.
    for (const wchar_t* name : {L"ASM25", L"ASM10"})
        EXPECT_EQ(host.State().models.Find(name, sim::ModelKind::kAssembly)->Parameter(L"OUT"), L"1×1×1");
}

TEST_F(KvParams, TakesTheOutlineFromModelsWithoutSurfaces) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& hollow = host.AddAssembly(L"HOLLOW");
    SimModel& bare = host.AddPart(L"BARE");
    SimModel& multi = Block(L"MULTI", 9, 9, 9).SetBodyCount(2);
    SimModel& cube = Block(L"CUBE", 1, 2, 3);
    hollow.Place(bare);
    pump.Place(hollow).Place(multi).Place(cube);
    for (SimModel* model : {&hollow, &bare, &multi, &cube, &pump}) model->SetParameter(L"out", L"old"s);
    bare.SetParameter(L"OUTER", L"kept"s);
    Derive(pump, "KvOutline");
    EXPECT_EQ(Having(L"OUT"), (Names{L"PUMP", L"MULTI", L"CUBE"})) << "no surfaces: no outline";
    EXPECT_EQ(cube.Parameter(L"OUT"), L"1×2×3");
    EXPECT_EQ(bare.Parameter(L"OUTER"), L"kept");
    // The host does not list the surfaces of a part with several bodies: what is known of it, and of what
    // holds it, stays.
    EXPECT_EQ(multi.Parameter(L"OUT"), L"old");
    EXPECT_EQ(pump.Parameter(L"OUT"), L"old");
    EXPECT_NE(test::LastReport(host).Reason(L"MULTI").find(L"可能已过时"), std::wstring::npos);
}

TEST_F(KvParams, WritesTheOutlineOverAnExistingText) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& has = Block(L"HAS", 1, 2, 3).SetParameter(L"Out", L"old"s);
    SimModel& number = Block(L"NUMBER", 1, 2, 3).SetParameter(L"OUT", 5);
    SimModel& frozen = Block(L"FROZEN", 1, 2, 3).SetReadOnly();
    pump.Place(number).Place(frozen).Place(has, 10);
    Derive(pump, "KvOutline", L"Part");
    EXPECT_EQ(has.Parameter(L"OUT"), L"1×2×3");
    EXPECT_EQ(number.Parameter(L"OUT"), L"5") << "the host keeps a parameter's type";
    EXPECT_FALSE(frozen.HasParameter(L"OUT"));
    EXPECT_EQ(host.Calls("ProParameterWithUnitsCreate"), 3) << "once a model";
    ASSERT_EQ(Messages(host), Texts{kOutlineDone});
    EXPECT_EQ(host.Boxes()[0].flags & MB_ICONMASK, static_cast<unsigned>(MB_ICONINFORMATION));
    EXPECT_EQ(pump.TreeRefreshes(), 1);
    EXPECT_EQ(pump.Regenerations(), 0);
}

TEST_F(KvParams, RefusesTheOutlineUnderAPart) {
    SimModel& bolt = Block(L"BOLT", 1, 1, 1);
    Derive(bolt, "KvOutline");
    ASSERT_EQ(Messages(host), Texts{kNoAssemblyForSizes});
    EXPECT_EQ(host.Boxes()[0].flags & MB_ICONMASK, static_cast<unsigned>(MB_ICONINFORMATION));
    EXPECT_EQ(Having(L"OUT"), Names{});
}

// ---- Sheet size

TEST_F(KvParams, WritesTheSheetSizesOfTheDrawings) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT").SetParameter(L"out", L"old"s);
    SimModel& seal = host.AddPart(L"SEAL").SetParameter(L"OUT", L"old"s);
    SimModel& ring = host.AddPart(L"RING");
    SimModel& book = host.AddPart(L"BOOK").SetParameter(L"OUT", L"old"s);
    sub.Place(bolt, 5).Place(seal);
    pump.Place(sub).Place(ring).Place(book);
    host.AddDrawingFile(L"PUMP", {L"A0"});
    host.AddDrawingFile(L"SUB", {L"A3", L"A4", L"A3"});
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.AddDrawingFile(L"RING", std::vector<std::wstring>(27, L"A3"));  // 27 times "A3" and 26 commas: 80
    host.AddDrawingFile(L"BOOK", std::vector<std::wstring>(28, L"A3"));
    Derive(pump, "KvSheetSize");
    EXPECT_EQ(pump.Parameter(L"OUT"), L"A0");
    EXPECT_EQ(sub.Parameter(L"OUT"), L"A3,A4,A3");
    EXPECT_EQ(bolt.Parameter(L"OUT"), L"A4");
    EXPECT_EQ(seal.Parameter(L"OUT"), L"old") << "it has no drawing";
    EXPECT_EQ(ring.Parameter(L"OUT").size(), 80u);
    EXPECT_EQ(book.Parameter(L"OUT"), L"old") << "too long, and never cut";
    EXPECT_EQ(host.Calls("ProMdlnameRetrieve"), 6) << "once a model";
    ASSERT_EQ(Messages(host), Texts{kSheetsDone});
    EXPECT_EQ(host.Boxes()[0].flags & MB_ICONMASK, static_cast<unsigned>(MB_ICONINFORMATION));
    EXPECT_EQ(pump.TreeRefreshes(), 1);
    EXPECT_EQ(pump.Regenerations(), 0);
}

TEST_F(KvParams, WritesNoSizesWhenOneSheetCannotBeRead) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT").SetParameter(L"OUT", L"old"s);
    pump.Place(bolt, 2);
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4"});
    host.State().report.Arm(sim::Fault{"ProDrawingSheetTrfGet", 1});
    Derive(pump, "KvSheetSize", L"Part");
    EXPECT_EQ(bolt.Parameter(L"OUT"), L"old");
    EXPECT_EQ(host.State().user.messageArea.back(), L"模型：完成 0，失败 1");

    // Nothing to measure and no parameter to delete: that is no failure. A part is measured once.
    Forget(L"OUT");
    Derive(pump, "KvOutline");
    EXPECT_EQ(host.State().user.messageArea.back(), L"模型：完成 2");
    EXPECT_EQ(host.Calls("ProSolidSurfaceVisit"), 1);
}

TEST_F(KvParams, WritesSheetSizesUnderAnAssemblyAlone) {
    SimModel& mould = host.AddAssembly(L"MOULD");
    SimModel& bolt = host.AddPart(L"BOLT");
    mould.Place(bolt);
    host.AddDrawingFile(L"BOLT", {L"A4"});
    Derive(bolt, "KvSheetSize");
    Derive(host.AddManufacturing(L"MFG", mould), "KvSheetSize");
    EXPECT_EQ(Messages(host), Texts{});
    EXPECT_EQ(Having(L"OUT"), Names{});
}

}  // namespace
