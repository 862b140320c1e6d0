// KvConfig: the common settings in one dialog, and what the user is told when a dialog fails.

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::SimDialog;
using sim::SimHost;
using sim::Utf8;
using sim::Wide;
using test::IniEncoding;
using test::Messages;
using test::ReadSettings;
using test::Texts;
using namespace std::string_literals;

constexpr wchar_t kStoredFile[] = L"KvConfig.ini";

struct Choice {
    std::string group;
    std::wstring first, second;  // two of its buttons
};

const std::vector<Choice>& Choices() {
    static const std::vector<Choice> choices = {
        {"SetLastDir", L"0", L"1"},
        {"AsmAssembly", L"0", L"1"},
        {"PrtAssembly", L"0", L"1"},
        {"SmtAssembly", L"0", L"1"},
        {"RmbDisable", L"0", L"1"},
        {"TweViewsUseAutoMainView", L"0", L"1"},
        {"CompCopyAutoNum", L"byAsm", L"byUser"},
        {"KvRandomColorOpt", L"0", L"1"},
        {"KvExportDwgDIr", L"deskTop", L"byUser"},
        {"KvExportPdfDIr", L"byUser", L"workDir"},
        {"KvExportStpDir", L"workDir", L"deskTop"},
        {"KvCountForInstance", L"true", L"false"},
    };
    return choices;
}

struct Template {
    std::string panel;
    std::string picker;
    std::wstring title;
};

const std::vector<Template>& Templates() {
    static const std::vector<Template> templates = {
        {"A0Asmpath", "SelA0Asm", L"请选择A0组件模板"},
        {"A0Prtpath", "SelA0Prt", L"请选择A0零件模板"},
        {"A1Asmpath", "SelA1Asm", L"请选择A1组件模板"},
        {"A1Prtpath", "SelA1Prt", L"请选择A1零件模板"},
        {"A2Asmpath", "SelA2Asm", L"请选择A2组件模板"},
        {"A2Prtpath", "SelA2Prt", L"请选择A2零件模板"},
        {"A3Asmpath", "SelA3Asm", L"请选择A3组件模板"},
        {"A3Prtpath", "SelA3Prt", L"请选择A3零件模板"},
        {"A4Asmpath", "SelA4Asm", L"请选择A4组件模板"},
        {"A4Prtpath", "SelA4Prt", L"请选择A4零件模板"},
        {"A4HAsmpath", "SelA4HAsm", L"请选择A4横向组件模板"},
        {"A4HPrtpath", "SelA4HPrt", L"请选择A4横向零件模板"},
    };
    return templates;
}

// A different path for every panel, with Chinese text, blanks and a comma.
std::wstring TemplatePath(const Template& row) {
    return L"D:\\模板 库\\标准,新\\" + Wide(row.panel) + L".drw";
}

// A whole settings file; the buttons are the second ones.
std::wstring WholeFile() {
    std::wstring text;
    for (const Choice& choice : Choices())
        text += L"[" + Wide(choice.group) + L"]\r\nvalue=" + choice.second + L"\r\n";
    for (const Template& row : Templates())
        text += L"[" + Wide(row.panel) + L"]\r\npath=" + TemplatePath(row) + L"\r\n";
    return text;
}

// The order in which a save writes.
Texts SavingOrder() {
    Texts order = {L"SetLastDir",       L"AsmAssembly",        L"PrtAssembly",    L"SmtAssembly",
                   L"CompCopyAutoNum",  L"KvExportDwgDIr",     L"KvExportPdfDIr", L"KvExportStpDir",
                   L"KvRandomColorOpt", L"KvCountForInstance", L"RmbDisable",     L"TweViewsUseAutoMainView"};
    for (const Template& row : Templates()) order.push_back(Wide(row.panel));
    return order;
}

Texts SectionsInFile() {
    wchar_t names[4096] = {};
    GetPrivateProfileSectionNamesW(names, 4096, test::SettingsFile(kStoredFile).c_str());
    Texts sections;
    for (const wchar_t* name = names; *name != L'\0'; name += sections.back().size() + 1)
        sections.emplace_back(name);
    return sections;
}

// Runs the dialog once.
void Configure(SimHost& host, const std::function<void(SimDialog&)>& script) {
    host.OnDialog("KvConfig", script);
    EXPECT_EQ(host.Run("KvConfig"), PRO_TK_NO_ERROR);
}

