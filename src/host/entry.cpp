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

namespace kv {

// 0: not running.
static UINT_PTR startTimer = 0;
// The host needs this long to finish its own start-up before its working directory may change.
static constexpr UINT kStartDelay = 2000;  // ms
static constexpr wchar_t kCommonSettingsInTextDir[] = L"\\KVconfig\\KvConfig.ini";

static void StopStartTimer();
static void CALLBACK OnStartTimer(HWND window, UINT message, UINT_PTR timer, DWORD time) noexcept;
static void Start(const char* hostVersion);
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
    kv::StopStartTimer();
    (void)kv::Guarded([] {
        kv::SaveLastDirectory();
        return PRO_TK_NO_ERROR;
    });
}

namespace kv {

static void Start(const char* hostVersion) {
    HostVersionKeep(hostVersion);
    RegisterCommands();
    startTimer = SetTimer(nullptr, 0, kStartDelay, OnStartTimer);
    if (PopupsWanted()) WatchPopupMenus();
}

static void StopStartTimer();
// A timer that is left would call into a plug-in that is no longer there.
static void StopStartTimer() {
    if (startTimer != 0) KillTimer(nullptr, startTimer);
    startTimer = 0;
}

static void CALLBACK OnStartTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    StopStartTimer();
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
