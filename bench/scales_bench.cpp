// Cost of the scale commands: the check of a directory of drawings, and a scale pushed into many views.
//
// What the plug-in keeps of a check grows by a record for each main view; the host keeps the drawings.

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "bench.h"
#include "simulator/cad/generate.h"

namespace bench {

namespace {

constexpr int kScaledSheets = 3;
constexpr int kDrawnPlacements = 1000;

void PrintScales(const Series& series, int count, const char* item, double allowed) {
    const Sample& sample = series.samples.back();
    std::printf("  %-22s %8lld calls (%.2f a %s, at most %.0f)\n", series.name.c_str(), sample.calls,
                static_cast<double>(sample.calls) / count, item, allowed);
    std::printf("             own %9.1f ms, host %9.1f ms, heap %9lld bytes peak (%.0f a %s)\n",
                1e3 * sample.pluginSeconds, 1e3 * sample.hostSeconds, sample.peakBytes,
                static_cast<double>(sample.peakBytes) / count, item);
    for (const auto& [function, calls] : series.callsByFunction)
        std::printf("             %10lld  %s\n", calls, function.c_str());
}

// Each drawing has a view on each of its sheets.
void BenchCheck(int drawings) {
    sim::SimHost host;
    sim::SimModel& top = sim::GenerateAssembly(host.State().models, kDrawnPlacements, kDepth, 1);
    for (sim::SimModel* drawing : sim::GenerateDrawings(host.State().models, top, drawings, kScaledSheets))
        host.Store(*drawing);
    Series series = {"check", {}, {}};
    std::printf("\n%d drawings with %d sheets\n", drawings, kScaledSheets);
    for (const char* name : {"check", "check, all in memory"}) {
        series.name = name;
        RunAndSample(host, series, [&host] { (void)host.Run("KvDrwScaleCheck"); });
        PrintScales(series, drawings, "drawing", 6 + kScaledSheets * (2 + 5));
    }
    PrintProblems(host);
}

void BenchPush(int views) {
    sim::SimHost host;
    sim::SimModel& part = host.AddPart(L"PART");
    sim::SimModel& drawing = host.AddDrawing(L"PART", {L"A0"});
    for (int i = 0; i < views; ++i) drawing.AddView(part, 1);
    for (sim::DrawingView& view : drawing.Views()) view.scale = 2;
    host.Open(drawing);
    Series series = {"push", {}, {}};
    std::printf("\n%d views with a scale of their own\n", views);
    RunAndSample(host, series, [&host] { (void)host.Run("KvUpdateSheetScale"); });
    PrintScales(series, views, "view", 4);
    PrintProblems(host);
}

}  // namespace

void BenchScales() {
    std::printf("Scales of drawings\n");
    for (const int drawings : {500, 5000}) BenchCheck(drawings);
    for (const int views : {100, 1000}) BenchPush(views);
}

}  // namespace bench
