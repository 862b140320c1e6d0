// The heap of the checked build: each block on pages of its own.
#pragma once

#include <cstddef>

// A block of `size` bytes, aligned to 16, or nullptr. Its end touches a page without access, so a write
// or read past it crashes at once (up to 15 bytes of alignment excepted); so does any use after its end.
void* GuardAllocate(std::size_t size) noexcept;
// A block of the ordinary heap that GuardFree knows as well.
void* GuardlessAllocate(std::size_t size) noexcept;
// Frees either; ends the process for a block freed twice or made by neither.
void GuardFree(void* block) noexcept;
