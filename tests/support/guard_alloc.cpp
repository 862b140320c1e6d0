// Sends this binary's new and delete to the guarded heap.
//
// The array, nothrow and sized forms of the standard library all end in these two.

#include <cstddef>
#include <new>

#include "guard_pages.h"

void* operator new(std::size_t size) {
    if (void* block = GuardAllocate(size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    GuardFree(block);
}

void operator delete(void* block, std::size_t) noexcept {
    GuardFree(block);
}
