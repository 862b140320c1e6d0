#include <ProUIRadiogroup.h>

#include <algorithm>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" {

ProError ProUIRadiogroupNamesGet(char* dialog, char* radiogroup, int* n_names, char*** names) {
    static const CallSite kSite("ProUIRadiogroupNamesGet");
    return Traced(kSite, {dialog, radiogroup, Out(n_names), Out(names)}, [&](Session& host) -> ProError {
        const Component* group = NamedComponent(host, dialog, radiogroup, ComponentKind::kRadioGroup);
        if (group == nullptr) return PRO_TK_GENERAL_ERROR;
        if (n_names == nullptr || names == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "an output's address is null");
        *n_names = static_cast<int>(group->names.size());
        *names = NewHostTextArray(host.memory, group->names);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIRadiogroupSelectednamesGet(char* dialog, char* radiogroup, int* n_name, char*** names) {
    static const CallSite kSite("ProUIRadiogroupSelectednamesGet");
    return Traced(kSite, {dialog, radiogroup, Out(n_name), Out(names)}, [&](Session& host) -> ProError {
        const Component* group = NamedComponent(host, dialog, radiogroup, ComponentKind::kRadioGroup);
        if (group == nullptr) return PRO_TK_GENERAL_ERROR;
        if (n_name == nullptr || names == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "an output's address is null");
        *n_name = static_cast<int>(group->selected.size());
        *names = NewHostTextArray(host.memory, group->selected);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIRadiogroupSelectednamesSet(char* dialog, char* radiogroup, int n_names, char** names) {
    static const CallSite kSite("ProUIRadiogroupSelectednamesSet");
    return Traced(kSite, {dialog, radiogroup, n_names, names}, [&](Session& host) -> ProError {
        Component* group = NamedComponent(host, dialog, radiogroup, ComponentKind::kRadioGroup);
        if (group == nullptr) return PRO_TK_GENERAL_ERROR;
        if (n_names != 1 || names == nullptr || names[0] == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "a radio group takes exactly one name");
        const bool known =
            std::find(group->names.begin(), group->names.end(), names[0]) != group->names.end();
        if (!known)  // and the selection stays
            return Refuse(host, PRO_TK_GENERAL_ERROR,
                          "the group " + Named(radiogroup) + " has no button " + Named(names[0]));
        group->selected = {names[0]};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIRadiogroupSelectActionSet(char* dialog, char* radiogroup, ProUIAction action,
                                        ProAppData appdata) {
    static const CallSite kSite("ProUIRadiogroupSelectActionSet");
    return Traced(kSite, {dialog, radiogroup, action, appdata}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, radiogroup, ComponentKind::kRadioGroup, DialogEvent::kSelect,
                         {action, appdata});
    });
}

}  // extern "C"
