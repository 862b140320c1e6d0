// KvBom: the two lists, their columns, opening a row's model, and the workbook.

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/xlsx.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::Utf8;
using test::Messages;
using test::Texts;

constexpr char kTable[] = "bom_list";
constexpr wchar_t kNoAssembly[] = L"此功能仅组件/制造环境可用！";
constexpr wchar_t kLocked[] = L"文件已在excel打开，请关闭后重试";
constexpr wchar_t kTooManyColumns[] = L"bom表格列数不得大于26列";
constexpr wchar_t kNoApplication[] = L"创建Excel失败";
constexpr wchar_t kOffer[] = L"是否改为导出CSV文件？";

void SetTitles(const std::wstring& summed, const std::wstring& levels = L"") {
    test::WriteSettings(L"KvBom.ini", L"[tableCols_sum]\r\ncontent=" + summed +
                                          L"\r\n[tableCols_level]\r\ncontent=" + levels + L"\r\n");
}

// The rows in the shown order, cells with '|' between them, '*' before a cell with an assembly's colour.
using Rows = std::vector<std::wstring>;
Rows RowsOf(SimDialog& dialog) {
    Rows rows;
    const std::size_t columns = dialog.ColumnTitles(kTable).size();
    for (const std::string& row : dialog.Rows(kTable)) {
        std::wstring line;
        for (std::size_t i = 0; i < columns; ++i) {
            const std::string column = i == 0 ? "num" : "param" + std::to_string(i);
            line += i == 0 ? L"" : L"|";
            line += dialog.CellColor(kTable, row, column) == 17 ? L"*" : L"";
            line += dialog.Cell(kTable, row, column);
        }
        rows.push_back(line);
    }
    return rows;
}

class KvBom : public testing::Test {
protected:
    void Use(SimModel& top, const std::function<void(SimDialog&)>& script) {
        host.Open(top);
        host.OnDialog("KvBom", script);
        EXPECT_EQ(host.Run("KvBom"), PRO_TK_NO_ERROR);
    }
    Rows Summed(SimModel& top) {
        Rows rows;
        Use(top, [&](SimDialog& dialog) { rows = RowsOf(dialog); });
        return rows;
    }
    Rows Levels(SimModel& top, const std::wstring& limit = L"25") {
        Rows rows;
        Use(top, [&](SimDialog& dialog) {
            dialog.Choose("BomRadio", L"LevelBom").Choose("LevelOption", limit).Press("KvLoadBom");
            rows = RowsOf(dialog);
        });
        return rows;
    }
    SimModel& Pump() {
        SimModel& pump = host.AddAssembly(L"PUMP");
        SimModel& sub = host.AddAssembly(L"SUB");
        SimModel& bolt = host.AddPart(L"BOLT");
        sub.Place(bolt, 2);
        return pump.Place(sub, 2).Place(bolt);
    }

    SimHost host;
};

// ---- The lists

TEST_F(KvBom, ShowsReservedTitlesAndParametersInBothLists) {
    SimModel& pump = Pump();
    SimModel& bolt = *host.State().models.Find(L"BOLT", sim::ModelKind::kPart);
    bolt.SetParameter(L"层级1", std::wstring(L"own")).SetParameter(L"层级2", 7);
    bolt.SetParameter(L"Mass", 0.0125).SetParameter(L"BOUGHT", true).SetParameter(L"NOTE", std::wstring());
    SimModel& sub = *host.State().models.Find(L"SUB", sim::ModelKind::kAssembly);
    sub.SetParameter(L"BOUGHT", false).SetParameter(L"MASS", -2.0);
    const std::wstring titles = L"模型名称,模型数量,层级1,层级2,MASS,bought,NOTE,MISSING,模型名称x";
    SetTitles(titles, titles);

    EXPECT_EQ(Summed(pump), (Rows{L"*1|*SUB|*2|||*-2.000|*否|||", L"2|BOLT|5|own|7|0.013|是|||"}));
    EXPECT_EQ(Levels(pump), (Rows{L"*1|*PUMP|*1|*0|*0|||||", L"*2|*SUB|*2|*1|*1|*-2.000|*否|||",
                                  L"3|BOLT|2|2|1.1|0.013|是|||", L"4|BOLT|1|1|2|0.013|是|||"}));
}

