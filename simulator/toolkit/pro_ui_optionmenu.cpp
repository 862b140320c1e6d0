#include <ProUIOptionmenu.h>

#include <algorithm>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

ProError SetSensitive(Session& host, const char* dialog, const char* optionmenu, bool on) {
    Component* menu = NamedComponent(host, dialog, optionmenu, ComponentKind::kOptionMenu);
    if (menu == nullptr) return PRO_TK_GENERAL_ERROR;
    menu->sensitive = on;
    return PRO_TK_NO_ERROR;
}

}  // namespace

extern "C" {

ProError ProUIOptionmenuValueGet(char* dialog, char* component, wchar_t** value) {
    static const CallSite kSite("ProUIOptionmenuValueGet");
    return Traced(kSite, {dialog, component, Out(value)}, [&](Session& host) -> ProError {
        const Component* menu = NamedComponent(host, dialog, component, ComponentKind::kOptionMenu);
        if (menu == nullptr) return PRO_TK_GENERAL_ERROR;
        if (value == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the value's address is null");
        *value = NewHostString(host.memory, menu->value);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIOptionmenuValueSet(char* dialog, char* component, wchar_t* value) {
    static const CallSite kSite("ProUIOptionmenuValueSet");
    return Traced(kSite, {dialog, component, value}, [&](Session& host) -> ProError {
        Component* menu = NamedComponent(host, dialog, component, ComponentKind::kOptionMenu);
        if (menu == nullptr) return PRO_TK_GENERAL_ERROR;
        if (value == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the value is null");
        const auto label = std::find(menu->labels.begin(), menu->labels.end(), value);
        // A menu that takes no free text keeps what it shows.
        if (label == menu->labels.end() && !menu->editable) return PRO_TK_GENERAL_ERROR;
        menu->value = value;
        menu->selected.clear();
        if (label != menu->labels.end())
            menu->selected = {menu->names[static_cast<std::size_t>(label - menu->labels.begin())]};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIOptionmenuEnable(char* dialog, char* optionmenu) {
    static const CallSite kSite("ProUIOptionmenuEnable");
    return Traced(kSite, {dialog, optionmenu},
                  [&](Session& host) -> ProError { return SetSensitive(host, dialog, optionmenu, true); });
}

ProError ProUIOptionmenuDisable(char* dialog, char* optionmenu) {
    static const CallSite kSite("ProUIOptionmenuDisable");
    return Traced(kSite, {dialog, optionmenu},
                  [&](Session& host) -> ProError { return SetSensitive(host, dialog, optionmenu, false); });
}

}  // extern "C"
