// KvParams: which models it works on, what it tells when memory is short, and what it costs.

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "plugin/kv_params_fixture.h"
#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"

namespace {

using sim::Fault;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::Utf8;
using test::KvParams;
using test::Messages;
using test::Names;
using test::Texts;

constexpr wchar_t kNoModels[] = L"当前模型中没有合适的子零件/组件";
constexpr wchar_t kOutlineWritten[] = L"外形尺寸参数批量创建/更新完成";

// ---- Which models

TEST_F(KvParams, WorksOnTheModelsThatTheRadioGroupNames) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = Block(L"BOLT", 1, 1, 1);
    sub.Place(bolt).Place(host.AddSheetmetal(L"PLATE").AddBlock(1, 1, 1));
    pump.AddFeature(917).Place(sub, 2).Place(bolt).Place(host.AddSkeleton(L"SKEL").AddBlock(1, 1, 1));
    pump.Place(Block(L"NUT", 1, 1, 1), {.isHidden = true});
    // Suppressed, internal and rejected by its flags; with everything below.
    SimModel& spare = host.AddAssembly(L"SPARE").Place(Block(L"RING", 1, 1, 1));
    pump.Place(spare, {.status = 5}).Place(Block(L"CLIP", 1, 1, 1), {.isVisible = false});
    pump.Place(Block(L"WASHER", 1, 1, 1), {.statusFlags = 130});
    Block(L"LOOSE", 1, 1, 1);

    const std::map<std::wstring, Names> expected = {
        {L"AsmAndPart", {L"PUMP", L"SUB", L"BOLT", L"PLATE", L"SKEL", L"NUT"}},
        {L"Part", {L"BOLT", L"PLATE", L"SKEL", L"NUT"}},
        {L"Asm", {L"PUMP", L"SUB"}},
        {L"Smt", {L"PLATE"}},
    };
    for (const auto& [models, names] : expected) {
        SCOPED_TRACE(Utf8(models));
        Edit(pump, "Add", models);
        EXPECT_EQ(Having(L"MAT"), names);
        Derive(pump, "KvOutline", models);
        EXPECT_EQ(Having(L"OUT"), names);
        Forget(L"MAT");
        Forget(L"OUT");
    }
}

TEST_F(KvParams, FollowsTheComponentsNotTheCurrentModel) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(Block(L"BOLT", 1, 1, 1));
    SimModel& empty = host.AddAssembly(L"EMPTY").AddFeature(917);
    SimModel& alone = Block(L"ALONE", 1, 1, 1);
    struct {
        SimModel& top;
        const wchar_t* models;
    } const cases[] = {{empty, L"AsmAndPart"}, {empty, L"Asm"}, {alone, L"AsmAndPart"},
                       {alone, L"Part"},       {pump, L"Asm"},  {pump, L"Smt"}};
    std::size_t boxes = 0;
    for (const auto& [top, models] : cases) {
        SCOPED_TRACE(Utf8(top.Name() + L" " + models));
        for (const char* button : {"Add", "Update", "Delete"}) {
            Edit(top, button, models);
            EXPECT_EQ(Messages(host).size(), ++boxes);
            EXPECT_EQ(host.LastMessage(), kNoModels);
        }
        EXPECT_EQ(top.Regenerations(), 0);
        if (&top == &alone) continue;
        for (const char* button : {"KvOutline", "KvSheetSize"}) {
            Derive(top, button, models);
            EXPECT_EQ(Messages(host).size(), ++boxes);
            EXPECT_EQ(host.LastMessage(), kNoModels);
        }
    }
    EXPECT_EQ(Having(L"MAT"), Names{});
    EXPECT_EQ(Having(L"OUT"), Names{});
}

TEST_F(KvParams, TakesTheAssemblyOfAManufacturingModel) {
    SimModel& mould = host.AddAssembly(L"MOULD");
    mould.Place(Block(L"CAVITY", 1, 1, 1));
    SimModel& manufacturing = host.AddManufacturing(L"MFG", mould);
    Edit(manufacturing, "Add");
    EXPECT_EQ(Having(L"MAT"), (Names{L"MOULD", L"CAVITY"}));
    EXPECT_EQ(mould.Regenerations(), 1);
    Derive(manufacturing, "KvOutline");
    EXPECT_EQ(Having(L"OUT"), (Names{L"MOULD", L"CAVITY"}));
    EXPECT_EQ(Messages(host), Texts{kOutlineWritten});
}