TEST_F(KvBom, CountsWhatIsActiveAndVisible) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& sub = host.AddAssembly(L"SUB").Place(bolt);
    SimModel& boltSet = host.AddAssembly(L"BOLT").Place(bolt, 2);
    pump.AddFeature(917).Place(host.AddSkeleton(L"SKEL")).Place(sub).Place(boltSet).Place(bolt);
    pump.Place(bolt, {.status = 5}).Place(sub, {.status = 1}).Place(bolt, {.isVisible = false});
    pump.Place(bolt, {.statusFlags = 130}).Place(host.AddPart(L"NUT"), {.isHidden = true});
    pump.Place(host.AddSkeleton(L"SKEL2")).Place(boltSet);
    SetTitles(L"模型名称，模型数量", L"层级2, 模型名称, 模型数量");

    // The part and the assembly BOLT are two rows of the summed list, and one item under one parent.
    EXPECT_EQ(Summed(pump), (Rows{L"*1|*SUB|*1", L"2|BOLT|6", L"*3|*BOLT|*2", L"4|NUT|1"}));
    EXPECT_EQ(Levels(pump), (Rows{L"*1|*0|*PUMP|*1", L"*2|*2|*SUB|*1", L"3|2.1|BOLT|1", L"*4|*3|*BOLT|*3",
                                  L"5|3.1|BOLT|2", L"6|4|NUT|1"}));
    EXPECT_EQ(Levels(pump, L"0"), (Rows{L"*1|*0|*PUMP|*1"}));
    EXPECT_EQ(Levels(pump, L"1"),
              (Rows{L"*1|*0|*PUMP|*1", L"*2|*2|*SUB|*1", L"*3|*3|*BOLT|*3", L"4|4|NUT|1"}));
}

TEST_F(KvBom, EndsOnAnAssemblyThatContainsItself) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(sub).Place(host.AddPart(L"BOLT")).Place(pump);
    pump.Place(sub).Place(pump);
    SetTitles(L"模型名称,模型数量", L"层级2,模型名称,模型数量");
    EXPECT_EQ(Summed(pump), (Rows{L"*1|*SUB|*2", L"2|BOLT|1", L"*3|*PUMP|*2"}));
    EXPECT_EQ(Levels(pump), (Rows{L"*1|*0|*PUMP|*1", L"*2|*1|*SUB|*1", L"*3|*1.1|*SUB|*1", L"4|1.2|BOLT|1",
                                  L"*5|*1.3|*PUMP|*1", L"*6|*2|*PUMP|*1"}));
}

TEST_F(KvBom, NeedsAnAssemblyWithTwoComponents) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& single = host.AddAssembly(L"SINGLE").Place(bolt);
    host.Open(single);
    EXPECT_EQ(host.Run("KvBom"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), Texts());

    host.Open(bolt, sim::HostMode::kAssembly);
    EXPECT_EQ(host.Run("KvBom"), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(Messages(host), Texts{kNoAssembly});

    SetTitles(L"模型名称,模型数量");
    SimModel& manufacturing = host.AddManufacturing(L"MFG", single.Place(bolt));
    EXPECT_EQ(Summed(manufacturing), Rows{L"1|BOLT|2"});
    Use(manufacturing, [](SimDialog& dialog) { dialog.DoubleClick(kTable, "1", "num"); });
    EXPECT_EQ(host.State().models.current, &manufacturing);
}

// ---- The dialog

TEST_F(KvBom, RebuildsTheColumnsForTheChosenForm) {
    SetTitles(L"模型数量", L"层级1,层级2");
    Use(Pump(), [&](SimDialog& dialog) {
        using Titles = std::vector<std::wstring>;
        EXPECT_EQ(dialog.ColumnTitles(kTable), (Titles{L"序号", L"模型数量"}));
        EXPECT_FALSE(dialog.IsSensitive("LevelOption"));
        EXPECT_EQ(dialog.Drawn("DrawingArea"), std::vector<std::string>{"KvPicture.gif"});

        dialog.Choose("BomRadio", L"LevelBom");
        EXPECT_EQ(dialog.ColumnTitles(kTable), (Titles{L"序号", L"层级1", L"层级2"}));
        EXPECT_TRUE(dialog.IsSensitive("LevelOption"));
        EXPECT_EQ(RowsOf(dialog), Rows());
        dialog.Press("KvLoadBom").Press("KvLoadBom");
        EXPECT_EQ(RowsOf(dialog).size(), 4u);

        SetTitles(L"模型名称", L"模型名称,层级2,层级1");
        dialog.Press("KvUpdateBomIni");
        EXPECT_EQ(dialog.ColumnTitles(kTable), (Titles{L"序号", L"模型名称", L"层级2", L"层级1"}));
        EXPECT_EQ(RowsOf(dialog), Rows());

        dialog.Choose("BomRadio", L"SumBom").Press("KvLoadBom");
        EXPECT_EQ(RowsOf(dialog), (Rows{L"*1|*SUB", L"2|BOLT"}));
        EXPECT_FALSE(dialog.IsSensitive("LevelOption"));
        dialog.Press("KvOpenBomIni");
        fs::remove(test::SettingsFile(L"KvBom.ini"));
        dialog.Press("KvUpdateBomIni").Press("KvLoadBom");
        EXPECT_EQ(RowsOf(dialog), (Rows{L"*1", L"2"})) << "without settings only the numbers";
    });
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_EQ(host.State().user.started[0].file,
              L"notepad.exe " + test::SettingsFile(L"KvBom.ini").make_preferred().wstring());
}

