// The small commands of the frame itself: KvVersion, AboutKv, ForTest.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"

namespace {

using sim::Pick;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ItemOf;
using test::Messages;
using test::Texts;

TEST(KvVersion, ShowsTheVersionFirst) {
    SimHost host;
    EXPECT_EQ(host.Run("KvVersion"), PRO_TK_NO_ERROR);
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_EQ(Messages(host)[0], L"当前版本：5.1C9\n主程序版本：hostsim 9");
}

TEST(AboutKv, ShowsTheTermsOnceTheUserAgrees) {
    SimHost host;
    host.OnDialog("AboutKv", [&](SimDialog& dialog) {
        EXPECT_EQ(Messages(host), Texts{});
        dialog.Press("OK");
        EXPECT_FALSE(dialog.IsOpen());
        EXPECT_EQ(host.State().screen.FindDialog("AboutKv")->exitStatus, 1);
    });
    EXPECT_EQ(host.Run("AboutKv"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              Texts{L"使用本插件表示同意以下条款：\n使用前应充分了解该插件所有功能并进行备份数据测试，"
                    L"本插件不承担任何使用过程中造成的数据丢失或其他损失;。"});
    EXPECT_EQ(host.Boxes()[0].calls, host.Calls() - 1) << "all that is left is to destroy the dialog";
}

TEST(Programs, ThatDoNotStartAreToldInOneBox) {
    SimHost host;
    host.Spreadsheet().Install();
    host.Store(host.AddPart(L"NUT"));
    host.AddDrawingFile(L"NUT", {L"A4"});
    host.Open(host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT"), 2));
    host.State().user.programsFail = true;
    const std::vector<std::pair<std::string, std::vector<std::string>>> presses = {
        {"KvOpenDir", {}},
        {"KvConfig", {"KvReports"}},
        {"KvBom", {"KvOpenBomIni"}},
        {"KvBom", {"KvExportBom"}},
        {"KvExport", {"KvOpenDrwIni"}},
        {"KvExport", {"KvLoadDrwInfo", "KvShowReport"}},
    };
    for (const auto& [command, buttons] : presses) {
        SCOPED_TRACE(command + (buttons.empty() ? "" : buttons.back()));
        host.State().user.boxes.clear();
        if (buttons == std::vector<std::string>{"KvExportBom"})
            host.AnswerFile((host.WorkingDirectory() / "bom.xlsx").wstring());
        if (!buttons.empty())
            host.OnDialog(command, [&buttons = buttons](SimDialog& dialog) {
                for (const std::string& button : buttons) dialog.Press(button);
            });
        EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR);
        ASSERT_EQ(Messages(host).size(), 1u);
        EXPECT_TRUE(Messages(host)[0].starts_with(L"\t无法打开"));
        EXPECT_NE(Messages(host)[0].find(L":\\"), std::wstring::npos) << "which file or folder";
    }
}

TEST(ForTest, LetsTheUserPickOneFeatureAndChangesNothing) {
    SimHost host;
    SimModel& bolt = host.AddPart(L"BOLT").AddBlock(1, 1, 1).AddFeature(917);
    EXPECT_NE(host.Run("ForTest"), PRO_TK_NO_ERROR) << "no model is open";

    host.Open(bolt);
    const Pick feature = ItemOf(bolt, 3, bolt.Features()[0].id);
    host.AnswerPick({false, {feature}});
    EXPECT_EQ(host.Run("ForTest"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.Calls("ProSelectionModelitemGet"), 1);
    for (const sim::PickAnswer& none : {sim::PickAnswer{false, {}}, sim::PickAnswer{true, {}}}) {
        host.AnswerPick(none);
        host.Run("ForTest");
        EXPECT_EQ(host.Calls("ProSelectionModelitemGet"), 0);
    }
    EXPECT_EQ(Messages(host), Texts{});

    // The host lets the user pick neither another kind of item nor a second one.
    host.AnswerPick({false, {ItemOf(bolt, 5, bolt.Surfaces()[0]->id)}});
    host.Run("ForTest");
    host.AnswerPick({false, {feature, feature}});
    host.Run("ForTest");
    EXPECT_EQ(host.TakeProblems().size(), 2u);
}

}  // namespace
