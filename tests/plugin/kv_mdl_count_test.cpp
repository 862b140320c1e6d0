// KvMdlCount: the number of placements as a parameter.

#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace {

using sim::SimHost;
using sim::SimModel;
using test::ChangeSetting;
using test::Messages;
using test::Texts;

constexpr wchar_t kQuantity[] = L"数量";
constexpr wchar_t kNothingToCount[] = L"此功能仅组件/制造环境可用！";
constexpr wchar_t kCountDone[] = L"\t批量数量参数创建/更新完毕。\t";
constexpr wchar_t kFailures[] =
    L"以下模型“数量”参数创建/更新失败，请检查参数是否存在关系锁定等原因，需手动处理：\n";

class KvMdlCount : public testing::Test {
protected:
    void Count(SimModel& top) {
        host.Open(top);
        EXPECT_EQ(host.Run("KvMdlCount"), PRO_TK_NO_ERROR);
    }

    SimHost host;
};

TEST_F(KvMdlCount, WritesTheNumberOnAllLevels) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& boltSet = host.AddAssembly(L"bolt").Place(bolt, 2);
    SimModel& sub = host.AddAssembly(L"SUB").Place(bolt, 2).Place(boltSet);
    SimModel& spare = host.AddPart(L"SPARE");
    SimModel& ring = host.AddPart(L"RING").SetParameter(kQuantity, 99);
    pump.Place(sub, 3).Place(bolt).Place(spare, {.status = 5}).Place(ring);
    Count(pump);

    EXPECT_EQ(bolt.Parameter(kQuantity), L"13");
    EXPECT_EQ(boltSet.Parameter(kQuantity), L"3") << "an assembly of a part's name counts for itself";
    EXPECT_EQ(sub.Parameter(kQuantity), L"3");
    EXPECT_EQ(ring.Parameter(kQuantity), L"1");
    EXPECT_EQ(std::get<int>(ring.FindParameter(kQuantity)->value), 1);
    EXPECT_FALSE(spare.HasParameter(kQuantity));
    EXPECT_FALSE(pump.HasParameter(kQuantity));
    EXPECT_EQ(Messages(host), Texts{kCountDone});
    EXPECT_EQ(pump.TreeRefreshes(), 1);

    SimModel& mfg = host.AddManufacturing(L"MFG", sub);
    Count(mfg);
    EXPECT_EQ(bolt.Parameter(kQuantity), L"4");
    EXPECT_EQ(mfg.TreeRefreshes(), 1);
}

TEST_F(KvMdlCount, NamesTheModelsThatRefuse) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& driven = host.AddPart(L"DRIVEN").SetParameter(kQuantity, 5).DriveByRelation(kQuantity);
    SimModel& text = host.AddPart(L"TEXT").SetParameter(kQuantity, std::wstring(L"two"));
    SimModel& sealed = host.AddAssembly(L"SEALED").Place(host.AddPart(L"PLAIN")).SetReadOnly();
    pump.Place(driven, 2).Place(sealed).Place(text);
    Count(pump);

    EXPECT_EQ(Messages(host), Texts{kFailures + std::wstring(L"DRIVEN\nSEALED\nTEXT\n")});
    EXPECT_EQ(host.Boxes().back().flags & MB_ICONMASK, static_cast<unsigned>(MB_ICONINFORMATION));
    EXPECT_EQ(driven.Parameter(kQuantity), L"5");
    EXPECT_EQ(host.State().models.Find(L"PLAIN", sim::ModelKind::kPart)->Parameter(kQuantity), L"1");
}

TEST_F(KvMdlCount, TellsOfACancelAndNotOfItsFailures) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (const wchar_t* name : {L"A", L"B", L"C", L"D"}) pump.Place(host.AddPart(name).SetReadOnly());
    host.WatchProgress(600, 2);
    Count(pump);
    EXPECT_EQ(Messages(host), Texts{L"\t操作已取消\t\n\n已完成：0\n失败：3\n未处理：1"});
}