TEST_F(KvBom, TakesAnySettings) {
    std::wstring hundred;
    for (int i = 0; i < 100; ++i) hundred += L"T" + std::to_wstring(i) + L",";
    const std::vector<std::pair<std::wstring, std::size_t>> cases = {
        {hundred, 66},  // what the first 254 characters hold
        {std::wstring(300, L'x') + L",模型名称", 1},
        {L",,，，, ,", 0},
        {L"模型名称,模型名称", 2},
        {L"a b,\"quoted\",50%,'", 4},
    };
    SimModel& pump = Pump();
    for (const auto& [titles, columns] : cases) {
        SetTitles(titles);
        Use(pump, [count = columns, text = titles](SimDialog& dialog) {
            EXPECT_EQ(dialog.ColumnTitles(kTable).size(), count + 1) << Utf8(text);
            EXPECT_EQ(dialog.Rows(kTable).size(), 2u);
        });
    }
    EXPECT_EQ(Messages(host), Texts());
}

TEST_F(KvBom, OpensTheModelOfARow) {
    SimModel& pump = Pump();
    SimModel& twin = host.AddPart(L"SUB");
    pump.Place(twin);
    SetTitles(L"模型数量,模型名称", L"层级1");
    const auto shown = [this] { return host.State().models.current; };
    Use(pump, [&](SimDialog& dialog) {
        ASSERT_EQ(RowsOf(dialog), (Rows{L"*1|*2|*SUB", L"2|5|BOLT", L"3|1|SUB"}));
        dialog.SortRows(kTable, "param2").DoubleClick(kTable, "3", "num");
        EXPECT_EQ(shown(), &twin);
        EXPECT_TRUE(dialog.IsAboveActiveWindow());
        dialog.FilterRows(kTable, "param2", L"SUB").SortRows(kTable, "num", true);
        EXPECT_EQ(dialog.Rows(kTable), (std::vector<std::string>{"3", "1"}));
        dialog.DoubleClick(kTable, "1", "param1");
        EXPECT_EQ(Utf8(shown()->Name()), "SUB");
        EXPECT_EQ(shown()->Kind(), sim::ModelKind::kAssembly);

        // The list is the assembly's again, not that of the part which is shown now.
        dialog.ShowAllRows(kTable).DoubleClick(kTable, "2", "num").Press("KvLoadBom");
        EXPECT_EQ(shown(), &pump);
        EXPECT_EQ(RowsOf(dialog), (Rows{L"*1|*2|*SUB", L"2|5|BOLT", L"3|1|SUB"}));
        // A model that the user has opened meanwhile is another matter.
        host.State().models.current = &twin;
        dialog.Press("KvLoadBom");
        EXPECT_EQ(RowsOf(dialog), Rows());
        EXPECT_EQ(Messages(host), Texts{kNoAssembly});
        host.State().models.current = &pump;
        dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom").DoubleClick(kTable, "3", "num");
        EXPECT_EQ(shown(), &pump) << "no column names the model";
        dialog.Choose("BomRadio", L"SumBom").Press("KvLoadBom").DoubleClick(kTable, "3", "num");
        EXPECT_EQ(shown(), &twin);
    });
    EXPECT_EQ(shown(), &pump);
}

// ---- The workbook

class KvBomExport : public KvBom {
protected:
    void SetUp() override { host.Spreadsheet().Install(); }