TEST_F(KvParams, AComponentWithoutItsModelEndsItsLevelAlone) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(Block(L"FIRST", 1, 1, 1)).PlaceMissing(L"LOST").Place(Block(L"SECOND", 1, 1, 1));
    pump.Place(sub).Place(Block(L"THIRD", 1, 1, 1));
    Edit(pump, "Add", L"Part");
    EXPECT_EQ(Having(L"MAT"), (Names{L"FIRST", L"SECOND", L"THIRD"})) << "suppressed by the host";

    Forget(L"MAT");
    sub.FindFeature(2)->status = 0;
    Edit(pump, "Add", L"Part");
    EXPECT_EQ(Having(L"MAT"), (Names{L"FIRST", L"THIRD"}));
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvParams, SkipsModelsByThePrefixesOfTheirNames) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (const wchar_t* name : {L"ABC_1", L"DEF-2", L"XABC", L"泵体", L"GH"})
        pump.Place(Block(name, 1, 1, 1));
    struct {
        const wchar_t* text;
        Names edited, derived;  // what the upper and what the lower field exclude
    } const cases[] = {
        {L"", {}, {}},
        {L" ,，,", {}, {}},
        {L"ABC，DEF", {L"ABC_1", L"DEF-2"}, {L"ABC_1", L"DEF-2"}},
        {L"abc,,dEf,", {L"ABC_1", L"DEF-2"}, {L"ABC_1", L"DEF-2"}},
        {L"BC,x", {L"XABC"}, {L"XABC"}},
        {L"泵，GH_long", {L"泵体"}, {L"泵体"}},
        {L"pump", {L"PUMP"}, {L"PUMP"}},
        // Blanks belong to a prefix of the upper field and to none of the lower one.
        {L"ABC, DEF", {L"ABC_1"}, {L"ABC_1", L"DEF-2"}},
        {L"A B C", {}, {L"ABC_1"}},
    };
    const Names all = {L"PUMP", L"ABC_1", L"DEF-2", L"XABC", L"泵体", L"GH"};
    for (const auto& [text, edited, derived] : cases) {
        SCOPED_TRACE(Utf8(text));
        Names expected = all;
        for (const std::wstring& name : edited) expected.erase(name);
        Edit(pump, "Add", L"AsmAndPart", text);
        EXPECT_EQ(Having(L"MAT"), expected);
        Edit(pump, "Delete", L"AsmAndPart", text);
        EXPECT_EQ(Having(L"MAT"), Names{});
        expected = all;
        for (const std::wstring& name : derived) expected.erase(name);
        Derive(pump, "KvOutline", L"AsmAndPart", text);
        EXPECT_EQ(Having(L"OUT"), expected);
        Forget(L"OUT");
    }
}

TEST_F(KvParams, TakesAnAssemblyInItselfOnce) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(pump).Place(host.AddPart(L"BOLT"));
    Edit(pump, "Add");
    EXPECT_EQ(host.State().user.messageArea.back(), L"模型：完成 2");
}

// Without a choice of models none is changed.
TEST_F(KvParams, ShowsTheTreeBeforeItRegeneratesAndNeedsAChoice) {
    SimModel& pump = host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT"));
    host.State().report.SetTracing(true);
    Edit(pump, "Add");
    std::vector<std::string> order;
    for (const sim::CallRecord& call : host.State().report.Trace())
        if (call.site->name == std::string("ProTreetoolRefresh") ||
            call.site->name == std::string("ProSolidRegenerate"))
            order.emplace_back(call.site->name);
    EXPECT_EQ(order, (std::vector<std::string>{"ProTreetoolRefresh", "ProSolidRegenerate"}));

    Forget(L"MAT");
    host.State().report.Arm(Fault{"ProUIRadiogroupSelectednamesGet", 0});
    Edit(pump, "Add");
    EXPECT_EQ(Having(L"MAT"), Names{});
    EXPECT_EQ(Messages(host), Texts{kNoModels});
}

TEST_F(KvParams, RefusesANameThatIsTooLong) {
    SimModel& pump = host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT"));
    Use(pump, [&](SimDialog& dialog) {
        Put("ParaName", std::wstring(32, L'N'));
        dialog.Press("Add").Press("Delete");
    });
    const std::wstring tooLong = L"\t参数名称超过31个字符，未做任何改动！\t";
    EXPECT_EQ(Messages(host), (Texts{tooLong, tooLong}));
}

// ---- Failures and cost

TEST_F(KvParams, TellsThatTheHostHasNoMemoryForTheList) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(Block(L"BOLT", 1, 1, 1));
    Texts expected;
    for (const char* button : {"Add", "Update", "Delete", "KvOutline", "KvSheetSize"}) {
        Use(pump, [&](SimDialog& dialog) {
            dialog.Type("ParaName", L"MAT").Type("outlinePname", L"MAT").Type("shSizePname", L"MAT");
            host.State().report.Arm(Fault{"ProArrayAlloc", 0, PRO_TK_OUT_OF_MEMORY});
            dialog.Press(button);
        });
        host.State().report.DisarmAll();
        expected.push_back(L"ProArray Alloc error");
    }
    EXPECT_EQ(Messages(host), expected);
    EXPECT_EQ(Having(L"MAT"), Names{});
}

// Host calls of one Add over an assembly of `models` sheet-metal parts, each placed so often.
long long CostOfAdd(int models, int placements, std::wstring_view choice) {
    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (int i = 0; i < models; ++i)
        pump.Place(host.AddSheetmetal(L"PLATE" + std::to_wstring(i)), placements);
    host.Open(pump);
    long long cost = 0;
    host.OnDialog("KvParams", [&](SimDialog& dialog) {
        dialog.Choose("TypeRadio", choice).Type("ParaName", L"MAT").Type("ParaValue", L"zinc");
        dialog.Type("InputKeyWords", L"std_，tmp_");
        const long long before = host.Calls();
        dialog.Press("Add");
        cost = host.Calls() - before;
    });
    EXPECT_EQ(host.Run("KvParams"), PRO_TK_NO_ERROR);
    return cost;
}

TEST(KvParamsCost, GrowsWithFewHostCallsAPlacementAndAModel) {
    const std::pair<const wchar_t*, long long> callsOfWalk[] = {
        {L"AsmAndPart", 6}, {L"Part", 6}, {L"Smt", 7}};
    for (const auto& [choice, perPlacement] : callsOfWalk) {
        SCOPED_TRACE(Utf8(choice));
        const long long base = CostOfAdd(10, 1, choice);
        EXPECT_LE(CostOfAdd(10, 11, choice) - base, 100 * perPlacement);
        EXPECT_LE(CostOfAdd(110, 1, choice) - base, 100 * (perPlacement + 5));
    }
}

}  // namespace
