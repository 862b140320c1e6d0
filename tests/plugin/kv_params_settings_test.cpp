// KvParams: what the dialog remembers.

#include <filesystem>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "plugin/kv_params_fixture.h"
#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::Utf8;
using test::ChangeSetting;
using test::KvParams;
using test::ReadSettings;

constexpr wchar_t kParamsFile[] = L"KvParams.ini";

TEST_F(KvParams, EachButtonSavesTheSettingsFirst) {
    SimModel& empty = host.AddAssembly(L"EMPTY");
    int run = 0;
    for (const char* button : {"Add", "Update", "Delete", "KvOutline", "KvSheetSize"}) {
        SCOPED_TRACE(button);
        // None of the presses has anything to work on.
        const std::wstring mark = std::to_wstring(++run);
        Use(empty, [&](SimDialog& dialog) {
            dialog.Type("InputKeyWords", L"std_，" + mark).Type("InputKeyWords2", L"lower");
            dialog.Type("outlinePname", L"外形" + mark).Type("shSizePname", L"图幅" + mark);
            dialog.Choose("KvOutlineNum", L"4").Check("KvOutlineOrder", run % 2 == 0);
            dialog.Choose("PtypeOption", L"是/否")
                .Type("ParaName", L"X")
                .Type("ParaValue", L"no")
                .Press(button);
        });
        EXPECT_EQ(ReadSettings(kParamsFile, L"InputKeyWords", L"content"), L"std_，" + mark);
        EXPECT_EQ(ReadSettings(kParamsFile, L"InputKeyWords2", L"content"), L"");
        EXPECT_EQ(ReadSettings(kParamsFile, L"KvOutlineOrder", L"content"), run % 2 == 0 ? L"1" : L"0");
        EXPECT_EQ(ReadSettings(kParamsFile, L"KvOutlineNum", L"content"), L"4");
        EXPECT_EQ(ReadSettings(kParamsFile, L"outlinePname", L"content"), L"外形" + mark);
        EXPECT_EQ(ReadSettings(kParamsFile, L"shSizePname", L"content"), L"图幅" + mark);
    }
}

TEST_F(KvParams, ClosingSavesNothing) {
    const std::string before = test::ReadBytes(test::SettingsFile(kParamsFile));
    SimModel& pump = host.AddAssembly(L"PUMP");
    Use(pump, [](SimDialog& dialog) {
        dialog.Type("outlinePname", L"X").Press("Close");
        EXPECT_FALSE(dialog.IsOpen());
    });
    Use(pump, [](SimDialog& dialog) {
        dialog.Type("outlinePname", L"X").Close();
        EXPECT_FALSE(dialog.IsOpen());
    });
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kParamsFile)), before);
}

TEST_F(KvParams, KeepsTheStoredOrderWhenTheCheckButtonCannotBeRead) {
    ChangeSetting(kParamsFile, L"KvOutlineOrder", L"content", L"kept");
    Use(host.AddAssembly(L"PUMP"), [&](SimDialog& dialog) {
        host.State().report.Arm(Fault{"ProUICheckbuttonGetState", 0});
        dialog.Choose("KvOutlineNum", L"1").Press("Add");
    });
    EXPECT_EQ(ReadSettings(kParamsFile, L"KvOutlineOrder", L"content"), L"kept");
    EXPECT_EQ(ReadSettings(kParamsFile, L"KvOutlineNum", L"content"), L"1");
}

TEST_F(KvParams, OpensWithTheStoredSettings) {
    ChangeSetting(kParamsFile, L"InputKeyWords", L"content", L"\" AB C, D \"");
    ChangeSetting(kParamsFile, L"InputKeyWords2", L"content", L"never read");
    ChangeSetting(kParamsFile, L"KvOutlineNum", L"content", L"\" 3 \"");
    ChangeSetting(kParamsFile, L"outlinePname", L"content", L"外 形");
    ChangeSetting(kParamsFile, L"shSizePname", L"content", L"图 幅");
    Use(host.AddAssembly(L"PUMP"), [](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("InputKeyWords"), L" AB C, D ");
        EXPECT_EQ(dialog.Text("InputKeyWords2"), L" AB C, D ");
        EXPECT_EQ(dialog.Text("KvOutlineNum"), L"3");
        EXPECT_EQ(dialog.Text("outlinePname"), L"外形");
        EXPECT_EQ(dialog.Text("shSizePname"), L"图幅");
        EXPECT_EQ(dialog.Text("ParaName"), L"");
    });
}

TEST_F(KvParams, TakesTheOrderFromOneAndZeroAlone) {
    bool byLayout = false;
    fs::remove(test::SettingsFile(kParamsFile));
    Use(host.AddAssembly(L"PUMP"), [&](SimDialog& dialog) { byLayout = dialog.IsChecked("KvOutlineOrder"); });
    EXPECT_TRUE(byLayout);
    const std::pair<const wchar_t*, bool> cases[] = {{L"1", true},       {L"0", false},
                                                     {L"\" 1 \"", true}, {L"\" 0 \"", false},
                                                     {L"2", byLayout},   {L"", byLayout}};
    for (const auto& [stored, checked] : cases) {
        ChangeSetting(kParamsFile, L"KvOutlineOrder", L"content", stored);
        Use(host.AddAssembly(std::wstring(L"A") + std::to_wstring(host.State().models.All().size())),
            [&, &stored = stored, &checked = checked](SimDialog& dialog) {
                EXPECT_EQ(dialog.IsChecked("KvOutlineOrder"), checked) << Utf8(stored);
            });
    }
}

// The file lies beside the text tree, which may be apart from the module.
TEST(KvParamsSettings, LieBesideTheTextTree) {
    const test::TempDirectory apart;
    test::CopyPluginHome(apart.Path());
    sim::HostSetup setup;
    setup.textDirectory = apart.Path();
    const std::string before = test::ReadBytes(test::SettingsFile(kParamsFile));
    SimHost host(setup);
    host.Open(host.AddAssembly(L"PUMP"));
    host.OnDialog("KvParams", [](SimDialog& dialog) { dialog.Type("InputKeyWords", L"std_").Press("Add"); });
    EXPECT_EQ(host.Run("KvParams"), PRO_TK_NO_ERROR);
    host.OnDialog("KvParams", [](SimDialog& dialog) { EXPECT_EQ(dialog.Text("InputKeyWords"), L"std_"); });
    host.Run("KvParams");
    EXPECT_NE(test::ReadBytes(apart.Path() / "KVconfig" / kParamsFile), before);
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kParamsFile)), before);
}

}  // namespace
