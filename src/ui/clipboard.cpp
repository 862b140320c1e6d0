// The clipboard, as Unicode text.

#include "ui/clipboard.h"

#include <cstring>

#include <windows.h>

#include "base/scope_exit.h"
#include "base/status.h"

namespace kv {

static constexpr wchar_t kWindowClass[] = L"STATIC";
// Another program that looks at the clipboard keeps it for a moment.
static constexpr int kAttempts = 10;
static constexpr DWORD kPause = 20;  // milliseconds

static bool OpenFor(HWND owner);
static HGLOBAL BlockOf(const std::wstring& text);

// The clipboard takes nothing from a program that opened it without a window, and which of the host's windows
// would do nobody says: it gets one of its own, which is never seen.
ProError ClipboardTextSet(const std::wstring& text) {
    const HWND owner =
        CreateWindowExW(0, kWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    if (owner == nullptr) return PRO_TK_GENERAL_ERROR;
    const ScopeExit drop([owner] { DestroyWindow(owner); });
    if (!OpenFor(owner)) return PRO_TK_E_BUSY;
    const ScopeExit close([] { CloseClipboard(); });

    const HGLOBAL block = BlockOf(text);
    if (block == nullptr) return PRO_TK_OUT_OF_MEMORY;
    // Given away, the block is Windows' own.
    if (EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, block) != nullptr) return PRO_TK_NO_ERROR;
    GlobalFree(block);
    return PRO_TK_GENERAL_ERROR;
}

static bool OpenFor(HWND owner) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (attempt > 0) Sleep(kPause);
        if (OpenClipboard(owner)) return true;
    }
    return false;
}

static HGLOBAL BlockOf(const std::wstring& text) {
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    void* place = block == nullptr ? nullptr : GlobalLock(block);
    if (place == nullptr) {
        if (block != nullptr) GlobalFree(block);
        return nullptr;
    }
    std::memcpy(place, text.c_str(), size);
    GlobalUnlock(block);
    return block;
}

}  // namespace kv
