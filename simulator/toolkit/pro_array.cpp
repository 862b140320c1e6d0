#include <ProArray.h>

#include <cstring>
#include <limits>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The host's own limit is not known for certain; a request beyond this one is surely a mistake.
constexpr std::size_t kLargestArray = std::size_t{256} << 20;

constexpr bool IsTooLarge(std::size_t count, std::size_t elementSize) {
    return count > kLargestArray / elementSize;
}

}  // namespace

ProError ProArrayAlloc(int n_objs, int obj_size, int reallocation_size, ProArray* p_array) {
    static const CallSite kSite("ProArrayAlloc", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {n_objs, obj_size, reallocation_size, Out(p_array)}, [&](Session& host) -> ProError {
        if (n_objs < 0 || obj_size <= 0 || reallocation_size <= 0 || p_array == nullptr)
            return PRO_TK_BAD_INPUTS;
        const auto count = static_cast<std::size_t>(n_objs), elementSize = static_cast<std::size_t>(obj_size);
        if (IsTooLarge(count, elementSize)) return PRO_TK_OUT_OF_MEMORY;
        *p_array =
            host.memory
                .Allocate(BlockKind::kArray, count, elementSize, static_cast<std::size_t>(reallocation_size))
                .Data();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProArrayFree(ProArray* p_array) {
    static const CallSite kSite("ProArrayFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_array}, [&](Session& host) -> ProError {
        // The variable keeps its value: the documents do not say that it is cleared.
        if (p_array == nullptr || !host.memory.Release(BlockKind::kArray, *p_array)) return PRO_TK_BAD_INPUTS;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProArraySizeGet(ProArray array, int* p_size) {
    static const CallSite kSite("ProArraySizeGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {array, Out(p_size)}, [&](Session& host) -> ProError {
        const HostBlock* block = host.memory.Find({BlockKind::kArray, BlockKind::kSelectionArray}, array);
        if (block == nullptr || p_size == nullptr) return PRO_TK_BAD_INPUTS;
        *p_size = static_cast<int>(block->count);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProArraySizeSet(ProArray* p_array, int size) {
    static const CallSite kSite("ProArraySizeSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_array, size}, [&](Session& host) -> ProError {
        HostBlock* block = p_array == nullptr ? nullptr : host.memory.Find({BlockKind::kArray}, *p_array);
        if (block == nullptr || size < 0) return PRO_TK_BAD_INPUTS;
        if (IsTooLarge(static_cast<std::size_t>(size), block->elementSize)) return PRO_TK_BAD_INPUTS;
        *p_array = host.memory.Resize(*block, static_cast<std::size_t>(size)).Data();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProArrayObjectAdd(ProArray* p_array, int index, int n_objects, void* p_object) {
    static const CallSite kSite("ProArrayObjectAdd", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {p_array, index, n_objects, p_object}, [&](Session& host) -> ProError {
        HostBlock* block = p_array == nullptr ? nullptr : host.memory.Find({BlockKind::kArray}, *p_array);
        if (block == nullptr || n_objects < 1 || p_object == nullptr) return PRO_TK_BAD_INPUTS;
        const std::size_t before = block->count, added = static_cast<std::size_t>(n_objects);
        const std::size_t place = index < 0 ? before : static_cast<std::size_t>(index);
        if (place > before) return PRO_TK_BAD_INPUTS;
        if (added > kLargestArray || IsTooLarge(before + added, block->elementSize))
            return PRO_TK_OUT_OF_MEMORY;

        // The objects may be elements of this very array.
        const std::size_t bytes = added * block->elementSize;
        const auto* source = static_cast<const std::byte*>(p_object);
        std::vector<std::byte> own;
        if (source >= block->Data() && source < block->Data() + before * block->elementSize) {
            own.assign(source, source + bytes);
            source = own.data();
        }
        block = &host.memory.Resize(*block, before + added);
        std::byte* at = block->Data() + place * block->elementSize;
        std::memmove(at + bytes, at, (before - place) * block->elementSize);
        std::memcpy(at, source, bytes);
        *p_array = block->Data();
        return PRO_TK_NO_ERROR;
    });
}