    // Exports the summed list of PUMP to `file` of the working directory.
    fs::path Export(const fs::path& file) {
        const fs::path path = host.WorkingDirectory() / file;
        SimModel* pump = host.State().models.Find(L"PUMP", sim::ModelKind::kAssembly);
        Use(pump == nullptr ? Pump() : *pump, [&](SimDialog& dialog) {
            host.AnswerFile(path.wstring());
            dialog.Press("KvExportBom");
        });
        return path;
    }
    std::vector<fs::path> Files() const {
        std::vector<fs::path> files;
        for (const fs::directory_entry& entry : fs::directory_iterator(host.WorkingDirectory()))
            files.push_back(entry.path().filename());
        return files;
    }
};

TEST_F(KvBomExport, WritesTheTableAsTexts) {
    SimModel& pump = Pump();
    SimModel& bolt = *host.State().models.Find(L"BOLT", sim::ModelKind::kPart);
    bolt.SetParameter(L"A", std::wstring(L"=1+1")).SetParameter(L"B", std::wstring(L"0012"));
    bolt.SetParameter(L"C", std::wstring(L"2024-01-02"))
        .SetParameter(L"D", std::wstring(L"1234567890123456"));
    host.State().models.Find(L"SUB", sim::ModelKind::kAssembly)->SetParameter(L"B", std::wstring(L"护罩"));
    SetTitles(L"模型名称,模型数量,A,B,C,D");
    const fs::path path = host.WorkingDirectory() / L"清单 ü1";
    Use(pump, [&](SimDialog& dialog) {
        dialog.SortRows(kTable, "num", true);
        host.AnswerFile(path.wstring());
        dialog.Press("KvExportBom");
    });

    const std::optional<sim::Sheet> sheet = sim::ReadXlsx(path.wstring() + L".xlsx");
    ASSERT_TRUE(sheet);
    const std::vector<std::vector<std::wstring>> expected = {
        {L"PUMP BOM"},
        {L"序号", L"模型名称", L"模型数量", L"A", L"B", L"C", L"D"},
        {L"1", L"SUB", L"2", L"", L"护罩", L"", L""},
        {L"2", L"BOLT", L"5", L"=1+1", L"0012", L"2024-01-02", L"1234567890123456"}};
    for (int row = 1; row <= 4; ++row) {
        const auto& texts = expected[static_cast<std::size_t>(row - 1)];
        for (int column = 1; column <= static_cast<int>(texts.size()); ++column) {
            const sim::CellValue& value = sheet->Value(row, column);
            EXPECT_EQ(Utf8(value.text), Utf8(texts[static_cast<std::size_t>(column - 1)]));
            EXPECT_TRUE(value.text.empty() || value.kind == sim::CellKind::kText);
            // Only what is written of an assembly is marked.
            const bool marked = row == 3 && !value.text.empty();
            EXPECT_EQ(sheet->Style(row, column).fill == sim::PaletteColour(35), marked)
                << row << "," << column;
        }
    }
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_EQ(host.State().user.started[0].verb, L"open");
    EXPECT_EQ(host.State().user.started[0].file, path.wstring() + L".xlsx");
    ASSERT_EQ(host.State().user.fileQuestions.size(), 1u);
    const sim::FileQuestion& question = host.State().user.fileQuestions[0];
    EXPECT_EQ(question.filter, L"EXCEL文件(*.xlsx)|*.xlsx| All Files (*.*) |*.*|");
    EXPECT_EQ(question.flags & (OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT),
              static_cast<unsigned long>(OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT));
    wchar_t desktop[MAX_PATH] = {};
    ASSERT_TRUE(SHGetSpecialFolderPathW(nullptr, desktop, CSIDL_DESKTOPDIRECTORY, FALSE));
    EXPECT_EQ(question.folder, desktop);
    EXPECT_EQ(question.extension, L"xlsx");
    EXPECT_FALSE(question.hasOwner) << "no window is active";
    EXPECT_EQ(host.Spreadsheet().Server().Calls("Application.UserControl"), 1);
    EXPECT_EQ(Messages(host), Texts());
}

TEST_F(KvBomExport, ReplacesAnEarlierWorkbook) {
    test::WriteBytes(host.WorkingDirectory() / "bom.xlsx", "earlier");
    EXPECT_TRUE(sim::ReadXlsx(Export("bom.xlsx")));
    EXPECT_EQ(Files(), std::vector<fs::path>{"bom.xlsx"});
    // What cannot be set aside is replaced in its place.
    ASSERT_TRUE(sim::FailWindowsCall("MoveFileExW", 1, ERROR_ACCESS_DENIED));
    Export("bom.xlsx");
    EXPECT_EQ(Files(), std::vector<fs::path>{"bom.xlsx"});
}

