// Texts and names that several commands of this room share.
#pragma once

namespace kv {

inline constexpr wchar_t kPartTemplateOption[] = L"template_solidpart";
inline constexpr wchar_t kNoPartTemplate[] =
    L"\t零件模板加载失败，请确认template_solidpart选项是否配置正确\t";

// The activated model takes no components.
inline constexpr wchar_t kNoAssemblyForNew[] = L"\t当前激活元件不是组件/制造,无法进行新建装配操作\t";

// A typed name that no copy can get.
inline constexpr wchar_t kNameRefused[] = L"\t名称已存在或输入非法，请重新输入\t";

inline constexpr wchar_t kStepCopy[] = L"创建模型";

}  // namespace kv
