// What the dialog, command and message functions share: finding what a call names, and refusing what it must
// not do.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <ProToolkitErrors.h>

#include "simulator/session/session.h"
#include "simulator/toolkit/support/traced.h"

namespace sim {

// The text in quotes, "null" for a null pointer.
std::string Named(const char* text);

// Records the violation and answers the status, so that a refusal is one line.
ProError Refuse(Session& host, ProError status, const std::string& violation);

// The open dialog of that session name; null, and a violation, when there is none.
Dialog* NamedDialog(Session& host, const char* dialog);

// The component that a call works on; null, and a violation, when the dialog or the component does not exist
// or is of another kind.
Component* NamedComponent(Session& host, const char* dialog, const char* component, ComponentKind kind);

// Sets what a component runs on an event.
ProError SetAction(Session& host, const char* dialog, const char* component, ComponentKind kind,
                   DialogEvent event, DialogAction action);

// The names of a call; nothing, and a violation, for a list with a gap or without a name.
std::optional<std::vector<std::string>> NameList(Session& host, int count, char** names);

// What is wrong with a name for a buffer of `size` characters with the terminating zero: null, empty, too
// long, no UTF-8. Empty: nothing.
std::string NameFault(const char* name, std::size_t size);

// Checks that a message key exists. NO_ERROR, `fileMissing` without the file, MSG_NOT_FOUND without the key;
// both a violation.
ProError CheckKey(Session& host, const wchar_t* file, const char* key, ProError fileMissing);

}  // namespace sim
