#include <ProIntf3Dexport.h>

#include <string>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/export_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace fs = std::filesystem;

namespace {

struct Format {
    ProIntf3DExportType type;
    const char* name;
    const wchar_t* extension;
};

constexpr Format kFormats[] = {
    {PRO_INTF_EXPORT_STEP, "STEP", L".stp"},
    {PRO_INTF_EXPORT_VDA, "VDA", L".vda"},
    {PRO_INTF_EXPORT_IGES, "IGES", L".igs"},
    {PRO_INTF_EXPORT_SAT, "SAT", L".sat"},
};

const Format* FindFormat(ProIntf3DExportType type) {
    for (const Format& format : kFormats)
        if (format.type == type) return &format;
    return nullptr;
}

std::string YesNo(bool truth) {
    return truth ? "yes" : "no";
}

}  // namespace

// ---- Options

ProError ProOutputInclusionAlloc(ProOutputInclusion* inclusion) {
    static const CallSite kSite("ProOutputInclusionAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(inclusion)}, [&](Session& host) -> ProError {
        if (inclusion == nullptr) return PRO_TK_BAD_INPUTS;
        *inclusion = static_cast<ProOutputInclusion>(host.exportOptions.inclusions.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProOutputInclusionFlagsSet(ProOutputInclusion inclusion, ProBoolean include_datums,
                                    ProBoolean include_blanked, ProBoolean include_facetted) {
    static const CallSite kSite("ProOutputInclusionFlagsSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {inclusion, include_datums, include_blanked, include_facetted},
                  [&](Session& host) -> ProError {
                      InclusionChoice* choice = host.exportOptions.inclusions.Find(host.report, inclusion);
                      if (choice == nullptr) return PRO_TK_BAD_INPUTS;
                      *choice = {include_datums != PRO_B_FALSE, include_blanked != PRO_B_FALSE,
                                 include_facetted != PRO_B_FALSE};
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProOutputInclusionFree(ProOutputInclusion inclusion) {
    static const CallSite kSite("ProOutputInclusionFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {inclusion}, [&](Session& host) -> ProError {
        return host.exportOptions.inclusions.Free(host.report, inclusion) ? PRO_TK_NO_ERROR
                                                                          : PRO_TK_BAD_INPUTS;
    });
}

ProError ProOutputLayerOptionsAlloc(ProOutputLayerOptions* layer_options) {
    static const CallSite kSite("ProOutputLayerOptionsAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(layer_options)}, [&](Session& host) -> ProError {
        if (layer_options == nullptr) return PRO_TK_BAD_INPUTS;
        *layer_options = static_cast<ProOutputLayerOptions>(host.exportOptions.layers.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProOutputLayerOptionsAutoidSet(ProOutputLayerOptions layer_options, ProBoolean auto_ids) {
    static const CallSite kSite("ProOutputLayerOptionsAutoidSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {layer_options, auto_ids}, [&](Session& host) -> ProError {
        LayerChoice* choice = host.exportOptions.layers.Find(host.report, layer_options);
        if (choice == nullptr) return PRO_TK_BAD_INPUTS;
        choice->autoIds = auto_ids != PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProOutputLayerOptionsFree(ProOutputLayerOptions layer_options) {
    static const CallSite kSite("ProOutputLayerOptionsFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {layer_options}, [&](Session& host) -> ProError {
        return host.exportOptions.layers.Free(host.report, layer_options) ? PRO_TK_NO_ERROR
                                                                          : PRO_TK_BAD_INPUTS;
    });
}

// ---- Export

ProError ProIntf3DFileWrite(ProSolid solid, ProIntf3DExportType file_type, ProPath output_file,
                            ProOutputAssemblyConfiguration configuration, ProSelection reference_csys,
                            ProOutputBrepRepresentation brep_representation, ProOutputInclusion inclusion,
                            ProOutputLayerOptions layer_options) {
    static const CallSite kSite(
        "ProIntf3DFileWrite", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_CANT_WRITE, PRO_TK_NO_LICENSE});
    return Traced(
        kSite,
        {solid, file_type, output_file, configuration, reference_csys, brep_representation, inclusion,
         layer_options},
        [&](Session& host) -> ProError {
            const SimModel* model = FindSolid(host, solid);
            const auto text = TextInput(host, output_file, PRO_PATH_SIZE);
            const InclusionChoice* included = host.exportOptions.inclusions.Find(host.report, inclusion);
            const LayerChoice* layers = host.exportOptions.layers.Find(host.report, layer_options);
            const bool isKnown =
                configuration >= PRO_OUTPUT_ASSEMBLY_FLAT_FILE && configuration <= PRO_OUTPUT_ASSEMBLY_PARTS;
            // No reference system and no boundary representation, whatever these would do.
            if (model == nullptr || !text || text->empty() || included == nullptr || layers == nullptr ||
                !isKnown || reference_csys != nullptr || brep_representation != nullptr)
                return PRO_TK_BAD_INPUTS;
            const Format* format = FindFormat(file_type);
            if (format == nullptr) return PRO_TK_INVALID_TYPE;
            const fs::path file = host.models.WorkingDirectory() / (std::wstring(*text) + format->extension);
            if (file.native().size() >= PRO_PATH_SIZE) return PRO_TK_BAD_INPUTS;
            const ExportRecord record{format->name,
                                      ExportLabel(*model),
                                      {},
                                      {{"ASSEMBLY", std::to_string(configuration)},
                                       {"DATUMS", YesNo(included->datums)},
                                       {"BLANKED", YesNo(included->blanked)},
                                       {"FACETTED", YesNo(included->facetted)},
                                       {"LAYER_IDS", YesNo(layers->autoIds)}}};
            return WriteExport(host, file, ExportText(record), PRO_TK_CANT_WRITE);
        });
}
