// The host's parameter functions: what they set, and what the model does not allow.

#include <algorithm>
#include <cstring>
#include <string>

#include <ProMdl.h>
#include <ProModelitem.h>
#include <ProParameter.h>
#include <ProSolid.h>
#include <gtest/gtest.h>

#include "simulator/report/utf8.h"
#include "support/host_test.h"

namespace {

using namespace sim;
using test::Name;
using test::Solid;

class HostParameters : public test::HostTest {
protected:
    ProError Create(SimModel& model, std::wstring_view name, const ProParamvalue& value) {
        ProModelitem item;
        EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
        ProParamvalue copy = value;
        return ProParameterWithUnitsCreate(&item, Name(name).text, &copy, nullptr, &parameter);
    }
    ProError Set(SimModel& model, std::wstring_view name, const ProParamvalue& value) {
        const ProError status = Find(model, name);
        ProParamvalue copy = value;
        return status == PRO_TK_NO_ERROR ? ProParameterValueWithUnitsSet(&parameter, &copy, nullptr) : status;
    }
    ProError Find(SimModel& model, std::wstring_view name) {
        ProModelitem item;
        EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
        return ProParameterInit(&item, Name(name).text, &parameter);
    }
    static ProParamvalue Integer(int number) {
        ProParamvalue value;
        EXPECT_EQ(ProParamvalueSet(&value, &number, PRO_PARAM_INTEGER), PRO_TK_NO_ERROR);
        return value;
    }
    static ProError Text(std::wstring text, ProParamvalue& value) {
        return ProParamvalueSet(&value, text.data(), PRO_PARAM_STRING);
    }

    ProParameter parameter{};
};

TEST_F(HostParameters, AreCreatedSetAndDeleted) {
    SimModel& bolt = Part(L"BOLT");
    EXPECT_EQ(Find(bolt, L"数量"), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(Create(bolt, L"数量", Integer(4)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, L"Material", Integer(1)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, L"MATERIAL", Integer(2)), PRO_TK_E_FOUND);
    EXPECT_EQ(Set(bolt, L"material", Integer(3)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"MATERIAL")), "3");
    ASSERT_EQ(Find(bolt, L"数量"), PRO_TK_NO_ERROR);
    ProParamvalue value;
    ProUnititem unit;
    ASSERT_EQ(ProParameterValueWithUnitsGet(&parameter, &value, &unit), PRO_TK_NO_ERROR);
    EXPECT_EQ(value.type, PRO_PARAM_INTEGER);
    EXPECT_EQ(value.value.i_val, 4);
    EXPECT_EQ(unit.name[0], L'\0');
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(bolt.HasParameter(L"Material"));
    for (const wchar_t* name : {L"A B", L"A+B", L"A.B"})
        EXPECT_EQ(Create(bolt, name, Integer(1)), PRO_TK_INVALID_NAME);
    EXPECT_EQ(Create(bolt, L"", Integer(1)), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(Create(bolt, std::wstring(31, L'X'), Integer(1)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, std::wstring(32, L'X'), Integer(1)), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 32"));
    ProParameter empty{};
    EXPECT_EQ(ProParameterDelete(&empty), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no host function has filled"));
}

TEST_F(HostParameters, HoldTextsOfAtMostEightyCharacters) {
    SimModel& bolt = Part(L"BOLT");
    ProParamvalue value;
    ASSERT_EQ(Text(std::wstring(80, L'钢'), value), PRO_TK_NO_ERROR);
    ASSERT_EQ(Create(bolt, L"TEXT", value), PRO_TK_NO_ERROR);
    EXPECT_EQ(bolt.Parameter(L"TEXT"), std::wstring(80, L'钢'));
    ASSERT_EQ(ProMdlSave(&bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(std::wstring(81, L'钢'), value), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 81"));
    // A value that was filled without ending its text.
    ASSERT_EQ(Text(L"钢", value), PRO_TK_NO_ERROR);
    std::ranges::fill(value.value.s_val, L'x');
    EXPECT_EQ(Set(bolt, L"TEXT", value), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 81"));
    EXPECT_EQ(bolt.Parameter(L"TEXT"), std::wstring(80, L'钢'));
}

TEST_F(HostParameters, RefuseWhatTheirModelDoesNotAllow) {
    SimModel& bolt = Part(L"BOLT");
    bolt.SetParameter(L"FREE", 1)
        .SetParameter(L"DRIVEN", 1)
        .DriveByRelation(L"DRIVEN")
        .SetParameter(L"LOCKED", 1)
        .LockParameter(L"LOCKED");
    ProParamvalue text;
    ASSERT_EQ(Text(L"one", text), PRO_TK_NO_ERROR);
    for (const wchar_t* name : {L"DRIVEN", L"LOCKED"}) {
        EXPECT_EQ(Set(bolt, name, Integer(2)), PRO_TK_GENERAL_ERROR) << Utf8(name);
        EXPECT_EQ(Create(bolt, name, Integer(2)), PRO_TK_E_FOUND) << Utf8(name);
        ASSERT_EQ(Find(bolt, name), PRO_TK_NO_ERROR);
        EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_GENERAL_ERROR) << Utf8(name);
        EXPECT_EQ(Utf8(bolt.Parameter(name)), "1");
    }
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"FREE")), "1");
    session.strict.typeChangeRefused = false;
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"FREE")), "one");

    bolt.SetReadOnly();
    EXPECT_EQ(Create(bolt, L"NEW", Integer(2)), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_CANT_MODIFY);
    ASSERT_EQ(Find(bolt, L"FREE"), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(ProSolidRegenerate(Solid(bolt), PRO_REGEN_NO_FLAGS), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(bolt.Regenerations(), 0);
    ProParamvalue truth;
    const short two = 2;
    ASSERT_EQ(ProParamvalueSet(&truth, &two, PRO_PARAM_BOOLEAN), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(Part(L"NUT"), L"TRUTH", truth), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("neither 0 nor 1"));
    ProModelitem unfilled{PRO_ASSEMBLY, -1, &bolt};
    EXPECT_EQ(ProParameterInit(&unfilled, Name(L"FREE").text, &parameter), PRO_TK_BAD_CONTEXT);
}

}  // namespace
