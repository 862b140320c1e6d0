// KvRename: the table, the check, the rename with drawings and owners, the way back, files of tables.

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/spreadsheet/xlsx.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/rename_check.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;
using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::HasModelFile;
using test::Messages;
using test::MissingIn;
using test::Texts;

constexpr char kRenameTable[] = "mdl_list";
constexpr wchar_t kRenameDone[] = L"\t批量重命名操作已完成\t";
constexpr wchar_t kStart[] = L"无法执行重命名操作！\n新名称“";
constexpr wchar_t kExists[] = L"”在当前会话或工作目录中已存在，请修改后再试！";
constexpr wchar_t kIllegal[] = L"”非法，请修改后再试！";
constexpr wchar_t kTooLong[] = L"”长度大于32位，名称无效，请修改后再操作";

using Rows = std::vector<std::wstring>;
Rows RenameRowsOf(const SimDialog& dialog) {
    Rows rows;
    for (const std::string& row : dialog.Rows(kRenameTable)) {
        std::wstring line;
        for (const char* column : {"num", "old_name", "type", "new_name", "count", "drawing"})
            line += (line.empty() ? L"" : L"|") + dialog.Cell(kRenameTable, row, column);
        rows.push_back(line);
    }
    return rows;
}

// PUMP { SUB { BOLT BOLT } BOLT } on disk with drawings of BOLT and of PUMP, which shows BOLT too.
class KvRename : public testing::Test {
protected:
    KvRename() {
        bolt.SetParameter(L"CODE", std::wstring(L"M8"));
        sub.Place(bolt, 2);
        pump.Place(sub).Place(bolt);
        EXPECT_EQ(host.State().models.Save(pump), PRO_TK_NO_ERROR);
        host.AddDrawingFile(L"BOLT", {L"A4"}, {&bolt});
        host.AddDrawingFile(L"PUMP", {L"A3"}, {&pump, &bolt});
        host.Open(pump);
    }
    void Use(const std::function<void(SimDialog&)>& script) {
        host.OnDialog("KvRename", script);
        EXPECT_EQ(host.Run("KvRename"), PRO_TK_NO_ERROR);
    }
    // Gives rows new names and starts.
    void Rename(const std::vector<std::pair<std::string, std::wstring>>& names) {
        Use([&](SimDialog& dialog) {
            for (const auto& [row, name] : names) dialog.Type("input" + row, name);
            dialog.Press("KvDropUnchanged").Press("StartRename");
        });
    }
    bool HasFile(const wchar_t* model) const { return HasModelFile(host.WorkingDirectory(), model); }
    bool InMemory(const wchar_t* name, ModelKind kind) {
        return host.State().models.Find(name, kind) != nullptr;
    }
    std::size_t FileCount() const {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(host.WorkingDirectory()))
            count += entry.is_regular_file();
        return count;
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
};

// ---- The table

TEST_F(KvRename, ListsEachModelOnceButForThePrefixes) {
    Use([](SimDialog& dialog) {
        EXPECT_EQ(RenameRowsOf(dialog),
                  (Rows{L"1|PUMP|asm|PUMP||有", L"2|SUB|asm|SUB|1|", L"3|BOLT|prt|BOLT|3|有"}));
        EXPECT_EQ(dialog.ColumnTitles(kRenameTable),
                  (Rows{L"序号", L"原名称", L"类型", L"新名称", L"数量", L"工程图"}));
        dialog.Type("input3", L"KEPT").Type("RenameFilter", L"s， x,").Press("UpdateRenameIni");
        EXPECT_EQ(RenameRowsOf(dialog), (Rows{L"1|PUMP|asm|PUMP||有", L"2|BOLT|prt|BOLT|3|有"}));
        dialog.Press("OpenRenameIni");
    });
    EXPECT_EQ(test::ReadSettings(L"KvRename.ini", L"RenameFilter", L"content"), L"s， x,");
    host.State().models.Create(L"X_S", ModelKind::kPart);
    Use([](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("RenameFilter"), L"s， x,");
        EXPECT_EQ(dialog.Rows(kRenameTable).size(), 2U);
    });
    ASSERT_EQ(host.State().user.started.size(), 1U);
    EXPECT_NE(host.State().user.started[0].file.find(L"KvRename.ini"), std::wstring::npos);
}

