// Where the host looks for material files and bend tables.

#pragma once

#include <filesystem>
#include <initializer_list>
#include <string_view>

#include "simulator/session/session.h"

namespace sim {

// First value of an option; empty when it is not set.
std::wstring FirstOptionValue(const Session& host, std::wstring_view option);

// The first of the files NAME.EXTENSION that is there: folder by folder, the extensions in their order. An
// empty folder is the working directory. Empty: none.
std::filesystem::path FindPartFile(const Session& host, std::wstring_view name,
                                   std::initializer_list<std::wstring> folders,
                                   std::initializer_list<std::wstring_view> extensions);

}  // namespace sim