TEST_F(KvBomExport, AsksInFrontOfTheActiveWindowAndTakesTheExtensionInAnyLetterCase) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, nullptr,
                                        nullptr, nullptr, nullptr);
    SetActiveWindow(window);
    ASSERT_EQ(GetActiveWindow(), window);
    Export("bom.XLSX");
    EXPECT_TRUE(host.State().user.fileQuestions[0].hasOwner);
    EXPECT_EQ(Files(), std::vector<fs::path>{"bom.XLSX"});
    DestroyWindow(window);
}

TEST(KvBomSettings, AreEditedUnderAnyPath) {
    const test::TempDirectory apart;
    sim::HostSetup setup;
    setup.pluginHome = apart.Path() / L"도면";
    test::CopyPluginHome(setup.pluginHome);
    SimHost korean(setup);
    korean.Open(korean.AddAssembly(L"PUMP").Place(korean.AddPart(L"BOLT"), 2));
    korean.OnDialog("KvBom", [](SimDialog& dialog) { dialog.Press("KvOpenBomIni"); });
    EXPECT_EQ(korean.Run("KvBom"), PRO_TK_NO_ERROR);
    ASSERT_EQ(korean.State().user.started.size(), 1u);
    EXPECT_EQ(korean.State().user.started[0].file, L"notepad.exe");
    EXPECT_EQ(fs::path(korean.State().user.started[0].parameters).make_preferred(),
              (setup.pluginHome / "KVconfig" / "KvBom.ini").make_preferred());
}