TEST(KvConfig, ShowsEveryStoredSetting) {
    for (const IniEncoding encoding : {IniEncoding::kUtf16, IniEncoding::kAnsi936}) {
        SCOPED_TRACE(encoding == IniEncoding::kUtf16 ? "UTF-16" : "code page 936");
        test::WriteSettings(kStoredFile, WholeFile(), encoding);
        SimHost host;
        Configure(host, [](SimDialog& dialog) {
            for (const Choice& choice : Choices())
                EXPECT_EQ(Wide(dialog.Chosen(choice.group)), choice.second);
            for (const Template& row : Templates()) EXPECT_EQ(dialog.Text(row.panel), TemplatePath(row));
        });
        EXPECT_EQ(Messages(host), Texts{});
    }
}

TEST(KvConfig, SavesEverySettingAndStaysOpen) {
    // Chinese paths survive in the shipped file, in an old 8-bit one and in one that the save itself makes.
    for (const char* start : {"shipped", "8-bit", "missing"}) {
        SCOPED_TRACE(start);
        test::RestoreSettings();
        if (start == std::string("8-bit"))
            test::WriteSettings(kStoredFile, L"[SetLastDir]\r\nvalue=1\r\n", IniEncoding::kAnsi936);
        if (start == std::string("missing")) fs::remove(test::SettingsFile(kStoredFile));
        SimHost host;
        Configure(host, [](SimDialog& dialog) {
            for (const Choice& choice : Choices()) dialog.Choose(choice.group, choice.first);
            for (const Template& row : Templates()) dialog.Type(row.panel, TemplatePath(row));
            dialog.Press("save");
            EXPECT_TRUE(dialog.IsOpen());
        });
        for (const Choice& choice : Choices())
            EXPECT_EQ(ReadSettings(kStoredFile, Wide(choice.group), L"value"), choice.first) << choice.group;
        EXPECT_TRUE(start != std::string("missing") || SectionsInFile() == SavingOrder());
        for (const Template& row : Templates())
            EXPECT_EQ(ReadSettings(kStoredFile, Wide(row.panel), L"path"), TemplatePath(row)) << row.panel;
        Configure(host, [](SimDialog& dialog) {
            for (const Choice& choice : Choices()) EXPECT_EQ(Wide(dialog.Chosen(choice.group)), choice.first);
            for (const Template& row : Templates()) EXPECT_EQ(dialog.Text(row.panel), TemplatePath(row));
            dialog.Type("A3Asmpath", L"").Press("save");
        });
        EXPECT_EQ(ReadSettings(kStoredFile, L"A3Asmpath", L"path"), L"");
        EXPECT_EQ(Messages(host), Texts{});
    }
}

TEST(KvConfig, KeepsTextOfAnyLanguageInAFileOfItsOwnMaking) {
    fs::remove(test::SettingsFile(kStoredFile));
    SimHost host;
    Configure(host,
              [](SimDialog& dialog) { dialog.Type("A0Asmpath", L"D:\\도면\\Übersicht.drw").Press("save"); });
    Configure(host,
              [](SimDialog& dialog) { EXPECT_EQ(dialog.Text("A0Asmpath"), L"D:\\도면\\Übersicht.drw"); });
}

TEST(KvConfig, ChangesNothingUntilSaved) {
    const std::string before = test::ReadBytes(test::SettingsFile(kStoredFile));
    SimHost host;
    Configure(host, [](SimDialog& dialog) {
        dialog.Choose("SetLastDir", L"1").Type("A0Asmpath", L"D:\\new.drw").Close();
        EXPECT_FALSE(dialog.IsOpen());
    });
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kStoredFile)), before);
}

TEST(KvConfig, OpensEmptyWithoutASettingsFolderAndMakesNone) {
    SimHost host;
    fs::remove_all(test::SettingsFile(kStoredFile).parent_path());
    Configure(host, [](SimDialog& dialog) {
        // What the commands take for a value that is not there; the other groups have no such value.
        const std::map<std::string, std::string> unset = {
            {"SetLastDir", "0"},
            {"AsmAssembly", "0"},
            {"PrtAssembly", "0"},
            {"SmtAssembly", "0"},
            {"RmbDisable", "1"},
            {"KvExportDwgDIr", "workDir"},
            {"KvExportPdfDIr", "workDir"},
            {"KvExportStpDir", "workDir"},
            {"KvCountForInstance", "false"},
            {"KvRandomColorOpt", "0"},
            {"TweViewsUseAutoMainView", "0"},
        };
        for (const Choice& choice : Choices())
            EXPECT_EQ(dialog.Chosen(choice.group),
                      unset.contains(choice.group) ? unset.at(choice.group) : std::string())
                << choice.group;
        for (const Template& row : Templates()) EXPECT_EQ(dialog.Text(row.panel), L"") << row.panel;
        dialog.Choose("SetLastDir", L"1").Press("save");
    });
    EXPECT_FALSE(fs::exists(test::SettingsFile(kStoredFile).parent_path()));
    EXPECT_EQ(Messages(host), Texts{});
}

