// Export of a table: blocks of cells against single cells, through the application in a process of its own.
//
// Calls are counted in this process, where every call is seen; seconds are those of the other process, as the
// original application runs. Every tenth row is an assembly row.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "bench.h"
#include "office/spreadsheet.h"
#include "simulator/host/sim_host.h"
#include "simulator/windows/automation.h"
#include "support/cell_by_cell.h"
#include "support/spreadsheet_program.h"

namespace bench {

namespace {

constexpr std::size_t kTableColumns = 10;
constexpr std::size_t kAssemblyEvery = 10;
constexpr std::size_t kTimedRows = 1000;

kv::SheetTable TableOf(std::size_t rows) {
    kv::SheetTable table = {L"PUMP BOM", std::vector<std::wstring>(kTableColumns, L"名称"), {}};
    for (std::size_t row = 0; row < rows; ++row) {
        table.rows.emplace_back();
        for (std::size_t column = 0; column < kTableColumns; ++column)
            table.rows.back().push_back(
                {L"零件-" + std::to_wstring(row * kTableColumns + column), row % kAssemblyEvery == 0});
    }
    return table;
}

using Export = bool (*)(const kv::SheetTable& table, const std::wstring& path);

bool WriteBlocks(const kv::SheetTable& table, const std::wstring& path) {
    std::vector<kv::RefusedCell> refused;
    return kv::SheetTableWrite(table, path, refused) == kv::SheetExport::Written && refused.empty();
}

// Seconds that an export takes; nothing when it fails.
std::optional<double> Timed(Export write, const kv::SheetTable& table, const std::wstring& path) {
    const auto start = std::chrono::steady_clock::now();
    if (!write(table, path)) return std::nullopt;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Counts the calls of one way at one size in this process and measures `timedRows` rows of it across
// processes. Seconds for all rows, reckoned when they were not all measured.
std::optional<double> Measure(sim::SimHost& host, const char* way, Export write, std::size_t rows,
                              std::size_t timedRows) {
    const std::wstring path = (host.WorkingDirectory() / L"export.xlsx").wstring();
    sim::Spreadsheet& spreadsheet = host.Spreadsheet();
    spreadsheet.Install();
    spreadsheet.Server().Reset();
    const std::optional<double> here = Timed(write, TableOf(rows), path);
    const long long calls = spreadsheet.Server().Calls();
    spreadsheet.Server().Reset();
    spreadsheet.UseRegistered();
    std::optional<double> across = Timed(write, TableOf(timedRows), path);
    if (!here || !across) return std::nullopt;
    *across *= static_cast<double>(rows) / static_cast<double>(timedRows);
    const std::string note =
        rows == timedRows ? "" : ", seconds reckoned from " + std::to_string(timedRows) + " rows";
    std::printf("  %6zu rows  %-12s %9lld calls  %9.3f s  (%.3f s in one process)%s\n", rows, way, calls,
                *across, *here, note.c_str());
    std::fflush(stdout);
    return across;
}

// Cell by cell, 10,000 rows take minutes, and each row costs the same: only a part is timed.
bool RunSize(sim::SimHost& host, std::size_t rows) {
    const std::optional<double> blocks = Measure(host, "blocks", WriteBlocks, rows, rows);
    const std::optional<double> cells =
        Measure(host, "cell by cell", test::WriteCellByCell, rows, std::min(rows, kTimedRows));
    if (!blocks || !cells) return false;
    std::printf("               blocks are %.0f times as fast\n", *cells / *blocks);
    return true;
}

}  // namespace

void BenchWorkbook() {
    std::printf("\nExport of a table, %zu columns, every %zuth row an assembly\n", kTableColumns,
                kAssemblyEvery);
    if (test::RunSpreadsheetProgram(L"--register") != 0) {
        std::printf("PROBLEM: the application's stand-in cannot be registered, nothing measured\n");
        return;
    }
    {
        sim::SimHost host;
        std::vector<sim::ImportPatch> patches;
        sim::PatchAutomation(host.State(), GetModuleHandleW(nullptr), patches);
        for (const std::size_t rows : {1000U, 10000U})
            if (!RunSize(host, rows)) std::printf("PROBLEM: an export of %zu rows failed\n", rows);
        sim::Restore(patches);
        PrintProblems(host);
    }
    test::RunSpreadsheetProgram(L"--unregister");
}

}  // namespace bench
