// The steps of runs, by the words that a report names them with.
//
// A step is here when a reason depends on it or when several commands take it; any other one stands with its
// command.
#pragma once

namespace kv {

inline constexpr wchar_t kStepReadName[] = L"读取名称";
inline constexpr wchar_t kStepExcluded[] = L"前缀排除";
inline constexpr wchar_t kStepNotReached[] = L"取消后未处理";
inline constexpr wchar_t kStepAddParameter[] = L"新建参数";
inline constexpr wchar_t kStepSetParameter[] = L"更新参数";
inline constexpr wchar_t kStepDropParameter[] = L"删除参数";
inline constexpr wchar_t kStepOutline[] = L"写入外形尺寸";
inline constexpr wchar_t kStepSheetSize[] = L"写入图幅";
inline constexpr wchar_t kStepFindModel[] = L"查找模型";
inline constexpr wchar_t kStepReadRelations[] = L"读取关系";
inline constexpr wchar_t kStepNewRelations[] = L"新建关系集";
inline constexpr wchar_t kStepWriteRelations[] = L"写入关系";
inline constexpr wchar_t kStepUnits[] = L"设置单位制";
inline constexpr wchar_t kStepReadMaterial[] = L"读取材料文件";
inline constexpr wchar_t kStepBendTable[] = L"应用折弯表";
inline constexpr wchar_t kStepDrawing[] = L"检索工程图";
inline constexpr wchar_t kStepFileName[] = L"确定文件名";
inline constexpr wchar_t kStepComparePlace[] = L"核对位置";
inline constexpr wchar_t kStepInterfaceTie[] = L"移除接口约束";

}  // namespace kv
