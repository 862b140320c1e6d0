// KvBom at work: sorting, filtering, what is not listed, and the files that need no spreadsheet application.

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace {

namespace fs = std::filesystem;

constexpr char kList[] = "bom_list";

void SetColumns(const std::wstring& summed, const std::wstring& levels) {
    test::WriteSettings(L"KvBom.ini", L"[tableCols_sum]\r\ncontent=" + summed +
                                          L"\r\n[tableCols_level]\r\ncontent=" + levels + L"\r\n");
}

class KvBomWork : public testing::Test {
protected:
    void Use(sim::SimModel& top, const std::function<void(sim::SimDialog&)>& script) {
        host.Open(top);
        host.OnDialog("KvBom", script);
        EXPECT_EQ(host.Run("KvBom"), PRO_TK_NO_ERROR);
    }
    // PUMP of SUB (twice; two bolts each) and screws of several sizes.
    sim::SimModel& Pump() {
        sim::SimModel& pump = host.AddAssembly(L"PUMP");
        sim::SimModel& bolt = host.AddPart(L"BOLT").SetParameter(L"SIZE", std::wstring(L"M10"));
        sim::SimModel& sub = host.AddAssembly(L"SUB").Place(bolt, 2);
        sub.SetParameter(L"SIZE", std::wstring(L"m2"));
        pump.Place(sub, 2);
        pump.Place(
            host.AddPart(L"NUT").SetParameter(L"MASS", 10.5).SetParameter(L"SIZE", std::wstring(L"M2")));
        pump.Place(host.AddPart(L"PIN").SetParameter(L"MASS", 9.0));
        return pump;
    }
    static std::string Shown(sim::SimDialog& dialog) {
        std::string rows;
        for (const std::string& row : dialog.Rows(kList)) rows += row + " ";
        return rows;
    }
    static std::string ChangesOf(sim::SimDialog& changes) {
        std::string told = sim::Utf8(changes.Text("ChangeCount"));
        for (const std::string& row : changes.Rows("change_list")) {
            told += "|";
            for (const char* column : {"kind", "name", "before", "after"})
                told += " " + sim::Utf8(changes.Cell("change_list", row, column));
        }
        return told;
    }
    std::string FileText(const fs::path& name) { return test::ReadBytes(host.WorkingDirectory() / name); }

    sim::SimHost host;
};

TEST_F(KvBomWork, SortsByATitleUpDownAndNot) {
    SetColumns(L"SIZE,MASS,模型数量", L"层级2");
    Use(Pump(), [&](sim::SimDialog& dialog) {
        ASSERT_EQ(Shown(dialog), "1 2 3 4 ");  // SUB m2, BOLT M10, NUT M2 10.500, PIN 9.000
        const std::vector<std::pair<std::string, std::string>> clicks = {
            {"param1", "1 3 2 4 "}, {"param1", "2 1 3 4 "}, {"param1", "1 2 3 4 "}, {"param2", "4 3 1 2 "},
            {"param2", "3 4 1 2 "}, {"param3", "3 4 1 2 "}, {"num", "1 2 3 4 "},    {"num", "4 3 2 1 "}};
        for (const auto& [column, rows] : clicks) {
            dialog.ClickTitle(kList, column);
            EXPECT_EQ(Shown(dialog), rows) << column;
        }
        EXPECT_EQ(dialog.Cell(kList, "1", "num"), L"1");
        EXPECT_EQ(dialog.CellColor(kList, "1", "param1"), 17) << "the marks move with their rows";
        EXPECT_EQ(dialog.CellColor(kList, "2", "param1"), -1);
        dialog.DoubleClick(kList, "1", "num").Press("KvLoadBom");
        EXPECT_EQ(Shown(dialog), "4 3 2 1 ") << "a new load is seen the same way";
        dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom");
        EXPECT_EQ(Shown(dialog), "1 2 3 4 5 ");
    });
}

TEST_F(KvBomWork, KeepsItemCodesInTheirOrder) {
    sim::SimModel& pump = host.AddAssembly(L"PUMP");
    for (int i = 1; i <= 11; ++i) pump.Place(host.AddPart(L"P" + std::to_wstring(i)));
    SetColumns(L"模型名称", L"层级2");
    Use(pump, [&](sim::SimDialog& dialog) {
        dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom").ClickTitle(kList, "param1");
        EXPECT_EQ(Shown(dialog), "1 2 3 4 5 6 7 8 9 10 11 12 ");
    });
}

TEST_F(KvBomWork, FiltersByAnyCellAndCounts) {
    SetColumns(L"SIZE,模型名称", L"");
    Use(Pump(), [&](sim::SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("BomShown"), L"显示 4 / 4");
        dialog.Type("BomFilter", L"m2").Press("KvFilterBom");
        EXPECT_EQ(Shown(dialog), "1 3 ");
        EXPECT_EQ(dialog.Text("BomShown"), L"显示 2 / 4");
        dialog.ClickTitle(kList, "param2");
        EXPECT_EQ(Shown(dialog), "3 1 ");
        dialog.Type("BomFilter", L"pI").Press("KvLoadBom");
        EXPECT_EQ(Shown(dialog), "4 ");
        dialog.Type("BomFilter", L"nothing").Press("KvFilterBom");
        EXPECT_EQ(dialog.Text("BomShown"), L"显示 0 / 4");

        // An export is the whole list in its own order.
        host.AnswerFile((host.WorkingDirectory() / "all.csv").wstring());
        dialog.Press("KvExportCsv").Type("BomFilter", L"").Press("KvFilterBom");
        EXPECT_EQ(Shown(dialog), "2 3 4 1 ");
        dialog.Press("KvUpdateBomIni");
        EXPECT_EQ(dialog.Text("BomShown"), L"");
    });
    EXPECT_EQ(FileText("all.csv"),
              "\xEF\xBB\xBF序号,SIZE,模型名称,模型名称,类型\r\n1,m2,SUB,SUB,组件\r\n2,M10,BOLT,BOLT,零件\r\n"
              "3,M2,NUT,NUT,零件\r\n4,,PIN,PIN,零件\r\n");
}

