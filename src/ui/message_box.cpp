// Message boxes on the Windows call.

#include "ui/message_box.h"

#include <windows.h>

namespace kv {

static constexpr wchar_t kCaption[] = L"Korvane";

void ShowMessage(const wchar_t* text) {
    MessageBoxW(nullptr, text, kCaption, MB_OK | MB_TOPMOST);
}

void ShowInformation(const wchar_t* text) {
    MessageBoxW(nullptr, text, kCaption, MB_OK | MB_ICONINFORMATION | MB_TOPMOST);
}

void ShowWarning(const wchar_t* text) {
    MessageBoxW(nullptr, text, kCaption, MB_OK | MB_ICONEXCLAMATION | MB_TOPMOST);
}

ProError ShowFailure(const wchar_t* text, ProError status) {
    ShowMessage(text);
    return status;
}

}  // namespace kv
