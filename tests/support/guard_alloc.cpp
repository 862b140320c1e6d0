// Sends this binary's new and delete to the guarded heap.
//
// The simulator's own objects would be most of the blocks and are not under test: with GUARD_ARRAYS_ONLY
// just its arrays are guarded, among them all memory that it hands to the plug-in.

#include <cstddef>
#include <new>

#include "guard_pages.h"

static void* OrThrow(void* block) {
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void* operator new(std::size_t size) {
#ifdef GUARD_ARRAYS_ONLY
    return OrThrow(GuardlessAllocate(size));
#else
    return OrThrow(GuardAllocate(size));
#endif
}

void* operator new[](std::size_t size) {
    return OrThrow(GuardAllocate(size));
}

void operator delete(void* block) noexcept {
    GuardFree(block);
}

void operator delete(void* block, std::size_t) noexcept {
    GuardFree(block);
}

void operator delete[](void* block) noexcept {
    GuardFree(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    GuardFree(block);
}
