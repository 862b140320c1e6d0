// A bill of materials in memory.

#include "bom/bom_sheet.h"

#include <utility>

#include <ProSkeleton.h>

#include "base/status.h"
#include "model/parameter.h"
#include "model/parameter_text.h"

namespace kv {

static constexpr wchar_t kAssemblyType[] = L"组件";
static constexpr wchar_t kPartType[] = L"零件";
static constexpr wchar_t kLeftOut[] = L"未列出：";
static constexpr wchar_t kNothing[] = L"无";
static constexpr wchar_t kSkeletonWord[] = L"骨架 ";
static constexpr wchar_t kMissingEnd[] = L" 处元件缺失，其后的元件未列出";

struct ReasonWord {
    LeftReason reason;
    const wchar_t* word;
};
static constexpr ReasonWord kReasonWords[] = {
    {LeftReason::Suppressed, L"抑制 "}, {LeftReason::Inactive, L"未激活 "}, {LeftReason::Internal, L"内部 "}};

static bool IsSkeleton(const NamedModel& model);
static void RowsTake(BomSheet& sheet, const BomList& list, const std::vector<unsigned int>& placements);
static std::vector<BomCell> ParametersOf(const BomSheet& sheet, const NamedModel& model);

BomSheet BomSheetOf(const BomSource& source, BomList list, std::vector<BomTitle> titles) {
    BomSheet sheet;
    sheet.form = list.form;
    sheet.titles = std::move(titles);
    sheet.models = source.models;
    sheet.parameters.resize(sheet.models.size());
    std::vector<unsigned int> placements(sheet.models.size());
    for (const PlacedModel& placed : source.placed) ++placements[placed.index];
    RowsTake(sheet, list, placements);
    sheet.tree = std::move(list.tree);

    std::vector<bool> known(sheet.models.size());
    for (const BomRow& row : sheet.rows) {
        if (known[row.model]) continue;
        known[row.model] = true;
        sheet.parameters[row.model] = ParametersOf(sheet, sheet.models[row.model]);
    }
    return sheet;
}

static void RowsTake(BomSheet& sheet, const BomList& list, const std::vector<unsigned int>& placements) {
    std::vector<std::optional<bool>> skeleton(sheet.models.size());
    std::vector<unsigned int> rowOf(list.tree.size());
    sheet.rows.reserve(list.items.size());
    for (const BomItem& item : list.items) {
        std::optional<bool>& known = skeleton[item.model];
        if (!known) {
            known = IsSkeleton(sheet.models[item.model]);
            if (*known) sheet.skeletons += placements[item.model];
        }
        if (*known) continue;
        const auto place = static_cast<unsigned int>(sheet.rows.size());
        BomRow row = {item.model, item.count, item.node, place, 0};
        if (list.form == BomForm::Levels) {
            const BomNode& node = list.tree[item.node];
            rowOf[item.node] = place;
            row.level = node.level;
            // Only an assembly is a parent, and no assembly is left out above what is listed.
            row.parent = rowOf[node.parent];
        }
        sheet.rows.push_back(row);
    }
}

// Only a part can be one.
static bool IsSkeleton(const NamedModel& model) {
    ProBoolean skeleton = PRO_B_FALSE;
    return model.type == PRO_MDL_PART && !Failed(ProMdlIsSkeleton(model.model, &skeleton)) &&
           skeleton == PRO_B_TRUE;
}

static std::vector<BomCell> ParametersOf(const BomSheet& sheet, const NamedModel& model) {
    std::vector<BomCell> cells(sheet.titles.size());
    ProModelitem owner = {};
    if (Failed(ProMdlToModelitem(model.model, &owner))) return cells;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        ProParamvalue value = {};
        if (sheet.titles[i].kind != BomColumn::Parameter) continue;
        if (Failed(ParameterValueGet(owner, sheet.titles[i].title, value))) continue;
        cells[i] = ParameterText(value);
    }
    return cells;
}

BomCell BomCellOf(const BomSheet& sheet, const BomRow& row, std::size_t column) {
    switch (sheet.titles[column].kind) {
        case BomColumn::ModelName:
            return sheet.models[row.model].name;
        case BomColumn::Quantity:
            return std::to_wstring(row.count);
        case BomColumn::Level:
            return std::to_wstring(row.level);
        case BomColumn::ItemCode:
            return ItemCode(sheet.tree, row.node);
        case BomColumn::Parameter:
            break;
    }
    return sheet.parameters[row.model][column];
}

std::wstring BomCellText(const BomSheet& sheet, const BomRow& row, std::size_t column) {
    return BomCellOf(sheet, row, column).value_or(std::wstring());
}

bool IsAssemblyRow(const BomSheet& sheet, const BomRow& row) {
    return sheet.models[row.model].type == PRO_MDL_ASSEMBLY;
}

const wchar_t* TypeText(bool isAssembly) {
    return isAssembly ? kAssemblyType : kPartType;
}

std::wstring ParentPath(const BomSheet& sheet, const BomRow& row) {
    std::wstring path;
    for (const BomRow* below = &row; &sheet.rows[below->parent] != below;) {
        below = &sheet.rows[below->parent];
        const std::wstring& name = sheet.models[below->model].name;
        path.insert(0, path.empty() ? name : name + L"/");
    }
    return path;
}

std::wstring LeftOutText(const LeftCounts& left, std::size_t skeletons) {
    std::wstring text;
    const auto add = [&text](const wchar_t* word, std::size_t count) {
        if (count == 0) return;
        if (!text.empty()) text += L"，";
        text += word + std::to_wstring(count);
    };
    for (const auto& [reason, word] : kReasonWords) add(word, left[static_cast<std::size_t>(reason)]);
    add(kSkeletonWord, skeletons);
    const std::size_t missing = left[static_cast<std::size_t>(LeftReason::Missing)];
    if (missing > 0) text += (text.empty() ? L"" : L"；") + std::to_wstring(missing) + kMissingEnd;
    return kLeftOut + (text.empty() ? kNothing : text);
}

}  // namespace kv
