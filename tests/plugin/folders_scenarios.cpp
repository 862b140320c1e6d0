// Commands that work on folders and files.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::ModelKind;
using sim::SimHost;

static bool HasModel(SimHost& host, const std::filesystem::path& folder, std::wstring_view name,
                     ModelKind kind) {
    return !host.State().models.NewestFile(name, kind, folder).path.empty();
}

static void ArrangeBackup(SimHost& host) {
    ArrangePumpWithDrawing(host);
    host.AnswerFolder(MakeFolder(host, "backup").wstring());
}

// The originals stay, and a backup that is called done without a word of failures has no gap.
static void ExpectBackup(SimHost& host) {
    EXPECT_TRUE(HasModel(host, host.State().desk.ModelIn(0)->directory, L"BOLT", ModelKind::kDrawing));
    const std::wstring end = host.LastMessage();
    const bool claimsAll =
        end.starts_with(L"图纸备份操作已完成") && end.find(L"未能备份") == std::wstring::npos;
    // A component whose state cannot be read counts as none.
    const std::string& faulted = host.State().report.FaultedFunction();
    if (!claimsAll || faulted.starts_with("ProFeature") || faulted == "ProAsmcompMdlGet") return;
    const std::filesystem::path target = end.substr(end.rfind(L'\n') + 1);
    EXPECT_TRUE(HasModel(host, target, L"BOLT", ModelKind::kPart));
    EXPECT_TRUE(HasModel(host, target, L"SUB", ModelKind::kAssembly));
    // That there is no drawing or no component has to be believed.
    const bool cannotTell = faulted == "ProMdlnameRetrieve" || faulted == "ProSolidFeatVisit";
    EXPECT_TRUE(cannotTell || HasModel(host, target, L"BOLT", ModelKind::kDrawing));
}

// The model lies elsewhere than the host works.
static void ArrangeOtherFolder(SimHost& host) {
    ArrangePump(host);
    EnterFolder(host, "elsewhere");
    host.AllowDirectoryChange();
}

// The message area tells of no directory that the host is not in.
static void ExpectTrueDirectory(SimHost& host) {
    for (const std::wstring& message : host.State().user.messageArea)
        EXPECT_NE(message.find(PathText(host.WorkingDirectory())), std::wstring::npos);
}

static void ExpectOneProgramAtMost(SimHost& host) {
    EXPECT_LE(host.State().user.started.size(), 1u);
    EXPECT_EQ(Messages(host), Texts());
}

// The second right-click brings the command.
static Scenario OpenDrawing() {
    const auto arrange = [](SimHost& host) {
        ArrangeRightClick(host);
        RightClick(host);
        RightClick(host);
    };
    // The user's own window stays.
    const auto holds = [](SimHost& host) {
        const sim::SimModel* pump = host.State().models.Find(L"PUMP", ModelKind::kAssembly);
        ASSERT_NE(pump, nullptr);
        EXPECT_TRUE(host.State().desk.IsShown(*pump));
    };
    Scenario scenario = CommandScenario("KvOpenDrw", arrange, holds);
    scenario.startsPlugin = true;
    return scenario;
}

std::vector<Scenario> FolderScenarios() {
    return {
        CommandScenario(
            "KvOpenDir", [](SimHost&) {}, ExpectOneProgramAtMost),
        CommandScenario("KvSetDirectory", ArrangeOtherFolder, ExpectTrueDirectory),
        CommandScenario("KvBackup", ArrangeBackup, ExpectBackup),
        OpenDrawing(),
    };
}

}  // namespace test