TEST_F(KvRename, ShowsTheModelOfTheArmedRowAndThenTheTopAgain) {
    Use([this](SimDialog& dialog) {
        dialog.SelectRows(kRenameTable, {"3"});
        EXPECT_TRUE(dialog.IsAboveActiveWindow());
        EXPECT_EQ(host.State().models.current, &bolt);
        EXPECT_EQ(RenameRowsOf(dialog).size(), 3U);
    });
    EXPECT_EQ(host.State().models.current, &pump);
}

TEST_F(KvRename, NeedsAnAssembly) {
    host.Open(bolt, sim::HostMode::kAssembly);
    host.Run("KvRename");
    EXPECT_EQ(Messages(host), Texts{L"此功能仅组件/制造环境可用！"});
}

// ---- The run, with old files staying and going, and names free at once or late

struct HostKind {
    bool takesOldFiles;
    bool eraseWaits;
};

class KvRenameRun : public KvRename, public testing::WithParamInterface<HostKind> {
protected:
    KvRenameRun() {
        host.State().models.renameTakesOldFiles = GetParam().takesOldFiles;
        host.State().strict.eraseWaits = GetParam().eraseWaits;
        host.State().configOptions[L"OVERRIDE_STORE_BACK"] = {L"no"};
    }
};

TEST_P(KvRenameRun, RenamesAModelWithItsDrawingAndSavesWhatUsesIt) {
    Rename({{"3", L"B OLT 2"}});
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    EXPECT_EQ(bolt.Name(), L"BOLT2");
    EXPECT_TRUE(HasFile(L"bolt2.prt"));
    EXPECT_TRUE(HasFile(L"bolt2.drw"));
    EXPECT_EQ(HasFile(L"bolt.prt"), !GetParam().takesOldFiles);
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
    // The assemblies and the drawing that shows the part beside its own model name it by the new name.
    for (const wchar_t* file : {L"sub.asm.2", L"pump.asm.2", L"pump.drw.2"})
        EXPECT_NE(test::ReadBytes(host.WorkingDirectory() / file).find("BOLT2.prt"), std::string::npos)
            << file;
    EXPECT_EQ(host.State().configOptions[L"OVERRIDE_STORE_BACK"].front(), L"no");
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 0U);
}

TEST_P(KvRenameRun, RenamesAWholeTreeAndGoesBack) {
    Rename({{"1", L"PUMP-1"}, {"2", L"泵座"}, {"3", L"0012"}});
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    for (const wchar_t* file : {L"pump-1.asm", L"泵座.asm", L"0012.prt", L"0012.drw", L"pump-1.drw"})
        EXPECT_TRUE(HasFile(file)) << file;
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());

    Use([](SimDialog& dialog) {
        EXPECT_EQ(RenameRowsOf(dialog),
                  (Rows{L"1|PUMP-1|asm|PUMP-1||有", L"2|泵座|asm|泵座|1|", L"3|0012|prt|0012|3|有"}));
        dialog.Press("KvUndoRename");
        EXPECT_EQ(RenameRowsOf(dialog),
                  (Rows{L"1|PUMP|asm|PUMP||有", L"2|SUB|asm|SUB|1|", L"3|BOLT|prt|BOLT|3|有"}));
    });
    EXPECT_EQ(host.LastMessage(), L"\t已撤销上次重命名\t");
    for (const wchar_t* file : {L"pump.asm", L"sub.asm", L"bolt.prt", L"bolt.drw", L"pump.drw"})
        EXPECT_TRUE(HasFile(file)) << file;
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
    EXPECT_EQ(sub.ModelsBelow(), std::vector<SimModel*>{&bolt});
}

