#include "simulator/windows/desktop.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string_view>

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/windows/progress.h"

namespace sim {

namespace {

// Whose plug-in makes the calls: they come without a word of it.
Session* caller = nullptr;

// ---- Boxes, choices and programs

// What the user answers to a box that only informs is plain; a box with a choice needs an arranged answer.
int AnswerBox(UINT flags, const std::wstring& text) {
    User& user = caller->user;
    const UINT buttons = flags & MB_TYPEMASK;
    if (buttons == MB_OK) return IDOK;
    if (!user.boxAnswers.empty()) {
        const int answer = user.boxAnswers.front();
        user.boxAnswers.pop_front();
        return answer;
    }
    user.Problem("unexpected question: " + Utf8(text));
    return buttons == MB_YESNO ? IDNO : IDCANCEL;
}

int WINAPI ShowBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT flags) {
    if (IsProgressShown()) caller->report.Violation("MessageBoxW while the progress window is on the screen");
    caller->user.boxes.push_back({text == nullptr ? L"" : text, caption == nullptr ? L"" : caption, flags,
                                  owner != nullptr, caller->report.CallCount()});
    return AnswerBox(flags, caller->user.boxes.back().text);
}

std::wstring Text(LPCWSTR text) {
    return text == nullptr ? std::wstring() : std::wstring(text);
}

// Pairs of texts, each with its end mark, and one more mark at the end.
std::wstring FilterText(LPCWSTR filter) {
    std::wstring text;
    for (; filter != nullptr && *filter != L'\0'; filter += std::wcslen(filter) + 1)
        text += std::wstring(filter) + L"|";
    return text;
}

BOOL ChooseFile(LPOPENFILENAMEW request, const char* what) {
    User& user = caller->user;
    user.fileQuestions.push_back({Text(request->lpstrInitialDir), FilterText(request->lpstrFilter),
                                  Text(request->lpstrDefExt), request->Flags, Text(request->lpstrFile),
                                  request->hwndOwner != nullptr});
    user.questions.push_back(request->lpstrTitle == nullptr ? L"" : request->lpstrTitle);
    if (user.files.empty()) {
        user.Problem(std::string("unexpected ") + what);
        return FALSE;
    }
    const std::optional<std::wstring> answer = user.files.front();
    user.files.pop_front();
    if (!answer) return FALSE;
    // A bare name is one in the folder where the user works.
    const std::wstring path = (caller->models.WorkingDirectory() / *answer).wstring();
    if (path.size() + 1 > request->nMaxFile) {
        caller->report.Violation(std::string(what) + ": the chosen path does not fit the plug-in's buffer");
        return FALSE;
    }
    std::copy_n(path.c_str(), path.size() + 1, request->lpstrFile);
    // The dialog works in the folder that it shows, and stays there unless it is told to come back.
    if ((request->Flags & OFN_NOCHANGEDIR) == 0)
        SetCurrentDirectoryW(std::filesystem::path(path).parent_path().c_str());
    return TRUE;
}

BOOL WINAPI ChooseFileToOpen(LPOPENFILENAMEW request) {
    return ChooseFile(request, "choice of a file to open");
}
BOOL WINAPI ChooseFileToSave(LPOPENFILENAMEW request) {
    return ChooseFile(request, "choice of a file to save");
}

// Anything above 32 means started; below is what was not found, or why else it cannot.
constexpr UINT kStarted = 33;
constexpr UINT kNotStarted = ERROR_FILE_NOT_FOUND;

HINSTANCE WINAPI StartProgram(HWND, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR, INT show) {
    const bool fails = caller->user.programsFail;
    if (!fails) caller->user.started.push_back({Text(verb), Text(file), Text(parameters), show});
    const std::intptr_t answer = fails ? kNotStarted : kStarted;
    return reinterpret_cast<HINSTANCE>(answer);  // NOLINT(performance-no-int-to-ptr)
}

UINT WINAPI StartCommandLine(LPCSTR commandLine, UINT show) {
    if (caller->user.programsFail) return kNotStarted;
    const int size = MultiByteToWideChar(CP_ACP, 0, commandLine, -1, nullptr, 0);
    std::wstring line(static_cast<std::size_t>(std::max(size, 1)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, commandLine, -1, line.data(), size);
    line.pop_back();
    caller->user.started.push_back({L"", line, L"", static_cast<int>(show)});
    return kStarted;
}

// ---- Timers

std::vector<DesktopTimer> timers;
UINT_PTR nextTimer = 0x7F01;

UINT_PTR WINAPI StartTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    if (window != nullptr) caller->report.Violation("SetTimer with a window");
    (void)id;  // without a window the system gives an identifier of its own
    timers.push_back({nextTimer++, period, procedure});
    return timers.back().id;
}

BOOL WINAPI StopTimer(HWND, UINT_PTR id) {
    const auto timer =
        std::find_if(timers.begin(), timers.end(), [id](const DesktopTimer& t) { return t.id == id; });
    if (timer == timers.end()) {
        caller->report.Violation("KillTimer for a timer that does not run");
        return FALSE;
    }
    timers.erase(timer);
    return TRUE;
}

ULONGLONG WINAPI ReadClock() {
    return AskClock(caller->user.progress);
}

HWND WINAPI MakeWindow(DWORD extendedStyle, LPCWSTR name, LPCWSTR title, DWORD style, INT left, INT top,
                       INT width, INT height, HWND parent, HMENU menu, HINSTANCE module, LPVOID data) {
    if (caller->user.progress.windowsFail) return nullptr;
    return CreateWindowExW(extendedStyle, name, title, style, left, top, width, height, parent, menu, module,
                           data);
}

// ---- Folders of the user

BOOL WINAPI FindUserFolder(HWND owner, LPWSTR path, int folder, BOOL create) {
    if ((folder & 0xFF) != CSIDL_LOCAL_APPDATA) return SHGetSpecialFolderPathW(owner, path, folder, create);
    const std::filesystem::path& found = caller->user.localData;
    std::error_code error;
    if (create) std::filesystem::create_directory(found, error);
    if (found.native().size() >= MAX_PATH || !std::filesystem::is_directory(found, error)) return FALSE;
    std::copy_n(found.c_str(), found.native().size() + 1, path);
    return TRUE;
}

// ---- The clipboard, one text

bool clipboardOpen = false;
HWND clipboardOwner = nullptr;

BOOL WINAPI ClipboardOpen(HWND owner) {
    if (clipboardOpen || caller->user.clipboardBusy) return FALSE;
    if (owner != nullptr && !IsWindow(owner))
        caller->report.Violation("OpenClipboard with a window that is none");
    clipboardOpen = true;
    clipboardOwner = owner;
    return TRUE;
}

BOOL WINAPI ClipboardEmpty() {
    if (!clipboardOpen) return FALSE;
    caller->user.clipboard.clear();
    return TRUE;
}

HANDLE WINAPI ClipboardSet(UINT format, HANDLE memory) {
    // Emptied by nobody, the clipboard belongs to nobody, and takes nothing.
    const bool isTaken = clipboardOpen && clipboardOwner != nullptr;
    if (!isTaken || format != CF_UNICODETEXT || memory == nullptr) return nullptr;
    if (const void* text = GlobalLock(memory)) {
        caller->user.clipboard = static_cast<const wchar_t*>(text);
        GlobalUnlock(memory);
    }
    // The clipboard owns the block from here on.
    GlobalFree(memory);
    return memory;
}

BOOL WINAPI ClipboardClose() {
    if (!clipboardOpen) caller->report.Violation("CloseClipboard without OpenClipboard");
    clipboardOpen = false;
    return TRUE;
}

struct Redirection {
    const char* function;
    void* replacement;
};

const std::array<Redirection, 14> kRedirections = {{
    {"MessageBoxW", Address(&ShowBox)},
    {"GetOpenFileNameW", Address(&ChooseFileToOpen)},
    {"GetSaveFileNameW", Address(&ChooseFileToSave)},
    {"ShellExecuteW", Address(&StartProgram)},
    {"WinExec", Address(&StartCommandLine)},
    {"SetTimer", Address(&StartTimer)},
    {"KillTimer", Address(&StopTimer)},
    {"GetTickCount64", Address(&ReadClock)},
    {"CreateWindowExW", Address(&MakeWindow)},
    {"SHGetSpecialFolderPathW", Address(&FindUserFolder)},
    {"OpenClipboard", Address(&ClipboardOpen)},
    {"EmptyClipboard", Address(&ClipboardEmpty)},
    {"SetClipboardData", Address(&ClipboardSet)},
    {"CloseClipboard", Address(&ClipboardClose)},
}};

// Relatives of the calls above: a plug-in that imports one would put a real box or program before nobody.
constexpr std::array<std::string_view, 18> kUncaught = {
    "MessageBoxA",      "MessageBoxExW",    "MessageBoxExA",      "MessageBoxIndirectW", "TaskDialog",
    "ShellExecuteA",    "ShellExecuteExW",  "ShellExecuteExA",    "CreateProcessW",      "CreateProcessA",
    "GetOpenFileNameA", "GetSaveFileNameA", "SHBrowseForFolderW", "CLSIDFromProgIDEx",   "CoCreateInstanceEx",
    "CoGetClassObject", "GetActiveObject",  "CoInitialize",
};

// ---- Calls that can be made to fail

struct Breakable {
    const char* function;
    void* stub;
    std::intptr_t failure;  // what the call answers when it fails
    void* original = nullptr;
    long long count = 0;
    long long failAt = 0;
    long long failTimes = 1;
    DWORD error = 0;
};

Breakable& BreakableAt(int index);

// The failure's answer, when it is this call's turn.
bool MustFail(Breakable& call) {
    ++call.count;
    if (call.failAt == 0 || call.count < call.failAt || call.count >= call.failAt + call.failTimes)
        return false;
    SetLastError(call.error);
    return true;
}

template <int kIndex, typename Signature>
struct Stub;

template <int kIndex, typename Result, typename... Arguments>
struct Stub<kIndex, Result(WINAPI*)(Arguments...)> {
    static Result WINAPI Call(Arguments... arguments) {
        Breakable& call = BreakableAt(kIndex);
        if (MustFail(call)) {
            if constexpr (std::is_pointer_v<Result>)
                return reinterpret_cast<Result>(call.failure);  // NOLINT(performance-no-int-to-ptr)
            else
                return static_cast<Result>(call.failure);
        }
        return reinterpret_cast<Result(WINAPI*)(Arguments...)>(call.original)(arguments...);
    }
};

template <int kIndex, typename Signature>
void* StubOf(Signature) {
    return Address(&Stub<kIndex, Signature>::Call);
}

std::array<Breakable, 11> breakables = {{
    {"GetPrivateProfileStringW", StubOf<0>(&GetPrivateProfileStringW), 0},
    {"WritePrivateProfileStringW", StubOf<1>(&WritePrivateProfileStringW), FALSE},
    {"CreateFileW", StubOf<2>(&CreateFileW), -1},
    {"ReadFile", StubOf<3>(&ReadFile), FALSE},
    {"WriteFile", StubOf<4>(&WriteFile), FALSE},
    {"CreateDirectoryW", StubOf<5>(&CreateDirectoryW), FALSE},
    {"CopyFileW", StubOf<6>(&CopyFileW), FALSE},
    {"DeleteFileW", StubOf<7>(&DeleteFileW), FALSE},
    {"GetModuleHandleW", StubOf<8>(&GetModuleHandleW), 0},
    {"GetModuleFileNameW", StubOf<9>(&GetModuleFileNameW), 0},
    {"MoveFileExW", StubOf<10>(&MoveFileExW), FALSE},
}};

Breakable& BreakableAt(int index) {
    return breakables[static_cast<std::size_t>(index)];
}

void PatchBreakables(HMODULE module, std::vector<ImportPatch>& patches) {
    for (Breakable& call : breakables) {
        call.original = nullptr;
        const std::size_t first = patches.size();
        if (PatchImport(module, call.function, call.stub, patches) > 0)
            call.original = patches[first].original;
    }
}

}  // namespace

