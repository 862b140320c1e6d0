// The plug-in's own heap, counted and made to fail through its imported C run-time calls.

#pragma once

#include <vector>

#include <windows.h>

#include "simulator/windows/import_table.h"

namespace sim {

// Figures since the last ResetPluginHeap.
struct PluginHeapFigures {
    long long allocations = 0;
    long long liveBlocks = 0;
    long long liveBytes = 0;
    long long peakBytes = 0;
    long long failed = 0;  // allocations that were made to fail
};

void PatchPluginHeap(HMODULE module, std::vector<ImportPatch>& patches);
// Once the plug-in is unloaded: takes back the thread slots that its run-time library has left, as it does
// after an exception. Without that a process could load the plug-in about a thousand times.
void FreePluginThreadSlots();
PluginHeapFigures PluginHeap();
void ResetPluginHeap();

// The n-th allocation of the plug-in from now on fails; 0: none.
void FailPluginAllocation(long long nth);

}  // namespace sim