INSTANTIATE_TEST_SUITE_P(Hosts, KvRenameRun,
                         testing::Values(HostKind{false, false}, HostKind{true, false}, HostKind{true, true}),
                         [](const auto& kind) {
                             return std::string(kind.param.takesOldFiles ? "FilesGo" : "FilesStay") +
                                    (kind.param.eraseWaits ? "EraseWaits" : "");
                         });

TEST_F(KvRename, SavesTheManufacturingModelAboveToo) {
    SimModel& mfg = host.AddManufacturing(L"CELL", pump);
    ASSERT_EQ(host.State().models.Save(mfg), PRO_TK_NO_ERROR);
    host.State().models.renameTakesOldFiles = true;
    host.Open(mfg);
    Rename({{"1", L"PUMP2"}});
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    EXPECT_TRUE(HasFile(L"pump2.asm"));
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
    EXPECT_EQ(host.State().models.current, &mfg);
}

TEST_F(KvRename, LeavesADrawingThatHasTheNewNameAlone) {
    SimModel& nut = host.AddPart(L"NUT");
    host.AddDrawingFile(L"BOLT2", {L"A4"}, {&nut});
    const std::string before = test::ReadBytes(host.WorkingDirectory() / "bolt2.drw.1");
    Rename({{"3", L"BOLT2"}});
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    EXPECT_EQ(test::ReadBytes(host.WorkingDirectory() / "bolt2.drw.1"), before);
    EXPECT_FALSE(fs::exists(host.WorkingDirectory() / "bolt2.drw.2"));
    EXPECT_NE(test::ReadBytes(host.WorkingDirectory() / "bolt.drw.2").find("BOLT2.prt"), std::string::npos);
    EXPECT_EQ(test::LastReport(host).Reason(L"BOLT"), L"已存在");
}

// ---- The check

TEST_F(KvRename, StopsAtTheFirstBadNameAndLeavesNothing) {
    host.AddDrawingFile(L"HIDDEN", {L"A4"});
    std::error_code error;
    fs::copy_file(host.WorkingDirectory() / "bolt.prt.1", host.WorkingDirectory() / "ondisk.prt.4", error);
    test::WriteBytes(host.WorkingDirectory() / "damaged.prt.1", "{");
    const std::wstring exact(32, L'X');
    const std::vector<std::pair<std::wstring, std::wstring>> cases = {
        {exact + L"X", kTooLong}, {exact, kIllegal},     {L"", kIllegal},    {L"A.B", kIllegal},
        {L"OnDisk", kExists},     {L"DAMAGED", kExists}, {L"BOLT", kExists}, {L"SUB2", kExists},
    };
    const std::size_t files = FileCount();
    for (const auto& [name, reason] : cases) {
        // SUB2 is the second of its type in the table.
        const std::string row = name == L"SUB2" ? "1" : "3";
        Use([&, &name = name](SimDialog& dialog) {
            dialog.Type("input1", row == "1" ? name : L"PUMP2").Type("input2", L"SUB2").Type("input3", name);
            dialog.Press("StartRename");
        });
        const std::wstring told = name == L"SUB2" ? L"SUB2" : name;
        EXPECT_EQ(host.LastMessage(), kStart + told + reason);
        EXPECT_EQ(FileCount(), files);
        EXPECT_EQ(pump.Name() + sub.Name() + bolt.Name(), L"PUMPSUBBOLT");
        EXPECT_FALSE(InMemory(L"SUB2", ModelKind::kAssembly));
    }
    EXPECT_EQ(host.Boxes().size(), cases.size());
}

