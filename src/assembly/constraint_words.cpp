// Constraints of components in words, by the host's numbers for them.

#include "assembly/constraint_words.h"

#include <cstddef>
#include <iterator>

namespace kv {

// From 0 on.
static constexpr const wchar_t* kConstraintKinds[] = {
    L"匹配",         L"匹配偏移",     L"对齐",         L"对齐偏移",     L"插入",         L"定向",
    L"坐标系",       L"相切",         L"曲面上的点",   L"曲面上的边",   L"缺省",         L"替代",
    L"直线上的点",   L"固定",         L"自动",         L"对齐角度偏移", L"匹配角度偏移", L"坐标系上的点",
    L"直线垂直",     L"直线共面",     L"直线平行",     L"直线距离",     L"点距离",       L"插入垂直",
    L"插入平行",     L"点到直线距离", L"点到曲面距离", L"边到曲面距离", L"边与曲面角度", L"边与曲面垂直",
    L"对齐独立角度", L"匹配独立角度", L"直线角度",     L"边与曲面平行", L"曲面垂直",
};
static constexpr wchar_t kOtherKind[] = L"约束类型 ";
static constexpr wchar_t kSeparator[] = L"、";

std::wstring ConstraintWords(std::span<const int> types) {
    std::wstring words;
    for (const int type : types) {
        if (!words.empty()) words += kSeparator;
        const bool isKnown = type >= 0 && static_cast<std::size_t>(type) < std::size(kConstraintKinds);
        words += isKnown ? kConstraintKinds[type] : kOtherKind + std::to_wstring(type);
    }
    return words;
}

}  // namespace kv
