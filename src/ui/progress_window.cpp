// The window of long runs, on the Windows window calls.

#include "ui/progress_window.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>

#include <windows.h>

#include "base/scope_exit.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kClass[] = L"KorvaneProgress";
static constexpr wchar_t kTitle[] = L"Korvane";
static constexpr wchar_t kCancel[] = L"取消";
static constexpr wchar_t kStopping[] = L"正在停止…";
static constexpr wchar_t kTimeLeft[] = L"剩余时间约 %llu:%02llu";

static constexpr unsigned long long kQuietTime = 1000;  // ms: a shorter run needs no window
static constexpr unsigned long long kUpdateTime = 100;  // ms between repaints

// Child windows, by their identifiers.
static constexpr int kCommandText = 101;
static constexpr int kCountText = 102;
static constexpr int kItemText = 103;
static constexpr int kTimeText = 104;

// Places in pixels of a screen with 96 dots per inch.
struct Place {
    int id;
    int left;
    int top;
    int width;
    int height;
};
static constexpr int kScreenDpi = USER_DEFAULT_SCREEN_DPI;
static constexpr SIZE kClient = {440, 132};
static constexpr Place kBar = {0, 16, 66, 408, 14};
static constexpr std::array<Place, 5> kChildren = {{
    {kCommandText, 16, 12, 268, 20},
    {kCountText, 284, 12, 140, 20},
    {kItemText, 16, 38, 408, 20},
    {kTimeText, 16, 98, 260, 20},
    {IDCANCEL, 334, 92, 90, 28},
}};
static constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN;
static constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME;

struct ProgressState {
    const char* command = nullptr;
    std::size_t total = 0;
    std::size_t done = 0;
    ULONGLONG start = 0;
    ULONGLONG updated = 0;
    HWND window = nullptr;
    HFONT font = nullptr;
    UINT dpi = kScreenDpi;
    bool visible = false;
    bool tried = false;  // to make the window
    bool quitting = false;
    bool cancelled = false;
    ProgressState* outer = nullptr;
};

// The run that is on; boxes have to hide its window wherever they come from.
static ProgressState* current = nullptr;

static bool WindowMake(ProgressState& state);
static void WindowUpdate(ProgressState& state, const std::wstring& item);
static void MessagesHandle(ProgressState& state);
static HINSTANCE PluginModule();
static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
static void ChildrenMake(HWND window);
static void LayoutApply(ProgressState& state);
static void BarPaint(const ProgressState& state);
static void CancelAsk(ProgressState& state);
static std::array<wchar_t, 64> TimeLeftText(const ProgressState& state, ULONGLONG now);
static int Scaled(int length, UINT dpi);

ProgressWindow::ProgressWindow(const char* command, std::size_t total)
    : state_(std::make_unique<ProgressState>()) {
    state_->command = command;
    state_->total = total;
    state_->start = GetTickCount64();
    state_->outer = current;
    current = state_.get();
}

ProgressWindow::~ProgressWindow() {
    current = state_->outer;
    if (state_->window != nullptr) DestroyWindow(state_->window);
    if (state_->font != nullptr) DeleteObject(state_->font);
}

void ProgressWindow::Show(std::size_t done, const std::wstring& item) {
    ProgressState& state = *state_;
    state.done = done;
    const ULONGLONG now = GetTickCount64();
    if (now - state.start < kQuietTime || now - state.updated < kUpdateTime) return;
    state.updated = now;
    if (state.window == nullptr && !WindowMake(state)) return;
    WindowUpdate(state, item);
    if (!state.quitting) MessagesHandle(state);
}

bool ProgressWindow::Cancelled() const {
    return state_->cancelled;
}

void ProgressWindowHide() noexcept {
    if (current == nullptr || current->window == nullptr) return;
    ShowWindow(current->window, SW_HIDE);
    current->visible = false;
}

void ProgressWindowForget() noexcept {
    UnregisterClassW(kClass, PluginModule());
}

// ---- The window's life

