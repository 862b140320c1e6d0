#include <ProPopupmenu.h>

#include <algorithm>
#include <cwchar>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

// What is wrong with a text for a buffer of one line; empty: nothing.
std::string LineFault(const wchar_t* text) {
    if (text == nullptr) return "is null";
    if (*text == L'\0') return "is empty";
    return std::wcslen(text) < PRO_LINE_SIZE ? "" : "is longer than 80 characters";
}

}  // namespace

extern "C" {

ProError ProPopupmenuIdGet(const char* name, ProPopupMenuId* menu_id) {
    static const CallSite kSite("ProPopupmenuIdGet", {PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {name, Out(menu_id)}, [&](Session& host) -> ProError {
        if (name == nullptr || menu_id == nullptr)
            return Refuse(host, PRO_TK_E_NOT_FOUND, "an argument is null");
        const PopupMenu* popup = host.screen.CurrentPopup();
        if (popup == nullptr || popup->name != name) return PRO_TK_E_NOT_FOUND;
        *menu_id = popup->id;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProPopupmenuButtonAdd(ProPopupMenuId menu_id, int position, ProMenuName button_name,
                               ProLine button_label, ProLine button_helptext, uiCmdCmdId cmd_id,
                               ProPopupmenuAccessFunction access_fn, ProAppData appdata) {
    static const CallSite kSite("ProPopupmenuButtonAdd", {PRO_TK_BAD_INPUTS, PRO_TK_E_FOUND});
    return Traced(
        kSite, {menu_id, position, button_name, button_label, button_helptext, cmd_id, access_fn},
        [&](Session& host) -> ProError {
            const auto bad = [&host](const std::string& violation) {
                return Refuse(host, PRO_TK_BAD_INPUTS, violation);
            };
            PopupMenu* popup = host.screen.FindPopup(menu_id);
            if (popup == nullptr) return bad("there is no popup menu " + std::to_string(menu_id));
            if (const std::string fault = NameFault(button_name, sizeof(ProMenuName)); !fault.empty())
                return bad("the button name " + Named(button_name) + " " + fault);
            if (const std::string fault = LineFault(button_label); !fault.empty())
                return bad("the label of " + Named(button_name) + " " + fault);
            if (const std::string fault = LineFault(button_helptext); !fault.empty())
                return bad("the help text of " + Named(button_name) + " " + fault);
            Command* command = host.screen.CommandFromId(cmd_id);
            if (command == nullptr)
                return bad("the command identifier of " + Named(button_name) + " is none of the host's");
            const auto count = static_cast<int>(popup->buttons.size());
            if (position != PRO_VALUE_UNUSED && (position < 0 || position > count))
                return bad("there is no position " + std::to_string(position));
            const bool taken =
                std::any_of(popup->buttons.begin(), popup->buttons.end(),
                            [&](const PopupButton& button) { return button.name == button_name; });
            if (taken)
                return Refuse(host, PRO_TK_E_FOUND, "the button name " + Named(button_name) + " is taken");

            const auto place =
                position == PRO_VALUE_UNUSED ? popup->buttons.end() : popup->buttons.begin() + position;
            popup->buttons.insert(place, {button_name, button_label, button_helptext, command, access_fn,
                                          appdata, ACCESS_UNAVAILABLE});
            return PRO_TK_NO_ERROR;
        });
}

}  // extern "C"
