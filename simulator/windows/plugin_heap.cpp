#include "simulator/windows/plugin_heap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace sim {

namespace {

PluginHeapFigures figures;
long long failCountdown = 0;

bool MustFail() {
    ++figures.allocations;
    if (failCountdown == 0 || --failCountdown > 0) return false;
    ++figures.failed;
    return true;
}

void* Counted(void* block) {
    if (block != nullptr) {
        ++figures.liveBlocks;
        figures.liveBytes += static_cast<long long>(_msize(block));
        figures.peakBytes = std::max(figures.peakBytes, figures.liveBytes);
    }
    return block;
}

void Uncount(void* block) {
    if (block == nullptr) return;
    --figures.liveBlocks;
    figures.liveBytes -= static_cast<long long>(_msize(block));
}

void* HeapMalloc(std::size_t size) {
    return MustFail() ? nullptr : Counted(std::malloc(size));
}

void* HeapCalloc(std::size_t count, std::size_t size) {
    return MustFail() ? nullptr : Counted(std::calloc(count, size));
}

void* HeapRealloc(void* block, std::size_t size) {
    if (MustFail()) return nullptr;
    Uncount(block);
    void* moved = std::realloc(block, size);
    // A failed call leaves the old block alive.
    Counted(moved == nullptr && size > 0 ? block : moved);
    return moved;
}

void HeapFree(void* block) {
    Uncount(block);
    std::free(block);
}

// Thread slots that the plug-in's run-time library has taken; a process has about a thousand.
std::set<DWORD> threadSlots;

DWORD WINAPI TakeThreadSlot() {
    const DWORD slot = TlsAlloc();
    if (slot != TLS_OUT_OF_INDEXES) threadSlots.insert(slot);
    return slot;
}

BOOL WINAPI GiveThreadSlotBack(DWORD slot) {
    threadSlots.erase(slot);
    return TlsFree(slot);
}

}  // namespace

void PatchPluginHeap(HMODULE module, std::vector<ImportPatch>& patches) {
    PatchImport(module, "malloc", reinterpret_cast<void*>(&HeapMalloc), patches);
    PatchImport(module, "calloc", reinterpret_cast<void*>(&HeapCalloc), patches);
    PatchImport(module, "realloc", reinterpret_cast<void*>(&HeapRealloc), patches);
    PatchImport(module, "free", reinterpret_cast<void*>(&HeapFree), patches);
    PatchImport(module, "TlsAlloc", reinterpret_cast<void*>(&TakeThreadSlot), patches);
    PatchImport(module, "TlsFree", reinterpret_cast<void*>(&GiveThreadSlotBack), patches);
}

void FreePluginThreadSlots() {
    for (const DWORD slot : threadSlots) TlsFree(slot);
    threadSlots.clear();
}

PluginHeapFigures PluginHeap() {
    return figures;
}

void ResetPluginHeap() {
    figures.allocations = 0;
    figures.failed = 0;
    figures.peakBytes = figures.liveBytes;
}

void FailPluginAllocation(long long nth) {
    failCountdown = nth;
}

}  // namespace sim
