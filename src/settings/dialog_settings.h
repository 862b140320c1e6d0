// Settings that the components of a dialog show.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

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

// What the components of settings show, in the order of the settings; nothing where one cannot be read.
using ShownSettings = std::vector<std::optional<std::wstring>>;
[[nodiscard]] ShownSettings DialogSettingsShown(const char* dialog, std::span<const DialogSetting> settings);

// Stores what the components show, in this order. What cannot be read is not stored, and neither is a group
// without a choice: an earlier setting is worth more than an empty one. It is also worth more than what a
// component shows that the user has not touched: that may be less than what is stored.
//
// before  what DialogSettingsShown gave after the restoring; afterwards what is shown now
void DialogSettingsSave(const char* dialog, const std::wstring& file, std::span<const DialogSetting> settings,
                        ShownSettings& before);

}  // namespace kv
