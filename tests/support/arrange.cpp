#include "support/arrange.h"

#include <optional>

#include <gtest/gtest.h>
#include <windows.h>

#include "support/plugin_home.h"

namespace test {

namespace fs = std::filesystem;
using sim::HostSetup;
using sim::PopupButton;
using sim::SimHost;

HostSetup Unstarted() {
    HostSetup setup;
    setup.initialize = false;
    return setup;
}

void ChangeSetting(std::wstring_view file, std::wstring_view section, std::wstring_view key,
                   std::wstring_view value) {
    EXPECT_TRUE(WritePrivateProfileStringW(std::wstring(section).c_str(), std::wstring(key).c_str(),
                                           std::wstring(value).c_str(), SettingsFile(file).c_str()));
}

fs::path MakeFolder(const SimHost& host, const fs::path& relative) {
    fs::path folder = host.WorkingDirectory() / relative;
    std::error_code error;
    fs::create_directories(folder, error);
    EXPECT_TRUE(fs::is_directory(folder)) << folder.string().size();
    return folder;
}

void EnterFolder(SimHost& host, const fs::path& relative) {
    EXPECT_EQ(host.State().models.ChangeDirectory(MakeFolder(host, relative).wstring()), PRO_TK_NO_ERROR);
}

sim::Pick Whole(sim::SimModel& model) {
    return ItemOf(model, 0, 0);
}

sim::Pick ItemOf(sim::SimModel& model, int type, int id) {
    sim::Pick pick;
    pick.model = &model;
    pick.type = type;
    pick.id = id;
    return pick;
}

void StartWithRightClick(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    host.Initialize();
    RightClick(host);
}

std::vector<PopupButton> RightClick(SimHost& host, std::string_view menu) {
    std::vector<PopupButton> entries = host.State().screen.OpenPopup(menu).buttons;
    EXPECT_EQ(host.State().report.OpenItems(), std::vector<std::string>());
    return entries;
}

int StateOf(const std::vector<PopupButton>& entries, std::string_view name) {
    for (const PopupButton& entry : entries)
        if (entry.name == name) return entry.state;
    return kAbsent;
}

Texts Messages(const SimHost& host) {
    Texts texts;
    for (const sim::ShownBox& box : host.Boxes()) {
        EXPECT_EQ(box.caption, L"Korvane");
        EXPECT_FALSE(box.hasOwner);
        EXPECT_TRUE(box.flags & MB_TOPMOST);
        texts.push_back(box.text);
    }
    return texts;
}

sim::ExportRecord RecordOf(const SimHost& host, const fs::path& file) {
    const std::optional<sim::ExportRecord> record = host.Exported(file);
    EXPECT_TRUE(record) << testing::PrintToString(file.wstring());
    return record.value_or(sim::ExportRecord());
}

std::wstring PathText(const fs::path& path) {
    std::wstring text = fs::path(path).make_preferred().wstring();
    while (!text.empty() && text.back() == L'\\') text.pop_back();
    return text;
}

std::string Encode936(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(2 * text.size(), '\0');
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
        936, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

}  // namespace test