TEST_F(KvBomWork, TellsWhatIsNotListed) {
    sim::SimModel& pump = host.AddAssembly(L"TOP");
    sim::SimModel& bolt = host.AddPart(L"SCREW");
    sim::SimModel& sub = host.AddAssembly(L"GROUP").Place(bolt).Place(bolt, {.status = 5});
    pump.Place(sub, 2)
        .Place(bolt, {.status = 2})
        .Place(bolt, {.status = 6})
        .Place(bolt, {.isVisible = false});
    pump.Place(host.AddSkeleton(L"SKEL")).Place(bolt, {.statusFlags = 130});
    SetColumns(L"模型名称", L"模型名称");
    const std::wstring told = L"未列出：抑制 3，未激活 2，内部 1，骨架 1";
    Use(pump, [&](sim::SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("BomLeftOut"), told);
        dialog.Choose("BomRadio", L"LevelBom");
        EXPECT_EQ(dialog.Text("BomLeftOut"), L"");
        dialog.Press("KvLoadBom");
        EXPECT_EQ(dialog.Text("BomLeftOut"), told) << "the same whichever list is shown";
    });
    Use(Pump(), [&](sim::SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("BomLeftOut"), L"未列出：无");
        // The first component of one of the two SUBs has no model.
        host.State().report.Arm({"ProAsmcompMdlGet", 2, PRO_TK_E_NOT_FOUND});
        dialog.Press("KvLoadBom");
        EXPECT_EQ(dialog.Text("BomLeftOut"), L"未列出：1 处元件缺失，其后的元件未列出");
        EXPECT_EQ(dialog.Text("BomShown"), L"显示 4 / 4");
    });
}

// ---- Comma-separated values

TEST_F(KvBomWork, WritesEveryTextIntoTheCsvAsItIs) {
    sim::SimModel& pump = Pump();
    host.State()
        .models.Find(L"NUT", sim::ModelKind::kPart)
        ->SetParameter(L"SIZE", std::wstring(L"=1,\"2\"\n3"));
    SetColumns(L"", L"层级2,SIZE");
    Use(pump, [&](sim::SimDialog& dialog) {
        dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom").ClickTitle(kList, "param2");
        host.AnswerFile((host.WorkingDirectory() / "levels.csv").wstring());
        dialog.Press("KvExportCsv");
    });
    EXPECT_EQ(host.State().user.fileQuestions[0].name, L"PUMP BOM.csv");
    EXPECT_EQ(
        FileText("levels.csv"),
        "\xEF\xBB\xBF序号,层级2,SIZE,模型名称,类型,上级路径\r\n1,0,,PUMP,组件,\r\n2,1,m2,SUB,组件,PUMP\r\n"
        "3,1.1,M10,BOLT,零件,PUMP/SUB\r\n4,2,\"=1,\"\"2\"\"\n3\",NUT,零件,PUMP\r\n5,3,,PIN,零件,PUMP\r\n");
    EXPECT_EQ(test::Messages(host), test::Texts());
}

