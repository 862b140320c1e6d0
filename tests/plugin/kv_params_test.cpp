// KvParams: one parameter in many models, and the two parameters with computed values.

#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::HostMode;
using sim::Matrix;
using sim::ParameterValue;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::Utf8;
using test::ChangeSetting;
using test::Messages;
using test::ReadSettings;
using test::Texts;
using namespace std::string_literals;

constexpr wchar_t kFile[] = L"KvParams.ini";
constexpr wchar_t kNoModels[] = L"当前模型中没有合适的子零件/组件";
constexpr wchar_t kBadBoolean[] = L"布尔类型参数值只可为'YES'或'NO',请重新输入!";
constexpr wchar_t kNoAssembly[] = L"当前环境不是组件/制造，无法执行此操作";
constexpr wchar_t kOutlineDone[] = L"外形尺寸参数批量创建/更新完成";
constexpr wchar_t kSheetsDone[] = L"图幅大小参数批量创建/更新完成";

using Names = std::set<std::wstring>;

class KvParams : public testing::Test {
protected:
    // Opens the dialog over `top` and plays.
    void Use(SimModel& top, const std::function<void(SimDialog&)>& script) {
        host.Open(top, top.Kind() == sim::ModelKind::kManufacturing ? HostMode::kMould : HostMode::kAssembly);
        host.OnDialog("KvParams", script);
        EXPECT_EQ(host.Run("KvParams"), PRO_TK_NO_ERROR);
    }
    // Presses Add, Update or Delete for the string parameter MAT.
    void Edit(SimModel& top, const std::string& button, std::wstring_view models = L"AsmAndPart",
              std::wstring_view excluded = L"") {
        Use(top, [&](SimDialog& dialog) {
            dialog.Choose("TypeRadio", models).Choose("PtypeOption", L"字符串");
            dialog.Type("ParaName", L"MAT").Type("ParaValue", L"zinc").Type("InputKeyWords", excluded);
            dialog.Press(button);
        });
    }
    // Presses one of the two lower buttons; both write the parameter OUT.
    void Derive(SimModel& top, const std::string& button, std::wstring_view models = L"AsmAndPart",
                std::wstring_view excluded = L"") {
        Use(top, [&](SimDialog& dialog) {
            dialog.Choose("TypeRadio2", models).Type("InputKeyWords2", excluded);
            dialog.Type("outlinePname", L"OUT").Type("shSizePname", L"OUT").Check("KvOutlineOrder", ordered);
            dialog.Choose("KvOutlineNum", decimals).Press(button);
        });
    }
    // Puts text into a field whatever length the layout allows there.
    void Put(const std::string& field, std::wstring_view text) {
        host.State().screen.FindDialog("KvParams")->Find(field)->value = text;
    }
    // Names of the models in memory that have the parameter.
    Names Having(std::wstring_view parameter) {
        Names names;
        for (const SimModel* model : host.State().models.All())
            if (model->HasParameter(parameter)) names.insert(model->Name());
        return names;
    }
    void Forget(std::wstring_view parameter) {
        for (SimModel* model : host.State().models.All()) model->RemoveParameter(parameter);
    }
    SimModel& Block(std::wstring_view name, double x, double y, double z) {
        return host.AddPart(name).AddBlock(x, y, z);
    }

    SimHost host;
    bool ordered = false;
    std::wstring decimals = L"2";
};

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
    EXPECT_EQ(Messages(host), Texts{kOutlineDone});
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

// ---- Add, Update, Delete

struct TypedValue {
    const wchar_t* type;
    std::wstring text;
    std::optional<ParameterValue> value;  // none: refused
};

