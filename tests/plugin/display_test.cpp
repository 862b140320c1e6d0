// The display tools: hiding and showing components, box selection, transparency, views along the axes.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <ProObjects.h>
#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Feature;
using sim::HostSetup;
using sim::Look;
using sim::Matrix;
using sim::Pick;
using sim::SimHost;
using sim::SimModel;
using test::Texts;

// ---- Hiding and showing

// PUMP        1 SUB   2 SUB   3 NUT   4 BOLT (suppressed)
//   SUB         1 BOLT  2 BASE
//     BASE        1 PIN
class Components : public testing::Test {
protected:
    explicit Components(const HostSetup& setup = {}) : host(setup) {
        base.Place(pin);
        sub.Place(bolt).Place(base);
        pump.Place(sub, 2).Place(nut).Place(bolt, {.status = sim::kFeatureSuppressed});
        host.Open(pump);
    }

    bool IsHidden(SimModel& owner, int id) {
        const Feature* feature = owner.FindFeature(id);
        return feature != nullptr && feature->isHidden;
    }
    // The hidden components as "SUB/1 PUMP/3".
    std::string Hidden() {
        std::string text;
        for (SimModel* model : {&pump, &sub, &base})
            for (const Feature& feature : model->Features())
                if (feature.isHidden) text += (text.empty() ? "" : " ") + Label(*model, feature.id);
        return text;
    }
    std::string Label(const SimModel& owner, int id) const {
        return (&owner == &pump ? "PUMP/" : &owner == &sub ? "SUB/" : "BASE/") + std::to_string(id);
    }
    void Hide(SimModel& owner, int id) { owner.FindFeature(id)->isHidden = true; }
    void Isolate(const std::vector<Pick>& picks) {
        host.Select(picks);
        EXPECT_EQ(host.Run("KvIsolate"), PRO_TK_NO_ERROR);
        EXPECT_TRUE(test::Messages(host).empty());
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& base = host.AddAssembly(L"BASE");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& nut = host.AddPart(L"NUT");
    SimModel& pin = host.AddPart(L"PIN");
};

class ComponentsAsDocumented : public Components {
protected:
    static HostSetup Documented() {
        HostSetup setup;
        setup.asDocumented = true;
        return setup;
    }
    ComponentsAsDocumented() : Components(Documented()) {}
};

TEST_F(Components, IsolateLeavesTheSelectedPartAtEveryPlacementOfItsOwner) {
    Hide(pump, 1);
    Isolate({{&bolt, 0, 0, {2, 1}}});
    EXPECT_EQ(Hidden(), "PUMP/3 BASE/1") << "the hidden sub-assembly is shown, the suppressed part untouched";
    const int window = host.State().desk.CurrentWindow();
    EXPECT_EQ(host.State().desk.ModelIn(window), &pump);
    EXPECT_EQ(host.State().desk.Repaints(), 1);
    EXPECT_EQ(host.State().desk.Refreshes(), 1);
    EXPECT_EQ(pump.TreeRefreshes(), 0);

    Isolate({{&nut, 0, 0, {3}}});
    EXPECT_EQ(Hidden(), "SUB/1 BASE/1");
}

TEST_F(Components, IsolateShowsAllPartsBelowASelectedAssembly) {
    Isolate({{&sub, 0, 0, {2}}});
    EXPECT_EQ(Hidden(), "PUMP/3");
    Isolate({{&base, 0, 0, {1, 2}}, {&nut, 0, 0, {3}}});
    EXPECT_EQ(Hidden(), "SUB/1");
    Isolate({test::Whole(pump)});
    EXPECT_EQ(Hidden(), "");
}

TEST_F(Components, IsolateDoesNothingWithoutAPartOrAssembly) {
    Hide(sub, 1);
    host.Select({});
    EXPECT_EQ(host.Run("KvIsolate"), PRO_TK_E_NOT_FOUND);
    Isolate({test::ItemOf(pump, PRO_FEATURE, 3)});
    host.Open(nut, sim::HostMode::kAssembly);
    host.Select({test::Whole(nut)});
    EXPECT_EQ(host.Run("KvIsolate"), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(Hidden(), "SUB/1");
    EXPECT_EQ(host.State().desk.Repaints(), 0);
    EXPECT_TRUE(test::Messages(host).empty());
}

TEST_F(Components, ReverseSwapsPartsAndShowsAssemblies) {
    Hide(pump, 1);
    Hide(sub, 1);
    EXPECT_EQ(host.Run("KvHideReverse"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Hidden(), "PUMP/3 BASE/1") << "each once, though SUB is placed twice";
    EXPECT_EQ(host.State().desk.Repaints(), 1);
    EXPECT_EQ(host.State().desk.Refreshes(), 0);
    EXPECT_EQ(pump.TreeRefreshes(), 1);
    EXPECT_EQ(host.Run("KvHideReverse"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Hidden(), "SUB/1");
}

TEST_F(Components, ShowAllShowsEverythingOfAManufacturingModelToo) {
    Hide(pump, 1);
    Hide(pump, 3);
    Hide(base, 1);
    host.Open(host.AddManufacturing(L"MOULD", pump));
    EXPECT_EQ(host.Run("KvShowAllComp"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Hidden(), "");
    EXPECT_EQ(host.State().desk.Repaints(), 1);
    EXPECT_EQ(pump.TreeRefreshes(), 1);
}

TEST_F(Components, ChangesOnlyWhatIsNotSoYet) {
    host.Select({{&bolt, 0, 0, {1, 1}}});
    for (const long long changes : {2, 0}) {
        EXPECT_EQ(host.Run("KvIsolate"), PRO_TK_NO_ERROR);
        EXPECT_EQ(host.Calls("ProModelitemHide"), changes);
        EXPECT_EQ(host.Calls("ProModelitemUnhide"), 0);
        EXPECT_EQ(host.Calls("ProModelitemIsHidden"), 6) << "every component feature once";
        EXPECT_LE(host.Calls("ProLayerItemInit"), 3) << "once an assembly";
    }
}

// The host hides components as sub-assemblies only.
TEST_F(ComponentsAsDocumented, TakesTheKindOfItemThatTheHostHides) {
    Isolate({{&nut, 0, 0, {3}}});
    EXPECT_EQ(Hidden(), "SUB/1 BASE/1");
    EXPECT_EQ(host.Calls("ProModelitemHide"), 2);
    EXPECT_LE(host.Calls("ProModelitemIsHidden"), 7) << "the other kind is tried once";
}

TEST_F(Components, OneRefusedComponentDoesNotEndTheOthers) {
    host.State().report.Arm({"ProModelitemHide", 1, PRO_TK_CANT_MODIFY});
    EXPECT_EQ(host.Run("KvHideReverse"), PRO_TK_NO_ERROR);
    EXPECT_TRUE(test::Messages(host).empty());
    const std::string hidden = Hidden();
    EXPECT_EQ(std::ranges::count(hidden, '/'), 2) << hidden;
    EXPECT_EQ(test::LastReport(host).rows.size(), 1u);
}

// ---- Box selection

class BoxSelection : public Components {
protected:
    std::vector<std::wstring> Selected() {
        std::vector<std::wstring> names;
        for (const Pick& pick : host.State().desk.selected) names.push_back(pick.model->Name());
        return names;
    }
};

TEST_F(BoxSelection, ReplacesTheSelectionByWhatWasPickedInItsOrder) {
    host.Select({{&pin, 0, 0, {1, 2, 1}}});
    host.AnswerPick({false, {{&nut, 0, 0, {3}}, {&bolt, 0, 0, {1, 1}}}});
    EXPECT_EQ(host.Run("BoxSel"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Selected(), (Texts{L"NUT", L"BOLT"}));

    bolt.AddBlock(1, 1, 1);
    const int face = bolt.Surfaces().front()->id;
    host.AnswerPick({false, {{&bolt, PRO_SURFACE, face, {1, 1}}}});
    EXPECT_EQ(host.Run("KvBoxSelSur"), PRO_TK_NO_ERROR);
    ASSERT_EQ(Selected(), Texts{L"BOLT"});
    EXPECT_EQ(host.State().desk.selected[0].type, PRO_SURFACE);
}

TEST_F(BoxSelection, KeepsTheSelectionWhenNothingWasPicked) {
    host.Select({{&pin, 0, 0, {1, 2, 1}}});
    host.AnswerPick({false, {}});
    EXPECT_EQ(host.Run("BoxSel"), PRO_TK_NO_ERROR);
    host.AnswerPick({true, {}});
    EXPECT_EQ(host.Run("KvBoxSelSur"), PRO_TK_USER_ABORT);
    EXPECT_EQ(Selected(), Texts{L"PIN"});
}

TEST_F(BoxSelection, RecordsWhatTheHostDoesNotSelect) {
    host.State().report.Arm({"ProSelbufferSelectionAdd", 1, PRO_TK_NOT_DISPLAYED});
    host.AnswerPick({false, {{&nut, 0, 0, {3}}, {&bolt, 0, 0, {1, 1}}}});
    EXPECT_EQ(host.Run("BoxSel"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Selected(), Texts{L"BOLT"});
    EXPECT_TRUE(test::Messages(host).empty());
    EXPECT_EQ(test::LastReport(host).Reason(L"NUT"), L"未能显示在窗口中");
}

// ---- Transparency

class Transparency : public Components {
protected:
    void Pick(const sim::Pick& pick) { host.AnswerPick({false, {pick}}); }
};

TEST_F(Transparency, MakesOneOccurrenceSeeThroughAndKeepsItsLook) {
    Look red;
    red.colour = {1, 0, 0};
    red.shininess = 0.9;
    bolt.look = red;
    Pick({&bolt, 0, 0, {2, 1}});
    EXPECT_EQ(host.Run("KvTransparent"), PRO_TK_NO_ERROR);
    red.transparency = 0.7;
    ASSERT_EQ(pump.occurrenceLooks.size(), 1u);
    EXPECT_EQ(pump.occurrenceLooks.at({2, 1}), red);
    EXPECT_EQ(bolt.look->transparency, 0) << "the part's file stays as it is";
    EXPECT_EQ(host.State().desk.Repaints(), 1);
    ASSERT_EQ(host.State().user.messageArea.size(), 1u);
    EXPECT_NE(host.State().user.messageArea[0].find(L"透明"), std::wstring::npos);
}

TEST_F(Transparency, ChangesThePartWhereTheHostKnowsNoOccurrence) {
    host.State().strict.occurrenceLooksRefused = true;
    Pick({&bolt, 0, 0, {2, 1}});
    EXPECT_EQ(host.Run("KvTransparent"), PRO_TK_NO_ERROR);
    ASSERT_TRUE(bolt.look);
    Look expected;
    expected.transparency = 0.7;
    EXPECT_EQ(*bolt.look, expected) << "the default look, for it had none";
}

TEST_F(Transparency, LeavesWhatIsClearerAndMakesBothSidesOfASurface) {
    host.Open(bolt);
    Look clear;
    clear.transparency = 0.9;
    bolt.look = clear;
    Pick(test::Whole(bolt));
    EXPECT_EQ(host.Run("KvTransparent"), PRO_TK_NO_ERROR);
    EXPECT_EQ(*bolt.look, clear);

    bolt.look->transparency = 0;
    bolt.look->colour = {0, 0, 1};
    bolt.AddBlock(1, 1, 1);
    const sim::SurfaceItem& face = *bolt.Surfaces().front();
    Pick({&bolt, PRO_SURFACE, face.id, {}});
    EXPECT_EQ(host.Run("SurfTransparent"), PRO_TK_NO_ERROR);
    for (const auto& look : face.looks) {
        ASSERT_TRUE(look);
        EXPECT_EQ(look->transparency, 0.7);
        EXPECT_EQ(look->colour, bolt.look->colour) << "as the part was";
    }
    EXPECT_EQ(bolt.look->transparency, 0);
}

TEST_F(Transparency, EndsQuietlyWithoutAPickAndRecordsAReadOnlyPart) {
    host.AnswerPick({true, {}});
    EXPECT_EQ(host.Run("KvTransparent"), PRO_TK_USER_ABORT);
    EXPECT_EQ(host.State().desk.Repaints(), 0);
    host.Open(bolt);
    bolt.SetReadOnly();
    Pick(test::Whole(bolt));
    EXPECT_EQ(host.Run("KvTransparent"), PRO_TK_NO_ERROR);
    EXPECT_FALSE(bolt.look);
    EXPECT_TRUE(test::Messages(host).empty());
    EXPECT_EQ(test::LastReport(host).Reason(L"BOLT"), L"模型只读或被锁定");
}

// ---- Appearances and views

TEST(KvClearAllColor, PlaysTheHostsOwnCommandToTheCharacter) {
    SimHost host;
    host.Open(host.AddPart(L"BOLT"));
    EXPECT_EQ(host.Run("KvClearAllColor"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().user.macros,
              Texts{L"~ Select `main_dlg_cur` `ProCmdViewGallery.view`; ~ Select `main_dlg_cur` "
                    L"`ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; ~ Close `main_dlg_cur`  "
                    L"`ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; ~ Activate `main_dlg_cur` "
                    L"`clearAllAppearance`;~ Close `main_dlg_cur`  "
                    L"`ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; ~ Close `main_dlg_cur` "
                    L"`ProCmdViewGallery.view`; ~ FocusIn `UI Message Dialog` `yes`;~ Activate `UI Message "
                    L"Dialog` `yes`;"});
}

class NormalView : public testing::TestWithParam<bool> {
protected:
    static HostSetup Profile() {
        HostSetup setup;
        setup.asDocumented = GetParam();
        return setup;
    }
    SimHost host{Profile()};
    SimModel& bolt = host.AddPart(L"BOLT");
};
INSTANTIATE_TEST_SUITE_P(BothHosts, NormalView, testing::Bool(),
                         [](const auto& profile) { return profile.param ? "AsDocumented" : "AsRequired"; });

// A little beside the view from the right, at scale 2.
Matrix BesideRight() {
    const double c = 2 * 0.98;
    const double s = 2 * 0.19899748742132399;
    return {{{-s, 0, c, 0}, {0, 2, 0, 0}, {-c, 0, -s, 0}, {300, 200, 5, 1}}};
}

TEST_P(NormalView, TurnsToTheNearestAxesAndKeepsScaleAndShift) {
    host.Open(bolt);
    host.State().desk.SetView(bolt, BesideRight());
    EXPECT_EQ(host.Run("KvNormalView"), PRO_TK_NO_ERROR);
    const Matrix right = {{{0, 0, 2, 0}, {0, 2, 0, 0}, {-2, 0, 0, 0}, {300, 200, 5, 1}}};
    const Matrix& view = host.State().desk.ViewOf(bolt);
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            EXPECT_NEAR(view[row][column], right[row][column], 1e-12) << row << column;
    EXPECT_EQ(host.State().desk.Repaints(), 1);
    EXPECT_TRUE(test::Messages(host).empty());
}

TEST_P(NormalView, TriesOnlyOnceWhereTheViewIsAlignedOrADrawingIsShown) {
    host.Open(bolt);
    host.State().desk.SetView(bolt, {{{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {300, 200, 5, 1}}});
    (void)host.Run("KvNormalView");
    EXPECT_EQ(host.Calls("ProViewMatrixSet"), 1);
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A4"});
    host.Open(drawing);
    host.State().desk.SetView(drawing, BesideRight());
    (void)host.Run("KvNormalView");
    EXPECT_EQ(host.Calls("ProViewMatrixSet"), 1);
}

TEST(KvNormalView, LeavesAFlatViewAndAnEmptyWindow) {
    SimHost host;
    EXPECT_EQ(host.Run("KvNormalView"), PRO_TK_GENERAL_ERROR);
    SimModel& bolt = host.AddPart(L"BOLT");
    host.Open(bolt);
    host.State().desk.SetView(bolt, {{{1, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});
    EXPECT_EQ(host.Run("KvNormalView"), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(host.Calls("ProViewMatrixSet"), 0);
}

}  // namespace
