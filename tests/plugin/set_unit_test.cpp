// SetUnit: one system of units for a model and all below it.

#include <string>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::SimDialog;
using sim::SimModel;
using test::Messages;
using test::Texts;

constexpr wchar_t kUnitsDone[] = L"模型批量单位设置完成";

class SetUnit : public testing::Test {
protected:
    SetUnit() {
        pump.Place(bolt, {.placement = sim::TranslationMatrix(50.8, 0, 0)});
        bolt.AddBlock(25.4, 50.8, 2.54).AddDimension(L"d1", 25.4).AddDimension(L"d2", 30, true);
    }
    void Apply(SimModel& model, std::wstring_view units, std::wstring_view conversion) {
        host.Open(model);
        host.OnDialog("SetUnit", [&](SimDialog& dialog) {
            dialog.Choose("UnitRadio", units)
                .Choose("OptionRadio", conversion)
                .Press("ApplyBt")
                .Press("Close");
        });
        EXPECT_EQ(host.Run("SetUnit"), PRO_TK_NO_ERROR);
    }
    static std::wstring UnitsOf(const SimModel& model) { return model.PrincipalUnits().name; }

    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT");
};

TEST_F(SetUnit, ConvertsNumbersOrKeepsThem) {
    Apply(pump, L"IPS", L"SAME_SIZE");
    EXPECT_EQ(UnitsOf(bolt), L"Inch Pound Second (IPS)");
    EXPECT_DOUBLE_EQ(bolt.FindDimension(L"d1")->value, 1);
    EXPECT_DOUBLE_EQ(bolt.FindDimension(L"d2")->value, 30);
    EXPECT_DOUBLE_EQ(bolt.Surfaces().back()->box.maximum.y, 2);
    EXPECT_DOUBLE_EQ(pump.Features()[0].placement[3][0], 2);
    Apply(pump, L"FPS", L"SAME_DIMS");
    EXPECT_EQ(UnitsOf(pump), L"Foot Pound Second (FPS)");
    EXPECT_DOUBLE_EQ(bolt.FindDimension(L"d1")->value, 1);
    EXPECT_EQ(Messages(host), (Texts{kUnitsDone, kUnitsDone}));
    EXPECT_EQ(bolt.Regenerations(), 2);
}

TEST_F(SetUnit, KnowsSevenSystemsWhateverTheHostsLetterCase) {
    const std::pair<const wchar_t*, const wchar_t*> systems[] = {
        {L"mmKs", L"millimeter Kilogram Sec (mmKs)"},
        {L"CGS", L"Centimeter Gram Second (CGS)"},
        {L"mmNs", L"millimeter Newton Second (mmNs)"},
        {L"MKS", L"Meter Kilogram Second (MKS)"},
        {L"IPS", L"Inch Pound Second (IPS)"},
        {L"FPS", L"Foot Pound Second (FPS)"},
        {L"mmgs", L"mmgs"},
    };
    for (const auto& [choice, name] : systems) {
        Apply(bolt, choice, L"SAME_SIZE");
        EXPECT_EQ(UnitsOf(bolt), name);
    }
}

TEST_F(SetUnit, MakesItsOwnSystemOnceAndFindsItAgain) {
    Apply(pump, L"mmgs", L"SAME_SIZE");
    Apply(pump, L"IPS", L"SAME_SIZE");
    const std::size_t systems = bolt.UnitSystems().size();
    Apply(pump, L"mmgs", L"SAME_SIZE");
    EXPECT_EQ(UnitsOf(bolt), L"mmgs");
    EXPECT_EQ(bolt.PrincipalUnits().mass, L"g");
    EXPECT_EQ(bolt.UnitSystems().size(), systems);
    EXPECT_DOUBLE_EQ(bolt.FindDimension(L"d1")->value, 25.4);
    // A failed creation does not skip the look-up.
    Apply(pump, L"IPS", L"SAME_SIZE");
    host.State().report.Arm({"ProUnitInit", 0, PRO_TK_GENERAL_ERROR});
    Apply(pump, L"mmgs", L"SAME_SIZE");
    host.State().report.DisarmAll();
    EXPECT_EQ(UnitsOf(bolt), L"mmgs");
}