std::vector<TypedValue> TypedValues() {
    std::vector<TypedValue> values;
    values.reserve(50);
    const std::vector<std::pair<std::wstring, int>> integers = {
        {L"12", 12},
        {L"-5", -5},
        {L"+3", 3},
        {L" 7", 7},
        {L"12abc", 12},
        {L"12.9", 12},
        {L"1,000", 1},
        {L"1e3", 1},
        {L"", 0},
        {L"abc", 0},
        {L"0x1F", 0},
        {L"99999999999", 2147483647},
        {L"-99999999999", -2147483647 - 1},
    };
    for (const auto& [text, value] : integers) values.push_back({L"整数", text, value});
    const std::vector<std::pair<std::wstring, double>> reals = {
        {L"3.5", 3.5},   {L"-0.25", -0.25}, {L"1e3", 1000.0}, {L".5", 0.5},  {L" 4", 4.0},
        {L"2.5mm", 2.5}, {L"1,5", 1.0},     {L"", 0.0},       {L"abc", 0.0},
    };
    for (const auto& [text, value] : reals) values.push_back({L"实数", text, value});
    for (const std::wstring& text : {L"zinc"s, L"  a b "s, L"镀锌 8μm"s, L""s, std::wstring(80, L'图')})
        values.push_back({L"字符串", text, text});
    for (const std::size_t length : {81u, 255u, 300u})
        values.push_back({L"字符串", std::wstring(length, L'x'), std::nullopt});
    for (const wchar_t* text : {L"YES", L"yes", L"yEs"}) values.push_back({L"是/否", text, true});
    for (const wchar_t* text : {L"NO", L""}) values.push_back({L"是/否", text, false});
    return values;
}

TEST_F(KvParams, ReadsTheValueByItsType) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT");
    pump.Place(bolt);
    const std::map<std::wstring, ParameterValue> earlier = {
        {L"整数", 4711}, {L"实数", 0.125}, {L"字符串", L"old"s}, {L"是/否", true}};
    for (const auto& [type, text, value] : TypedValues()) {
        SCOPED_TRACE(Utf8(type) + " from \"" + Utf8(text) + "\"");
        bolt.SetParameter(L"OLD", earlier.at(type));
        Use(pump, [&, &type = type, &text = text](SimDialog& dialog) {
            dialog.Choose("TypeRadio", L"Part").Choose("PtypeOption", type).Type("ParaName", L"NEW");
            Put("ParaValue", text);
            dialog.Press("Add").Type("ParaName", L"OLD").Press("Update");
        });
        const sim::ModelParameter* added = bolt.FindParameter(L"NEW");
        EXPECT_TRUE(value ? added != nullptr && added->value == *value : added == nullptr);
        EXPECT_TRUE(bolt.FindParameter(L"OLD")->value == value.value_or(earlier.at(type)));
        Forget(L"NEW");
        Forget(L"OLD");
    }
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvParams, RefusesOtherTextsForABooleanBeforeAnyModel) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT").SetParameter(L"OLD", true);
    pump.Place(bolt);
    Texts expected;
    for (const wchar_t* text : {L"no", L"No", L"nO", L"1", L"true", L" YES", L"YES ", L"YESNO", L"ＹＥＳ"}) {
        SCOPED_TRACE(Utf8(text));
        Use(pump, [&](SimDialog& dialog) {
            dialog.Choose("PtypeOption", L"是/否")
                .Type("ParaName", L"NEW")
                .Type("ParaValue", text)
                .Press("Add");
            dialog.Type("ParaName", L"OLD").Press("Update");
        });
        expected.insert(expected.end(), 2, kBadBoolean);
    }
    EXPECT_EQ(Messages(host), expected);
    EXPECT_EQ(Having(L"NEW"), Names{});
    EXPECT_EQ(bolt.Parameter(L"OLD"), L"YES");
    EXPECT_EQ(pump.Regenerations() + pump.TreeRefreshes(), 0);
}

