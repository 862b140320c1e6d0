// Start-up, right-click menus, and the commands of the frame itself.

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

static void ArrangeAbout(SimHost& host) {
    host.OnDialog("AboutKv", [](SimDialog& dialog) { dialog.Press("OK"); });
}

static void ArrangeForTest(SimHost& host) {
    ArrangePump(host);
    SimModel& bolt = Bolt(host).AddFeature(917);
    host.AnswerPick({false, {ItemOf(bolt, 3, bolt.Features()[0].id)}});
}

// A button that the user sees does something, has a label, and is there once.
static void ExpectSoundMenus(SimHost& host) {
    for (const char* name : {"Menu", "ActionMenu"}) {
        const sim::Menu* menu = host.State().screen.FindMenu(name);
        if (menu == nullptr) continue;
        std::set<std::string> labels;
        for (const sim::MenuButton& button : menu->buttons) {
            ASSERT_NE(button.command, nullptr) << button.name;
            EXPECT_TRUE(labels.insert(button.labelKey).second) << button.name;
        }
    }
    for (const sim::PopupButton& entry : host.State().screen.OpenPopup(kSelectionPopup).buttons) {
        EXPECT_NE(entry.command, nullptr) << entry.name;
        EXPECT_FALSE(entry.label.empty()) << entry.name;
    }
    host.State().screen.ClosePopup();
}

// The terms come once, and not before a dialog that failed.
static void ExpectTermsOnce(SimHost& host) {
    const Texts messages = Messages(host);
    ASSERT_LE(messages.size(), 2u);
    EXPECT_TRUE(messages.size() < 2 || messages[1] == L"UIDialog Destroy error!");
}

static void ExpectVersionAlone(SimHost& host) {
    for (const std::wstring& text : Messages(host)) EXPECT_TRUE(text.starts_with(L"当前版本：5.1C9"));
}

static void ExpectPickedModelUnchanged(SimHost& host) {
    EXPECT_EQ(Bolt(host).Features().size(), 1u);
    EXPECT_TRUE(Bolt(host).Parameters().empty());
}

std::vector<Scenario> HostScenarios() {
    const auto wantRightClicks = [](SimHost&) {
        ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    };
    const auto rightClick = [](SimHost& host) { RightClick(host); };
    const auto rightClickedBefore = [](SimHost& host) {
        ArrangeRightClick(host);
        RightClick(host);
    };
    return {
        {"StartUp", wantRightClicks, [](SimHost& host) { host.Initialize(); }, {}, true, ExpectSoundMenus},
        {"FirstRightClick", ArrangeRightClick, rightClick, {}, true, ExpectSoundMenus},
        {"LaterRightClick", rightClickedBefore, rightClick, {}, true, ExpectSoundMenus},
        CommandScenario("AboutKv", ArrangeAbout, ExpectTermsOnce),
        CommandScenario(
            "KvVersion", [](SimHost&) {}, ExpectVersionAlone),
        CommandScenario("ForTest", ArrangeForTest, ExpectPickedModelUnchanged),
    };
}

}  // namespace test
