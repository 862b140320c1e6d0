// Names of exported files: which pieces, how joined, and what a file name can hold.

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "base/file_name.h"
#include "base/text.h"
#include "export/export_name.h"
#include "model/parameter_text.h"

namespace {

ProParamvalue Text(const wchar_t* text) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_STRING;
    EXPECT_EQ(kv::CopyText(text, value.value.s_val), PRO_TK_NO_ERROR);
    return value;
}
ProParamvalue Real(double number) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_DOUBLE;
    value.value.d_val = number;
    return value;
}
ProParamvalue Whole(int number) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_INTEGER;
    value.value.i_val = number;
    return value;
}
ProParamvalue Truth(short flag) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_BOOLEAN;
    value.value.l_val = flag;
    return value;
}

std::wstring Compose(const wchar_t* tokens, const wchar_t* separator) {
    const kv::NamePieces pieces = {{L"sheetsize", L"A3"},   {L"图纸名称", L"BOLT"}, {L"图号", L"K-07"},
                                   {L"path", L"a/b\\c:d*"}, {L"blank", L"  "},      {L"empty", L""}};
    return kv::NameCompose(kv::NameRuleFromTexts(tokens, separator), pieces, L"FALL?BACK");
}

TEST(ExportName, JoinsThePiecesOfItsTokens) {
    struct Case {
        const wchar_t* tokens;
        const wchar_t* separator;
        const wchar_t* name;
    };
    const Case cases[] = {
        {L"图号,图纸名称,sheetsize", L"_", L"K-07_BOLT_A3"},
        {L" 图 号 ，图纸名称，", L"-", L"K-07-BOLT"},
        {L"图号,图纸名称", L"", L"K-07 BOLT"},
        {L"图号,图纸名称", L"NULL", L"K-07BOLT"},
        {L"图号,图纸名称", L"null", L"K-07nullBOLT"},
        {L"图号,图纸名称", L" | ", L"K-07 _ BOLT"},
        {L"图号,图号,Sheetsize", L"_", L"K-07_K-07"},
        {L"empty,图号,unknown,图纸名称,empty", L"_", L"K-07_BOLT"},
        {L"path", L"_", L"a_b_c_d_"},
        {L"", L"_", L"FALL_BACK"},
        {L",，, ", L"_", L"FALL_BACK"},
        {L"empty,unknown", L"_", L"FALL_BACK"},
        {L"blank", L"_", L"FALL_BACK"},
    };
    for (const Case& one : cases) EXPECT_EQ(Compose(one.tokens, one.separator), one.name) << one.name;
}

TEST(ExportName, ReplacesWhatNoFileNameHolds) {
    EXPECT_EQ(kv::FileNameText(L"<>:\"/\\|?*\t\n\x1f"), std::wstring(12, L'_'));
    EXPECT_EQ(kv::FileNameText(L"图-1 (a.b)'，~"), L"图-1 (a.b)'，~");
    for (const wchar_t* device : {L"CON", L"nul", L"Com1", L"LPT9", L"aux.v2", L"PRN ", L"COM¹"})
        EXPECT_EQ(kv::FileNameText(device), L"_" + std::wstring(device));
    for (const wchar_t* name : {L"CONE", L"COM", L"COM10", L"LPTX", L"A.CON", L"_NUL"})
        EXPECT_EQ(kv::FileNameText(name), name);
}

TEST(ParameterText, TellsEveryTypeOfValue) {
    EXPECT_EQ(kv::ParameterText(Text(L"轴 7")), L"轴 7");
    EXPECT_EQ(kv::ParameterText(Whole(-40)), L"-40");
    EXPECT_EQ(kv::ParameterText(Whole(std::numeric_limits<int>::min())), L"-2147483648");
    EXPECT_EQ(kv::ParameterText(Real(2)), L"2.000");
    EXPECT_EQ(kv::ParameterText(Real(-0.0625)), L"-0.062");
    EXPECT_EQ(kv::ParameterText(Real(1234567.8916)), L"1234567.892");
    EXPECT_EQ(kv::ParameterText(Real(-std::numeric_limits<double>::max()))->size(), 314u);
    EXPECT_EQ(kv::ParameterText(Truth(1)), L"是");
    EXPECT_EQ(kv::ParameterText(Truth(0)), L"否");
    ProParamvalue none = {};
    none.type = PRO_PARAM_NOT_SET;
    EXPECT_EQ(kv::ParameterText(none), std::nullopt);
    EXPECT_EQ(kv::ParameterText(Truth(7)), L"");
}

}  // namespace