// A model without the parameter, and one of every kind that has it.
class KvParamsEdit : public KvParams {
protected:
    KvParamsEdit() {
        for (SimModel* model : {&has, &driven, &locked, &number}) model->SetParameter(L"Mat", L"old"s);
        driven.DriveByRelation(L"MAT");
        locked.LockParameter(L"MAT");
        number.SetParameter(L"MAT", 5);
        frozen.SetParameter(L"MAT", L"old"s).SetReadOnly();
        frozenWithout.SetReadOnly();
        pump.Place(sub, 3);
        for (SimModel* model : {&frozen, &frozenWithout, &driven, &locked, &has, &lacks, &number})
            sub.Place(*model, 2);
    }

    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& lacks = host.AddPart(L"LACKS");
    SimModel& has = host.AddPart(L"HAS");
    SimModel& driven = host.AddPart(L"DRIVEN");
    SimModel& locked = host.AddPart(L"LOCKED");
    SimModel& number = host.AddPart(L"NUMBER");
    SimModel& frozen = host.AddPart(L"FROZEN");
    SimModel& frozenWithout = host.AddPart(L"FROZEN2");
};

TEST_F(KvParamsEdit, AddCreatesTheParameterWhereItIsMissing) {
    Edit(pump, "Add");
    for (const SimModel* model : {&pump, &sub, &lacks}) EXPECT_EQ(model->Parameter(L"MAT"), L"zinc");
    for (const SimModel* model : {&has, &driven, &locked, &frozen})
        EXPECT_EQ(model->Parameter(L"MAT"), L"old");
    EXPECT_EQ(number.Parameter(L"MAT"), L"5");
    EXPECT_FALSE(frozenWithout.HasParameter(L"MAT"));
    EXPECT_EQ(host.Calls("ProParameterWithUnitsCreate"), 9) << "once a model";
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvParamsEdit, UpdateChangesTheParameterWhereItIs) {
    Edit(pump, "Update");
    EXPECT_EQ(has.Parameter(L"MAT"), L"zinc");
    for (const SimModel* model : {&pump, &sub, &lacks, &frozenWithout})
        EXPECT_FALSE(model->HasParameter(L"MAT"));
    for (const SimModel* model : {&driven, &locked, &frozen}) EXPECT_EQ(model->Parameter(L"MAT"), L"old");
    EXPECT_EQ(number.Parameter(L"MAT"), L"5") << "of another type";
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvParamsEdit, DeleteRemovesTheParameterWithoutAsking) {
    has.SetParameter(L"MATERIAL", L"steel"s);
    Edit(pump, "Delete");
    for (const SimModel* model : {&has, &number}) EXPECT_FALSE(model->HasParameter(L"MAT"));
    EXPECT_EQ(frozen.Parameter(L"MAT"), L"old");
    EXPECT_EQ(has.Parameter(L"MATERIAL"), L"steel");
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvParamsEdit, EachButtonRegeneratesAndRefreshesTheCurrentModelOnce) {
    int times = 0;
    for (const char* button : {"Add", "Update", "Delete"}) {
        Edit(pump, button);
        ++times;
        EXPECT_EQ(pump.Regenerations(), times) << button;
        EXPECT_EQ(pump.TreeRefreshes(), times) << button;
        EXPECT_EQ(sub.Regenerations() + has.Regenerations() + sub.TreeRefreshes(), 0) << button;
    }
}

TEST_F(KvParams, TakesParameterNamesThatTheHostCanHold) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = Block(L"BOLT", 1, 2, 3);
    pump.Place(bolt);
    host.AddDrawingFile(L"BOLT", {L"A4"});
    const std::vector<std::pair<std::wstring, bool>> names = {
        {std::wstring(31, L'N'), true},  {std::wstring(31, L'材'), true},   {L"表面处理_1", true},
        {std::wstring(32, L'N'), false}, {std::wstring(255, L'材'), false}, {L"", false},
    };
    for (const auto& [name, fits] : names) {
        SCOPED_TRACE(Utf8(name));
        for (const char* button : {"Add", "KvOutline", "KvSheetSize"}) {
            bolt.SetParameter(L"KEPT", L"kept"s);
            Use(pump, [&, &name = name](SimDialog& dialog) {
                dialog.Choose("TypeRadio", L"Part").Choose("TypeRadio2", L"Part").Type("ParaValue", L"zinc");
                for (const char* field : {"ParaName", "outlinePname", "shSizePname"}) Put(field, name);
                dialog.Press(button);
            });
            EXPECT_EQ(bolt.Parameters().size(), fits ? 2u : 1u) << button;
            EXPECT_EQ(bolt.HasParameter(name), fits) << button;
            bolt.RemoveParameter(name);
        }
    }
}

