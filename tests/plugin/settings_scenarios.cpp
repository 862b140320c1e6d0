// The configuration dialog and the last directory.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

static void ArrangeConfig(SimHost& host) {
    const std::filesystem::path format = MakeFolder(host, "formats") / "a3.drw";
    WriteBytes(format, "");
    // Neither is what a fresh dialog shows.
    ChangeSetting(L"KvConfig.ini", L"KvExportDwgDIr", L"value", L"byUser");
    ChangeSetting(L"KvConfig.ini", L"A0Asmpath", L"path", L"D:\\a0.drw");
    host.State().configOptions[L"PRO_FORMAT_DIR"] = {format.parent_path().wstring()};
    host.AnswerFile(format.wstring());
    host.OnDialog("KvConfig", [](SimDialog& dialog) { dialog.Press("SelA3Prt").Press("save").Close(); });
}

// What the user did not touch stays as it was.
static void ExpectSettingsKept(SimHost& host) {
    EXPECT_EQ(ReadSettings(L"KvConfig.ini", L"KvExportDwgDIr", L"value"), L"byUser");
    EXPECT_EQ(ReadSettings(L"KvConfig.ini", L"SetLastDir", L"value"), L"0");
    EXPECT_EQ(ReadSettings(L"KvConfig.ini", L"A0Asmpath", L"path"), L"D:\\a0.drw");
    const std::wstring picked = ReadSettings(L"KvConfig.ini", L"A3Prtpath", L"path");
    EXPECT_TRUE(picked.empty() || picked.ends_with(L"formats\\a3.drw"));
    EXPECT_LE(host.Boxes().size(), 1u);
}

// The host works where it did, or where the file says.
static void ExpectKnownDirectory(SimHost& host) {
    const std::filesystem::path now = host.WorkingDirectory();
    EXPECT_TRUE(now.filename() == L"图纸" || std::filesystem::exists(now / L"图纸"));
    EXPECT_TRUE(sim::DesktopTimers().empty());
}

// The file holds the directory or nothing: no piece of one, and nothing else.
static void ExpectDirectoryFile(SimHost& host) {
    const std::string bytes = ReadBytes(SettingsFile(L"korvane.ini"));
    EXPECT_TRUE(bytes.empty() || bytes.starts_with(Encode936(PathText(host.WorkingDirectory()))));
}

static void ArrangeLastDirectory(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    WriteBytes(SettingsFile(L"korvane.ini"), Encode936(MakeFolder(host, L"图纸").wstring()));
}

std::vector<Scenario> SettingsScenarios() {
    return {
        CommandScenario("KvConfig", ArrangeConfig, ExpectSettingsKept),
        {"Timer",
         ArrangeLastDirectory,
         [](SimHost& host) { host.FireTimers(); },
         {},
         false,
         ExpectKnownDirectory},
        {"Termination",
         [](SimHost&) {},
         [](SimHost& host) { host.Terminate(); },
         {},
         false,
         ExpectDirectoryFile},
    };
}

}  // namespace test