TEST(KvConfig, LosesTheChangeSilentlyWhenTheFileCannotBeWritten) {
    const std::string before = test::ReadBytes(test::SettingsFile(kStoredFile));
    SimHost host;
    Configure(host, [](SimDialog& dialog) {
        dialog.Choose("SetLastDir", L"1").Type("A0Asmpath", L"D:\\new.drw");
        // Another program holds the file; unlike the read-only mark this stops an administrator too.
        const HANDLE other = CreateFileW(test::SettingsFile(kStoredFile).c_str(), GENERIC_READ,
                                         FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        dialog.Press("save");
        CloseHandle(other);
        EXPECT_TRUE(dialog.IsOpen());
    });
    EXPECT_EQ(test::ReadBytes(test::SettingsFile(kStoredFile)), before);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST(KvConfig, ShowsTheFirst254CharactersOfALongPath) {
    for (const std::size_t length : {254u, 255u, 300u}) {
        const std::wstring path = L"D:\\" + std::wstring(length - 3, L'图');
        test::ChangeSetting(kStoredFile, L"A4HPrtpath", L"path", path);
        SimHost host;
        Configure(host, [&](SimDialog& dialog) {
            EXPECT_EQ(dialog.Text("A4HPrtpath"), path.substr(0, 254)) << length;
            EXPECT_EQ(dialog.Text("A4HAsmpath"), L"");
        });
    }
}

TEST(KvConfig, ChoosesNothingForAStoredValueThatIsNoButton) {
    for (const std::wstring& value : {L"9"s, L"是"s, L"D\xE9p\xF4t"s, std::wstring(300, L'1')}) {
        SCOPED_TRACE(Utf8(value));
        test::ChangeSetting(kStoredFile, L"CompCopyAutoNum", L"value", value);
        test::ChangeSetting(kStoredFile, L"SetLastDir", L"value", L"1");
        SimHost host;
        Configure(host, [](SimDialog& dialog) {
            EXPECT_EQ(dialog.Chosen("CompCopyAutoNum"), "");
            EXPECT_EQ(dialog.Chosen("SetLastDir"), "1");
            dialog.Choose("SetLastDir", L"0").Press("save");
        });
        EXPECT_EQ(ReadSettings(kStoredFile, L"SetLastDir", L"value"), L"0");
        EXPECT_EQ(ReadSettings(kStoredFile, L"CompCopyAutoNum", L"value"), value) << "kept whole";
        EXPECT_EQ(Messages(host), Texts{});
    }
}

TEST(KvConfig, PutsAPickedTemplateIntoItsPanel) {
    SimHost host;
    const fs::path folder = test::MakeFolder(host, L"模板 库,新");
    const auto fileOf = [&](const Template& row) { return (folder / Wide(row.panel + ".drw")).wstring(); };
    for (const Template& row : Templates()) test::WriteBytes(fileOf(row), "");
    Configure(host, [&](SimDialog& dialog) {
        for (const Template& row : Templates()) {
            host.AnswerFile(fileOf(row));
            dialog.Press(row.picker);
            EXPECT_EQ(host.State().user.questions.back(), row.title);
        }
        for (const Template& row : Templates()) EXPECT_EQ(dialog.Text(row.panel), fileOf(row));
        host.AnswerFile(std::nullopt);
        dialog.Press("SelA0Asm");
        EXPECT_EQ(dialog.Text("A0Asmpath"), fileOf(Templates()[0])) << "cancelled";
    });
    EXPECT_EQ(host.State().user.questions.size(), 13u);
    EXPECT_EQ(ReadSettings(kStoredFile, L"A0Asmpath", L"path"), L"") << "not saved";
}

TEST(KvConfig, RefusesATemplateWhosePathCouldNotBeReadAgain) {
    SimHost host;
    const std::size_t room = 255 - host.WorkingDirectory().wstring().size() - 6;
    const fs::path folder = test::MakeFolder(host, std::wstring(room / 2, L'a'));
    const fs::path file = folder / (std::wstring(room - room / 2, L'b') + L".drw");
    ASSERT_EQ(file.wstring().size(), 255u);
    test::WriteBytes(file, "");
    host.AnswerFile(file.wstring());
    Configure(host, [&](SimDialog& dialog) {
        dialog.Press("SelA3Prt");
        EXPECT_EQ(dialog.Text("A3Prtpath"), L"");
        dialog.Press("save").Press("KvReports").Press("Close");
        EXPECT_FALSE(dialog.IsOpen());
    });
    EXPECT_EQ(Messages(host), Texts{L"\t模板路径超过254个字符，无法保存，请选择其他位置的模板\t"});
    EXPECT_EQ(host.State().user.messageArea.back(), L"已保存");
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_TRUE(host.State().user.started[0].parameters.ends_with(L"Korvane\\reports\\"));
}

TEST(KvConfig, OffersTheDrawingsOfTheFormatFolder) {
    SimHost host;
    const fs::path formats = test::MakeFolder(host, "formats");
    const fs::path other = test::MakeFolder(host, "other");
    for (const fs::path& folder : {formats, other, host.WorkingDirectory()})
        for (const char* file : {"a.drw", "a.frm"}) test::WriteBytes(folder / file, "");
    host.State().configOptions[L"PRO_FORMAT_DIR"] = {formats.wstring(), other.wstring()};
    Configure(host, [&](SimDialog& dialog) {
        host.AnswerFile(L"a.drw");
        dialog.Press("SelA2Prt");
        EXPECT_EQ(dialog.Text("A2Prtpath"), (formats / "a.drw").wstring());
        host.AnswerFile(L"a.frm");
        dialog.Press("SelA3Prt");
        EXPECT_EQ(host.TakeProblems().size(), 1u) << "other kinds of files are not offered";
        // Without the option the choice starts in the working directory.
        host.State().configOptions.clear();
        host.AnswerFile(L"a.drw");
        dialog.Press("SelA4Prt");
        EXPECT_EQ(dialog.Text("A4Prtpath"), (host.WorkingDirectory() / "a.drw").wstring());
        host.State().configOptions[L"PRO_FORMAT_DIR"] = {formats.wstring(), other.wstring()};
    });
}

// A field that could not be filled shows less than what is stored.
TEST(KvConfig, KeepsWhatAFieldCouldNotShow) {
    for (const char* call : {"ProUIInputpanelValueSet", "ProUIRadiogroupSelectednamesSet"}) {
        test::WriteSettings(kStoredFile, WholeFile());
        SimHost host;
        host.State().report.Arm(Fault{call, 0});
        Configure(host, [](SimDialog& dialog) {
            dialog.Type("A0Asmpath", L"D:\\new.drw").Choose("RmbDisable", L"0").Press("save");
        });
        for (const Choice& choice : Choices())
            EXPECT_EQ(ReadSettings(kStoredFile, Wide(choice.group), L"value"),
                      choice.group == "RmbDisable" ? L"0" : choice.second);
        for (const Template& row : Templates())
            EXPECT_EQ(ReadSettings(kStoredFile, Wide(row.panel), L"path"),
                      row.panel == "A0Asmpath" ? L"D:\\new.drw" : TemplatePath(row));
    }
}

// ---- Every dialog

struct DialogFailure {
    const char* function;
    const wchar_t* message;
    bool isShown;  // the dialog was on the screen before
};

TEST(Dialogs, TellTheUserWhatFailedAndAnswerTheStatus) {
    const DialogFailure failures[] = {
        {"ProUIDialogCreate", L"UIDialog Create error!", false},
        {"ProUIPushbuttonActivateActionSet", L"UIDialog Create error!", false},
        {"ProUIDialogActivate", L"UIDialog Activate error!", false},
        {"ProUIDialogDestroy", L"UIDialog Destroy error!", true},
    };
    for (const char* command : {"KvConfig", "KvParams", "AboutKv"}) {
        for (const DialogFailure& failure : failures) {
            SCOPED_TRACE(std::string(command) + ", " + failure.function);
            SimHost host;
            host.Open(host.AddAssembly(L"PUMP"));
            if (failure.isShown) host.OnDialog(command, [](SimDialog&) {});
            host.State().report.Arm(Fault{failure.function, 1});
            EXPECT_EQ(host.Run(command), PRO_TK_GENERAL_ERROR);
            EXPECT_EQ(Messages(host), Texts{failure.message});
            EXPECT_TRUE(host.State().screen.OpenDialogs().empty());
        }
    }
}

}  // namespace
