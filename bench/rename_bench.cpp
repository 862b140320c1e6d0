// Cost of the batch rename, in host calls a row: opening without the walk, the table as a file, the check,
// the rename with the saving of owners.

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
// The simulator lists the folder anew for each trial that was deleted behind its back.
constexpr int kMostRenamed = 1000;

void MakeTree(sim::SimHost& host, int rows) {
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
}

struct Counted {
    long long calls;
    double seconds;
};

// What the walk through the assembly took of the calls so far.
long long WalkCalls(sim::SimHost& host) {
    long long calls = 0;
    for (const char* function :
         {"ProSolidFeatVisit", "ProFeatureTypeGet", "ProFeatureStatusflagsGet", "ProFeatureStatusGet",
          "ProFeatureVisibilityGet", "ProAsmcompMdlGet", "ProMdlTypeGet", "ProArrayAlloc", "ProArrayFree"})
        calls += host.Calls(function);
    return calls;
}

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
    MakeTree(host, rows);
    host.State().report.ResetCalls();
    host.Spreadsheet().Install();
    host.AnswerFile(L"table.xls");
    host.AnswerFile(L"table.xls");
    host.OnDialog("KvRename", [&](sim::SimDialog& dialog) {
        Print("opening", {host.State().report.CallCount() - WalkCalls(host), 0}, rows);
        const sim::AutomationServer& server = host.Spreadsheet().Server();
        Print("export", Count(host, [&] { dialog.Press("KvExportTab"); }), rows);
        const long long exported = server.Calls();
        Print("import", Count(host, [&] { dialog.Press("KvLoadTab"); }), rows);
        std::printf("               automation calls: %lld to export, %lld to import\n", exported,
                    server.Calls() - exported);
        if (rows > kMostRenamed) return;
        const Counted refill = Count(host, [&] { dialog.Press("UpdateRenameIni"); });
        dialog.Type("PrefixText", L"N_").Press("KvFillNames");
        // What the check costs is seen in a run that stops at the last row.
        dialog.Type("input" + std::to_string(rows), L"N_TOP.");
        const Counted check = Count(host, [&] { dialog.Press("StartRename"); });
        dialog.Press("KvFillNames");
        const Counted both = Count(host, [&] { dialog.Press("StartRename"); });
        Print("check", check, rows);
        Print("rename",
              {both.calls - check.calls - refill.calls, both.seconds - check.seconds - refill.seconds}, rows);
    });
    (void)host.Run("KvRename");
    PrintProblems(host);
}

}  // namespace

void BenchRename() {
    std::printf("\nBatch rename, sub-assemblies of %d parts, half of them with drawings\n", kPartsOfOne);
    for (const int rows : {100, 1000, 10000}) RunSize(rows);
}

}  // namespace bench
