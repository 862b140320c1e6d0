// Cost of another format for the sheets of many drawings: the preview, and the run, which saves every one.
//
// Files are really written, so host times are those of the disk as well. Drawings go out of memory again; the
// models that they show stay.

#include <cstdio>
#include <filesystem>
#include <string>

#include "bench.h"
#include "simulator/cad/generate.h"

namespace bench {

namespace {

constexpr int kFormatSheets = 3;
constexpr int kFormatPlacements = 1000;

void PrintFormats(const Series& series, int drawings, double allowed) {
    const Sample& sample = series.samples.back();
    const auto count = static_cast<double>(drawings);
    std::printf("  %-10s %8lld calls (%.2f a drawing, at most %.0f)\n", series.name.c_str(), sample.calls,
                static_cast<double>(sample.calls) / count, allowed);
    std::printf("             own %9.1f ms, host %9.1f ms, heap %9lld bytes peak (%.0f a drawing)\n",
                1e3 * sample.pluginSeconds, 1e3 * sample.hostSeconds, sample.peakBytes,
                static_cast<double>(sample.peakBytes) / count);
    for (const auto& [function, calls] : series.callsByFunction)
        std::printf("             %10lld  %s\n", calls, function.c_str());
}

void BenchReplace(int drawings) {
    sim::SimHost host;
    sim::SimModel& top = sim::GenerateAssembly(host.State().models, kFormatPlacements, kDepth, 1);
    for (sim::SimModel* drawing : sim::GenerateDrawings(host.State().models, top, drawings, kFormatSheets))
        host.Store(*drawing);
    host.Store(top);
    sim::SimModel& format = *host.State().models.Create(L"COMPANY", sim::ModelKind::kFormat);
    format.AddSheet(L"A2").AddTable(1, L"title");
    host.Store(format);
    host.AnswerFile((host.WorkingDirectory() / "company.frm.1").wstring());

    Series plan = {"preview", {}, {}};
    Series replace = {"replace", {}, {}};
    host.OnDialog("KvFrmReplace", [&](sim::SimDialog& dialog) {
        dialog.Press("KvChooseFormat").Press("selAll");
        RunAndSample(host, plan, [&] { dialog.Press("KvPlan"); });
        RunAndSample(host, replace, [&] { dialog.Press("ApplyBt"); });
    });
    (void)host.Run("KvFrmReplace");
    std::printf("\n%d drawings with %d sheets\n", drawings, kFormatSheets);
    // To find it, retrieve it, count its sheets and tables and erase it, the cells and their columns; two for
    // each sheet. Then the window, the sheets turned there and back, three for each sheet, and the file.
    const double read = 6 + 4 + 2 * kFormatSheets;
    PrintFormats(plan, drawings, read);
    PrintFormats(replace, drawings, read + 12 + 3 * kFormatSheets);
    std::printf("  %zu models left in memory\n", host.State().models.All().size());
    PrintProblems(host);
}

}  // namespace

void BenchFormats() {
    std::printf("Formats of drawings\n");
    for (const int drawings : {100, 500}) BenchReplace(drawings);
}

}  // namespace bench