// Whatever refuses, an earlier workbook stays as it is and nothing else is left in its folder.
TEST_F(KvBomExport, RefusesWithTheReasonAndKeepsAnEarlierWorkbook) {
    const fs::path earlier = host.WorkingDirectory() / "bom.xlsx";
    test::WriteBytes(earlier, "earlier");
    const auto expectRefused = [&](const Texts& messages) {
        host.State().user.boxes.clear();
        Export("bom.xlsx");
        EXPECT_EQ(Messages(host), messages);
        EXPECT_EQ(test::ReadBytes(earlier), "earlier");
        EXPECT_EQ(Files(), std::vector<fs::path>{"bom.xlsx"});
        EXPECT_TRUE(host.State().user.started.empty());
    };
    std::wstring titles;
    for (int i = 1; i <= 26; ++i) titles += L"T" + std::to_wstring(i) + L",";
    SetTitles(titles);
    expectRefused({kTooManyColumns});
    EXPECT_EQ(host.Spreadsheet().Server().Calls(), 0);

    const HANDLE open =
        CreateFileW(earlier.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    expectRefused({kLocked});
    CloseHandle(open);
    // A file that the user may change but not own is no locked one.
    EXPECT_TRUE(sim::FailWindowsCall("CreateFileW", 1, ERROR_ACCESS_DENIED));
    expectRefused({kTooManyColumns});
    // One that refuses both ways of opening is.
    EXPECT_TRUE(sim::FailWindowsCall("CreateFileW", 1, ERROR_ACCESS_DENIED, 2));
    expectRefused({kLocked});

    SetTitles(L"模型名称");
    host.Spreadsheet().Remove();
    host.AnswerBox(IDNO);
    expectRefused({kNoApplication, kOffer});
    EXPECT_EQ(host.Boxes().front().flags & MB_ICONMASK, static_cast<unsigned>(MB_ICONEXCLAMATION));
    host.Spreadsheet().Install();
    host.Spreadsheet().Server().RefuseCreation(CO_E_SERVER_EXEC_FAILURE);
    host.AnswerBox(IDNO);
    expectRefused({kNoApplication, kOffer});
    host.Spreadsheet().Server().Reset();
    host.Spreadsheet().Server().RefuseCreation(S_OK);

    // A folder that is gone, and a user who thinks better of it.
    Export(fs::path("gone") / "bom.xlsx");
    Use(*host.State().models.current, [&](SimDialog& dialog) {
        host.AnswerFile(std::nullopt);
        dialog.Press("KvExportBom");
    });
    EXPECT_EQ(Files(), std::vector<fs::path>{"bom.xlsx"});
    EXPECT_TRUE(host.State().user.started.empty());
}

TEST_F(KvBomExport, ProposesANameAndAsksBeforeItReplacesTheLongerOne) {
    Export("bom.txt");
    EXPECT_EQ(host.State().user.fileQuestions[0].name, L"PUMP BOM.xlsx");
    EXPECT_EQ(Files(), std::vector<fs::path>{"bom.txt.xlsx"});
    const std::string first = test::ReadBytes(host.WorkingDirectory() / "bom.txt.xlsx");
    test::WriteBytes(host.WorkingDirectory() / "bom.txt.xlsx", "earlier");
    host.AnswerBox(IDNO);
    Export("bom.txt");
    EXPECT_EQ(test::ReadBytes(host.WorkingDirectory() / "bom.txt.xlsx"), "earlier");
    host.AnswerBox(IDYES);
    Export("bom.txt");
    EXPECT_EQ(test::ReadBytes(host.WorkingDirectory() / "bom.txt.xlsx").size(), first.size());
}

TEST_F(KvBomExport, TellsWhichCellsTheWorkbookDoesNotHold) {
    SetTitles(L"模型名称,=(");
    host.Spreadsheet().Server().RefuseText(L"=(");
    Export("bom.xlsx");
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_TRUE(Messages(host)[0].starts_with(L"1 个单元格未能写入工作簿，详情见报告：\n"));
    EXPECT_EQ(test::LastReport(host).Reason(L"'=( 0"), L"文件无法写入");
}

TEST_F(KvBomExport, ExportsTheStartingAssemblyAfterADoubleClick) {
    SetTitles(L"模型名称");
    Use(Pump(), [&](SimDialog& dialog) {
        dialog.DoubleClick(kTable, "2", "num");
        host.AnswerFile((host.WorkingDirectory() / "bom.xlsx").wstring());
        dialog.Press("KvExportBom");
    });
    EXPECT_EQ(host.State().user.fileQuestions[0].name, L"PUMP BOM.xlsx");
}

TEST_F(KvBomExport, ExportsNoEmptyList) {
    Use(Pump(), [&](SimDialog& dialog) {
        host.AnswerFile((host.WorkingDirectory() / "bom.xlsx").wstring());
        dialog.Press("KvUpdateBomIni").Press("KvExportBom");
    });
    EXPECT_EQ(Messages(host), Texts{L"\t表格中没有数据，未导出\t"});
    EXPECT_TRUE(Files().empty());
}

TEST_F(KvBomExport, TakesTwentySixColumns) {
    std::wstring titles;
    for (int i = 1; i <= 25; ++i) titles += L"T" + std::to_wstring(i) + L",";
    SetTitles(titles);
    const std::optional<sim::Sheet> sheet = sim::ReadXlsx(Export("wide.xlsx"));
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->Value(2, 26).text, L"T25");
    EXPECT_EQ(Messages(host), Texts());
}

TEST_F(KvBomExport, LosesNothingWhenTheApplicationBreaksOff) {
    const fs::path earlier = host.WorkingDirectory() / "bom.xlsx";
    SetTitles(L"模型名称,模型数量");
    Export("bom.xlsx");
    const long long calls = host.Spreadsheet().Server().Calls();
    ASSERT_GT(calls, 20);
    for (long long nth = 1; nth <= calls; ++nth) {
        test::WriteBytes(earlier, "earlier");
        host.State().user.started.clear();
        host.Spreadsheet().Server().Reset();
        if (nth % 2 == 0)
            host.Spreadsheet().Server().Fail({nth});
        else
            host.Spreadsheet().Server().DisconnectAt(nth);
        Export("bom.xlsx");
        // Once the copy is saved, the rest may fail.
        const bool written = !host.State().user.started.empty();
        EXPECT_EQ(test::ReadBytes(earlier) != "earlier", written) << "call " << nth;
        EXPECT_EQ(Files(), std::vector<fs::path>{"bom.xlsx"}) << "call " << nth;
    }
    EXPECT_EQ(Messages(host), Texts());
}

// ---- Reading the table

TEST_F(KvBomExport, TakesACellWithoutTextForAnEmptyOne) {
    host.State().screen.strict.unsetCellRefused = true;
    SetTitles(L"MISSING,模型名称");
    const std::optional<sim::Sheet> sheet = sim::ReadXlsx(Export("bom.xlsx"));
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->Value(4, 2).text, L"");
    EXPECT_EQ(sheet->Value(4, 3).text, L"BOLT");
}

}  // namespace
