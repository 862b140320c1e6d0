// The heap of the checked build: each block on pages of its own.
#pragma once

#include <cstddef>

// A block of `size` bytes, aligned to 16, or nullptr. Its end touches a page without access, so a write
// or read past it crashes at once (up to 15 bytes of alignment excepted); so does any use after its end.
void* GuardAllocate(std::size_t size) noexcept;
void GuardFree(void* block) noexcept;
