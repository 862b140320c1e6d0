// BatchColor: which parts get a colour, what stays, and what is kept of before.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

using sim::Look;
using sim::SimHost;
using sim::SimModel;
using test::Texts;

// PUMP holds SUB with BOLT in it, BOLT once more, and NUT.
class Colours : public testing::Test {
protected:
    Colours() {
        sub.Place(bolt);
        pump.Place(sub).Place(bolt).Place(nut);
        bolt.look = Look{.shininess = 0.9, .transparency = 0.25, .colour = {1, 0.5, 0}};
        test::WriteSettings(L"KvColor0.ini",
                            L"[Color1]\r\ncontent=255,0,0\r\n[Color2]\r\ncontent=0,0,255\r\n");
        host.Open(pump);
    }
    void Run(int answer) {
        host.AnswerBox(answer);
        EXPECT_EQ(host.Run("BatchColor"), PRO_TK_NO_ERROR);
    }
    std::filesystem::path Folder() { return host.State().user.localData / "Korvane" / "colors"; }
    // The file of the last run.
    std::string OldColours() {
        std::string text;
        for (const auto& file : std::filesystem::directory_iterator(Folder())) {
            std::ifstream stream(file.path(), std::ios::binary);
            text.assign(std::istreambuf_iterator<char>(stream), {});
        }
        return text;
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& nut = host.AddPart(L"NUT");
};

TEST_F(Colours, GivesAllPartsDifferentOnesAndKeepsTheirFinish) {
    Run(IDYES);
    EXPECT_EQ(test::Messages(host),
              Texts{L"共有 2 个零件，其中 1 个已有自己的颜色。\n\n是：为全部零件设置随机颜色\n"
                    L"否：只为没有颜色的零件设置\n取消：不做更改"});
    ASSERT_TRUE(nut.look);
    EXPECT_NE(bolt.look->colour, nut.look->colour);
    for (const SimModel* part : {&bolt, &nut}) {
        const auto& colour = part->look->colour;
        EXPECT_TRUE(colour == (std::array<double, 3>{1, 0, 0}) || colour == (std::array<double, 3>{0, 0, 1}));
    }
    EXPECT_EQ(bolt.look->shininess, 0.9);
    EXPECT_EQ(bolt.look->transparency, 0.25);
    EXPECT_FALSE(sub.look);
    EXPECT_EQ(OldColours(),
              "\xEF\xBB\xBF" + sim::Utf8(L"模型,原颜色\r\nBOLT,\"255.00,127.50,0.00\"\r\nNUT,\r\n"));
    EXPECT_EQ(host.State().user.messageArea, Texts{L"模型：完成 2"});
}

TEST_F(Colours, LeavesColouredPartsOrAllAsTheUserSays) {
    const Look before = *bolt.look;
    Run(IDCANCEL);
    EXPECT_FALSE(nut.look);
    EXPECT_FALSE(std::filesystem::exists(Folder()));
    Run(IDNO);
    EXPECT_EQ(bolt.look, before);
    EXPECT_TRUE(nut.look);
    EXPECT_EQ(host.State().user.messageArea, Texts{L"模型：完成 1，跳过 1"});
}

TEST_F(Colours, TakesTheTableOfTheSettingAndRefusesADamagedOne) {
    test::ChangeSetting(L"KvConfig.ini", L"KvRandomColorOpt", L"value", L"1");
    test::WriteSettings(L"KvColor1.ini", L"[Color1]\r\ncontent=0,255,0\r\n[Color3]\r\ncontent=1,1,1\r\n");
    Run(IDYES);
    EXPECT_EQ(nut.look->colour, (std::array<double, 3>{0, 1, 0})) << "up to the first missing section";
    test::WriteSettings(L"KvColor1.ini", L"[Color1]\r\ncontent=0,255,0\r\n[Color2]\r\ncontent=1,1,256\r\n");
    EXPECT_EQ(host.Run("BatchColor"), PRO_TK_INVALID_FILE);
    EXPECT_NE(host.LastMessage().find(L"[Color2] 1,1,256"), std::wstring::npos);
    std::filesystem::remove(test::SettingsFile(L"KvColor1.ini"));
    EXPECT_EQ(host.Run("BatchColor"), PRO_TK_INVALID_FILE);
}

TEST_F(Colours, CountsPartsWhoseSurfacesHideTheColourAndNamesThoseThatRefuse) {
    nut.AddBlock(1, 1, 1);
    nut.FindSurface(nut.Surfaces()[3]->id)->looks[0] = Look();
    bolt.SetReadOnly();
    Run(IDYES);
    EXPECT_EQ(host.LastMessage(), L"以下零件未能设置颜色：\nBOLT");
    EXPECT_EQ(host.State().user.messageArea.back(), L"1 个零件有单独着色的曲面，外观可能不变");
    EXPECT_EQ(host.Calls("ProSurfaceIdGet"), 4) << "no more are looked at than are needed";
}

TEST_F(Colours, OfTheCurrentPartAlone) {
    host.Open(nut);
    Run(IDYES);
    EXPECT_TRUE(nut.look);
    EXPECT_EQ(bolt.look->colour[1], 0.5);
}

// Without a record there would be no way back.
TEST_F(Colours, ChangesNothingWhereTheOldOnesCannotBeKept) {
    std::filesystem::create_directories(Folder().parent_path());
    std::ofstream(Folder()) << "a file in the place of the folder";
    host.AnswerBox(IDYES);
    EXPECT_NE(host.Run("BatchColor"), PRO_TK_NO_ERROR);
    EXPECT_FALSE(nut.look);
    EXPECT_EQ(host.LastMessage(), L"\t无法保存原有颜色的记录，未做任何更改！\t");
}

}  // namespace
