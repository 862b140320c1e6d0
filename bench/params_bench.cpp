// Cost of the parameter commands on generated assemblies, counted in host calls first and in time second.
//
// Each size is run several times and the quickest and the middle run are printed: the machines are noisy, so
// times are to be compared within one run only. The bare walk makes the fewest host calls that can visit
// every placement.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <ProAsmcomp.h>
#include <ProMdl.h>
#include <ProSolid.h>

#include "cad/generate.h"
#include "host/sim_host.h"
#include "report/clock.h"
#include "windows/plugin_heap.h"

namespace {

using sim::Report;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

constexpr int kRepeats = 7;
constexpr int kDepth = 6;

struct Sample {
    double pluginSeconds = 0;
    double hostSeconds = 0;
    long long calls = 0;
    long long peakBytes = 0;
    long long allocations = 0;
};

struct Series {
    std::string name;
    std::vector<Sample> samples;
    std::vector<std::pair<std::string, long long>> callsByFunction;
};

double Quickest(const Series& series, double Sample::*field) {
    double best = series.samples.front().*field;
    for (const Sample& sample : series.samples) best = std::min(best, sample.*field);
    return best;
}

double Middle(const Series& series, double Sample::*field) {
    std::vector<double> values;
    for (const Sample& sample : series.samples) values.push_back(sample.*field);
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

// ---- The bare walk: visit, model, type, down.

struct BareWalk {
    long long placements = 0;
};

ProError VisitBare(ProFeature* feature, ProError, ProAppData data) {
    auto* walk = static_cast<BareWalk*>(data);
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    if (ProAsmcompMdlGet(feature, &model) != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
    if (ProMdlTypeGet(model, &type) != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
    ++walk->placements;
    if (type == PRO_MDL_ASSEMBLY)
        (void)ProSolidFeatVisit(static_cast<ProSolid>(model), VisitBare, nullptr, data);
    return PRO_TK_NO_ERROR;
}

struct BareResult {
    double seconds = 0;
    long long placements = 0;
    long long calls = 0;
};

BareResult RunBareWalk(SimHost& host, SimModel& top) {
    BareResult best;
    for (int i = 0; i < kRepeats; ++i) {
        BareWalk walk;
        host.State().report.ResetCalls();
        const std::int64_t start = sim::ClockTicks();
        (void)ProSolidFeatVisit(reinterpret_cast<ProSolid>(&top), VisitBare, nullptr, &walk);
        const double seconds = sim::ClockSeconds(sim::ClockTicks() - start);
        if (i == 0 || seconds < best.seconds)
            best = {seconds, walk.placements, host.State().report.CallCount()};
    }
    return best;
}

// ---- The buttons of the parameter editor

void PressAndSample(SimHost& host, SimDialog& dialog, const char* button, Series& series) {
    Report& report = host.State().report;
    report.ResetCalls();
    sim::ResetPluginHeap();
    const long long before = sim::PluginHeap().liveBytes;
    dialog.Press(button);
    series.samples.push_back({report.PluginSeconds(), report.HostSeconds(), report.CallCount(),
                              sim::PluginHeap().peakBytes - before, sim::PluginHeap().allocations});
    series.callsByFunction = report.CallCounts();
}

std::vector<Series> RunParameterCommands(SimHost& host) {
    std::vector<Series> series = {{"Add", {}, {}}, {"Update", {}, {}}, {"Delete", {}, {}}};
    host.OnDialog("KvParams", [&](SimDialog& dialog) {
        dialog.Choose("TypeRadio", L"AsmAndPart").Type("ParaName", L"COATING").Type("ParaValue", L"zinc");
        dialog.Choose("PtypeOption", L"字符串");
        for (int i = 0; i < kRepeats; ++i)
            for (Series& one : series) PressAndSample(host, dialog, one.name.c_str(), one);
    });
    (void)host.Run("KvParams");
    return series;
}

void PrintSize(const BareResult& bare, std::size_t models, const std::vector<Series>& series) {
    const auto placements = static_cast<double>(bare.placements);
    std::printf("\n%lld placements, %zu models\n", bare.placements, models);
    std::printf("  bare walk  %8lld calls (%.2f a placement)  %9.3f ms\n", bare.calls,
                static_cast<double>(bare.calls) / placements, 1e3 * bare.seconds);
    for (const Series& one : series) {
        const Sample& last = one.samples.back();
        const double own = Quickest(one, &Sample::pluginSeconds);
        std::printf("  %-9s  %8lld calls (%.2f a placement, %.2f a model)\n", one.name.c_str(), last.calls,
                    static_cast<double>(last.calls) / placements,
                    static_cast<double>(last.calls) / static_cast<double>(models));
        std::printf(
            "             own   %9.3f ms quickest, %9.3f ms middle  (%.1f ns a placement, %.0f%% of the bare "
            "walk)\n",
            1e3 * own, 1e3 * Middle(one, &Sample::pluginSeconds), 1e9 * own / placements,
            100 * own / bare.seconds);
        std::printf("             host  %9.3f ms quickest, %9.3f ms middle\n",
                    1e3 * Quickest(one, &Sample::hostSeconds), 1e3 * Middle(one, &Sample::hostSeconds));
        std::printf("             heap  %9lld bytes peak (%.1f a placement), %lld allocations\n",
                    last.peakBytes, static_cast<double>(last.peakBytes) / placements, last.allocations);
        for (const auto& [function, count] : one.callsByFunction)
            std::printf("             %10lld  %s\n", count, function.c_str());
    }
}

}  // namespace

int main() {
    std::printf("Parameter commands on generated assemblies, depth %d, %d runs each\n", kDepth, kRepeats);
    for (const int placements : {1000, 10000, 100000}) {
        SimHost host;
        SimModel& top = sim::GenerateAssembly(host.State().models, placements, kDepth, 1);
        host.Open(top);
        const BareResult bare = RunBareWalk(host, top);
        PrintSize(bare, host.State().models.All().size(), RunParameterCommands(host));
        for (const std::string& problem : host.TakeProblems()) std::printf("PROBLEM: %s\n", problem.c_str());
    }
    return 0;
}