std::vector<std::string> PatchDesktop(Session& session, HMODULE module, std::vector<ImportPatch>& patches) {
    caller = &session;
    for (const Redirection& redirection : kRedirections)
        PatchImport(module, redirection.function, redirection.replacement, patches);
    PatchBreakables(module, patches);

    std::vector<std::string> uncaught;
    for (const std::string_view name : ImportedFunctions(module))
        if (std::find(kUncaught.begin(), kUncaught.end(), name) != kUncaught.end())
            uncaught.push_back("imports " + std::string(name) + ", which is not caught");
    return uncaught;
}

const std::vector<DesktopTimer>& DesktopTimers() {
    return timers;
}

void FireDesktopTimers() {
    const std::vector<DesktopTimer> due = timers;
    for (const DesktopTimer& timer : due) {
        try {
            timer.procedure(nullptr, WM_TIMER, timer.id, GetTickCount());
        } catch (...) {
            caller->report.Violation("an exception crossed a timer procedure");
        }
    }
}

void ForgetDesktopTimers() {
    timers.clear();
}

bool FailWindowsCall(const std::string& function, long long nth, DWORD error, long long times) {
    for (Breakable& call : breakables) {
        if (function != call.function || call.original == nullptr) continue;
        call.failAt = call.count + nth;
        call.failTimes = times;
        call.error = error;
        return true;
    }
    return false;
}

std::vector<std::string> WindowsCallsThatCanFail() {
    std::vector<std::string> names;
    for (const Breakable& call : breakables) names.emplace_back(call.function);
    return names;
}

void HealWindowsCalls() {
    for (Breakable& call : breakables) {
        call.count = 0;
        call.failAt = 0;
    }
}

long long WindowsCallCount(const std::string& function) {
    for (const Breakable& call : breakables)
        if (function == call.function) return call.count;
    return 0;
}

}  // namespace sim
