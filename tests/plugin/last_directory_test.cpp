// The working directory of one session comes back in the next one.

#include <clocale>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::HostSetup;
using sim::SimHost;
using test::Messages;
using test::Texts;

// Text of a folder that brings the working directory to this length.
std::wstring LongFolder(const fs::path& workspace, std::size_t length, wchar_t filling) {
    std::wstring folder;
    const std::size_t used = test::PathText(workspace).size() + 1;
    // Some file systems take 85 Chinese characters a name.
    while (used + folder.size() < length) folder += folder.size() % 50 == 49 ? L'\\' : filling;
    if (folder.back() == L'\\') folder.back() = filling;
    return folder;
}

TEST(LastDirectory, ComesBackInTheNextSession) {
    test::ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    const test::TempDirectory workspace;
    HostSetup setup;
    setup.workspace = workspace.Path();
    // The longest path of the host has 259 characters, the separator at its end among them.
    for (const std::wstring& folder :
         {std::wstring(L"pump v2"), std::wstring(L"图纸 目录,1"), LongFolder(workspace.Path(), 258, L'x'),
          LongFolder(workspace.Path(), 258, L'图')}) {
        const std::wstring directory = test::PathText(workspace.Path() / folder);
        SCOPED_TRACE(sim::Utf8(directory));
        {
            SimHost host(setup);
            test::EnterFolder(host, folder);
        }
        std::string written = test::ReadBytes(test::SettingsFile(L"korvane.ini"));
        if (written.ends_with('\\')) written.pop_back();
        EXPECT_EQ(written, test::Encode936(directory)) << "code page 936 and nothing else";
        SimHost host(setup);
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), test::PathText(workspace.Path()));
        host.FireTimers();
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), directory);
    }
}

TEST(LastDirectory, IsRestoredByOneTickTwoSecondsAfterTheStart) {
    SimHost host;
    ASSERT_EQ(sim::DesktopTimers().size(), 1u);
    EXPECT_EQ(sim::DesktopTimers()[0].period, 2000u);
    host.FireTimers();
    EXPECT_TRUE(sim::DesktopTimers().empty());
}

TEST(LastDirectory, ReplacesWhatAnEarlierSessionLeft) {
    test::WriteBytes(test::SettingsFile(L"korvane.ini"), std::string(700, 'x'));
    SimHost host;
    const std::wstring directory = test::PathText(host.WorkingDirectory());
    host.Terminate();
    EXPECT_TRUE(test::ReadBytes(test::SettingsFile(L"korvane.ini")).starts_with(test::Encode936(directory)));
    EXPECT_LE(test::ReadBytes(test::SettingsFile(L"korvane.ini")).size(), directory.size() + 1);
}

TEST(LastDirectory, IsRestoredForTheSettingOneAlone) {
    const std::map<std::wstring, bool> settings = {
        {L"[SetLastDir]\r\nvalue=1\r\n", true},  {L"[SetLastDir]\r\nvalue=\" 1 \"\r\n", true},
        {L"[SetLastDir]\r\nvalue=0\r\n", false}, {L"[SetLastDir]\r\nvalue=11\r\n", false},
        {L"[SetLastDir]\r\nvalue=\r\n", false},  {L"[RmbDisable]\r\nvalue=1\r\n", false},
    };
    for (const auto& [file, restores] : settings) {
        SCOPED_TRACE(sim::Utf8(file));
        test::WriteSettings(L"KvConfig.ini", file);
        SimHost host;
        const fs::path folder = test::MakeFolder(host, "last");
        const fs::path expected = restores ? folder : host.WorkingDirectory();
        test::WriteBytes(test::SettingsFile(L"korvane.ini"), test::Encode936(folder.wstring()));
        host.FireTimers();
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), test::PathText(expected));
    }
    fs::remove(test::SettingsFile(L"KvConfig.ini"));
    SimHost host;
    const fs::path before = host.WorkingDirectory();
    host.FireTimers();
    EXPECT_EQ(host.WorkingDirectory(), before);
}

TEST(LastDirectory, IsWrittenInItsCodePageWhateverTheProcessHasSet) {
    const LCID before = GetThreadLocale();
    const std::string locale = std::setlocale(LC_CTYPE, nullptr);
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT));
    {
        SimHost host;
        test::EnterFolder(host, L"图纸");
        host.Terminate();
        EXPECT_TRUE(test::ReadBytes(test::SettingsFile(L"korvane.ini"))
                        .starts_with(test::Encode936(test::PathText(host.WorkingDirectory()))));
    }
    EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), locale);
    SetThreadLocale(before);

    // Better nothing than another directory.
    SimHost korean;
    test::EnterFolder(korean, L"도면");
    korean.Terminate();
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(L"korvane.ini")), "");
}

TEST(LastDirectory, StaysWhereTheHostStartedWhenTheFileIsOfNoUse) {
    test::ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    const std::vector<std::pair<const char*, std::optional<std::string>>> files = {
        {"missing", std::nullopt},
        {"empty", ""},
        {"the folder is gone", "C:\\no such folder\\at all"},
        {"longer than a path", "C:\\" + std::string(300, 'x')},
        {"far longer than a path", "C:\\" + std::string(100'000, 'x')},
        {"longer than a path, in Chinese", test::Encode936(L"C:\\" + std::wstring(300, L'图'))},
        {"not text", std::string("C:\\\xFF\xFF\x81", 6)},
    };
    for (const auto& [what, bytes] : files) {
        SCOPED_TRACE(what);
        fs::remove(test::SettingsFile(L"korvane.ini"));
        if (bytes) test::WriteBytes(test::SettingsFile(L"korvane.ini"), *bytes);
        SimHost host;
        const fs::path before = host.WorkingDirectory();
        host.FireTimers();
        EXPECT_EQ(host.WorkingDirectory(), before);
        EXPECT_EQ(Messages(host), Texts{});
    }
}

}  // namespace
