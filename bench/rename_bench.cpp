// Cost of the batch rename, in host calls a row: opening, the check, the rename, and the table as a file.

#include <chrono>
#include <cstdio>
#include <string>

#include <windows.h>

#include "bench.h"
#include "simulator/host/sim_host.h"

namespace bench {

namespace {

// Parts below sub-assemblies of a hundred, every other part with a drawing.
constexpr int kPartsOfOne = 100;

sim::SimModel& MakeTree(sim::SimHost& host, int rows) {
    sim::SimModel& top = host.AddAssembly(L"TOP");
    sim::SimModel* sub = nullptr;
    for (int i = 0; i + 1 < rows; ++i) {
        const std::wstring number = std::to_wstring(i);
        if (i % kPartsOfOne == 0) {
            sub = &host.AddAssembly(L"SUB" + number);
            top.Place(*sub);
            continue;
        }
        sim::SimModel& part = host.AddPart(L"PART" + number);
        sub->Place(part, 2);
        if (i % 2 == 0) host.AddDrawing(part.Name(), {L"A4"}, {&part});
    }
    for (sim::SimModel* model : host.State().models.All())
        if (host.State().models.Save(*model) != PRO_TK_NO_ERROR)
            std::printf("PROBLEM: a model was not saved\n");
    host.Open(top);
    return top;
}

struct Counted {
    long long calls;
    double seconds;
};

template <typename Work>
Counted Count(sim::SimHost& host, Work work) {
    const long long before = host.State().report.CallCount();
    const auto start = std::chrono::steady_clock::now();
    work();
    return {host.State().report.CallCount() - before,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()};
}

void Print(const char* what, const Counted& counted, int rows) {
    std::printf("  %6d rows  %-14s %9lld calls  %6.2f a row  %8.3f s\n", rows, what, counted.calls,
                static_cast<double>(counted.calls) / rows, counted.seconds);
    std::fflush(stdout);
}

void RunSize(int rows) {
    sim::SimHost host;
    sim::SimModel& top = MakeTree(host, rows);
    const BareResult walk = RunBareWalk(host, top);
    host.State().report.ResetCalls();
    host.Spreadsheet().Install();
    host.AnswerFile(L"table.xls");
    host.AnswerFile(L"table.xls");
    host.OnDialog("KvRename", [&](sim::SimDialog& dialog) {
        Print("opening", {host.State().report.CallCount(), 0}, rows);
        const sim::AutomationServer& server = host.Spreadsheet().Server();
        Print("export", Count(host, [&] { dialog.Press("KvExportTab"); }), rows);
        const long long exported = server.Calls();
        Print("import", Count(host, [&] { dialog.Press("KvLoadTab"); }), rows);
        std::printf("               automation calls: %lld to export, %lld to import\n", exported,
                    server.Calls() - exported);
        dialog.Press("UpdateRenameIni").Type("PrefixText", L"N_").Press("KvFillNames");
        // What the check costs is seen in a run that stops at the last row.
        dialog.Type("input" + std::to_string(rows), L"N_TOP.");
        Print("check", Count(host, [&] { dialog.Press("StartRename"); }), rows);
        dialog.Press("KvFillNames");
        Print("check+rename", Count(host, [&] { dialog.Press("StartRename"); }), rows);
        Print("undo", Count(host, [&] { dialog.Press("KvUndoRename"); }), rows);
    });
    (void)host.Run("KvRename");
    std::printf("               the bare walk: %lld calls\n", walk.calls);
    PrintProblems(host);
}

}  // namespace

void BenchRename() {
    std::printf("\nBatch rename, sub-assemblies of %d parts, half of them with drawings\n", kPartsOfOne);
    for (const int rows : {100, 1000, 10000}) RunSize(rows);
}

}  // namespace bench