TEST_F(KvRename, RefusesAnEmptyTableAndAHostWithoutTheOption) {
    Use([this](SimDialog& dialog) {
        host.State().report.Arm(sim::Fault{"ProConfigoptSet", 0, PRO_TK_GENERAL_ERROR});
        dialog.Type("input3", L"B2").Press("StartRename");
        host.State().report.DisarmAll();
        dialog.Type("input3", L"BOLT").Press("KvDropUnchanged").Press("StartRename");
    });
    EXPECT_EQ(Messages(host),
              (Texts{L"\t无法设置选项 override_store_back，未做任何改动！\t", L"\t\t重命名表格为空\t\t"}));
    EXPECT_EQ(bolt.Name(), L"BOLT");
}

TEST_F(KvRename, ListsAllBadRowsAtOnceWithoutMakingAnything) {
    bolt.SetReadOnly();
    const std::size_t files = FileCount();
    Use([](SimDialog& dialog) {
        dialog.Type("input1", L"SUB").Type("input3", L"FREE").Press("KvCheckAll");
        dialog.Type("input1", L"P2").Type("input2", L"S2").Press("KvDropUnchanged").Press("KvCheckAll");
    });
    EXPECT_EQ(Messages(host),
              (Texts{L"共有 3 行需要修改：\n1  PUMP → SUB：新名称是另一行的原名称，请分两次重命名\n"
                     L"2  SUB → SUB：新名称与原名称相同\n3  BOLT → FREE：模型只读",
                     L"共有 1 行需要修改：\n3  BOLT → FREE：模型只读"}));
    EXPECT_EQ(FileCount(), files);
}

// ---- Half-way

TEST_F(KvRename, GoesOnWithTheOthersWhenOneIsRefused) {
    sub.SetReadOnly();
    Rename({{"2", L"SUB2"}, {"3", L"BOLT2"}});
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    EXPECT_EQ(sub.Name() + bolt.Name(), L"SUBBOLT2");
    EXPECT_EQ(test::LastReport(host).Reason(L"SUB"), L"模型只读或被锁定");
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
}

TEST_F(KvRename, TakesANameBackThatCannotBeSaved) {
    host.State().models.renameTakesOldFiles = true;
    Use([this](SimDialog& dialog) {
        dialog.Type("input3", L"BOLT2").Press("KvDropUnchanged");
        host.State().report.onCallEnded = [this] {
            if (bolt.Name() != L"BOLT2") return;
            host.State().report.onCallEnded = nullptr;
            host.State().report.Arm(sim::Fault{"ProMdlSave", 0, PRO_TK_GENERAL_ERROR});
        };
        dialog.Press("StartRename");
        host.State().report.DisarmAll();
    });
    EXPECT_EQ(bolt.Name(), L"BOLT");
    EXPECT_TRUE(HasFile(L"bolt.prt"));
    EXPECT_FALSE(HasFile(L"bolt2.prt"));
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
}

TEST_F(KvRename, StopsForTheUserWithNothingDoneOrEverythingSaved) {
    host.State().models.renameTakesOldFiles = true;
    for (int i = 0; i < 10; ++i) sub.Place(host.AddPart(L"PART" + std::to_wstring(i)));
    ASSERT_EQ(host.State().models.Save(pump), PRO_TK_NO_ERROR);
    SimModel& last = *host.State().models.Find(L"PART9", ModelKind::kPart);
    const auto start = [](SimDialog& dialog) {
        dialog.Type("PrefixText", L"N_").Press("KvFillNames").Press("StartRename");
    };
    host.WatchProgress(1000, 4);
    Use(start);
    EXPECT_EQ(pump.Name() + sub.Name() + last.Name(), L"PUMPSUBPART9") << "in the check";

    // The button is pressed once a model has its new name.
    host.WatchProgress(1000);
    host.State().report.onCallEnded = [this] {
        if (pump.Name() != L"N_PUMP") return;
        host.State().report.onCallEnded = nullptr;
        host.State().user.progress.cancelAfter = 0;
    };
    Use(start);
    EXPECT_EQ(pump.Name(), L"N_PUMP");
    EXPECT_EQ(last.Name(), L"PART9");
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
    ASSERT_EQ(host.Boxes().size(), 2U);
    for (const std::wstring& text : Messages(host)) EXPECT_NE(text.find(L"操作已取消"), std::wstring::npos);
}

