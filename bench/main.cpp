// Runs the benchmarks: korvane_bench [NAME...]; without a name, all of them.

#include <cstdio>
#include <string_view>

#include "bench.h"

namespace {

struct Benchmark {
    std::string_view name;
    void (*run)();
};

// clang-format off
constexpr Benchmark kBenchmarks[] = {
    {"params", bench::BenchParams},
    {"modeldata", bench::BenchModelData},
    {"bom", bench::BenchBom},
    {"workbook", bench::BenchWorkbook},
    {"drawings", bench::BenchDrawings},
    {"scales", bench::BenchScales},
    {"formats", bench::BenchFormats},
    {"assembly", bench::BenchAssembly},
    {"rename", bench::BenchRename},
    {"display", bench::BenchDisplay},
    {"import", bench::BenchImport},
};
// clang-format on

bool RunNamed(std::string_view name) {
    for (const Benchmark& benchmark : kBenchmarks) {
        if (!name.empty() && name != benchmark.name) continue;
        benchmark.run();
        if (!name.empty()) return true;
    }
    return name.empty();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 1) RunNamed({});
    for (int i = 1; i < argc; ++i) {
        if (RunNamed(argv[i])) continue;
        std::fprintf(stderr, "korvane_bench: no benchmark is called %s; there are:", argv[i]);
        for (const Benchmark& benchmark : kBenchmarks) std::fprintf(stderr, " %s", benchmark.name.data());
        std::fprintf(stderr, "\n");
        return 2;
    }
    return 0;
}
