// Cost of new components, clones and merges in host calls: a name costs one call, a merged part always the
// same.

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench.h"

namespace bench {

namespace {

constexpr int kTakenNames = 1000;

// PUMP with a coordinate system; the names PUMP-1 and so on are taken.
sim::SimModel& ArrangePump(sim::SimHost& host, int takenNames) {
    sim::SimModel& start = host.AddPart(L"START").AddCoordinateSystem(L"PRT_CSYS_DEF");
    start.directory = host.WorkingDirectory() / "templates";
    std::filesystem::create_directories(start.directory);
    host.State().configOptions[L"TEMPLATE_SOLIDPART"] = {(start.directory / "start.prt").wstring()};
    host.Store(start);
    for (int n = 1; n <= takenNames; ++n) host.AddPart(L"PUMP-" + std::to_wstring(n));
    sim::SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"ASM_DEF_CSYS");
    host.Open(pump);
    return pump;
}

void PrintCalls(const std::string& what, const Series& series) {
    const Sample& last = series.samples.back();
    std::printf("\n  %-28s %6lld calls, %.3f ms in the plug-in\n", what.c_str(), last.calls,
                1e3 * last.pluginSeconds);
    for (const auto& [function, count] : series.callsByFunction)
        if (count > 5) std::printf("             %10lld  %s\n", count, function.c_str());
}

void BenchName(const char* command, int takenNames) {
    sim::SimHost host;
    sim::SimModel& pump = ArrangePump(host, takenNames);
    sim::SimModel& bolt = host.AddPart(L"PUMP");
    pump.Place(bolt);
    sim::Pick pick;
    pick.model = &bolt;
    pick.path = {pump.Features()[0].id};
    host.Select({pick});
    if (std::string(command) == "CloneComp") host.AnswerPlacement(true);
    Series series = {command, {}, {}};
    RunAndSample(host, series, [&] { (void)host.Run(command); });
    PrintCalls(std::string(command) + ", " + std::to_string(takenNames) + " names taken", series);
    PrintProblems(host);
}

void BenchMerge(int parts) {
    sim::SimHost host;
    sim::SimModel& pump = ArrangePump(host, 0);
    std::vector<sim::Pick> picks;
    for (int i = 1; i <= parts; ++i) {
        sim::Pick pick;
        pick.model = &host.AddPart(L"BOLT_" + std::to_wstring(i)).AddBlock(1, 2, 3);
        pump.Place(*pick.model);
        pick.path = {pump.Features().back().id};
        picks.push_back(pick);
    }
    host.Select(picks);
    host.AnswerPrompt({sim::PromptAnswer::Kind::kTyped, L"CAST"});
    Series series = {"KvMerge", {}, {}};
    RunAndSample(host, series, [&] { (void)host.Run("KvMerge"); });
    PrintCalls("KvMerge, " + std::to_string(parts) + " parts", series);
    PrintProblems(host);
}

}  // namespace

void BenchAssembly() {
    std::printf("New components, clones and merges\n");
    for (const int takenNames : {0, kTakenNames}) {
        BenchName("NewPart", takenNames);
        BenchName("CloneComp", takenNames);
    }
    for (const int parts : {1, 10, 100}) BenchMerge(parts);
}

}  // namespace bench
