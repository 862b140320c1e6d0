// Cost of an import: a large STEP file, nearly all of it shapes.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <windows.h>

#include <psapi.h>

#include "bench.h"
#include "simulator/import/import.h"
#include "simulator/report/clock.h"

namespace bench {

static constexpr int kImportRuns = 3;
static constexpr std::size_t kFileBytes = std::size_t{100} << 20;

// Writes instances one after the other under growing numbers.
class StepWriter {
public:
    explicit StepWriter(const std::filesystem::path& file) : stream_(file, std::ios::binary) {
        stream_ << "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n";
    }
    ~StepWriter() { stream_ << "ENDSEC;\nEND-ISO-10303-21;\n"; }
    StepWriter(const StepWriter&) = delete;
    StepWriter& operator=(const StepWriter&) = delete;

    std::string Add(const std::string& entity) {
        const std::string id = "#" + std::to_string(++count_);
        const std::string line = id + "=" + entity + ";\n";
        stream_ << line;
        bytes_ += line.size();
        return id;
    }
    std::string AddFrame(int shift) {
        const std::string point = Add("CARTESIAN_POINT('',(" + std::to_string(shift) + ".,0.25,-17.5))");
        const std::string z = Add("DIRECTION('',(0.,0.,1.))");
        const std::string x = Add("DIRECTION('',(1.,0.,0.))");
        return Add("AXIS2_PLACEMENT_3D(''," + point + "," + z + "," + x + ")");
    }
    std::size_t Bytes() const { return bytes_; }

private:
    std::ofstream stream_;
    std::size_t count_ = 0;
    std::size_t bytes_ = 0;
};

struct StepProduct {
    std::string definition, shape, frame;
};

static StepProduct AddProduct(StepWriter& step, const std::string& name) {
    StepProduct made;
    const std::string product = step.Add("PRODUCT('" + name + "','" + name + "','',())");
    const std::string formation = step.Add("PRODUCT_DEFINITION_FORMATION('',''," + product + ")");
    made.definition = step.Add("PRODUCT_DEFINITION('',''," + formation + ",$)");
    made.frame = step.AddFrame(0);
    made.shape = step.Add("SHAPE_REPRESENTATION('',(" + made.frame + "),$)");
    const std::string owner = step.Add("PRODUCT_DEFINITION_SHAPE('',''," + made.definition + ")");
    step.Add("SHAPE_DEFINITION_REPRESENTATION(" + owner + "," + made.shape + ")");
    return made;
}

static void AddUse(StepWriter& step, const StepProduct& assembly, const StepProduct& component, int shift) {
    const std::string use = step.Add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('','',''," + assembly.definition + "," +
                                     component.definition + ",$)");
    const std::string owner = step.Add("PRODUCT_DEFINITION_SHAPE('',''," + use + ")");
    const std::string move =
        step.Add("ITEM_DEFINED_TRANSFORMATION('',''," + component.frame + "," + step.AddFrame(shift) + ")");
    const std::string relation = step.Add(
        "(REPRESENTATION_RELATIONSHIP('',''," + component.shape + "," + assembly.shape +
        ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + move + ")SHAPE_REPRESENTATION_RELATIONSHIP())");
    step.Add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relation + "," + owner + ")");
}

// `parts` parts with shapes of equal size, each placed ten times in one assembly.
static void WriteStep(const std::filesystem::path& file, int parts) {
    StepWriter step(file);
    const StepProduct top = AddProduct(step, "TOP");
    for (int i = 1; i <= parts; ++i) {
        const StepProduct part = AddProduct(step, "PART_" + std::to_string(i));
        for (int use = 0; use < 10; ++use) AddUse(step, top, part, use);
        const std::size_t share = kFileBytes / static_cast<std::size_t>(parts) * static_cast<std::size_t>(i);
        while (step.Bytes() < share) {
            const std::string frame = step.AddFrame(i);
            const std::string surface = step.Add("CYLINDRICAL_SURFACE(''," + frame + ",4.25)");
            step.Add("ADVANCED_FACE('it''s one; of many',(" + frame + ")," + surface + ",.T.)");
        }
    }
}

static double PeakMegabytes() {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
    return static_cast<double>(counters.PeakWorkingSetSize) / (1 << 20);
}

void BenchImport() {
    std::printf("\nImport of a STEP file of %zu MB, quickest of %d runs\n", kFileBytes >> 20, kImportRuns);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "korvane-bench-import";
    std::error_code error;
    for (const int parts : {10, 1000}) {
        std::filesystem::remove_all(folder, error);
        std::filesystem::create_directories(folder, error);
        WriteStep(folder / "large.stp", parts);
        double best = 1e9;
        sim::ImportReport report;
        const double before = PeakMegabytes();
        for (int i = 0; i < kImportRuns; ++i) {
            const std::int64_t start = sim::ClockTicks();
            report = sim::ImportWorkspace(folder / "large.stp", folder / "made");
            best = std::min(best, sim::ClockSeconds(sim::ClockTicks() - start));
            std::filesystem::remove_all(folder / "made", error);
        }
        std::printf("  %6zu models, %6zu components  %8.3f s, peak memory %.1f MB above %.1f MB before\n",
                    report.models, report.components, best, PeakMegabytes() - before, before);
    }
    std::filesystem::remove_all(folder, error);
}

}  // namespace bench
