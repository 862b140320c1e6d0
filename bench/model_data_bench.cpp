// Cost of relations, units, materials and bend tables on assemblies of parts that are all different.

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "bench.h"

namespace bench {

namespace {

// An assembly of that many sheet-metal parts, each placed once, with relations of their own.
sim::SimModel& AddFlatAssembly(sim::SimHost& host, int models) {
    sim::SimModel& top = host.AddAssembly(L"TOP");
    for (int i = 0; i < models; ++i) {
        sim::SimModel& part = host.AddSheetmetal(L"PART_" + std::to_wstring(i + 1));
        top.Place(part.AddBlock(10, 20, 2).SetRelations({L"a = 1", L"b = a * 2", L"c = sin(b)"}));
    }
    return top;
}

Series RunRelations(sim::SimHost& host, const std::string& button, const std::wstring& text) {
    Series series = {button, {}, {}};
    host.OnDialog("Relations", [&](sim::SimDialog& dialog) {
        for (int i = 0; i < kRepeats; ++i) {
            // Other lines each time: what a model has already is not written again.
            dialog.Type("RelTxtarea", text + L"d = " + std::to_wstring(i));
            RunAndSample(host, series, [&] { dialog.Press(button); });
        }
    });
    (void)host.Run("KvRelations");
    return series;
}

Series RunUnits(sim::SimHost& host, const std::wstring& units) {
    Series series = {"SetUnit", {}, {}};
    host.OnDialog("SetUnit", [&](sim::SimDialog& dialog) {
        dialog.Choose("UnitRadio", units);
        for (int i = 0; i < kRepeats; ++i) RunAndSample(host, series, [&] { dialog.Press("ApplyBt"); });
    });
    (void)host.Run("SetUnit");
    return series;
}

Series RunFileCommand(sim::SimHost& host, const std::string& command, const std::wstring& file,
                      const char* format) {
    std::ofstream(host.WorkingDirectory() / file) << "{\"format\": \"" << format << "\", \"version\": 1}";
    Series series = {command, {}, {}};
    for (int i = 0; i < kRepeats; ++i) {
        host.AnswerFile(file);
        RunAndSample(host, series, [&] { (void)host.Run(command); });
    }
    return series;
}

}  // namespace

void BenchModelData() {
    std::printf("Model data on assemblies of different parts, %d runs each\n", kRepeats);
    for (const int models : {100, 1000, 10000}) {
        sim::SimHost host;
        sim::SimModel& top = AddFlatAssembly(host, models);
        host.Open(top);
        const BareResult bare = RunBareWalk(host, top);
        const auto count = static_cast<std::size_t>(models);
        PrintBare(bare, count);
        PrintSeries(RunRelations(host, "AddRelsAndNoRepeat", L"a = 1\n"), bare, count);
        PrintSeries(RunRelations(host, "CoverRels", L""), bare, count);
        PrintSeries(RunUnits(host, L"IPS"), bare, count);
        PrintSeries(RunFileCommand(host, "SetMat", L"steel.mtl", "hostsim material"), bare, count);
        PrintSeries(RunFileCommand(host, "SetBendTable", L"steel.bnd", "hostsim bend table"), bare, count);
        PrintProblems(host);
    }
}

}  // namespace bench