TEST_F(KvBomWork, LeavesNoPartOfAFileThatCannotBeWritten) {
    SetColumns(L"模型名称", L"模型名称");
    const fs::path folder = test::MakeFolder(host, "lists");
    const fs::path file = folder / "list.csv";
    test::WriteBytes(file, "earlier");
    const auto files = [&] {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    };
    sim::SimModel& pump = Pump();
    for (const char* call : {"WriteFile", "MoveFileExW", "CreateFileW"}) {
        host.State().user.boxes.clear();
        Use(pump, [&](sim::SimDialog& dialog) {
            host.AnswerFile(file.wstring());
            ASSERT_TRUE(sim::FailWindowsCall(call, 1, ERROR_DISK_FULL));
            dialog.Press("KvExportCsv");
        });
        EXPECT_EQ(test::Messages(host), test::Texts{L"文件未能写入：\n" + file.wstring()}) << call;
        EXPECT_EQ(test::ReadBytes(file), "earlier") << call;
        EXPECT_EQ(files(), 1) << call;
    }
    Use(pump, [&](sim::SimDialog& dialog) {
        dialog.Press("KvUpdateBomIni").Press("KvExportCsv");
        EXPECT_EQ(host.LastMessage(), L"\t表格中没有数据，未导出\t");
    });
}

TEST_F(KvBomWork, OffersTheCsvWhereTheApplicationDoesNotStart) {
    SetColumns(L"模型数量", L"");
    Use(Pump(), [&](sim::SimDialog& dialog) {
        host.AnswerFile((host.WorkingDirectory() / "list.xlsx").wstring());
        host.AnswerBox(IDYES);
        dialog.Press("KvExportBom");
    });
    EXPECT_EQ(test::Messages(host), (test::Texts{L"创建Excel失败", L"是否改为导出CSV文件？"}));
    EXPECT_TRUE(FileText("list.csv").ends_with("4,1,PIN,零件\r\n"));
    EXPECT_FALSE(fs::exists(host.WorkingDirectory() / "list.xlsx"));
}

// ---- The page, the comparison, the choice of columns

