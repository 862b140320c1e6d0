#include <ProMenuBar.h>

#include <algorithm>

#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The menu that has a push button of that name; null: the name is free.
const Menu* MenuWithButton(const Interface& screen, std::string_view name, const MenuButton*& button) {
    for (const Menu& menu : screen.Menus()) {
        const auto found = std::find_if(menu.buttons.begin(), menu.buttons.end(),
                                        [&](const MenuButton& b) { return b.name == name; });
        if (found == menu.buttons.end()) continue;
        button = &*found;
        return &menu;
    }
    return nullptr;
}

// Where a new button goes: beside its neighbour, without one at the end. False: there is no such neighbour.
bool FindPlace(Menu& menu, const char* neighbour, bool after, std::vector<MenuButton>::iterator& place) {
    place = menu.buttons.end();
    if (neighbour == nullptr) return true;
    place = std::find_if(menu.buttons.begin(), menu.buttons.end(),
                         [&](const MenuButton& button) { return button.name == neighbour; });
    if (place == menu.buttons.end()) return false;
    if (after) ++place;
    return true;
}

ProError CheckButtonName(Session& host, const char* name) {
    if (const std::string fault = NameFault(name, sizeof(ProMenuItemName)); !fault.empty())
        return Refuse(host, PRO_TK_GENERAL_ERROR, "the button name " + Named(name) + " " + fault);
    // A name in another script may be tried; that the host refuses it is no misuse.
    return host.screen.strict.nonAsciiButtonNameRefused && !IsAscii(name) ? PRO_TK_GENERAL_ERROR
                                                                          : PRO_TK_NO_ERROR;
}

}  // namespace

extern "C" {

ProError ProMenubarMenuAdd(ProMenuItemName menu_name, ProMenuItemLabel untranslated_menu_label,
                           ProMenuItemName neighbor, ProBoolean add_after_neighbor, ProFileName filename) {
    static const CallSite kSite("ProMenubarMenuAdd", {PRO_TK_MSG_NOT_FOUND, PRO_TK_E_FOUND});
    return Traced(
        kSite, {menu_name, untranslated_menu_label, neighbor, add_after_neighbor, filename},
        [&](Session& host) -> ProError {
            if (const std::string fault = NameFault(menu_name, sizeof(ProMenuItemName)); !fault.empty())
                return Refuse(host, PRO_TK_GENERAL_ERROR, "the menu name " + Named(menu_name) + " " + fault);
            if (host.screen.FindMenu(menu_name) != nullptr) return PRO_TK_E_FOUND;
            const ProError status = CheckKey(host, filename, untranslated_menu_label, PRO_TK_GENERAL_ERROR);
            if (status != PRO_TK_NO_ERROR) return status;
            Menu* menu = neighbor == nullptr
                             ? nullptr
                             : host.screen.AddMenu(menu_name, neighbor, add_after_neighbor != PRO_B_FALSE);
            if (menu == nullptr)
                return Refuse(host, PRO_TK_GENERAL_ERROR, "there is no menu " + Named(neighbor));
            menu->labelKey = untranslated_menu_label;
            menu->messageFile = filename;
            return PRO_TK_NO_ERROR;
        });
}

ProError ProMenubarmenuPushbuttonAdd(ProMenuItemName parent_menu, ProMenuItemName push_button_name,
                                     ProMenuItemLabel push_button_label, ProMenuLineHelp one_line_help,
                                     ProMenuItemName neighbor, ProBoolean add_after_neighbor,
                                     uiCmdCmdId action_id, ProFileName filename) {
    static const CallSite kSite("ProMenubarmenuPushbuttonAdd", {PRO_TK_MSG_NOT_FOUND, PRO_TK_E_FOUND});
    return Traced(
        kSite,
        {parent_menu, push_button_name, push_button_label, one_line_help, neighbor, action_id, filename},
        [&](Session& host) -> ProError {
            Menu* menu = parent_menu == nullptr ? nullptr : host.screen.FindMenu(parent_menu);
            if (menu == nullptr)
                return Refuse(host, PRO_TK_GENERAL_ERROR, "there is no menu " + Named(parent_menu));
            ProError status = CheckButtonName(host, push_button_name);
            if (status != PRO_TK_NO_ERROR) return status;
            Command* command = host.screen.CommandFromId(action_id);
            if (command == nullptr)
                return Refuse(host, PRO_TK_GENERAL_ERROR, "the command identifier is none of the host's");

            const MenuButton* same = nullptr;
            if (const Menu* owner = MenuWithButton(host.screen, push_button_name, same); owner != nullptr) {
                // Adding the same button again is documented as ignored, another one of its name is a
                // mistake.
                if (owner == menu && same->command == command) return PRO_TK_E_FOUND;
                return Refuse(host, PRO_TK_E_FOUND,
                              "the button name " + Named(push_button_name) + " is taken");
            }
            for (const char* key : {push_button_label, one_line_help}) {
                status = CheckKey(host, filename, key, PRO_TK_GENERAL_ERROR);
                if (status != PRO_TK_NO_ERROR) return status;
            }
            std::vector<MenuButton>::iterator place;
            if (!FindPlace(*menu, neighbor, add_after_neighbor != PRO_B_FALSE, place))
                return Refuse(host, PRO_TK_GENERAL_ERROR, "the menu has no button " + Named(neighbor));
            menu->buttons.insert(place,
                                 {push_button_name, push_button_label, one_line_help, filename, command});
            return PRO_TK_NO_ERROR;
        });
}

}  // extern "C"
