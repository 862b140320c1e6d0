// Cost of the batch export: many drawings of three sheets, to one format and to all five.
//
// Files are really written, so host times are those of the disk as well. What the plug-in keeps of a run
// grows by one record for each file; nothing else may grow with the number of drawings.

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "bench.h"
#include "simulator/cad/generate.h"

namespace bench {

namespace {

constexpr int kSheets = 3;
constexpr int kAssemblyPlacements = 1000;

struct Choice {
    const char* name;
    std::vector<std::string> formats;
    int filesPerDrawing;
};

const std::vector<Choice> kChoices = {
    {"DWG", {"DWGCheck"}, kSheets},
    {"PDF", {"PDFCheck"}, kSheets},
    {"STEP", {"STPCheck"}, 1},
    {"all five", {"DWGCheck", "DXFCheck", "PDFCheck", "STPCheck", "IGSCheck"}, 3 * kSheets + 2},
};

void Tick(sim::SimDialog& dialog, const Choice& choice) {
    for (const char* format : {"DWGCheck", "DXFCheck", "PDFCheck", "STPCheck", "IGSCheck"})
        dialog.Check(format, false);
    for (const std::string& format : choice.formats) dialog.Check(format);
}

std::vector<Series> RunExports(sim::SimHost& host) {
    std::vector<Series> series = {{"fill table", {}, {}}};
    host.OnDialog("KvExport", [&](sim::SimDialog& dialog) {
        dialog.Type("Export_name", L"图号,图纸名称,sheetsize").Press("selAll");
        RunAndSample(host, series[0], [&] { dialog.Press("KvLoadParams"); });
        const auto press = [&dialog] { dialog.Press("ApplyBt"); };
        for (const Choice& choice : kChoices) {
            Tick(dialog, choice);
            RunAndSample(host, series.emplace_back(Series{choice.name, {}, {}}), press);
        }
    });
    (void)host.Run("KvExport");
    return series;
}

void PrintExport(const Series& series, const Choice* choice, int drawings) {
    const Sample& sample = series.samples.back();
    const auto count = static_cast<double>(drawings);
    std::printf("  %-10s %8lld calls (%.1f a drawing", series.name.c_str(), sample.calls,
                static_cast<double>(sample.calls) / count);
    if (choice != nullptr)
        std::printf(", %.1f a file", static_cast<double>(sample.calls) / count / choice->filesPerDrawing);
    std::printf(")\n             own %9.1f ms, host %9.1f ms, heap %9lld bytes peak (%.0f a drawing)\n",
                1e3 * sample.pluginSeconds, 1e3 * sample.hostSeconds, sample.peakBytes,
                static_cast<double>(sample.peakBytes) / count);
    for (const auto& [function, calls] : series.callsByFunction)
        std::printf("             %10lld  %s\n", calls, function.c_str());
}

}  // namespace

void BenchDrawings() {
    std::printf("Batch export of drawings with %d sheets\n", kSheets);
    for (const int drawings : {100, 500}) {
        sim::SimHost host;
        sim::SimModel& top = sim::GenerateAssembly(host.State().models, kAssemblyPlacements, kDepth, 1);
        for (sim::SimModel* drawing : sim::GenerateDrawings(host.State().models, top, drawings, kSheets))
            host.Store(*drawing);
        host.Store(top);
        std::printf("\n%d drawings\n", drawings);
        const std::vector<Series> series = RunExports(host);
        for (std::size_t i = 0; i < series.size(); ++i)
            PrintExport(series[i], i == 0 ? nullptr : &kChoices[i - 1], drawings);
        std::printf("  %zu files, %zu models left in memory\n", host.ExportedFiles().size(),
                    host.State().models.All().size());
        PrintProblems(host);
    }
}

}  // namespace bench
