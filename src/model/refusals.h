// Texts by which several commands refuse to work.
#pragma once

namespace kv {

// Neither an assembly nor a manufacturing model is current.
inline constexpr wchar_t kAssembliesOnly[] = L"此功能仅组件/制造环境可用！";

// The current model has no component of the chosen kind.
inline constexpr wchar_t kNoSuitableComponents[] = L"当前模型中没有合适的子零件/组件";

}  // namespace kv
