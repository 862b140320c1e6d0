// Files that are built into the plug-in.

#include "base/resource.h"

#include <algorithm>

#include <windows.h>

namespace kv {

static HMODULE OwnModule() {
    HMODULE module = nullptr;
    const DWORD how = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    const BOOL done = GetModuleHandleExW(how, reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return done ? module : nullptr;
}

std::string ResourceText(const wchar_t* name) {
    const HMODULE module = OwnModule();
    const HRSRC found = FindResourceW(module, name, MAKEINTRESOURCEW(10));  // RCDATA
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
    const void* place = loaded == nullptr ? nullptr : LockResource(loaded);
    if (place == nullptr) return {};
    std::string text(static_cast<const char*>(place), SizeofResource(module, found));
    std::erase(text, '\r');
    return text;
}

}  // namespace kv