template <typename Function>
static Function NewerWindowsCall(const char* name) {
    const HMODULE module = GetModuleHandleW(L"user32.dll");
    if (module == nullptr) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// Has windows made meanwhile drawn in the dots of their screen instead of being stretched. Older versions of
// Windows lack the call.
static auto UseScreenDots() {
    using ContextSet = void*(WINAPI*)(void*);
    const auto set = NewerWindowsCall<ContextSet>("SetThreadDpiAwarenessContext");
    void* const perMonitor =
        reinterpret_cast<void*>(static_cast<INT_PTR>(-4));  // NOLINT(performance-no-int-to-ptr)
    void* const previous = set == nullptr ? nullptr : set(perMonitor);
    return ScopeExit([set, previous] {
        if (previous != nullptr) set(previous);
    });
}

// Tried once a run. The owner keeps the window above the host without taking the focus from it.
static bool WindowMake(ProgressState& state) {
    if (state.tried) return false;
    state.tried = true;
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = OnMessage;
    description.hInstance = PluginModule();
    // The arrow, by its number: its name in the headers is not of one width.
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    description.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    description.lpszClassName = kClass;
    // A class left from the last run does as well.
    RegisterClassExW(&description);

    const auto goBack = UseScreenDots();
    state.window =
        CreateWindowExW(kExtendedStyle, kClass, kTitle, kStyle, CW_USEDEFAULT, CW_USEDEFAULT, kClient.cx,
                        kClient.cy, GetActiveWindow(), nullptr, PluginModule(), &state);
    if (state.window == nullptr) return false;
    LayoutApply(state);
    SetDlgItemTextW(state.window, kCommandText, MenuText(state.command).c_str());
    return true;
}

static void WindowUpdate(ProgressState& state, const std::wstring& item) {
    const std::wstring count = std::to_wstring(state.done) + L" / " + std::to_wstring(state.total);
    SetDlgItemTextW(state.window, kCountText, count.c_str());
    SetDlgItemTextW(state.window, kItemText, item.c_str());
    SetDlgItemTextW(state.window, kTimeText, TimeLeftText(state, state.updated).data());
    if (!state.visible) ShowWindow(state.window, SW_SHOWNOACTIVATE);
    state.visible = true;
    InvalidateRect(state.window, nullptr, FALSE);
    UpdateWindow(state.window);
}

// Only this window's messages are taken: handling others here would let the host begin something else in the
// middle of the run. The end of the program comes with any of them and is left for the host.
static void MessagesHandle(ProgressState& state) {
    MSG message = {};
    while (state.window != nullptr && PeekMessageW(&message, state.window, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            state.quitting = true;
            return;
        }
        // Makes Esc press the button while this window has the focus.
        if (IsDialogMessageW(state.window, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

static HINSTANCE PluginModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&current), &module);
    return module;
}

// ---- The window's messages

static ProgressState* StateOf(HWND window) {
    return reinterpret_cast<ProgressState*>(  // NOLINT(performance-no-int-to-ptr)
        GetWindowLongPtrW(window, GWLP_USERDATA));
}

static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    ProgressState* state = StateOf(window);
    switch (message) {
        case WM_CREATE: {
            const auto* creation =
                reinterpret_cast<const CREATESTRUCTW*>(  // NOLINT(performance-no-int-to-ptr)
                    second);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
            ChildrenMake(window);
            return 0;
        }
        case WM_COMMAND:
            if (state != nullptr && LOWORD(first) == IDCANCEL) CancelAsk(*state);
            return 0;
        case WM_PAINT:
            if (state == nullptr) break;
            BarPaint(*state);
            return 0;
        case WM_DPICHANGED:
            if (state != nullptr) LayoutApply(*state);
            return 0;
        case WM_NCDESTROY:
            // The owner may take the window with it.
            if (state != nullptr) state->window = nullptr;
            break;
        default:
            break;
    }
    return DefWindowProcW(window, message, first, second);
}

static void ChildrenMake(HWND window) {
    for (const Place& place : kChildren) {
        const bool isButton = place.id == IDCANCEL;
        DWORD style = WS_CHILD | WS_VISIBLE;
        if (isButton) style |= WS_TABSTOP | BS_PUSHBUTTON;
        if (!isButton) style |= SS_NOPREFIX | SS_ENDELLIPSIS;
        if (place.id == kCountText) style |= SS_RIGHT;
        CreateWindowExW(
            0, isButton ? L"BUTTON" : L"STATIC", isButton ? kCancel : L"", style, 0, 0, 0, 0, window,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(place.id)),  // NOLINT(performance-no-int-to-ptr)
            PluginModule(), nullptr);
    }
}

