#include "guard_pages.h"

#include <array>
#include <cstdint>
#include <cstdlib>

#include <windows.h>

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kAlignment = 16;
// A slot is one page for a block and one that stays without access. The system allows a process about
// 65000 mappings, and each slot in use takes two of them.
constexpr std::size_t kSlotSize = 2 * kPage;
constexpr std::uint32_t kSlots = 16000;
// Larger blocks have a reservation each, which outlives the block by this many others.
constexpr std::size_t kKeptAfterFree = 2000;

enum class Kind : std::uint64_t {
    Slot = 0x6b76'736c'6f74'2121,
    Pages = 0x6b76'7061'6765'7321,
    Plain = 0x6b76'706c'6169'6e21
};

// Stands directly before each block, so that any binary can free what another one made.
struct alignas(kAlignment) Header {
    Kind kind;
    void* start;
};

constexpr std::size_t kLargestInSlot = kPage - sizeof(Header);

constexpr std::size_t RoundUp(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

// Room for an allocation of `size` bytes, which may be none.
constexpr std::size_t Room(std::size_t size) {
    return RoundUp(size == 0 ? 1 : size, kAlignment);
}

void* Mark(void* block, Kind kind, void* start) {
    static_cast<Header*>(block)[-1] = {kind, start};
    return block;
}

SRWLOCK lock = SRWLOCK_INIT;

class Locked {
public:
    Locked() { AcquireSRWLockExclusive(&lock); }
    ~Locked() { ReleaseSRWLockExclusive(&lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

// The slots: never used ones from `slotsTouched` on, and a ring of freed ones, of which the oldest is
// used again first.
char* arena = nullptr;
std::uint32_t slotsTouched = 0;
std::array<std::uint32_t, kSlots> freeSlots;
std::uint32_t oldestFree = 0;
std::uint32_t freeCount = 0;

char* TakeSlot() {
    const Locked locked;
    if (arena == nullptr) {
        arena = static_cast<char*>(
            VirtualAlloc(nullptr, kSlots * kSlotSize, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
        if (arena == nullptr) return nullptr;
    }
    if (slotsTouched < kSlots) return arena + slotsTouched++ * kSlotSize;
    if (freeCount == 0) return nullptr;
    const std::uint32_t slot = freeSlots[oldestFree];
    oldestFree = (oldestFree + 1) % kSlots;
    --freeCount;
    return arena + slot * kSlotSize;
}

void GiveSlotBack(char* start) {
    DWORD previous = 0;
    VirtualProtect(start, kPage, PAGE_NOACCESS, &previous);
    const Locked locked;
    const std::ptrdiff_t slot = (start - arena) / static_cast<std::ptrdiff_t>(kSlotSize);
    freeSlots[(oldestFree + freeCount) % kSlots] = static_cast<std::uint32_t>(slot);
    ++freeCount;
}

void* AllocateSlot(std::size_t room) {
    char* start = TakeSlot();
    if (start == nullptr) return nullptr;
    DWORD previous = 0;
    if (VirtualProtect(start, kPage, PAGE_READWRITE, &previous) == 0) std::abort();
    return Mark(start + kPage - room, Kind::Slot, start);
}

std::array<void*, kKeptAfterFree> keptPages;
std::size_t nextKept = 0;

void* AllocatePages(std::size_t room) {
    const std::size_t used = RoundUp(sizeof(Header) + room, kPage);
    void* start = VirtualAlloc(nullptr, used + kPage, MEM_RESERVE, PAGE_NOACCESS);
    if (start == nullptr) return nullptr;
    if (VirtualAlloc(start, used, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        VirtualFree(start, 0, MEM_RELEASE);
        return nullptr;
    }
    return Mark(static_cast<char*>(start) + used - room, Kind::Pages, start);
}

void GivePagesBack(void* start) {
    // A size of zero means the whole reservation.
    VirtualFree(start, 0, MEM_DECOMMIT);
    const Locked locked;
    if (keptPages[nextKept] != nullptr) VirtualFree(keptPages[nextKept], 0, MEM_RELEASE);
    keptPages[nextKept] = start;
    nextKept = (nextKept + 1) % kKeptAfterFree;
}

}  // namespace

void* GuardAllocate(std::size_t size) noexcept {
    const std::size_t room = Room(size);
    if (room < size) return nullptr;
    void* block = room <= kLargestInSlot ? AllocateSlot(room) : AllocatePages(room);
    // With all slots in use the ordinary heap serves the rest.
    return block != nullptr ? block : GuardlessAllocate(size);
}

void* GuardlessAllocate(std::size_t size) noexcept {
    const std::size_t room = Room(size);
    char* start = room < size ? nullptr : static_cast<char*>(std::malloc(sizeof(Header) + room));
    return start == nullptr ? nullptr : Mark(start + sizeof(Header), Kind::Plain, start);
}

void GuardFree(void* block) noexcept {
    if (block == nullptr) return;
    Header& header = static_cast<Header*>(block)[-1];
    void* start = header.start;
    switch (header.kind) {
        case Kind::Slot:
            GiveSlotBack(static_cast<char*>(start));
            return;
        case Kind::Pages:
            GivePagesBack(start);
            return;
        case Kind::Plain:
            header.kind = {};
            std::free(start);
            return;
    }
    // Freed twice, overwritten from below, or made by another allocator.
    std::abort();
}
