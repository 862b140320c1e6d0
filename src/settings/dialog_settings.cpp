// Settings that the components of a dialog show.

#include "settings/dialog_settings.h"

#include "base/status.h"
#include "base/text.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"

namespace kv {

static void ComponentSet(const char* dialog, const DialogSetting& setting, const std::wstring& stored);
static void ChoiceSet(const char* dialog, const char* group, const std::wstring& stored);
static ProError ComponentGet(const char* dialog, const DialogSetting& setting, std::wstring& shown);
static ProError TickGet(const char* dialog, const char* check, std::wstring& shown);
static ProError ChoiceGet(const char* dialog, const char* group, std::wstring& shown);
static std::wstring SectionOf(const DialogSetting& setting);

void DialogSettingsRestore(const char* dialog, const std::wstring& file,
                           std::span<const DialogSetting> settings) {
    for (const DialogSetting& setting : settings)
        ComponentSet(dialog, setting, SettingRead(file, SectionOf(setting).c_str(), setting.key));
}

ShownSettings DialogSettingsShown(const char* dialog, std::span<const DialogSetting> settings) {
    ShownSettings shown;
    for (const DialogSetting& setting : settings) {
        std::wstring text;
        const bool known = !Failed(ComponentGet(dialog, setting, text));
        shown.push_back(known ? std::optional(text) : std::nullopt);
    }
    return shown;
}

void DialogSettingsSave(const char* dialog, const std::wstring& file, std::span<const DialogSetting> settings,
                        ShownSettings& before) {
    const ShownSettings shown = DialogSettingsShown(dialog, settings);
    before.resize(settings.size());
    for (std::size_t i = 0; i < settings.size(); ++i) {
        if (!shown[i]) continue;
        const std::wstring section = SectionOf(settings[i]);
        const bool isKept =
            before[i] == shown[i] && !SettingRead(file, section.c_str(), settings[i].key).empty();
        if (!isKept) SettingWrite(file, section.c_str(), settings[i].key, *shown[i]);
    }
    before = shown;
}

static void ComponentSet(const char* dialog, const DialogSetting& setting, const std::wstring& stored) {
    const std::wstring text = WithoutBlanks(stored);
    switch (setting.kind) {
        case SettingKind::Text:
            return InputTextSet(dialog, setting.component, stored);
        case SettingKind::TextWithoutBlanks:
            return InputTextSet(dialog, setting.component, text);
        case SettingKind::Tick:
            if (text == kSettingOn || text == kSettingOff)
                CheckTickedSet(dialog, setting.component, text == kSettingOn);
            return;
        case SettingKind::RadioChoice:
            return ChoiceSet(dialog, setting.component, stored);
        case SettingKind::OptionLabel:
            // No option has an empty label.
            if (!text.empty()) OptionLabelSet(dialog, setting.component, text);
            return;
    }
}

// A stored text that no button can be named after chooses nothing, and neither does an empty one.
static void ChoiceSet(const char* dialog, const char* group, const std::wstring& stored) {
    std::string button;
    if (Failed(EncodeText(stored, CodePage::ThreadAnsi, button)) || button.empty()) return;
    RadioChoiceSet(dialog, group, button);
}

static ProError ComponentGet(const char* dialog, const DialogSetting& setting, std::wstring& shown) {
    switch (setting.kind) {
        case SettingKind::Tick:
            return TickGet(dialog, setting.component, shown);
        case SettingKind::RadioChoice:
            return ChoiceGet(dialog, setting.component, shown);
        case SettingKind::OptionLabel:
            return OptionLabelGet(dialog, setting.component, shown);
        case SettingKind::Text:
        case SettingKind::TextWithoutBlanks:
            break;
    }
    return InputTextGet(dialog, setting.component, shown);
}

static ProError TickGet(const char* dialog, const char* check, std::wstring& shown) {
    bool ticked = false;
    const ProError status = CheckTickedGet(dialog, check, ticked);
    shown = ticked ? kSettingOn : kSettingOff;
    return status;
}

// What is stored may be a choice of a later version, which this dialog does not have.
static ProError ChoiceGet(const char* dialog, const char* group, std::wstring& shown) {
    shown = WideName(RadioChoice(dialog, group));
    return shown.empty() ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
}

static std::wstring SectionOf(const DialogSetting& setting) {
    return WideName(setting.section == nullptr ? setting.component : setting.section);
}

}  // namespace kv
