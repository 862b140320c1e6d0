#include "simulator/toolkit/support/ui_call.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "simulator/report/utf8.h"

namespace sim {

std::string Named(const char* text) {
    return text == nullptr ? "null" : "\"" + std::string(text) + "\"";
}

ProError Refuse(Session& host, ProError status, const std::string& violation) {
    host.report.Violation(violation);
    return status;
}

Dialog* NamedDialog(Session& host, const char* dialog) {
    Dialog* found = dialog == nullptr ? nullptr : host.screen.FindDialog(dialog);
    if (found == nullptr) host.report.Violation("there is no dialog " + Named(dialog));
    return found;
}

namespace {

// A name of the plug-in that no layout can hold, and that it is known to ask for: no misspelt component.
constexpr std::string_view kKnownAbsent = "PDFCheck]";

}  // namespace

Component* NamedComponent(Session& host, const char* dialog, const char* component, ComponentKind kind) {
    Dialog* owner = NamedDialog(host, dialog);
    if (owner == nullptr) return nullptr;
    Component* found = component == nullptr ? nullptr : owner->Find(component);
    if (found == nullptr) {
        if (component == nullptr || component != kKnownAbsent)
            host.report.Violation("the dialog " + Named(dialog) + " has no component " + Named(component));
        return nullptr;
    }
    if (found->kind == kind) return found;
    host.report.Violation("the component " + Named(component) + " of " + Named(dialog) + " is a " +
                          std::string(KindName(found->kind)));
    return nullptr;
}

ProError SetAction(Session& host, const char* dialog, const char* component, ComponentKind kind,
                   DialogEvent event, DialogAction action) {
    Component* found = NamedComponent(host, dialog, component, kind);
    if (found == nullptr) return PRO_TK_GENERAL_ERROR;
    if (action.run == nullptr)
        return Refuse(host, PRO_TK_GENERAL_ERROR, "the action of " + Named(component) + " is null");
    found->actions[event] = action;
    return PRO_TK_NO_ERROR;
}

std::optional<std::vector<std::string>> NameList(Session& host, int count, char** names) {
    std::vector<std::string> list;
    for (int i = 0; names != nullptr && i < count; ++i)
        if (names[i] != nullptr) list.emplace_back(names[i]);
    if (count > 0 && list.size() == static_cast<std::size_t>(count)) return list;
    host.report.Violation("is given no names, or fewer than it says");
    return std::nullopt;
}

std::string NameFault(const char* name, std::size_t size) {
    if (name == nullptr) return "is null";
    const std::size_t length = std::strlen(name);
    if (length == 0) return "is empty";
    if (!IsUtf8(name)) return "is no UTF-8";
    if (length >= size) return "is longer than " + std::to_string(size - 1) + " characters";
    return {};
}

ProError CheckKey(Session& host, const wchar_t* file, const char* key, ProError fileMissing) {
    if (file == nullptr) return Refuse(host, fileMissing, "the message file is null");
    if (const std::string fault = NameFault(key, PRO_LINE_SIZE); !fault.empty())
        return Refuse(host, PRO_TK_MSG_NOT_FOUND, "the message key " + Named(key) + " " + fault);
    if (host.texts.Messages(file) == nullptr) return fileMissing;
    if (host.texts.FindMessage(file, key) != nullptr) return PRO_TK_NO_ERROR;
    return Refuse(host, PRO_TK_MSG_NOT_FOUND,
                  "the message file \"" + Utf8(file) + "\" has no key " + Named(key));
}

}  // namespace sim
