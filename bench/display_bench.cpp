// Cost of hiding and showing the components of generated assemblies, a component feature: those below a
// sub-assembly are the same at each of its placements. Cost of views, colours, boxes and representations.

#include <cstddef>
#include <cstdio>
#include <string>

#include <windows.h>

#include "bench.h"
#include "simulator/cad/generate.h"

namespace bench {

static std::size_t ComponentFeatures(sim::SimHost& host) {
    std::size_t count = 0;
    for (const sim::SimModel* model : host.State().models.All()) count += model->Features().size();
    return count;
}

static Series RunDisplay(sim::SimHost& host, const char* command) {
    Series series = {command, {}, {}};
    for (int i = 0; i < kRepeats; ++i) RunAndSample(host, series, [&] { (void)host.Run(command); });
    return series;
}

static void SetUser(sim::SimHost& host, const std::string& command) {
    if (command == "BatchColor") host.AnswerBox(IDYES);
    if (command == "KvSimRep")
        host.OnDialog(command, [](sim::SimDialog& dialog) {
            dialog.Choose("RuleRadio", L"排除小零件")
                .Type("SmallPercent", L"10")
                .Press("CountRule")
                .Press("Close");
        });
    if (command == "KvBox") host.OnDialog(command, [](sim::SimDialog& dialog) { dialog.Press("Close"); });
}

// Views, colours, boxes and representations: what they cost besides the walk is a model's.
static void BenchModels(sim::SimHost& host, const BareResult& bare, std::size_t models) {
    for (const char* command : {"TweViews", "BatchColor", "KvBox", "KvSimRep"}) {
        Series series = {command, {}, {}};
        for (int i = 0; i < kRepeats; ++i) {
            SetUser(host, command);
            RunAndSample(host, series, [&] { (void)host.Run(command); });
        }
        PrintSeries(series, bare, models);
    }
}

// Calls besides the walk.
static void PrintFeatures(const Series& series, std::size_t features) {
    long long calls = 0;
    for (const auto& [function, count] : series.callsByFunction)
        if (function.starts_with("ProModelitem") || function.starts_with("ProLayer")) calls += count;
    std::printf("             %9zu component features, %.2f calls each besides the walk\n", features,
                static_cast<double>(calls) / static_cast<double>(features));
}

void BenchDisplay() {
    std::printf("\nHiding and showing components of generated assemblies, depth %d, %d runs each\n", kDepth,
                kRepeats);
    for (const int placements : {1000, 10000, 100000}) {
        sim::SimHost host;
        sim::SimModel& top = sim::GenerateAssembly(host.State().models, placements, kDepth, 1);
        host.Open(top);
        const BareResult bare = RunBareWalk(host, top);
        const std::size_t models = host.State().models.All().size();
        PrintBare(bare, models);
        const sim::Feature& first = top.Features().front();
        host.Select({{first.component, 0, 0, {first.id}}});
        const std::size_t features = ComponentFeatures(host);
        for (const char* command : {"KvHideReverse", "KvIsolate", "KvShowAllComp"}) {
            const Series series = RunDisplay(host, command);
            PrintSeries(series, bare, models);
            PrintFeatures(series, features);
        }
        BenchModels(host, bare, models);
        PrintProblems(host);
    }
}

}  // namespace bench
