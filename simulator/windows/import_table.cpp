#include "simulator/windows/import_table.h"

namespace sim {

namespace {

// Calls visit(name, slot) for every import by name.
template <typename Visit>
void VisitImports(HMODULE module, Visit visit) {
    auto* base = reinterpret_cast<std::uint8_t*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0) return;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            const char* name = reinterpret_cast<const char*>(entry->Name);
            visit(std::string_view(name), reinterpret_cast<void**>(&slots->u1.Function));
        }
    }
}

void Write(void** slot, void* target) {
    DWORD old = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &old);
    *slot = target;
    VirtualProtect(slot, sizeof *slot, old, &old);
}

}  // namespace

std::vector<void**> ImportSlots(HMODULE module, std::string_view function) {
    std::vector<void**> slots;
    VisitImports(module, [&](std::string_view name, void** slot) {
        if (name == function) slots.push_back(slot);
    });
    return slots;
}

int PatchImport(HMODULE module, std::string_view function, void* replacement,
                std::vector<ImportPatch>& patches) {
    int count = 0;
    for (void** slot : ImportSlots(module, function)) {
        patches.push_back({slot, *slot});
        Write(slot, replacement);
        ++count;
    }
    return count;
}

void Restore(const std::vector<ImportPatch>& patches) {
    for (const ImportPatch& patch : patches) Write(patch.slot, patch.original);
}

std::vector<std::string_view> ImportedFunctions(HMODULE module) {
    std::vector<std::string_view> names;
    VisitImports(module, [&](std::string_view name, void**) { names.push_back(name); });
    return names;
}

}  // namespace sim
