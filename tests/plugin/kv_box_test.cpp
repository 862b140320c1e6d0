// KvBox: boxes along axes, stock, parameters, the table as text.

#include <string>
#include <vector>

#include <ProObjects.h>
#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

using sim::Matrix;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::Texts;

// A quarter turn about Z is what tells the two ways to read a matrix apart only together with another one.
constexpr Matrix kHalfRight = {{{0.8, 0.6, 0, 0}, {-0.6, 0.8, 0, 0}, {0, 0, 1, 0}, {7, 9, 0, 1}}};

// PUMP   1 RAIL, lying at a slant   2 RAIL, straight   3 EMPTY
class Boxes : public testing::Test {
protected:
    Boxes() {
        rail.AddBlock(20, 100, 10).AddCoordinateSystem(L"FAR", sim::TranslationMatrix(0, 0, 5000));
        pump.Place(rail, {.placement = kHalfRight}).Place(rail).Place(empty);
        pump.AddCoordinateSystem(L"SLANT", kHalfRight);
        host.Open(pump);
    }
    void Play(const std::function<void(SimDialog&)>& play) { host.OnDialog("KvBox", play); }
    void Run() { EXPECT_EQ(host.Run("KvBox"), PRO_TK_NO_ERROR); }
    static std::wstring Row(SimDialog& dialog, const std::string& row) {
        std::wstring text = dialog.Cell("box_list", row, "name");
        for (const char* column : {"length", "width", "height", "stock", "note"})
            text += L" " + dialog.Cell("box_list", row, column);
        return text;
    }
    void PickSlant() {
        host.AnswerPick({false, {{&pump, PRO_CSYS, pump.CoordinateSystems()[0].id, {}}}});
        Play([](SimDialog& dialog) { dialog.Type("AllowLength", L"3").Press("PickCsys"); });
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& rail = host.AddPart(L"RAIL");
    SimModel& empty = host.AddPart(L"EMPTY");
};

TEST_F(Boxes, AreThoseOfTheSelectionAndTheModelWithoutDatums) {
    host.Select({{&rail, 0, 0, {1}}, {&empty, 0, 0, {3}}});
    rail.SetPrincipalUnits(L"Inch Pound Second (IPS)", false);
    Play([](SimDialog& dialog) {
        dialog.Type("AllowLength", L"5")
            .Type("AllowHeight", L"0.5")
            .Type("StockStep", L"10")
            .Press("UpdateStock");
        ASSERT_EQ(dialog.Rows("box_list").size(), 3u);
        EXPECT_EQ(Row(dialog, "1"), L"RAIL 2540 508 254 2550×510×260 ");
        EXPECT_EQ(dialog.Cell("box_list", "1", "unit"), L"in");
        EXPECT_EQ(Row(dialog, "2"), L"EMPTY     计算外形：主程序拒绝了此操作");
        EXPECT_NE(Row(dialog, "3").find(L"当前模型"), std::wstring::npos);
        dialog.Press("Close");
    });
    Run();
    EXPECT_EQ(test::ReadSettings(L"KvBox.ini", L"StockStep", L"content"), L"10");
}

// In the slanted system the slanted rail is straight again, whichever way the host reads the matrix.
TEST_F(Boxes, LieAlongAPickedSystemOnEveryHost) {
    for (const bool takesPlace : {false, true}) {
        host.State().strict.outlineTakesPlace = takesPlace;
        host.Select({{&rail, 0, 0, {1}}, {&rail, 0, 0, {2}}});
        PickSlant();
        Play([&](SimDialog& dialog) {
            EXPECT_EQ(dialog.Text("CsysName"), L"SLANT");
            EXPECT_EQ(dialog.Text("AllowLength"), L"3") << "what was typed before the pick";
            EXPECT_EQ(dialog.Cell("box_list", "1", "length"), L"100") << takesPlace;
            EXPECT_EQ(dialog.Cell("box_list", "1", "stock"), L"103×20×10");
            // 100 * 0.8 + 20 * 0.6 and 100 * 0.6 + 20 * 0.8
            EXPECT_EQ(dialog.Cell("box_list", "2", "length"), L"92");
            EXPECT_EQ(dialog.Cell("box_list", "2", "width"), L"76");
            dialog.Choose("AxesRadio", L"各模型自己的坐标轴");
            EXPECT_EQ(dialog.Cell("box_list", "2", "length"), L"100");
            dialog.Press("Close");
        });
        Run();
    }
    EXPECT_TRUE(test::Messages(host).empty());
}

TEST_F(Boxes, OfASystemInAComponentAreTurnedByItsPlacement) {
    SimModel& top = host.AddAssembly(L"TOP");
    top.Place(pump, {.placement = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}}).Place(rail);
    host.Open(top);
    host.Select({{&rail, 0, 0, {1, 1}}, {&rail, 0, 0, {2}}});
    host.AnswerPick({false, {{&pump, PRO_CSYS, pump.CoordinateSystems()[0].id, {1}}}});
    Play([](SimDialog& dialog) { dialog.Press("PickCsys"); });
    Play([](SimDialog& dialog) {
        EXPECT_EQ(dialog.Cell("box_list", "1", "length"), L"100");
        EXPECT_EQ(dialog.Cell("box_list", "1", "width"), L"20");
        // The system's X lies along (-0.6, 0.8) of TOP.
        EXPECT_EQ(dialog.Cell("box_list", "2", "length"), L"92");
        dialog.Press("Close");
    });
    Run();
}

