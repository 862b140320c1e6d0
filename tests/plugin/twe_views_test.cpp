// TweViews: what is stored, what is shown, and what stays.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Matrix;
using sim::SimHost;
using sim::SimModel;
using test::Texts;

// Rows 0 to 2 of a view along axes: which way the screen's x, y and z point.
void ExpectRotation(const Matrix& view, const Matrix& expected, const char* what) {
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            EXPECT_NEAR(view[row][column], expected[row][column], 1e-9) << what << row << column;
}

// A plate in XZ, its coordinate system far off.
class Views : public testing::Test {
protected:
    Views() {
        plate.AddBlock(200, 10, 100).AddCoordinateSystem(L"FAR", sim::TranslationMatrix(0, 9000, 0));
        host.Open(plate);
    }
    void Run() { EXPECT_EQ(host.Run("TweViews"), PRO_TK_NO_ERROR); }
    std::wstring Told() { return host.State().user.messageArea.back(); }
    void UseScreen() { test::ChangeSetting(L"KvConfig.ini", L"TweViewsUseAutoMainView", L"value", L"0"); }

    SimHost host;
    SimModel& plate = host.AddPart(L"PLATE");
    // From +Y, +Z upwards, so that -X is to the right.
    const Matrix largestFace = {{{-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}};
};

TEST_F(Views, StoresTwelveByTheLargestFaceAndShowsTheFront) {
    plate.savedViews[L"FRONT"] = {L"FRONT", sim::TranslationMatrix(1, 2, 3)};
    Run();
    ASSERT_EQ(plate.savedViews.size(), 13u);
    EXPECT_EQ(plate.savedViews[L"FRONT"].orientation, sim::TranslationMatrix(1, 2, 3)) << "the host's own";
    ExpectRotation(plate.savedViews[L"KV_FRONT"].orientation, largestFace, "front");
    Matrix shown = host.State().desk.ViewOf(plate);
    EXPECT_NEAR(shown[2][1], 0.25, 1e-12) << "fitted";
    for (auto& row : shown)
        for (double& number : row) number *= 4;
    ExpectRotation(shown, largestFace, "shown");
    EXPECT_EQ(Told(), L"已保存 12 个标准视图");
    EXPECT_TRUE(test::Messages(host).empty());
}

TEST_F(Views, TakesTheViewOnTheScreenStraightened) {
    UseScreen();
    // A little beside the view from -X, +Z upwards.
    host.State().desk.SetView(plate,
                              {{{0.2, 0, -1.9, 0}, {-1.9, 0, -0.2, 0}, {0, 1.95, 0, 0}, {7, 8, 0, 1}}});
    Run();
    const Matrix fromLeft = {{{0, 0, -1, 0}, {-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}};
    ExpectRotation(plate.savedViews[L"KV_FRONT"].orientation, fromLeft, "front");
}

TEST_F(Views, CountsWhatItReplacesOnEveryHost) {
    Run();
    for (const bool stays : {false, true}) {
        host.State().strict.storedViewStays = stays;
        plate.savedViews.erase(L"KV_ISO6");
        plate.savedViews[L"KV_BACK"].orientation = sim::IdentityMatrix();
        Run();
        EXPECT_EQ(plate.savedViews.size(), 12u);
        EXPECT_NE(plate.savedViews[L"KV_BACK"].orientation, sim::IdentityMatrix());
        EXPECT_EQ(Told(), L"已保存 12 个标准视图，其中 11 个替换了原有视图") << stays;
    }
}

TEST_F(Views, NamesWhatTheHostRefusesAndGoesBackWhenThatIsAll) {
    const Matrix before = host.State().desk.ViewOf(plate);
    host.State().report.Arm({"ProViewStore", 2, PRO_TK_GENERAL_ERROR});
    Run();
    EXPECT_EQ(host.LastMessage(), L"以下标准视图未能保存：\nKV_BACK");
    EXPECT_EQ(Told(), L"已保存 11 个标准视图");

    host.State().desk.SetView(plate, before);
    host.State().report.DisarmAll();
    plate.SetReadOnly();
    Run();
    EXPECT_EQ(host.State().desk.ViewOf(plate), before);
    EXPECT_EQ(test::LastReport(host).Reason(L"KV_ISO1"), L"模型只读或被锁定");
}

TEST_F(Views, OfAManufacturingModelAreThoseOfItsAssemblyAndNoneWithoutGeometry) {
    SimModel& empty = host.AddAssembly(L"EMPTY");
    host.Open(empty);
    EXPECT_NE(host.Run("TweViews"), PRO_TK_NO_ERROR);
    EXPECT_TRUE(empty.savedViews.empty());
    EXPECT_EQ(test::Messages(host).size(), 1u);
    SimModel& mould = host.AddManufacturing(L"MOULD", empty.Place(plate));
    host.Open(mould);
    Run();
    EXPECT_EQ(empty.savedViews.size(), 12u);
}

}  // namespace