static void CancelAsk(ProgressState& state) {
    state.cancelled = true;
    const HWND button = GetDlgItem(state.window, IDCANCEL);
    SetWindowTextW(button, kStopping);
    EnableWindow(button, FALSE);
}

// ---- Its look

// Font and sizes for the screen that the window is on, and its place in the middle of that screen.
static void LayoutApply(ProgressState& state) {
    using DpiGet = UINT(WINAPI*)(HWND);
    const auto dpiGet = NewerWindowsCall<DpiGet>("GetDpiForWindow");
    const UINT found = dpiGet == nullptr ? 0 : dpiGet(state.window);
    state.dpi = found == 0 ? kScreenDpi : found;

    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    metrics.lfMessageFont.lfHeight = -Scaled(12, state.dpi);
    const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
    for (const Place& place : kChildren) {
        const HWND child = GetDlgItem(state.window, place.id);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        MoveWindow(child, Scaled(place.left, state.dpi), Scaled(place.top, state.dpi),
                   Scaled(place.width, state.dpi), Scaled(place.height, state.dpi), FALSE);
    }
    if (state.font != nullptr) DeleteObject(state.font);
    state.font = font;

    RECT frame = {0, 0, Scaled(kClient.cx, state.dpi), Scaled(kClient.cy, state.dpi)};
    AdjustWindowRectEx(&frame, kStyle, FALSE, kExtendedStyle);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    GetMonitorInfoW(MonitorFromWindow(state.window, MONITOR_DEFAULTTONEAREST), &screen);
    const RECT& area = screen.rcWork;
    SetWindowPos(state.window, nullptr, area.left + (area.right - area.left - width) / 2,
                 area.top + (area.bottom - area.top - height) / 2, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

static void BarPaint(const ProgressState& state) {
    PAINTSTRUCT paint = {};
    const HDC canvas = BeginPaint(state.window, &paint);
    RECT bar = {Scaled(kBar.left, state.dpi), Scaled(kBar.top, state.dpi),
                Scaled(kBar.left + kBar.width, state.dpi), Scaled(kBar.top + kBar.height, state.dpi)};
    FrameRect(canvas, &bar, GetSysColorBrush(COLOR_3DSHADOW));
    InflateRect(&bar, -1, -1);
    const double share =
        state.total == 0 ? 0.0 : static_cast<double>(state.done) / static_cast<double>(state.total);
    RECT rest = bar;
    bar.right = bar.left + static_cast<LONG>(std::min(share, 1.0) * (bar.right - bar.left));
    rest.left = bar.right;
    FillRect(canvas, &bar, GetSysColorBrush(COLOR_HIGHLIGHT));
    FillRect(canvas, &rest, GetSysColorBrush(COLOR_WINDOW));
    EndPaint(state.window, &paint);
}

// From the mean time of the items so far; empty before the first is finished.
static std::array<wchar_t, 64> TimeLeftText(const ProgressState& state, ULONGLONG now) {
    std::array<wchar_t, 64> text = {};
    if (state.done == 0 || state.done > state.total) return text;
    const ULONGLONG left = (now - state.start) / state.done * (state.total - state.done) / 1000;
    std::swprintf(text.data(), text.size(), kTimeLeft, left / 60, left % 60);
    return text;
}

static int Scaled(int length, UINT dpi) {
    return MulDiv(length, static_cast<int>(dpi), kScreenDpi);
}

}  // namespace kv
