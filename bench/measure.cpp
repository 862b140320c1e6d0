// Samples, the bare walk, and how both are printed.

#include "bench.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include <ProAsmcomp.h>
#include <ProMdl.h>
#include <ProSolid.h>

#include "simulator/report/clock.h"
#include "simulator/windows/plugin_heap.h"

namespace bench {

namespace {

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

double SecondsPerMeasuredCall(sim::SimHost& host, sim::SimModel& top) {
    constexpr int kCalls = 100000;
    double best = 1;
    for (int i = 0; i < kRepeats; ++i) {
        host.State().report.ResetCalls();
        host.State().report.EnterPlugin();
        ProMdlType type = PRO_MDL_UNUSED;
        for (int call = 0; call < kCalls; ++call) (void)ProMdlTypeGet(&top, &type);
        host.State().report.LeavePlugin();
        best = std::min(best, host.State().report.PluginSeconds() / kCalls);
    }
    return best;
}

}  // namespace

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

void RunAndSample(sim::SimHost& host, Series& series, const std::function<void()>& work) {
    sim::Report& report = host.State().report;
    report.ResetCalls();
    sim::ResetPluginHeap();
    const long long before = sim::PluginHeap().liveBytes;
    work();
    series.samples.push_back({report.PluginSeconds(), report.HostSeconds(), report.CallCount(),
                              sim::PluginHeap().peakBytes - before, sim::PluginHeap().allocations});
    series.callsByFunction = report.CallCounts();
}

BareResult RunBareWalk(sim::SimHost& host, sim::SimModel& top) {
    BareResult best;
    const double secondsPerCall = SecondsPerMeasuredCall(host, top);
    for (int i = 0; i < kRepeats; ++i) {
        BareWalk walk;
        host.State().report.ResetCalls();
        const std::int64_t start = sim::ClockTicks();
        (void)ProSolidFeatVisit(reinterpret_cast<ProSolid>(&top), VisitBare, nullptr, &walk);
        const double seconds = sim::ClockSeconds(sim::ClockTicks() - start);
        if (i == 0 || seconds < best.seconds)
            best = {seconds, walk.placements, host.State().report.CallCount(), secondsPerCall};
    }
    return best;
}

void PrintBare(const BareResult& bare, std::size_t models) {
    std::printf("\n%lld placements, %zu models\n", bare.placements, models);
    std::printf("  bare walk  %8lld calls (%.2f a placement)  %9.3f ms\n", bare.calls,
                static_cast<double>(bare.calls) / static_cast<double>(bare.placements), 1e3 * bare.seconds);
}

void PrintSeries(const Series& series, const BareResult& bare, std::size_t models) {
    const auto placements = static_cast<double>(bare.placements);
    const Sample& last = series.samples.back();
    const double measuring = static_cast<double>(last.calls) * bare.secondsPerCall;
    const double own = Quickest(series, &Sample::pluginSeconds) - measuring;
    std::printf("  %-9s  %8lld calls (%.2f a placement, %.2f a model)\n", series.name.c_str(), last.calls,
                static_cast<double>(last.calls) / placements,
                static_cast<double>(last.calls) / static_cast<double>(models));
    std::printf(
        "             own   %9.3f ms quickest, %9.3f ms middle  (%.1f ns a placement, %.0f%% of the bare "
        "walk)\n",
        1e3 * own, 1e3 * (Middle(series, &Sample::pluginSeconds) - measuring), 1e9 * own / placements,
        100 * own / bare.seconds);
    std::printf("             host  %9.3f ms quickest, %9.3f ms middle\n",
                1e3 * Quickest(series, &Sample::hostSeconds), 1e3 * Middle(series, &Sample::hostSeconds));
    std::printf("             heap  %9lld bytes peak (%.1f a placement), %lld allocations\n", last.peakBytes,
                static_cast<double>(last.peakBytes) / placements, last.allocations);
    for (const auto& [function, count] : series.callsByFunction)
        std::printf("             %10lld  %s\n", count, function.c_str());
}

void PrintProblems(sim::SimHost& host) {
    for (const std::string& problem : host.TakeProblems()) std::printf("PROBLEM: %s\n", problem.c_str());
}

}  // namespace bench