TEST_F(KvMdlCount, PassesInstancesOverUnlessTheSettingIsOn) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& generic = host.AddPart(L"GENERIC");
    SimModel& shortBolt = host.AddPart(L"M8X20").MakeInstanceOf(generic);
    SimModel& longBolt = host.AddPart(L"M8X40").MakeInstanceOf(generic);
    pump.Place(shortBolt, 3).Place(generic, 2).Place(longBolt);
    for (const wchar_t* off : {L"false", L"", L"1", L"truely"}) {
        ChangeSetting(L"KvConfig.ini", L"KvCountForInstance", L"value", off);
        Count(pump);
        EXPECT_FALSE(shortBolt.HasParameter(kQuantity));
        EXPECT_EQ(generic.Parameter(kQuantity), L"2");
        EXPECT_FALSE(generic.HasFamilyColumn(kQuantity));
        EXPECT_EQ(host.State().user.messageArea.back(), L"模型：完成 1，跳过 2");
    }
    ChangeSetting(L"KvConfig.ini", L"KvCountForInstance", L"value", L" T rue ");
    for (int run = 0; run < 2; ++run) {
        Count(pump);
        EXPECT_EQ(shortBolt.Parameter(kQuantity), L"3");
        EXPECT_EQ(longBolt.Parameter(kQuantity), L"1");
        EXPECT_EQ(generic.Parameter(kQuantity), L"2") << "the generic keeps its own number";
        EXPECT_EQ(generic.FamilyColumns(), std::vector<std::wstring>{kQuantity});
        EXPECT_EQ(host.LastMessage(), kCountDone);
    }
}

TEST_F(KvMdlCount, NeedsAGenericThatTakesTheColumn) {
    ChangeSetting(L"KvConfig.ini", L"KvCountForInstance", L"value", L"TRUE");
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& generic = host.AddPart(L"GENERIC");
    SimModel& instance = host.AddPart(L"M8X20").MakeInstanceOf(generic);
    SimModel& absent = host.AddPart(L"M8X40").LoseGeneric(L"LOST");
    pump.Place(instance).Place(absent, 2);
    generic.SetReadOnly();
    Count(pump);
    EXPECT_EQ(host.LastMessage(), kFailures + std::wstring(L"M8X20\n"));
    EXPECT_FALSE(instance.HasParameter(kQuantity));
    EXPECT_EQ(absent.Parameter(kQuantity), L"2") << "without its generic an instance is a model like others";

    generic.SetReadOnly(false);
    Count(pump);
    EXPECT_EQ(host.LastMessage(), kCountDone);
    EXPECT_EQ(generic.Parameter(kQuantity), L"0");
    EXPECT_EQ(instance.Parameter(kQuantity), L"1");

    // One that has the column already, but may not be changed.
    pump.Place(instance);
    generic.SetReadOnly();
    Count(pump);
    EXPECT_EQ(host.LastMessage(), kFailures + std::wstring(L"M8X20\n"));
    EXPECT_EQ(instance.Parameter(kQuantity), L"1");
}

TEST_F(KvMdlCount, TellsThatMemoryEndedWhenAllocationsFailInTurn) {
    SimModel& pump = host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT"));
    host.Open(pump);
    bool isTold = false;
    for (long long nth = 1; nth <= 60 && !isTold; ++nth) {
        host.State().user.boxes.clear();
        sim::FailPluginAllocation(nth);
        host.Run("KvMdlCount");
        isTold = Messages(host) == Texts{L"ProArray Alloc error"};
    }
    sim::FailPluginAllocation(0);
    EXPECT_TRUE(isTold);
}

TEST_F(KvMdlCount, WorksInAssembliesOnly) {
    host.Open(host.AddPart(L"BOLT"), sim::HostMode::kAssembly);
    EXPECT_EQ(host.Run("KvMdlCount"), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(Messages(host), Texts{kNothingToCount});
}

}  // namespace
