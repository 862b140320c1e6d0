// The version of the plug-in, as its users see it.
#pragma once

namespace kv {

inline constexpr wchar_t kPluginVersion[] = L"5.1C9";

}  // namespace kv
