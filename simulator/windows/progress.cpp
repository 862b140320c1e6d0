#include "simulator/windows/progress.h"

#include <array>
#include <cstdlib>
#include <string>

#include <windows.h>

namespace sim {

namespace {

constexpr wchar_t kWindowClass[] = L"KorvaneProgress";

std::wstring TextOf(HWND window) {
    std::array<wchar_t, 256> text = {};
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name = {};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

BOOL CALLBACK TakeProgressWindow(HWND window, LPARAM found) {
    if (ClassOf(window) != kWindowClass) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;  // NOLINT(performance-no-int-to-ptr)
    return FALSE;
}

HWND FindProgressWindow() {
    HWND window = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), TakeProgressWindow, reinterpret_cast<LPARAM>(&window));
    return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

ProgressSight LookAt(HWND window) {
    ProgressSight sight;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const bool isButton = ClassOf(child) == L"Button";
        (isButton ? sight.buttons : sight.texts).push_back(TextOf(child));
    }
    sight.isActive = GetActiveWindow() == window;
    sight.isOwned = GetWindow(window, GW_OWNER) != nullptr;
    return sight;
}

// The number before the stroke of "12 / 300".
long long DoneItems(const ProgressSight& sight) {
    for (const std::wstring& text : sight.texts)
        if (text.find(L" / ") != std::wstring::npos) return std::wcstoll(text.c_str(), nullptr, 10);
    return -1;
}

void PressButton(HWND window) {
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        if (ClassOf(child) == L"Button") PostMessageW(child, BM_CLICK, 0, 0);
}

}  // namespace

unsigned long long AskClock(ProgressPlay& play) {
    if (play.realClock) return GetTickCount64();
    if (play.step == 0) return play.now;
    if (const HWND window = FindProgressWindow()) {
        play.sights.push_back(LookAt(window));
        if (play.onSight) play.onSight(window);
        if (play.cancelAfter >= 0 && DoneItems(play.sights.back()) >= play.cancelAfter) {
            play.cancelAfter = -1;
            PressButton(window);
        }
    }
    return play.now += play.step;
}

bool IsProgressShown() {
    return FindProgressWindow() != nullptr;
}

}  // namespace sim