TEST_F(KvBomWork, WritesBothListsOnOnePageAndOpensIt) {
    SetColumns(L"模型数量", L"模型名称,SIZE");
    const fs::path file = host.WorkingDirectory() / "list.html";
    Use(Pump(), [&](sim::SimDialog& dialog) {
        dialog.Type("BomFilter", L"PIN").Press("KvFilterBom");
        host.AnswerFile(file.wstring());
        dialog.Press("KvExportPage");
    });
    const std::string page = test::ReadBytes(file);
    const auto rows = [&](std::string_view from) {
        const std::size_t begin = page.find(from);
        const std::size_t end = page.find("</section>", begin);
        std::size_t count = 0;
        for (std::size_t at = page.find("<tr data", begin); at < end; at = page.find("<tr data", at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(rows("data-form=\"levels\""), 5u);
    EXPECT_EQ(rows("data-form=\"summed\""), 4u) << "the filter is a matter of the dialog";
    EXPECT_NE(page.find("<tr data-l=\"2\" data-n=\"BOLT\" data-q=\"2\"><td>3</td><td "
                        "class=\"t\">BOLT</td><td>M10</td></tr>"),
              std::string::npos);
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_EQ(host.State().user.started[0].file, file.wstring());

    test::WriteBytes(file, "earlier");
    Use(*host.State().models.current, [&](sim::SimDialog& dialog) {
        host.AnswerFile(file.wstring());
        ASSERT_TRUE(sim::FailWindowsCall("WriteFile", 1, ERROR_DISK_FULL));
        dialog.Press("KvExportPage");
    });
    EXPECT_EQ(host.LastMessage(), L"文件未能写入：\n" + file.wstring());
    EXPECT_EQ(test::ReadBytes(file), "earlier");
}

TEST_F(KvBomWork, ComparesWithAnEarlierFile) {
    SetColumns(L"SIZE", L"SIZE");
    const std::wstring csv = (host.WorkingDirectory() / "old.csv").wstring();
    const std::wstring page = (host.WorkingDirectory() / "old.html").wstring();
    sim::SimModel& pump = Pump();
    Use(pump, [&](sim::SimDialog& dialog) {
        host.AnswerFile(csv);
        host.AnswerFile(page);
        dialog.Press("KvExportCsv").Press("KvExportPage");
    });
    pump.Place(host.AddPart(L"WASHER")).Place(*host.State().models.Find(L"NUT", sim::ModelKind::kPart));
    host.State().models.Find(L"BOLT", sim::ModelKind::kPart)->SetParameter(L"SIZE", std::wstring(L"M12"));
    SetColumns(L"SIZE,MASS", L"SIZE");

    const auto lines = [&](const std::wstring& file, const wchar_t* form) {
        std::string told;
        Use(pump, [&](sim::SimDialog& dialog) {
            dialog.Choose("BomRadio", form).Press("KvLoadBom");
            host.AnswerFile(file);
            host.OnDialog("KvBomCompare", [&](sim::SimDialog& changes) {
                told = ChangesOf(changes);
                host.AnswerFile((host.WorkingDirectory() / "changes.html").wstring());
                changes.Press("KvExportChanges");
            });
            dialog.Press("KvCompareBom");
        });
        return told;
    };
    EXPECT_EQ(lines(csv, L"SumBom"), "新增 1，列 1；只有新清单有的列：MASS| 列 BOLT M10 M12| 新增 WASHER  ");
    EXPECT_EQ(lines(page, L"SumBom"),
              "新增 1，数量 1，列 1；只有新清单有的列：MASS| 列 BOLT M10 M12| 数量 NUT 1 2| 新增 WASHER  ");
    EXPECT_EQ(lines(page, L"LevelBom"), "新增 1，数量 1，列 1| 列 BOLT M10 M12| 数量 NUT 1 2| 新增 WASHER  ");
    EXPECT_NE(FileText("changes.html").find("<td>数量</td><td>NUT</td>"), std::string::npos);

    // Refused with the reason.
    test::WriteBytes(host.WorkingDirectory() / "other.csv", "a,b\r\n");
    test::WriteBytes(host.WorkingDirectory() / "gbk.csv", "\xC4\xA3\xD0\xCD\r\n");
    const std::pair<const char*, const wchar_t*> refused[] = {
        {"other.csv", L"所选文件不是本命令导出的清单"},
        {"gbk.csv", L"所选文件不是UTF-8文本"},
        {"gone.csv", L"文件无法读取"},
        {"changes.html", L"所选文件不是本命令导出的清单"},
        {"old.csv", L"旧清单的形式不同"}};
    for (const auto& [name, reason] : refused) {
        Use(pump, [&, file = name](sim::SimDialog& dialog) {
            dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom");
            host.AnswerFile((host.WorkingDirectory() / file).wstring());
            dialog.Press("KvCompareBom");
        });
        EXPECT_TRUE(host.LastMessage().starts_with(reason)) << name;
    }
}

TEST_F(KvBomWork, ChoosesColumnsAmongTheModelsParameters) {
    SetColumns(L"模型数量,OLD", L"");
    sim::SimModel& pump = Pump();
    host.State().models.Find(L"NUT", sim::ModelKind::kPart)->SetParameter(L"P10", 1).SetParameter(L"P9", 1);
    Use(pump, [&](sim::SimDialog& dialog) {
        host.OnDialog("KvBomColumns", [&](sim::SimDialog& choice) {
            std::string offers;
            for (const std::string& row : choice.Rows("column_list"))
                for (const char* column : {"tick", "title", "models"})
                    offers +=
                        sim::Utf8(choice.Cell("column_list", row, column)) + (column[0] == 'm' ? "|" : " ");
            EXPECT_EQ(offers, "√ 模型数量 -|√ OLD 0| 模型名称 -| MASS 2| P9 1| P10 1| SIZE 3|");
            choice.Press("KvColumnUp").DoubleClick("column_list", "2", "title");
            choice.DoubleClick("column_list", "7", "tick").Press("KvColumnUp").Press("KvColumnUp");
            EXPECT_EQ(choice.SelectedRows("column_list"), std::vector<std::string>{"5"});
            choice.SelectRows("column_list", {"1"}).Press("KvColumnUp").Press("KvColumnDown");
            choice.Press("KvColumnCopy").Press("ApplyBt");
        });
        dialog.Press("KvColumnsBom");
        EXPECT_EQ(dialog.ColumnTitles(kList), (std::vector<std::wstring>{L"序号", L"模型数量", L"SIZE"}));
        EXPECT_EQ(dialog.Cell(kList, "2", "param2"), L"M10");
        EXPECT_EQ(host.State().user.clipboard, L"content=模型数量,SIZE");

        host.OnDialog("KvBomColumns", [](sim::SimDialog& choice) { choice.Press("Close"); });
        dialog.Press("KvColumnsBom");
        EXPECT_EQ(dialog.ColumnTitles(kList).size(), 3u) << "cancelled";
    });
    EXPECT_EQ(test::Messages(host), test::Texts());
    EXPECT_EQ(test::ReadSettings(L"KvBom.ini", L"tableCols_sum", L"content"), L"模型数量,OLD");
}

TEST_F(KvBomWork, RefusesToCopyALineThatWouldBeCut) {
    std::wstring titles;
    for (int i = 0; i < 9; ++i) titles += std::wstring(27, L'T') + std::to_wstring(i) + L",";
    SetColumns(titles + L"T9", L"");  // as many as are read
    Use(Pump(), [&](sim::SimDialog& dialog) {
        host.OnDialog("KvBomColumns", [&](sim::SimDialog& choice) {
            choice.DoubleClick("column_list", std::to_string(choice.Rows("column_list").size()), "title");
            choice.Press("KvColumnCopy");
        });
        dialog.Press("KvColumnsBom");
    });
    EXPECT_EQ(test::Messages(host), test::Texts{L"\t列设置超过254个字符，未复制！\t"});
}

}  // namespace
