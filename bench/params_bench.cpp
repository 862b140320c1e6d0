// Cost of the parameter commands on generated assemblies, counted in host calls first and in time second.

#include <cstdio>
#include <string>
#include <vector>

#include "bench.h"
#include "simulator/cad/generate.h"

namespace bench {

static std::vector<Series> RunParameterCommands(sim::SimHost& host) {
    std::vector<Series> series = {{"Add", {}, {}}, {"Update", {}, {}}, {"Delete", {}, {}}};
    host.OnDialog("KvParams", [&](sim::SimDialog& dialog) {
        dialog.Choose("TypeRadio", L"AsmAndPart").Type("ParaName", L"COATING").Type("ParaValue", L"zinc");
        dialog.Choose("PtypeOption", L"字符串");
        for (int i = 0; i < kRepeats; ++i)
            for (Series& one : series) RunAndSample(host, one, [&] { dialog.Press(one.name); });
    });
    (void)host.Run("KvParams");
    return series;
}

void BenchParams() {
    std::printf("Parameter commands on generated assemblies, depth %d, %d runs each\n", kDepth, kRepeats);
    for (const int placements : {1000, 10000, 100000}) {
        sim::SimHost host;
        sim::SimModel& top = sim::GenerateAssembly(host.State().models, placements, kDepth, 1);
        host.Open(top);
        const BareResult bare = RunBareWalk(host, top);
        const std::size_t models = host.State().models.All().size();
        PrintBare(bare, models);
        for (const Series& series : RunParameterCommands(host)) PrintSeries(series, bare, models);
        PrintProblems(host);
    }
}

}  // namespace bench
