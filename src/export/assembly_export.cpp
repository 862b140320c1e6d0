// KvExStp, KvExIgs, KvExSat: one flow, three outputs.

#include "export/assembly_export.h"

#include <ProIntf3Dexport.h>
#include <ProUtil.h>

#include "base/file_name.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "base/working_directory.h"
#include "export/export_folder.h"
#include "export/export_name.h"
#include "export/model_output.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "model/model_walk.h"
#include "model/refusals.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kAssemblyDialog[] = "KvExIgs";
static constexpr wchar_t kMouldsOnly[] = L"此功能仅组件/模具环境可用！";
static constexpr wchar_t kModelsNotExported[] = L"以下模型未能导出：";

struct AssemblyExport {
    const char* command;
    const wchar_t* title;  // of the choice of a folder
    const wchar_t* extension;
    const wchar_t* step;
    const wchar_t* done;
};

// clang-format off
static constexpr AssemblyExport kStep = {
    "KvExStp", L"请选择stp导出目录",     L".stp", L"导出STEP", L"\tstp批量导出操作已完成\t"};
static constexpr AssemblyExport kIges = {
    "KvExIgs", L"请选择igs导出目录",     L".igs", L"导出IGES", L"\tIGS批量导出操作已完成\t"};
static constexpr AssemblyExport kSat = {
    "KvExSat", L"请选择sat文件导出目录", L".sat", L"导出SAT",  L"\t批量导出为sat操作已完成\t"};
// clang-format on

inline void InclusionFree(ProOutputInclusion* inclusion) {
    ProOutputInclusionFree(*inclusion);
}
inline void LayerOptionsFree(ProOutputLayerOptions* options) {
    ProOutputLayerOptionsFree(*options);
}

struct IgesOptions {
    HostHandle<ProOutputInclusion, InclusionFree> inclusion;
    HostHandle<ProOutputLayerOptions, LayerOptionsFree> layers;
};

static void OnExportIges(ProMdl& assembly);
static ProError IgesOptionsGet(IgesOptions& options);
static ProError FlagGet(const char* check, ProBoolean& flag);
static ProError ExportAsStep(const wchar_t* refusal, const AssemblyExport& kind);
static ProError ExportAssembly(ProMdl assembly, const AssemblyExport& kind, const IgesOptions* iges);
static void ExportModels(const ModelBatch& batch, const AssemblyExport& kind, const IgesOptions* iges,
                         ExportFolder& folder, BatchRun& run);
static ProError ModelFileWrite(ProMdl model, const AssemblyExport& kind, const IgesOptions* iges,
                               const ScratchFile& scratch);
static ProError IgesFileWrite(ProMdl model, const IgesOptions& options, const ScratchFile& scratch);

ProError KvExStp() {
    return ExportAsStep(kAssembliesOnly, kStep);
}

// What is written is STEP: those who asked for this command's files read them as such.
ProError KvExSat() {
    return ExportAsStep(kMouldsOnly, kSat);
}

ProError KvExIgs() {
    ProMdl assembly = nullptr;
    const ProError status = CurrentAssemblyGet(kAssembliesOnly, assembly);
    if (Failed(status)) return status;
    return RunDialog(kAssemblyDialog, {Pressed<OnExportIges>("KvExIgsAct"), Closes("Close")}, assembly);
}

static void OnExportIges(ProMdl& assembly) {
    IgesOptions options;
    if (Failed(IgesOptionsGet(options))) return;
    (void)ExportAssembly(assembly, kIges, &options);
}

static ProError IgesOptionsGet(IgesOptions& options) {
    ProBoolean datums = PRO_B_FALSE;
    ProBoolean blanked = PRO_B_FALSE;
    ProBoolean facetted = PRO_B_FALSE;
    ProError status = FlagGet("datumsCheck", datums);
    if (!Failed(status)) status = FlagGet("blankedCheck", blanked);
    if (!Failed(status)) status = FlagGet("facettedCheck", facetted);
    if (!Failed(status))
        status = options.inclusion.Received(ProOutputInclusionAlloc(options.inclusion.Receive()));
    if (!Failed(status))
        status = ProOutputInclusionFlagsSet(options.inclusion.Get(), datums, blanked, facetted);
    if (!Failed(status))
        status = options.layers.Received(ProOutputLayerOptionsAlloc(options.layers.Receive()));
    if (!Failed(status)) status = ProOutputLayerOptionsAutoidSet(options.layers.Get(), PRO_B_TRUE);
    return status;
}

static ProError FlagGet(const char* check, ProBoolean& flag) {
    bool ticked = false;
    const ProError status = CheckTickedGet(kAssemblyDialog, check, ticked);
    flag = ticked ? PRO_B_TRUE : PRO_B_FALSE;
    return status;
}

static ProError ExportAsStep(const wchar_t* refusal, const AssemblyExport& kind) {
    ProMdl assembly = nullptr;
    const ProError status = CurrentAssemblyGet(refusal, assembly);
    if (Failed(status)) return status;
    return ExportAssembly(assembly, kind, nullptr);
}

static ProError ExportAssembly(ProMdl assembly, const AssemblyExport& kind, const IgesOptions* iges) {
    ProPath target = {};
    ModelBatch batch;
    batch.current = assembly;
    ProError status = ProDirectoryChoose(HostText(kind.title), nullptr, nullptr, nullptr, target);
    if (!Failed(status)) status = DistinctModels(assembly, CollectAllComponents, batch.models);
    if (Failed(status)) return status;
    AddDistinct(batch.models, assembly);

    ExportFolder folder(target);
    BatchRun run(kind.command, batch.models.size());
    ExportModels(batch, kind, iges, folder, run);
    ShowFailures(kModelsNotExported, run.Record());
    ShowCompletion(run, kind.done);
    return PRO_TK_NO_ERROR;
}

static void ExportModels(const ModelBatch& batch, const AssemblyExport& kind, const IgesOptions* iges,
                         ExportFolder& folder, BatchRun& run) {
    // Files land in the working directory.
    ProError moved = PRO_TK_NO_ERROR;
    const auto goBack = UseWorkingDirectory(folder.scratch.Path(), moved);

    ForEachEntry(batch, run, kind.step, [&](ProMdl model, RunEntry& entry) {
        const OutputFile file = {FileNameText(entry.model), kind.extension, true};
        ScratchFile scratch;
        ProError status = OutputBegin(folder, file, scratch, entry);
        // Nothing is written where the working directory could not be left for.
        if (!Failed(status)) status = moved;
        if (!Failed(status)) status = ModelFileWrite(model, kind, iges, scratch);
        return Failed(status) ? status : OutputDeliver(folder, file, scratch, entry);
    });
}

// The files of the kinds without options of their own are STEP.
static ProError ModelFileWrite(ProMdl model, const AssemblyExport& kind, const IgesOptions* iges,
                               const ScratchFile& scratch) {
    if (iges != nullptr) return IgesFileWrite(model, *iges, scratch);
    return ModelWrite(model, PRO_STEP_FILE, scratch.name + kind.extension);
}

static ProError IgesFileWrite(ProMdl model, const IgesOptions& options, const ScratchFile& scratch) {
    ProPath path;
    const ProError status = CopyText(scratch.folder + scratch.name, path);
    if (Failed(status)) return status;
    // The host adds the extension by itself.
    return ProIntf3DFileWrite(static_cast<ProSolid>(model), PRO_INTF_EXPORT_IGES, path,
                              PRO_OUTPUT_ASSEMBLY_MULTI_FILES, nullptr, nullptr, options.inclusion.Get(),
                              options.layers.Get());
}

}  // namespace kv
