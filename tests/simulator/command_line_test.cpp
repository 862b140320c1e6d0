// How a run of a command ends: its exit code, and a line for everything that went wrong.

#include <algorithm>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/plugin_home.h"
#include "support/spreadsheet_program.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using test::TempDirectory;

std::string ModelText(const std::string& name, const std::string& kind, const std::string& content = "") {
    return R"({"format": "hostsim model", "version": 1, "name": ")" + name + R"(", "kind": ")" + kind + "\"" +
           content + "}";
}

// The lines that the run prints as errors; `exitCode` is its answer.
std::vector<std::string> ErrorsOfRun(const TempDirectory& folder, const std::wstring& arguments,
                                     int& exitCode) {
    const fs::path errors = folder / "errors.txt";
    exitCode = test::RunProgramBeside(
        L"hostsim.exe", L"--plugin \"" + test::PluginHome().wstring() + L"\" run " + arguments, errors);
    std::istringstream text(test::ReadBytes(errors));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        std::erase(line, '\r');
        lines.push_back(line);
    }
    return lines;
}

TEST(CommandLine, RunEndsWithALineForEachFault) {
    const struct {
        std::wstring command;
        std::function<void(const TempDirectory&)> arrange;
        int exitCode;
        std::vector<std::string> beginnings;
    } cases[] = {
        {L"KvMdlCount --model pump --save", [](const TempDirectory&) {}, 0, {}},
        {L"KvMdlCount --model pump --save",
         [](const TempDirectory& folder) { folder.Write("bolt.prt.2", "{"); },
         1,
         {"hostsim: bolt.prt.2:1: expected JSON",
          "hostsim: pump.asm.1: /features/0/model: bolt.prt leads to no model"}},
        {L"KvMdlCount --model pump --save",
         [](const TempDirectory& folder) { fs::create_directory(folder / "~nut.tmp"); },
         1,
         {"hostsim: NUT.PRT was not saved"}},
        {L"KvMdlCount --model pump",
         [](const TempDirectory& folder) { fs::remove(folder / "nut.prt.1"); },
         1,
         {"hostsim: pump.asm.1: /features/1/model: nut.prt leads to no model"}},
        {L"KvConfig",
         [](const TempDirectory&) {},
         1,
         {"problem: unexpected dialog \"KvConfig\": a block \"dialog KvConfig\""}},
        {L"KvConfig --user \"FOLDER\\a.user\"",
         [](const TempDirectory& folder) {
             folder.Write("a.user", "dialog KvConfig\n  expect text A0Asmpath \"no\"\n  close\n");
         },
         1,
         {"problem: "}},
        {L"KvMdlCount --workspace \"" + std::wstring(261, L'x') + L"\"",
         [](const TempDirectory&) {},
         2,
         {"hostsim: the path of the workspace has "}},
    };
    for (const auto& item : cases) {
        const TempDirectory folder;
        folder.Write("bolt.prt.1", ModelText("BOLT", "part"));
        folder.Write("nut.prt.1", ModelText("NUT", "part"));
        folder.Write(
            "pump.asm.1",
            ModelText("PUMP", "assembly",
                      R"(, "features": [{"id": 1, "model": "bolt.prt"}, {"id": 2, "model": "nut.prt"},)"
                      R"({"id": 3, "model": "gone.prt", "status": "suppressed"}])"));
        item.arrange(folder);
        std::wstring arguments = item.command;
        if (const std::size_t at = arguments.find(L"FOLDER"); at != arguments.npos)
            arguments.replace(at, 6, folder.Path().wstring());
        if (arguments.find(L"--workspace") == arguments.npos)
            arguments += L" --workspace \"" + folder.Path().wstring() + L"\"";
        int exitCode = -1;
        const std::vector<std::string> errors = ErrorsOfRun(folder, arguments, exitCode);
        const std::string label = testing::PrintToString(item.beginnings);
        EXPECT_EQ(exitCode, item.exitCode) << label;
        ASSERT_EQ(errors.size(), item.beginnings.size()) << label << testing::PrintToString(errors);
        for (std::size_t i = 0; i < errors.size(); ++i)
            EXPECT_TRUE(errors[i].starts_with(item.beginnings[i])) << errors[i];
    }
}

}  // namespace
