// Cost of the bill of materials and of the quantity parameter on generated assemblies.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench.h"
#include "bom/bom_changes.h"
#include "bom/bom_compare.h"
#include "bom/bom_tree.h"
#include "model/model_count.h"
#include "simulator/cad/generate.h"
#include "simulator/report/clock.h"

namespace bench {

// Columns of both lists besides the number: two reserved ones and a parameter that every model has.
static constexpr int kColumns = 3;
static constexpr int kFileRuns = 3;
static constexpr std::wstring_view kSettings =
    L"\xFEFF[tableCols_sum]\r\ncontent=模型名称,模型数量,COATING\r\n"
    L"[tableCols_level]\r\ncontent=层级2,模型名称,COATING\r\n";

// Replaces the staged settings as long as it lives.
class OwnSettings {
public:
    explicit OwnSettings(const std::filesystem::path& home) : file_(home / "KVconfig" / "KvBom.ini") {
        std::error_code error;
        std::filesystem::copy_file(file_, Kept(), std::filesystem::copy_options::overwrite_existing, error);
        std::ofstream(file_, std::ios::binary)
            .write(reinterpret_cast<const char*>(kSettings.data()),
                   static_cast<std::streamsize>(kSettings.size() * sizeof(wchar_t)));
    }
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;
    ~OwnSettings() {
        std::error_code error;
        std::filesystem::rename(Kept(), file_, error);
    }

private:
    std::filesystem::path Kept() const { return std::filesystem::path(file_) += ".kept"; }