// ---- Names by rule

TEST_F(KvRename, FillsNamesByRuleAndChangesNothingElse) {
    Use([](SimDialog& dialog) {
        dialog.Type("PrefixText", L"K_").Type("StartNumber", L"9").Type("NumberDigits", L"2");
        dialog.Type("NameParameter", L"CODE").Press("KvFillNames");
        EXPECT_EQ(RenameRowsOf(dialog),
                  (Rows{L"1|PUMP|asm|K_PUMP09||有", L"2|SUB|asm|K_SUB10|1|", L"3|BOLT|prt|K_M811|3|有"}));
        dialog.Type("StartNumber", L"x").Press("KvFillNames");
        EXPECT_EQ(dialog.Cell(kRenameTable, "1", "new_name"), L"K_PUMP09");
    });
    EXPECT_EQ(Messages(host), Texts{L"\t起始编号和位数须为整数\t"});
    EXPECT_EQ(pump.Name(), L"PUMP");
}

// ---- Files

TEST_F(KvRename, WhatGoesToAFileComesBackTheSame) {
    host.Spreadsheet().Install();
    const std::vector<std::wstring> odd = {L"0012", L"轴承 1", L"1-2", L"=A1", std::wstring(32, L'X'), L""};
    for (const bool csv : {false, true}) {
        const std::wstring file = csv ? L"table.csv" : L"table.xls";
        for (std::size_t i = 0; i < odd.size(); i += 3) {
            host.AnswerFile(file);
            host.AnswerFile(file);
            Use([&](SimDialog& dialog) {
                for (std::size_t row = 0; row < 3; ++row)
                    dialog.Type("input" + std::to_string(row + 1), odd[i + row]);
                const Rows before = RenameRowsOf(dialog);
                dialog.Press(csv ? "KvExportCsv" : "KvExportTab").Press(csv ? "KvLoadCsv" : "KvLoadTab");
                EXPECT_EQ(RenameRowsOf(dialog), before) << csv;
            });
        }
    }
    EXPECT_EQ(Messages(host), Texts());
    const sim::AutomationServer& server = host.Spreadsheet().Server();
    ASSERT_EQ(server.saved.size(), 2U);
    EXPECT_EQ(server.saved[0].format, 56);
    ASSERT_EQ(server.opened.size(), 2U);
    EXPECT_TRUE(server.opened[0].readOnly && !server.opened[0].updatesLinks && !server.opened[0].runsMacros);
    EXPECT_EQ(host.State().user.fileQuestions[0].name, L"PUMP 重命名");
    EXPECT_EQ(host.State().user.fileQuestions[1].filter,
              L"Microsoft Excel 2000(*.xls)|*.xls|所有文件(*.*)|*.*|");
}

TEST_F(KvRename, ReadsNumbersAsTheyAreShown) {
    sim::Sheet sheet;
    for (int column = 1; column <= 4; ++column) ASSERT_TRUE(sheet.Enter(2, column + 1, L"x"));
    sheet.Put(2, 5, {sim::CellKind::kNumber, 12, {}});
    sheet.Restyle({2, 5, 2, 5}, [](sim::CellStyle& style) { style.numberFormat = L"00000000000000"; });
    ASSERT_TRUE(sheet.Enter(2, 1, L"1") && sheet.Enter(2, 2, L"BOLT"));
    sheet.Put(2, 4, {sim::CellKind::kNumber, 12, {}});
    sheet.Restyle({2, 4, 2, 4}, [](sim::CellStyle& style) { style.numberFormat = L"000000000000"; });
    ASSERT_TRUE(sim::WriteXlsx(sheet, host.WorkingDirectory() / "own.xls"));
    host.Spreadsheet().Install();
    host.AnswerFile(L"own.xls");
    host.AnswerFile(std::nullopt);
    Use([](SimDialog& dialog) {
        dialog.Press("KvLoadTab");
        EXPECT_EQ(RenameRowsOf(dialog), Rows{L"1|BOLT|x|000000000012||有"});
        dialog.Press("KvLoadTab");
        EXPECT_EQ(RenameRowsOf(dialog), Rows()) << "a cancel leaves an empty table";
        dialog.Press("UpdateRenameIni");
        EXPECT_EQ(RenameRowsOf(dialog).size(), 3U);
    });
}