TEST_F(SetUnit, LeavesModelsThatCannotHaveTheSystem) {
    SimModel& nut = host.AddPart(L"NUT").SetReadOnly();
    pump.Place(nut);
    bolt.RemoveUnitSystem(L"Inch Pound Second (IPS)");
    Apply(pump, L"IPS", L"SAME_DIMS");
    EXPECT_EQ(UnitsOf(bolt), L"millimeter Newton Second (mmNs)");
    EXPECT_EQ(UnitsOf(nut), L"millimeter Newton Second (mmNs)");
    EXPECT_EQ(UnitsOf(pump), L"Inch Pound Second (IPS)");
    EXPECT_EQ(test::LastReport(host).Reason(L"BOLT"), L"模型中没有此单位制");
    EXPECT_EQ(test::LastReport(host).Reason(L"NUT"), L"模型只读或被锁定");
    EXPECT_EQ(host.State().user.messageArea, Texts{L"模型：完成 1，失败 2"});
    EXPECT_EQ(host.LastMessage(), kUnitsDone);
}

TEST_F(SetUnit, ChangesTheCurrentModelAloneUnlessItIsAnAssembly) {
    SimModel& mould = host.AddManufacturing(L"MFG", pump);
    host.Open(mould, sim::HostMode::kAssembly);
    host.OnDialog("SetUnit", [](SimDialog& dialog) { dialog.Choose("UnitRadio", L"MKS").Press("ApplyBt"); });
    EXPECT_EQ(host.Run("SetUnit"), PRO_TK_NO_ERROR);
    EXPECT_EQ(UnitsOf(mould), L"Meter Kilogram Second (MKS)");
    EXPECT_EQ(UnitsOf(pump), L"millimeter Newton Second (mmNs)");
    EXPECT_EQ(test::LastReport(host).rows.size(), 1u);
}

TEST_F(SetUnit, ShowsTheSystemOfTheModelBeforeAndAfter) {
    Apply(bolt, L"IPS", L"SAME_SIZE");
    host.OnDialog("SetUnit", [&](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("CurrentUnit"), L"Inch Pound Second (IPS)");
        EXPECT_EQ(dialog.Chosen("UnitRadio"), "IPS");
        EXPECT_EQ(dialog.Chosen("OptionRadio"), "SAME_SIZE");
        dialog.Choose("UnitRadio", L"CGS").Press("ApplyBt").Press("KvShowReport");
        EXPECT_EQ(dialog.Text("CurrentUnit"), L"Centimeter Gram Second (CGS)");
        host.State().screen.FindDialog("SetUnit")->Find("UnitRadio")->selected.clear();
        dialog.Press("ApplyBt");
    });
    EXPECT_EQ(host.Run("SetUnit"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), (Texts{kUnitsDone, kUnitsDone, L"\t请选择单位制和转换方式！\t"}));
    EXPECT_EQ(host.State().user.started.size(), 1u);
}

long long CostOf(int models, std::wstring_view units) {
    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (int i = 0; i < models; ++i) pump.Place(host.AddPart(L"PLATE" + std::to_wstring(i)));
    host.Open(pump);
    long long cost = 0;
    host.OnDialog("SetUnit", [&](SimDialog& dialog) {
        dialog.Choose("UnitRadio", units);
        const long long before = host.Calls();
        dialog.Press("ApplyBt");
        cost = host.Calls() - before;
    });
    EXPECT_EQ(host.Run("SetUnit"), PRO_TK_NO_ERROR);
    return cost;
}

// A placement costs the walk at most 6 calls. The own system takes seven calls more to be made.
TEST(SetUnitCost, IsAtMostSevenHostCallsAModelBesidesTheWalk) {
    EXPECT_LE(CostOf(110, L"IPS") - CostOf(10, L"IPS"), 100 * (6 + 7));
    EXPECT_LE(CostOf(110, L"mmgs") - CostOf(10, L"mmgs"), 100 * (6 + 7 + 7));
}

}  // namespace
