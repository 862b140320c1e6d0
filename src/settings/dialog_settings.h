// Settings that the components of a dialog show.
#pragma once

#include <span>
#include <string>

namespace kv {

// How a component shows its setting.
enum class SettingKind {
    Text,               // of an input panel, as it is stored
    TextWithoutBlanks,  // the same, but shown without its blanks
    Tick,               // of a check button
    RadioChoice,        // name of the chosen button
    OptionLabel,        // of the chosen option
};

struct DialogSetting {
    const char* component;
    SettingKind kind;
    const wchar_t* key;
    const char* section = nullptr;  // null: of the component's name
};

// Shows the settings of `file`. A stored text that a check button, a radio group or a menu cannot show leaves
// it as its layout has it.
void DialogSettingsRestore(const char* dialog, const std::wstring& file,
                           std::span<const DialogSetting> settings);

// Stores what the components show, in this order. What cannot be read is not stored, and neither is a group
// without a choice: an earlier setting is worth more than an empty one.
void DialogSettingsSave(const char* dialog, const std::wstring& file,
                        std::span<const DialogSetting> settings);

}  // namespace kv