    std::filesystem::path file_;
};

struct ListCost {
    Series series;
    std::size_t rows = 0;
};

// A file of what is loaded: how large it gets.
struct FileCost {
    Series series;
    std::uintmax_t bytes = 0;
};

static FileCost RunFile(sim::SimHost& host, sim::SimDialog& dialog, const char* name, const char* button,
                        const char* file) {
    FileCost cost = {{name, {}, {}}, 0};
    const std::filesystem::path path = host.WorkingDirectory() / file;
    for (int i = 0; i < kFileRuns; ++i) {
        host.AnswerFile(path.wstring());
        RunAndSample(host, cost.series, [&] { dialog.Press(button); });
    }
    std::error_code error;
    cost.bytes = std::filesystem::file_size(path, error);
    return cost;
}

// files: those of the list are written as well, if somebody asks for them
static ListCost RunList(sim::SimHost& host, const char* name, const wchar_t* form,
                        std::vector<FileCost>* files = nullptr) {
    ListCost cost = {{name, {}, {}}, 0};
    host.OnDialog("KvBom", [&](sim::SimDialog& dialog) {
        dialog.Choose("BomRadio", form);
        for (int i = 0; i < kRepeats; ++i)
            RunAndSample(host, cost.series, [&] { dialog.Press("KvLoadBom"); });
        cost.rows = dialog.Rows("bom_list").size();
        if (files == nullptr) return;
        files->push_back(RunFile(host, dialog, "csv", "KvExportCsv", "bom.csv"));
        files->push_back(RunFile(host, dialog, "page", "KvExportPage", "bom.html"));
    });
    (void)host.Run("KvBom");
    return cost;
}

// Calls for a row without those of the walk, of deleting the old rows and of reading the columns.
static void PrintRows(const ListCost& cost) {
    long long filling = 0;
    for (const auto& [function, count] : cost.series.callsByFunction) {
        const bool perRow = function.starts_with("ProUITableCell") || function.starts_with("ProParameter") ||
                            function == "ProMdlToModelitem" || function == "ProMdlIsSkeleton" ||
                            function == "ProMdlMdlnameGet";
        filling += perRow ? count : 0;
    }
    const double perRow = static_cast<double>(filling) / static_cast<double>(cost.rows);
    std::printf("             rows  %9zu, %.2f calls a row for %d columns besides the number, %.2f a cell\n",
                cost.rows, perRow, kColumns, perRow / (kColumns + 1));
}

static Series RunQuantity(sim::SimHost& host) {
    Series series = {"quantity", {}, {}};
    for (int i = 0; i < kRepeats; ++i) RunAndSample(host, series, [&] { (void)host.Run("KvMdlCount"); });
    return series;
}

// ---- The merge and the tree alone, on placements without a host behind them

static constexpr int kRuleRuns = 15;

struct Placements {
    std::vector<kv::NamedModel> models;  // the top assembly last
    std::vector<kv::PlacedModel> placed;
};

// A tenth as many models as placements, a quarter of them assemblies.
static Placements RandomPlacements(unsigned int count) {
    std::mt19937 random(1);
    Placements result;
    const unsigned int models = count / 10;
    for (unsigned int i = 0; i < models; ++i)
        result.models.push_back(
            {nullptr, i % 4 == 0 ? PRO_MDL_ASSEMBLY : PRO_MDL_PART, L"GEN_MODEL_" + std::to_wstring(i)});
    result.models.push_back({nullptr, PRO_MDL_ASSEMBLY, L"GEN_TOP"});
    int level = 1;
    while (result.placed.size() < count) {
        const auto model = static_cast<unsigned int>(random() % models);
        const kv::NamedModel& named = result.models[model];
        result.placed.push_back({nullptr, named.type, level, model});
        if (named.type == PRO_MDL_ASSEMBLY && level < kDepth) {
            ++level;
        } else if (random() % 6 == 0) {
            level = std::max(1, level - 1);
        }
    }
    return result;
}

template <typename Work>
static double QuickestSeconds(Work work) {
    double best = 1e9;
    for (int i = 0; i < kRuleRuns; ++i) {
        const std::int64_t start = sim::ClockTicks();
        work();
        best = std::min(best, sim::ClockSeconds(sim::ClockTicks() - start));
    }
    return best;
}

static void BenchRules() {
    std::printf("\nMerge and tree of the bill of materials without a host, quickest of %d runs\n", kRuleRuns);
    for (const unsigned int count : {1000U, 10000U, 100000U}) {
        const Placements all = RandomPlacements(count);
        std::size_t items = 0;
        std::size_t nodes = 0;
        const double merge = QuickestSeconds(
            [&] { items = kv::CountModels(all.models, all.placed, kv::NameMatch::Exact).size(); });
        const double tree = QuickestSeconds([&] { nodes = kv::LevelTree(all.models, all.placed).size(); });
        std::printf("  %6u placements  merge %6.1f ns a placement (%zu items), tree %6.1f ns (%zu nodes)\n",
                    count, 1e9 * merge / count, items, 1e9 * tree / count, nodes);
    }
}

// A list by level of groups of a hundred parts, and the same after one row in twenty was changed in some way.
static kv::ListedRows ListOfRows(unsigned int count) {
    kv::ListedRows list = {kv::BomForm::Levels, {L"模型数量", L"COATING", L"MASS"}, {}};
    list.rows.push_back({L"GEN_TOP", true, 0, {L"1", L"", L""}});
    unsigned int group = 0;
    while (list.rows.size() < count) {
        const auto place = static_cast<unsigned int>(list.rows.size());
        const bool isGroup = place % 101 == 1;
        if (isGroup) group = place;
        const std::wstring number = std::to_wstring(place);
        list.rows.push_back({(isGroup ? L"GROUP_" : L"PART_") + number,
                             isGroup,
                             isGroup ? 0 : group,
                             {std::to_wstring(place % 7), L"zinc", number}});
    }
    return list;
}

static kv::ListedRows Changed(kv::ListedRows list) {
    std::mt19937 random(1);
    for (kv::ListedRow& row : list.rows) {
        if (row.isAssembly || random() % 20 != 0) continue;
        const unsigned int kind = static_cast<unsigned int>(random() % 3);
        if (kind == 0) row.cells[0] = L"99";
        if (kind == 1) row.name += L"_B";
        if (kind == 2) row.cells[1] = L"none";
    }
    return list;
}

static void BenchCompare() {
    std::printf("\nTwo lists by level compared, quickest of %d runs\n", kRuleRuns);
    for (const unsigned int count : {1000U, 10000U, 100000U}) {
        const kv::ListedRows before = ListOfRows(count);
        const kv::ListedRows after = Changed(before);
        std::size_t lines = 0;
        const double seconds = QuickestSeconds(
            [&] { lines = kv::ChangeLines(before, after, kv::CompareLists(before, after)).size(); });
        std::printf("  %6u rows  %8.2f ms, %zu changes\n", count, 1e3 * seconds, lines);
    }
}

void BenchBom() {
    std::printf("\nBill of materials and quantity on generated assemblies, depth %d, %d runs each\n", kDepth,
                kRepeats);
    for (const int placements : {1000, 10000, 100000}) {
        sim::SimHost host;
        const OwnSettings settings(host.PluginHome());
        sim::SimModel& top = sim::GenerateAssembly(host.State().models, placements, kDepth, 1);
        for (sim::SimModel* model : host.State().models.All())
            model->SetParameter(L"COATING", std::wstring(L"zinc"));
        host.Open(top);
        const BareResult bare = RunBareWalk(host, top);
        const std::size_t models = host.State().models.All().size();
        PrintBare(bare, models);
        std::vector<FileCost> files;
        for (const ListCost& cost :
             {RunList(host, "summed", L"SumBom"), RunList(host, "levels", L"LevelBom", &files)}) {
            PrintSeries(cost.series, bare, models);
            PrintRows(cost);
        }
        for (const FileCost& cost : files) {
            PrintSeries(cost.series, bare, models);
            std::printf("             file  %9.2f MB\n", static_cast<double>(cost.bytes) / 1e6);
        }
        PrintSeries(RunQuantity(host), bare, models);
        PrintProblems(host);
    }
    BenchRules();
    BenchCompare();
}

}  // namespace bench
