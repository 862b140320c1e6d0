// The configuration dialog and the last directory.

#include <filesystem>
#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

static void ArrangeConfig(SimHost& host) {
    const std::filesystem::path format = MakeFolder(host, "formats") / "a3.drw";
    WriteBytes(format, "");
    host.State().configOptions[L"PRO_FORMAT_DIR"] = {format.parent_path().wstring()};
    host.AnswerFile(format.wstring());
    host.OnDialog("KvConfig", [](SimDialog& dialog) { dialog.Press("SelA3Prt").Press("save").Close(); });
}

static void ArrangeLastDirectory(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    WriteBytes(SettingsFile(L"korvane.ini"), Encode936(MakeFolder(host, L"图纸").wstring()));
}

std::vector<Scenario> SettingsScenarios() {
    return {
        CommandScenario("KvConfig", ArrangeConfig),
        {"Timer", ArrangeLastDirectory, [](SimHost& host) { host.FireTimers(); }},
        {"Termination", [](SimHost&) {}, [](SimHost& host) { host.Terminate(); }},
    };
}

}  // namespace test
