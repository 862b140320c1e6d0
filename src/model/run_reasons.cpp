// The one table of reasons: what a status of the host means, where it matters at which step.

#include "model/run_reasons.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/status.h"
#include "model/run_steps.h"

namespace kv {

static constexpr wchar_t kOtherStatus[] = L"主程序状态 ";

struct ReasonRow {
    const wchar_t* step;  // null: any
    ProError status;
    const wchar_t* words;
};

// The first row that fits counts: rows of a step stand before those of any step.
// clang-format off
static constexpr ReasonRow kReasons[] = {
    // step              status                     words
    {kStepAddParameter,  PRO_TK_E_FOUND,            L"模型中已有同名参数"},
    {kStepSetParameter,  PRO_TK_E_NOT_FOUND,        L"模型中没有此参数"},
    {kStepDropParameter, PRO_TK_E_NOT_FOUND,        L"模型中没有此参数"},
    {kStepOutline,       PRO_TK_CANT_ACCESS,        L"曲面无法读取，原参数值未改动，可能已过时"},
    {kStepOutline,       PRO_TK_GENERAL_ERROR,      L"曲面无法读取，原参数值未改动，可能已过时"},
    {kStepOutline,       PRO_TK_MULTIBODY_UNSUPPORTED, L"多实体零件的曲面无法读取，原参数值未改动，可能已过时"},
    {kStepFindModel,     PRO_TK_E_NOT_FOUND,        L"当前模型中没有此模型"},
    {kStepNewRelations,  PRO_TK_E_FOUND,            L"模型已有初始关系，主程序不能新建再生后关系"},
    {kStepWriteRelations, PRO_TK_GENERAL_ERROR,     L"主程序不接受这些关系：语法有误，或用到了模型中没有的参数或尺寸"},
    {kStepWriteRelations, PRO_TK_BAD_INPUTS,        L"模型中没有所选类型的关系，或主程序不接受这些关系"},
    {kStepUnits,         PRO_TK_E_NOT_FOUND,        L"模型中没有此单位制"},
    {kStepReadMaterial,  PRO_TK_E_NOT_FOUND,        L"找不到材料文件"},
    {kStepReadMaterial,  PRO_TK_INVALID_FILE,       L"材料文件内容有误"},
    {kStepBendTable,     PRO_TK_CANT_OPEN,          L"折弯表文件无法打开"},
    {kStepDrawing,       PRO_TK_E_NOT_FOUND,        L"没有同名工程图"},
    {kStepSheetSize,     PRO_TK_E_NOT_FOUND,        L"没有同名工程图，参数未改动"},
    {kStepFileName,      PRO_TK_E_FOUND,            L"本次操作已写出同名文件"},
    {kStepComparePlace,  PRO_TK_NOT_VALID,          L"位置与处理前不一致，请检查"},
    {kStepInterfaceTie,  PRO_TK_NOT_VALID,          L"接口约束不能移除，元件仍受其约束"},
    {nullptr,            PRO_TK_GENERAL_ERROR,      L"主程序拒绝了此操作"},
    {nullptr,            PRO_TK_BAD_INPUTS,         L"主程序不接受给出的值"},
    {nullptr,            PRO_TK_USER_ABORT,         L"操作被中断"},
    {nullptr,            PRO_TK_E_NOT_FOUND,        L"未找到"},
    {nullptr,            PRO_TK_E_FOUND,            L"已存在"},
    {nullptr,            PRO_TK_LINE_TOO_LONG,      L"名称、文字或路径过长"},
    {nullptr,            PRO_TK_BAD_CONTEXT,        L"当前环境不允许此操作"},
    {nullptr,            PRO_TK_NOT_IMPLEMENTED,    L"主程序不支持此操作"},
    {nullptr,            PRO_TK_OUT_OF_MEMORY,      L"内存不足"},
    {nullptr,            PRO_TK_COMM_ERROR,         L"与主程序通信失败"},
    {nullptr,            PRO_TK_NO_CHANGE,          L"内容未改变"},
    {nullptr,            PRO_TK_CANT_OPEN,          L"文件无法打开"},
    {nullptr,            PRO_TK_CANT_WRITE,         L"文件无法写入"},
    {nullptr,            PRO_TK_INVALID_TYPE,       L"模型类型不适用"},
    {nullptr,            PRO_TK_INVALID_DIR,        L"目录不存在或无法使用"},
    {nullptr,            PRO_TK_NOT_DISPLAYED,      L"未能显示在窗口中"},
    {nullptr,            PRO_TK_CANT_MODIFY,        L"模型只读或被锁定"},
    {nullptr,            PRO_TK_NO_PERMISSION,      L"没有权限"},
    {nullptr,            PRO_TK_CANT_ACCESS,        L"无法读取"},
    {nullptr,            PRO_TK_NOT_VALID,          L"给出的值无效"},
    {nullptr,            PRO_TK_INVALID_FILE,       L"文件内容有误"},
    {nullptr,            PRO_TK_NO_LICENSE,         L"缺少许可证"},
    {nullptr,            PRO_TK_NO_COORD_SYSTEM,    L"没有坐标系"},
};
// clang-format on

std::wstring ReasonText(const RunEntry& entry) {
    if (!Failed(entry.status)) return {};
    const std::wstring_view step = entry.step;
    const auto fits = [&](const ReasonRow& row) {
        return row.status == entry.status && (row.step == nullptr || step == row.step);
    };
    const ReasonRow* row = std::ranges::find_if(kReasons, fits);
    if (row != std::end(kReasons)) return row->words;
    return kOtherStatus + std::to_wstring(entry.status);
}

}  // namespace kv