TEST_F(KvParams, EmptyOrOverlongNamesDeleteAndUpdateNothing) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT").SetParameter(std::wstring(31, L'N'), L"old"s);
    pump.Place(bolt);
    for (const std::wstring& name : {L""s, std::wstring(32, L'N')}) {
        for (const char* button : {"Update", "Delete"}) {
            Use(pump, [&](SimDialog& dialog) {
                Put("ParaName", name);
                dialog.Type("ParaValue", L"zinc").Press(button);
            });
            EXPECT_EQ(bolt.Parameter(std::wstring(31, L'N')), L"old") << button;
        }
    }
}

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
    EXPECT_EQ(Having(L"OUT"), (Names{L"PUMP", L"CUBE"}));
    EXPECT_EQ(cube.Parameter(L"OUT"), L"1×2×3");
    EXPECT_EQ(pump.Parameter(L"OUT"), L"1×2×3") << "a part with several bodies shows no surfaces";
    EXPECT_EQ(bare.Parameter(L"OUTER"), L"kept");
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
    ASSERT_EQ(Messages(host), Texts{kNoAssembly});
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

// ---- The dialog's settings

TEST_F(KvParams, EachButtonSavesTheSettingsFirst) {
    SimModel& empty = host.AddAssembly(L"EMPTY");
    int run = 0;
    for (const char* button : {"Add", "Update", "Delete", "KvOutline", "KvSheetSize"}) {
        SCOPED_TRACE(button);
        // None of the presses has anything to work on.
        const std::wstring mark = std::to_wstring(++run);
        Use(empty, [&](SimDialog& dialog) {
            dialog.Type("InputKeyWords", L"std_，" + mark).Type("InputKeyWords2", L"lower");
            dialog.Type("outlinePname", L"外形" + mark).Type("shSizePname", L"图幅" + mark);
            dialog.Choose("KvOutlineNum", L"4").Check("KvOutlineOrder", run % 2 == 0);
            dialog.Choose("PtypeOption", L"是/否")
                .Type("ParaName", L"X")
                .Type("ParaValue", L"no")
                .Press(button);
        });
        EXPECT_EQ(ReadSettings(kFile, L"InputKeyWords", L"content"), L"std_，" + mark);
        EXPECT_EQ(ReadSettings(kFile, L"InputKeyWords2", L"content"), L"");
        EXPECT_EQ(ReadSettings(kFile, L"KvOutlineOrder", L"content"), run % 2 == 0 ? L"1" : L"0");
        EXPECT_EQ(ReadSettings(kFile, L"KvOutlineNum", L"content"), L"4");
        EXPECT_EQ(ReadSettings(kFile, L"outlinePname", L"content"), L"外形" + mark);
        EXPECT_EQ(ReadSettings(kFile, L"shSizePname", L"content"), L"图幅" + mark);
    }
}

TEST_F(KvParams, ClosingSavesNothing) {
    const std::string before = test::ReadBytes(test::SettingsFile(kFile));
    SimModel& pump = host.AddAssembly(L"PUMP");
    Use(pump, [](SimDialog& dialog) {
        dialog.Type("outlinePname", L"X").Press("Close");
        EXPECT_FALSE(dialog.IsOpen());
    });
    Use(pump, [](SimDialog& dialog) {
        dialog.Type("outlinePname", L"X").Close();
        EXPECT_FALSE(dialog.IsOpen());
    });
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kFile)), before);
}