TEST_F(Boxes, WritesTheStockOncePerModelAndCopiesTheTable) {
    host.Select({{&rail, 0, 0, {1}}, {&rail, 0, 0, {2}}, {&empty, 0, 0, {3}}});
    Play([](SimDialog& dialog) {
        dialog.Type("AllowWidth", L"2").Type("StockHeight", L"").Press("WriteStock").Press("CopyTable");
        dialog.Press("Close");
    });
    Run();
    EXPECT_EQ(rail.Parameter(L"下料尺寸"), L"100×22×10");
    EXPECT_EQ(rail.Parameter(L"下料宽"), L"22");
    EXPECT_FALSE(rail.HasParameter(L"下料高"));
    EXPECT_TRUE(pump.HasParameter(L"下料尺寸"));
    EXPECT_TRUE(empty.Parameters().empty());
    EXPECT_EQ(host.LastMessage(), L"以下模型未能写入下料尺寸：\nEMPTY");
    EXPECT_EQ(test::LastReport(host).Count(L"跳过"), 1u);
    const std::wstring& copied = host.State().user.clipboard;
    EXPECT_TRUE(copied.starts_with(
        L"模型\t单位\t长(mm)\t宽(mm)\t高(mm)\t下料尺寸\t备注\r\nRAIL\tmm\t100\t20\t10\t100×22×10\t\r\n"))
        << testing::PrintToString(copied);
}

TEST_F(Boxes, RefusesWhatIsNoNumberAndNamesThatAreOne) {
    Play([&](SimDialog& dialog) {
        for (const wchar_t* text : {L"-1", L"abc", L"1e5"}) {
            dialog.Type("AllowLength", text).Press("UpdateStock");
            EXPECT_EQ(host.LastMessage(), L"\t余量和取整须为不小于0的数字！\t")
                << testing::PrintToString(text);
        }
        dialog.Type("AllowLength", L"").Type("StockWidth", L"下料长").Press("WriteStock");
        EXPECT_EQ(host.LastMessage(), L"\t四个参数名不能相同！\t");
        for (const char* field : {"StockText", "StockLength", "StockWidth", "StockHeight"})
            dialog.Type(field, L"");
        dialog.Press("WriteStock");
        EXPECT_EQ(host.LastMessage(), L"\t请至少输入一个参数名！\t");
        dialog.Choose("AxesRadio", L"坐标系");
        EXPECT_EQ(host.LastMessage(), L"\t请先选取坐标系！\t");
        EXPECT_EQ(dialog.Chosen("AxesRadio"), "Model");
        dialog.Press("Close");
    });
    Run();
    EXPECT_TRUE(pump.Parameters().empty());
}

}  // namespace
