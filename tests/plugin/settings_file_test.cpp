// Settings files in encodings that Windows reads wrongly.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "settings/settings_file.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace {

using namespace std::string_view_literals;
using sim::SimDialog;
using sim::SimHost;

TEST(SettingsFile, KnowsWhatTheProfileCallsGarble) {
    const struct {
        std::string_view bytes;
        bool isGarbled;
    } cases[] = {
        {"[A]\r\nvalue=1"sv, false},
        {""sv, false},
        {"\xFF\xFE[\0A\0]\0\xE5\x65"sv, false},
        {"[A]\r\nvalue=\xCA\xB9\xD3\xC3"sv, false},  // code page 936
        {"[A]\r\nvalue=\xC4\xA3"sv, false},          // the same: what looks like UTF-8 by chance
        {"[A]\r\nvalue=\xE6\x97\xA5"sv, true},
        {"\xEF\xBB\xBF[A]\r\nvalue=1"sv, true},
        {"[\0A\0]\0"sv, true},
        {"\xFE\xFF\0[\0A\0]"sv, true},
        {"[A]\r\nvalue=1\0"sv, true},
        {"\xFF\xFE[\0A\0\0\0]\0"sv, true},
    };
    for (const auto& item : cases)
        EXPECT_EQ(kv::ProfileCallsGarble(item.bytes), item.isGarbled) << item.bytes;
}

TEST(SettingsFile, AGarbledOneIsToldOncePerCommandReadAsEmptyAndLeftAlone) {
    const auto file = test::SettingsFile(L"KvConfig.ini");
    const std::string bytes = "[SetLastDir]\r\nvalue=1\r\n[A0Asmpath]\r\npath=D:\\模板.drw\r\n";
    SimHost host;
    test::WriteBytes(file, bytes);
    const auto look = [&host](bool isGarbled) {
        host.OnDialog("KvConfig", [isGarbled](SimDialog& dialog) {
            EXPECT_EQ(dialog.Text("A0Asmpath"), isGarbled ? L"" : L"D:\\b.drw");
            dialog.Type("A1Asmpath", L"D:\\c.drw").Press("save").Close();
        });
        EXPECT_EQ(host.Run("KvConfig"), PRO_TK_NO_ERROR);
    };
    for (const std::size_t boxes : {1U, 2U}) {
        look(true);
        ASSERT_EQ(host.Boxes().size(), boxes);
        EXPECT_NE(host.Boxes().back().text.find(file.wstring()), std::wstring::npos);
    }
    EXPECT_EQ(test::ReadBytes(file), bytes);

    // The user has saved it anew; nothing of it was remembered.
    test::WriteSettings(L"KvConfig.ini", L"[A0Asmpath]\r\npath=D:\\b.drw\r\n");
    look(false);
    EXPECT_EQ(host.Boxes().size(), 2U);
    EXPECT_EQ(test::ReadSettings(L"KvConfig.ini", L"A1Asmpath", L"path"), L"D:\\c.drw");
}

}  // namespace