TEST_F(KvParams, KeepsTheStoredOrderWhenTheCheckButtonCannotBeRead) {
    ChangeSetting(kFile, L"KvOutlineOrder", L"content", L"kept");
    Use(host.AddAssembly(L"PUMP"), [&](SimDialog& dialog) {
        host.State().report.Arm(Fault{"ProUICheckbuttonGetState", 0});
        dialog.Choose("KvOutlineNum", L"1").Press("Add");
    });
    EXPECT_EQ(ReadSettings(kFile, L"KvOutlineOrder", L"content"), L"kept");
    EXPECT_EQ(ReadSettings(kFile, L"KvOutlineNum", L"content"), L"1");
}

TEST_F(KvParams, OpensWithTheStoredSettings) {
    ChangeSetting(kFile, L"InputKeyWords", L"content", L"\" AB C, D \"");
    ChangeSetting(kFile, L"InputKeyWords2", L"content", L"never read");
    ChangeSetting(kFile, L"KvOutlineNum", L"content", L"\" 3 \"");
    ChangeSetting(kFile, L"outlinePname", L"content", L"外 形");
    ChangeSetting(kFile, L"shSizePname", L"content", L"图 幅");
    Use(host.AddAssembly(L"PUMP"), [](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("InputKeyWords"), L" AB C, D ");
        EXPECT_EQ(dialog.Text("InputKeyWords2"), L" AB C, D ");
        EXPECT_EQ(dialog.Text("KvOutlineNum"), L"3");
        EXPECT_EQ(dialog.Text("outlinePname"), L"外形");
        EXPECT_EQ(dialog.Text("shSizePname"), L"图幅");
        EXPECT_EQ(dialog.Text("ParaName"), L"");
    });
}

TEST_F(KvParams, TakesTheOrderFromOneAndZeroAlone) {
    bool byLayout = false;
    fs::remove(test::SettingsFile(kFile));
    Use(host.AddAssembly(L"PUMP"), [&](SimDialog& dialog) { byLayout = dialog.IsChecked("KvOutlineOrder"); });
    const std::pair<const wchar_t*, bool> cases[] = {{L"1", true},       {L"0", false},
                                                     {L"\" 1 \"", true}, {L"\" 0 \"", false},
                                                     {L"2", byLayout},   {L"", byLayout}};
    for (const auto& [stored, checked] : cases) {
        ChangeSetting(kFile, L"KvOutlineOrder", L"content", stored);
        Use(host.AddAssembly(std::wstring(L"A") + std::to_wstring(host.State().models.All().size())),
            [&, &stored = stored, &checked = checked](SimDialog& dialog) {
                EXPECT_EQ(dialog.IsChecked("KvOutlineOrder"), checked) << Utf8(stored);
            });
    }
}

// The file lies beside the text tree, which may be apart from the module.
TEST(KvParamsSettings, LieBesideTheTextTree) {
    const test::TempDirectory apart;
    test::CopyPluginHome(apart.Path());
    sim::HostSetup setup;
    setup.textDirectory = apart.Path();
    const std::string before = test::ReadBytes(test::SettingsFile(kFile));
    SimHost host(setup);
    host.Open(host.AddAssembly(L"PUMP"));
    host.OnDialog("KvParams", [](SimDialog& dialog) { dialog.Type("InputKeyWords", L"std_").Press("Add"); });
    EXPECT_EQ(host.Run("KvParams"), PRO_TK_NO_ERROR);
    host.OnDialog("KvParams", [](SimDialog& dialog) { EXPECT_EQ(dialog.Text("InputKeyWords"), L"std_"); });
    host.Run("KvParams");
    EXPECT_NE(test::ReadBytes(apart.Path() / "KVconfig" / kFile), before);
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kFile)), before);
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
