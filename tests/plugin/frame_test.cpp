// The small commands of the frame itself: KvVersion, AboutKv, ForTest.

#include <string>

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
    EXPECT_TRUE(Messages(host)[0].starts_with(L"当前版本：5.1C9"));
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
