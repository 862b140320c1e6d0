// KvParams: one parameter added, updated or deleted in many models.

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/kv_params_fixture.h"
#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;

using sim::ParameterValue;
using sim::SimDialog;
using sim::SimModel;
using sim::Utf8;
using test::KvParams;
using test::Messages;
using test::Names;
using test::Texts;
using namespace std::string_literals;

constexpr wchar_t kBadBoolean[] = L"布尔类型参数值只可为'YES'或'NO',请重新输入!";

struct TypedValue {
    const wchar_t* type;
    std::wstring text;
    std::optional<ParameterValue> value;  // none: refused
};

std::vector<TypedValue> TypedValues() {
    std::vector<TypedValue> values;
    values.reserve(50);
    const std::vector<std::pair<std::wstring, int>> integers = {
        {L"12", 12}, {L"-5", -5},   {L"+3", 3},  {L" 7", 7}, {L"12abc", 12}, {L"12.9", 12},
        {L"+-5", 0}, {L"1,000", 1}, {L"1e3", 1}, {L"", 0},   {L"abc", 0},    {L"0x1F", 0},
    };
    for (const auto& [text, value] : integers) values.push_back({L"整数", text, value});
    for (const wchar_t* text : {L"99999999999", L"-99999999999"})
        values.push_back({L"整数", text, std::nullopt});
    values.push_back({L"实数", L"1e999", std::nullopt});
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
        // A value that is none is refused with a box by either button, any other is told in the message area.
        EXPECT_EQ(Messages(host).size(), value ? 0u : 2u);
        EXPECT_EQ(host.State().user.messageArea.empty(), !value);
        host.State().user.boxes.clear();
        host.State().user.messageArea.clear();
    }
}

TEST_F(KvParams, TellsTheValueThatWasWrittenAndHowManyModelsGotIt) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT")).Place(host.AddPart(L"STD_NUT"));
    Use(pump, [&](SimDialog& dialog) {
        dialog.Choose("TypeRadio", L"Part").Choose("PtypeOption", L"实数").Type("ParaName", L"LENGTH");
        dialog.Type("ParaValue", L"1,5").Type("InputKeyWords", L"std_").Press("Add");
    });
    EXPECT_EQ(host.State().user.messageArea, (Texts{L"已写入的值：1", L"模型：完成 1，跳过 1"}));
}

TEST_F(KvParams, AsksForAParameterNameAndShowsTheReport) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT"));
    Use(pump, [&](SimDialog& dialog) {
        dialog.Press("KvShowReport").Type("ParaName", L"");
        dialog.Press("Add").Press("Update").Press("Delete");
        dialog.Type("outlinePname", L"").Type("shSizePname", L"").Press("KvOutline").Press("KvSheetSize");
        dialog.Type("ParaName", L"A").Type("ParaValue", L"x").Press("Add").Press("KvShowReport");
    });
    Texts expected = {L"\t尚无可查看的结果\t"};
    expected.resize(6, L"\t请输入参数名称！\t");
    EXPECT_EQ(Messages(host), expected);
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_EQ(fs::path(host.State().user.started[0].file).filename().wstring(), test::LastReport(host).name);
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

}  // namespace
