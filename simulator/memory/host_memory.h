// Memory that the host hands out, every piece of it entered in the accounts; and the plug-in's buffers that
// it fills.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "simulator/report/report.h"

namespace sim {

// What a piece of memory was handed out as; each kind has its own function that takes it back.
enum class BlockKind {
    kArray,
    kSelectionArray,
    kString,
    kText,
    kStringArray,
    kTextArray,
    kGeometryData,
    kSelectionEnvironment
};

// One piece of memory in the plug-in's hands. The data stand between two guard zones; the room that is not
// used yet is filled with a pattern, so that writing past the end is noticed.
struct HostBlock {
    enum class State { kLive, kFreed, kMoved };

    BlockKind kind;
    State state;
    const void* account;  // what the account knows the block as, also after it has moved
    std::size_t elementSize;
    std::size_t count;     // elements in use
    std::size_t capacity;  // elements that fit
    std::size_t step;      // growth step the caller asked for
    std::unique_ptr<std::byte[]> memory;

    std::byte* Data() const;
};

class HostMemory {
public:
    explicit HostMemory(Report& report) : report_(report) {}
    HostMemory(const HostMemory&) = delete;
    HostMemory& operator=(const HostMemory&) = delete;

    // A block of `count` zeroed elements, open in the account of its kind until Release.
    HostBlock& Allocate(BlockKind kind, std::size_t count, std::size_t elementSize, std::size_t step = 1,
                        std::string_view note = {});
    // The block that starts at `data`, null when there is none of those kinds. NULL, data of a freed or moved
    // block, of another kind or of nobody's is a violation. O(1).
    HostBlock* Find(std::initializer_list<BlockKind> kinds, const void* data);
    // Changes the number of elements; new ones are zeroed. Gives the block as it is now: growth moves it, see
    // the source for how often.
    HostBlock& Resize(HostBlock& block, std::size_t count);
    // Takes the block back: poisons its data and keeps them out of use for a while, so that a stale pointer
    // finds the pattern and a second free is recognised. False, and a violation, as in Find.
    bool Release(BlockKind kind, const void* data);

private:
    HostBlock& Add(HostBlock block, std::size_t capacity);
    // `unusedBytes`: how much of the unused room behind the elements is looked at.
    void CheckGuards(const HostBlock& block, std::size_t unusedBytes);
    void Retire(HostBlock& block, HostBlock::State how);

    Report& report_;
    std::unordered_map<const void*, HostBlock> blocks_;  // by their data, the retired ones too
    std::deque<const void*> retired_;                    // oldest first
    std::size_t retiredBytes_ = 0;
    std::uintptr_t accounts_ = 0;
};

// ---- Strings for functions that give one out: given back with ProWstringFree and ProStringFree.
wchar_t* NewHostString(HostMemory& memory, std::wstring_view text);
char* NewHostText(HostMemory& memory, std::string_view text);

// ---- Plain lists of strings: given back with ProWstringarrayFree and ProStringarrayFree. Null for an empty
// list.
wchar_t** NewHostStringArray(HostMemory& memory, const std::vector<std::wstring>& texts);
char** NewHostTextArray(HostMemory& memory, const std::vector<std::string>& texts);

// ---- Expandable arrays (ProArray): given back with ProArrayFree.
template <typename T>
T* NewHostArray(HostMemory& memory, const std::vector<T>& items);

// Copies `text` with its terminating zero into a buffer of `size` characters, and fills the rest of it with
// a pattern: a buffer that is shorter than it has to be is written past its end even by a short text. False,
// and the buffer is left alone, when the text does not fit.
template <typename Char>
[[nodiscard]] bool FillBuffer(std::type_identity_t<std::basic_string_view<Char>> text, Char* buffer,
                              std::size_t size) {
    if (buffer == nullptr || text.size() >= size) return false;
    std::memset(buffer, kSpoiledByte, size * sizeof(Char));
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = Char{};
    return true;
}

// Bytes of a fresh ProArray of `count` elements.
void* NewHostArrayBytes(HostMemory& memory, const void* items, std::size_t count, std::size_t elementSize);

template <typename T>
T* NewHostArray(HostMemory& memory, const std::vector<T>& items) {
    static_assert(std::is_trivially_copyable_v<T>);
    return static_cast<T*>(NewHostArrayBytes(memory, items.data(), items.size(), sizeof(T)));
}

}  // namespace sim
