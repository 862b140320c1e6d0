// Changing where a loaded module's imported calls go.
//
// The plug-in under test is byte for byte the one that ships: what a person would have to answer is caught in
// its import table, after loading.

#pragma once

#include <string_view>
#include <vector>

#include <windows.h>

namespace sim {

// One redirected import; the old target comes back with Restore.
struct ImportPatch {
    void** slot = nullptr;
    void* original = nullptr;
};

// What a redirected import may point at.
template <typename Function>
void* Address(Function* function) {
    return reinterpret_cast<void*>(function);
}

// All slots of `module` that import `function` (from any library), normally none or one. Calls fetched with
// GetProcAddress are not seen.
std::vector<void**> ImportSlots(HMODULE module, std::string_view function);

// Points every import of `function` at `replacement`; what was changed is appended to `patches`. Returns how
// many slots were changed.
int PatchImport(HMODULE module, std::string_view function, void* replacement,
                std::vector<ImportPatch>& patches);

void Restore(const std::vector<ImportPatch>& patches);

// Names of all imported functions.
std::vector<std::string_view> ImportedFunctions(HMODULE module);

}  // namespace sim
