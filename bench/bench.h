// What all benchmarks share: samples of a run, and the bare walk that they are compared with.
//
// Each size is run several times and the quickest and the middle run are printed: the machines are noisy, so
// times are to be compared within one run only. The bare walk makes the fewest host calls that can visit
// every placement.

#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/host/sim_host.h"

namespace bench {

inline constexpr int kRepeats = 7;
inline constexpr int kDepth = 6;

struct Sample {
    double pluginSeconds = 0;
    double hostSeconds = 0;
    long long calls = 0;
    long long peakBytes = 0;  // above what was there at the start
    long long allocations = 0;
};

struct Series {
    std::string name;
    std::vector<Sample> samples;
    std::vector<std::pair<std::string, long long>> callsByFunction;  // of the last run
};

double Quickest(const Series& series, double Sample::*field);
double Middle(const Series& series, double Sample::*field);

// Runs `work` once and adds its sample.
void RunAndSample(sim::SimHost& host, Series& series, const std::function<void()>& work);

struct BareResult {
    double seconds = 0;
    long long placements = 0;
    long long calls = 0;
    double secondsPerCall = 0;  // what the measuring itself charges to the plug-in for each host call
};

BareResult RunBareWalk(sim::SimHost& host, sim::SimModel& top);

void PrintBare(const BareResult& bare, std::size_t models);
// Calls, own time less what measuring costs, host time and heap of a series, a placement and a model.
void PrintSeries(const Series& series, const BareResult& bare, std::size_t models);
void PrintProblems(sim::SimHost& host);

// ---- The benchmarks, in the order they are run
void BenchParams();
void BenchModelData();
void BenchBom();
void BenchWorkbook();
void BenchDrawings();
void BenchScales();
void BenchFormats();
void BenchAssembly();
void BenchRename();
void BenchDisplay();
void BenchImport();

}  // namespace bench
