#include "simulator/memory/host_memory.h"

#include <bit>
#include <cstring>
#include <utility>

namespace sim {

namespace {

constexpr std::size_t kGuard = 32;
constexpr std::byte kGuardByte{0xFD};
constexpr std::byte kUnused{0xCD};
constexpr std::byte kFreed{0xDD};
// So much freed memory is kept to recognise stale pointers.
constexpr std::size_t kRetiredLimit = std::size_t{8} << 20;
// Up to this many elements every growth moves the array; beyond it only a growth past the capacity does, or
// arrays of a hundred thousand elements that grow one by one would be copied a hundred thousand times.
constexpr std::size_t kAlwaysMoves = 64;

Account AccountOf(BlockKind kind) {
    switch (kind) {
        case BlockKind::kArray:
            return Account::kArray;
        case BlockKind::kSelectionArray:
        case BlockKind::kSelectionEnvironment:
            return Account::kSelection;
        case BlockKind::kString:
        case BlockKind::kText:
            return Account::kString;
        case BlockKind::kStringArray:
        case BlockKind::kTextArray:
            return Account::kStringArray;
        case BlockKind::kGeometryData:
            break;
    }
    return Account::kGeometryData;
}

const char* KindName(BlockKind kind) {
    switch (kind) {
        case BlockKind::kArray:
            return "array";
        case BlockKind::kSelectionArray:
            return "selection array";
        case BlockKind::kString:
            return "wide string";
        case BlockKind::kText:
            return "8-bit string";
        case BlockKind::kStringArray:
            return "list of wide strings";
        case BlockKind::kTextArray:
            return "list of 8-bit strings";
        case BlockKind::kSelectionEnvironment:
            return "selection environment";
        case BlockKind::kGeometryData:
            break;
    }
    return "geometry data";
}

std::size_t TotalBytes(const HostBlock& block) {
    return kGuard + block.capacity * block.elementSize + kGuard;
}

bool IsFilled(const std::byte* from, std::size_t size, std::byte with) {
    return std::all_of(from, from + size, [with](std::byte byte) { return byte == with; });
}

}  // namespace

std::byte* HostBlock::Data() const {
    return memory.get() + kGuard;
}

HostBlock& HostMemory::Add(HostBlock block, std::size_t capacity) {
    block.capacity = capacity;
    const std::size_t bytes = TotalBytes(block);
    block.memory = std::make_unique_for_overwrite<std::byte[]>(bytes);
    const std::size_t used = block.count * block.elementSize;
    std::fill_n(block.memory.get(), kGuard, kGuardByte);
    std::fill_n(block.Data(), used, std::byte{0});
    std::fill_n(block.Data() + used, bytes - 2 * kGuard - used, kUnused);
    std::fill_n(block.memory.get() + bytes - kGuard, kGuard, kGuardByte);
    const void* data = block.Data();
    return blocks_.emplace(data, std::move(block)).first->second;
}

HostBlock& HostMemory::Allocate(BlockKind kind, std::size_t count, std::size_t elementSize, std::size_t step,
                                std::string_view note) {
    const auto* account = std::bit_cast<const void*>(++accounts_);
    report_.Opened(AccountOf(kind), account, note);
    return Add({kind, HostBlock::State::kLive, account, elementSize, count, count, step, nullptr}, count);
}

HostBlock* HostMemory::Find(std::initializer_list<BlockKind> kinds, const void* data) {
    const std::string_view wanted = KindName(*kinds.begin());
    if (data == nullptr) {
        report_.Violation("is given NULL, which is no " + std::string(wanted) + " of the host's");
        return nullptr;
    }
    const auto found = blocks_.find(data);
    if (found == blocks_.end()) {
        report_.Violation("is given a pointer that is no " + std::string(wanted) + " of the host's");
        return nullptr;
    }
    HostBlock& block = found->second;
    if (block.state != HostBlock::State::kLive) {
        const char* how =
            block.state == HostBlock::State::kFreed ? " that was freed" : " that has moved since";
        report_.Violation("is given a " + std::string(wanted) + how);
        return nullptr;
    }
    if (std::ranges::find(kinds, block.kind) != kinds.end()) return &block;
    report_.Violation("is given the wrong kind of memory: " + std::string(KindName(block.kind)) + " for " +
                      std::string(wanted));
    return nullptr;
}

void HostMemory::CheckGuards(const HostBlock& block, std::size_t unusedBytes) {
    const std::size_t used = block.count * block.elementSize;
    const std::size_t room = block.capacity * block.elementSize;
    const bool isIntact = IsFilled(block.memory.get(), kGuard, kGuardByte) &&
                          IsFilled(block.Data() + used, std::min(unusedBytes, room - used), kUnused) &&
                          IsFilled(block.Data() + room, kGuard, kGuardByte);
    if (!isIntact)
        report_.Violation(std::string("finds a ") + KindName(block.kind) + " written outside its elements");
}

void HostMemory::Retire(HostBlock& block, HostBlock::State how) {
    const std::size_t bytes = TotalBytes(block);
    std::fill_n(block.memory.get(), bytes, kFreed);
    block.state = how;
    retired_.push_back(block.Data());
    retiredBytes_ += bytes;
    while (retiredBytes_ > kRetiredLimit) {
        const auto oldest = blocks_.find(retired_.front());
        retiredBytes_ -= TotalBytes(oldest->second);
        blocks_.erase(oldest);
        retired_.pop_front();
    }
}

HostBlock& HostMemory::Resize(HostBlock& block, std::size_t count) {
    const std::size_t size = block.elementSize;
    const std::size_t kept = std::min(count, block.count) * size;
    const bool fits = count <= block.capacity;
    if (count > block.count && (!fits || count <= kAlwaysMoves)) {
        CheckGuards(block, block.capacity * size);
        HostBlock moved{block.kind, block.state, block.account, size, count, 0, block.step, nullptr};
        HostBlock& next =
            Add(std::move(moved),
                fits ? block.capacity : std::max({count, block.count + block.step, block.capacity * 3 / 2}));
        std::memcpy(next.Data(), block.Data(), kept);
        Retire(block, HostBlock::State::kMoved);
        return next;
    }
    // Of the unused room only what is about to be used: it may be large, and elements may come one by one.
    const std::size_t before = block.count * size;
    CheckGuards(block, count * size - kept);
    if (count * size > before)
        std::fill_n(block.Data() + before, count * size - before, std::byte{0});
    else
        std::fill_n(block.Data() + kept, before - kept, kUnused);
    block.count = count;
    return block;
}

bool HostMemory::Release(BlockKind kind, const void* data) {
    HostBlock* block = Find({kind}, data);
    if (block == nullptr) return false;
    CheckGuards(*block, block->capacity * block->elementSize);
    report_.Closed(AccountOf(kind), block->account);
    Retire(*block, HostBlock::State::kFreed);
    return true;
}

wchar_t* NewHostString(HostMemory& memory, std::wstring_view text) {
    const HostBlock& block = memory.Allocate(BlockKind::kString, text.size() + 1, sizeof(wchar_t));
    auto* data = reinterpret_cast<wchar_t*>(block.Data());
    std::copy(text.begin(), text.end(), data);
    return data;
}

char* NewHostText(HostMemory& memory, std::string_view text) {
    const HostBlock& block = memory.Allocate(BlockKind::kText, text.size() + 1, sizeof(char));
    auto* data = reinterpret_cast<char*>(block.Data());
    std::copy(text.begin(), text.end(), data);
    return data;
}

namespace {

// The pointers first, the characters behind them: one block, so that no string can be freed alone.
template <typename Char>
Char** NewList(HostMemory& memory, BlockKind kind, const std::vector<std::basic_string<Char>>& texts) {
    if (texts.empty()) return nullptr;
    std::size_t bytes = texts.size() * sizeof(Char*);
    for (const auto& text : texts) bytes += (text.size() + 1) * sizeof(Char);
    HostBlock& block = memory.Allocate(kind, bytes, 1);
    block.step = texts.size();
    auto** list = reinterpret_cast<Char**>(block.Data());
    auto* next = reinterpret_cast<Char*>(list + texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        list[i] = next;
        next = std::copy(texts[i].begin(), texts[i].end(), next) + 1;
    }
    return list;
}

}  // namespace

wchar_t** NewHostStringArray(HostMemory& memory, const std::vector<std::wstring>& texts) {
    return NewList(memory, BlockKind::kStringArray, texts);
}

char** NewHostTextArray(HostMemory& memory, const std::vector<std::string>& texts) {
    return NewList(memory, BlockKind::kTextArray, texts);
}

void* NewHostArrayBytes(HostMemory& memory, const void* items, std::size_t count, std::size_t elementSize) {
    const HostBlock& block = memory.Allocate(BlockKind::kArray, count, elementSize);
    if (count > 0) std::memcpy(block.Data(), items, count * elementSize);
    return block.Data();
}

}  // namespace sim
