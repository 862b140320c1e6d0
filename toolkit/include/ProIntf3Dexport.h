// Export of solids through the 3D interfaces.
#pragma once

#include <ProObjects.h>
#include <ProSelection.h>

PRO_BEGIN_C_DECLS

typedef enum ProIntf3DExportTypes {
    PRO_INTF_EXPORT_STEP = 1,
    PRO_INTF_EXPORT_VDA = 3,
    PRO_INTF_EXPORT_IGES = 4,
    PRO_INTF_EXPORT_SAT = 7
} ProIntf3DExportType;

typedef enum ProOutputAssemblyConfigurations {
    PRO_OUTPUT_ASSEMBLY_FLAT_FILE = 0,
    PRO_OUTPUT_ASSEMBLY_SINGLE_FILE = 1,
    PRO_OUTPUT_ASSEMBLY_MULTI_FILES = 2,
    PRO_OUTPUT_ASSEMBLY_PARTS = 3
} ProOutputAssemblyConfiguration;

typedef struct pro_output_brep_representation* ProOutputBrepRepresentation;
typedef struct pro_output_inclusion* ProOutputInclusion;
typedef struct pro_output_layer_options* ProOutputLayerOptions;

// Gives a choice of what is exported beside solids; free it with ProOutputInclusionFree. BAD_INPUTS.
ProError ProOutputInclusionAlloc(ProOutputInclusion* inclusion);
ProError ProOutputInclusionFlagsSet(ProOutputInclusion inclusion, ProBoolean include_datums,
                                    ProBoolean include_blanked, ProBoolean include_facetted);
ProError ProOutputInclusionFree(ProOutputInclusion inclusion);

// Gives a choice of layers; free it with ProOutputLayerOptionsFree. BAD_INPUTS.
ProError ProOutputLayerOptionsAlloc(ProOutputLayerOptions* layer_options);
// With true, layers without a number of their own get one and are exported. BAD_INPUTS.
ProError ProOutputLayerOptionsAutoidSet(ProOutputLayerOptions layer_options, ProBoolean auto_ids);
ProError ProOutputLayerOptionsFree(ProOutputLayerOptions layer_options);

// Writes a part or assembly. `output_file` may hold a path, but no extension: the host adds it. A
// NULL coordinate system is the default one. BAD_INPUTS; INVALID_TYPE; CANT_WRITE; NO_LICENSE;
// GENERAL_ERROR.
ProError ProIntf3DFileWrite(ProSolid solid, ProIntf3DExportType file_type, ProPath output_file,
                            ProOutputAssemblyConfiguration configuration, ProSelection reference_csys,
                            ProOutputBrepRepresentation brep_representation, ProOutputInclusion inclusion,
                            ProOutputLayerOptions layer_options);

PRO_END_C_DECLS
