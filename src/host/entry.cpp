// The two functions that the host calls: when it loads the plug-in and when it unloads it.

#include <string>

#include <ProToolkit.h>

#include <windows.h>

#include "base/host_callback.h"
#include "base/host_version.h"
#include "base/text.h"
#include "host/command_table.h"
#include "host/popup_menu.h"
#include "settings/last_directory.h"
#include "settings/settings_store.h"
#include "ui/progress_window.h"

namespace kv {

static constexpr UINT_PTR kStartTimer = 1;
// The host needs this long to finish its own start-up before its working directory may change.
static constexpr UINT kStartDelay = 2000;  // ms
// The timer that runs, by the system's number; 0 when none does.
static UINT_PTR startTimer = 0;
static constexpr wchar_t kCommonSettingsInTextDir[] = L"\\KVconfig\\KvConfig.ini";

static void CALLBACK OnStartTimer(HWND window, UINT message, UINT_PTR timer, DWORD time) noexcept;
static void Start(const char* hostVersion);
static void Stop() noexcept;
static bool PopupsWanted();

}  // namespace kv

extern "C" int user_initialize(int, char*[], char* version, char*, wchar_t[80]) {
    // A start that breaks off leaves its rest out; the host itself must not stop for it.
    (void)kv::Guarded([version] {
        kv::Start(version);
        return PRO_TK_NO_ERROR;
    });
    return 0;
}

extern "C" void user_terminate() {
    (void)kv::Guarded([] {
        kv::SaveLastDirectory();
        return PRO_TK_NO_ERROR;
    });
    kv::Stop();
}

namespace kv {

static void Start(const char* hostVersion) {
    HostVersionKeep(hostVersion);
    RegisterCommands();
    startTimer = SetTimer(nullptr, kStartTimer, kStartDelay, OnStartTimer);
    if (PopupsWanted()) WatchPopupMenus();
}

// What Windows would still call after the plug-in is gone.
static void Stop() noexcept {
    if (startTimer != 0) KillTimer(nullptr, startTimer);
    startTimer = 0;
    ProgressWindowForget();
}

static void CALLBACK OnStartTimer(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
    KillTimer(nullptr, timer);
    startTimer = 0;
    (void)Guarded([] {
        RestoreLastDirectory();
        return PRO_TK_NO_ERROR;
    });
}

// The right-click entries have to be asked for: the setting says "0", not disabled.
static bool PopupsWanted() {
    const std::wstring path = TextDirSettingsPath(kCommonSettingsInTextDir);
    return WithoutBlanks(SettingRead(path, L"RmbDisable", kValueKey)) == kSettingOff;
}

}  // namespace kv