TEST_F(KvRename, TellsWhyAFileCannotBeWrittenOrRead) {
    const fs::path locked = host.WorkingDirectory() / "locked.xls";
    test::WriteBytes(locked, "earlier");
    const HANDLE open = CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    host.AnswerFile(L"locked.xls");
    host.AnswerFile(L"new");
    host.AnswerFile(L"locked.xls");
    test::WriteBytes(host.WorkingDirectory() / "long.csv",
                     "1,BOLT,prt," + std::string(33, 'L') + "\r\n2,SUB,asm," + std::string(34, 'M') + "\r\n");
    host.AnswerFile(L"long.csv");
    Use([](SimDialog& dialog) {
        dialog.Press("KvExportTab").Press("KvExportTab").Press("KvLoadTab").Press("KvLoadCsv");
        EXPECT_EQ(dialog.Rows(kRenameTable).size(), 2U);
    });
    CloseHandle(open);
    EXPECT_EQ(Messages(host),
              (Texts{L"文件已在excel打开，请关闭后重试", L"无法启动Excel服务器!", L"无法启动Excel服务器!",
                     L"新名称 " + std::wstring(33, L'L') + L" 长度大于32位，名称无效，请修改后再操作"}));
    EXPECT_EQ(test::ReadBytes(locked), "earlier");
}

TEST_F(KvRename, RefusesATableOfTooManyRowsAndHasNothingToTakeBackAtFirst) {
    std::string table;
    for (int i = 0; i < 10'001; ++i) table += "1,BOLT,prt,B\r\n";
    test::WriteBytes(host.WorkingDirectory() / "huge.csv", table);
    test::WriteBytes(host.WorkingDirectory() / "ansi.csv", "1,\xD6\xE1,prt,B\r\n");
    host.AnswerFile(L"huge.csv");
    host.AnswerFile(L"ansi.csv");
    Use([](SimDialog& dialog) {
        dialog.Press("KvLoadCsv").Press("KvLoadCsv").Press("KvUndoRename");
        EXPECT_EQ(dialog.Rows(kRenameTable).size(), 0U);
    });
    EXPECT_EQ(Messages(host),
              (Texts{L"\t表格超过10000行，未加载\t", L"\t无法读取表格文件\t", L"\t没有可撤销的重命名\t"}));
}

TEST_F(KvRename, RecordsLoadedRowsOfOtherModelsAsNotFound) {
    host.AddPart(L"NUT");
    test::WriteBytes(host.WorkingDirectory() / "t.csv", "1;NUT;prt;NUT2\n2;BOLT;prt;BOLT2\n");
    host.AnswerFile(L"t.csv");
    Use([](SimDialog& dialog) { dialog.Press("KvLoadCsv").Press("StartRename"); });
    EXPECT_EQ(Messages(host), Texts{kRenameDone});
    EXPECT_TRUE(InMemory(L"NUT", ModelKind::kPart));
    EXPECT_EQ(test::LastReport(host).Reason(L"NUT"), L"当前模型中没有此模型");
    EXPECT_EQ(bolt.Name(), L"BOLT2");
}

}  // namespace
