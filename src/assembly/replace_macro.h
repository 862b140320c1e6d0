// The recorded clicks in the host's dialog for replacing a component.
#pragma once

#include <string>

namespace kv {

// The macro that replaces the selected component by the model of a file in the working directory.
//
// release   the host's release as it told it at start-up; "5.0", "Creo 1.0" and "Creo 2.0" have a dialog of
//           their own
// fileName  with extension, "PUMP-1.prt"
std::wstring ReplaceMacro(const std::wstring& release, const std::wstring& fileName);

}  // namespace kv
