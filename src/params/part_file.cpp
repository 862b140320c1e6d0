// Files for parts, and the parts that they are for.

#include "params/part_file.h"

#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kFileNameTooLong[] = L"\t文件名称超过31个字符，未做任何改动！\t";
static constexpr wchar_t kNoSelection[] = L"\t无法读取所选对象，未做任何改动！\t";

static ProError CollectBelow(ProMdl assembly, WalkVariant variant, PartTargets& targets);

ProError PartFileChoose(const wchar_t* title, const wchar_t* filter, const std::wstring& start,
                        PartFile& file) {
    ProPath path = {};
    ProError status = ProFileMdlnameOpen(HostText(title), HostText(filter), nullptr, nullptr,
                                         start.empty() ? nullptr : HostText(start.c_str()), nullptr, path);
    if (Failed(status)) return status;
    ProPath folder = {};
    ProMdlName name = {};
    ProMdlExtension extension = {};
    status = ProFileMdlnameParse(path, folder, name, extension, nullptr);
    // The host's word for a name that is longer still.
    if (status == PRO_TK_BAD_INPUTS) return ShowFailure(kFileNameTooLong, PRO_TK_LINE_TOO_LONG);
    if (Failed(status)) return status;
    ProName fits;
    if (Failed(CopyText(name, fits))) return ShowFailure(kFileNameTooLong, PRO_TK_LINE_TOO_LONG);
    file = {folder, name, extension};
    return PRO_TK_NO_ERROR;
}

std::vector<ProMdl> PartTargets::All() const {
    std::vector<ProMdl> all = below;
    for (ProMdl part : single) AddDistinct(all, part);
    return all;
}

ProError PartTargetsGet(const DistinctModel& current, const SelectedModels& selection, WalkVariant variant,
                        PartTargets& targets) {
    const bool isChosen = current.type == PRO_MDL_ASSEMBLY && selection.any;
    const std::vector<DistinctModel> models =
        isChosen ? selection.models : std::vector<DistinctModel>{current};
    for (const DistinctModel& model : models) {
        const bool isWanted = variant == CollectPartComponents || IsSheetmetal(model.model);
        if (model.type == PRO_MDL_PART && isWanted) AddDistinct(targets.single, model.model);
        if (model.type != PRO_MDL_ASSEMBLY) continue;
        const ProError status = CollectBelow(model.model, variant, targets);
        if (Failed(status)) return status;
    }
    return PRO_TK_NO_ERROR;
}

static ProError CollectBelow(ProMdl assembly, WalkVariant variant, PartTargets& targets) {
    std::vector<ProMdl> parts;
    const ProError status = DistinctModels(assembly, variant, parts);
    if (status == PRO_TK_OUT_OF_MEMORY) return status;
    targets.walkFailed = targets.walkFailed || Failed(status);
    targets.walkEmpty = targets.walkEmpty || (!Failed(status) && parts.empty());
    for (ProMdl part : parts) AddDistinct(targets.below, part);
    return PRO_TK_NO_ERROR;
}

ProError PartSelectionGet(const DistinctModel& current, SelectedModels& selection) {
    if (current.type != PRO_MDL_ASSEMBLY) return PRO_TK_NO_ERROR;
    const ProError status = SelectedModelsGet(selection);
    return Failed(status) ? ShowFailure(kNoSelection, status) : PRO_TK_NO_ERROR;
}

}  // namespace kv
