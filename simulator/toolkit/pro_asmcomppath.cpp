#include <ProAsmcomppath.h>

#include <algorithm>
#include <array>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The placement of the path's member in its top assembly; nothing when an identifier on the way is no
// component with a model.
std::optional<Matrix> PlacementAlong(SimModel& top, const int* ids, int count) {
    Matrix placement = IdentityMatrix();
    SimModel* model = &top;
    for (int level = 0; level < count; ++level) {
        const Feature* feature = model->FindFeature(ids[level]);
        if (feature == nullptr || feature->component == nullptr) return std::nullopt;
        placement = Product(feature->placement, placement);
        model = feature->component;
    }
    return placement;
}

}  // namespace

ProError ProAsmcomppathMdlGet(ProAsmcomppath* p_path, ProMdl* p_model) {
    static const CallSite kSite("ProAsmcomppathMdlGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_path, Out(p_model)}, [&](Session& host) -> ProError {
        if (p_path == nullptr || p_model == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* top = FindPathTop(host, *p_path);
        if (top == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model =
            ModelAlong(*top, {p_path->comp_id_table, p_path->comp_id_table + p_path->table_num});
        if (model == nullptr) return PRO_TK_E_NOT_FOUND;
        *p_model = model;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcomppathInit(ProSolid p_solid_handle, ProIdTable memb_id_tab, int table_size,
                            ProAsmcomppath* p_handle) {
    static const CallSite kSite("ProAsmcomppathInit", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_solid_handle, memb_id_tab, table_size, Out(p_handle)},
                  [&](Session& host) -> ProError {
                      SimModel* top = FindSolid(host, p_solid_handle);
                      const bool isSized = table_size >= 0 && table_size <= PRO_MAX_ASSEM_LEVEL;
                      if (top == nullptr || p_handle == nullptr || !isSized ||
                          (memb_id_tab == nullptr && table_size > 0))
                          return PRO_TK_BAD_INPUTS;
                      if (!PlacementAlong(*top, memb_id_tab, table_size)) return PRO_TK_BAD_INPUTS;
                      p_handle->owner = p_solid_handle;
                      std::copy_n(memb_id_tab, table_size, p_handle->comp_id_table);
                      // What lies behind the path's end is nobody's to read.
                      std::fill(p_handle->comp_id_table + table_size, std::end(p_handle->comp_id_table),
                                PRO_VALUE_UNUSED);
                      p_handle->table_num = table_size;
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProAsmcomppathTrfGet(ProAsmcomppath* p_path, ProBoolean bottom_up, ProMatrix transformation) {
    static const CallSite kSite("ProAsmcomppathTrfGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_path, bottom_up, Out(transformation, 4)}, [&](Session& host) -> ProError {
        if (p_path == nullptr || transformation == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* top = FindPathTop(host, *p_path);
        if (top == nullptr) return PRO_TK_BAD_INPUTS;
        std::optional<Matrix> placement = PlacementAlong(*top, p_path->comp_id_table, p_path->table_num);
        if (placement && bottom_up == PRO_B_FALSE) placement = Inverse(*placement);
        if (!placement) return PRO_TK_BAD_INPUTS;
        CopyMatrix(*placement, transformation);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProPntTrfEval(ProVector in_point, ProMatrix trf, ProVector out_point) {
    static const CallSite kSite("ProPntTrfEval", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {in_point, trf, Out(out_point, 3)}, [&](Session&) -> ProError {
        if (in_point == nullptr || trf == nullptr || out_point == nullptr) return PRO_TK_BAD_INPUTS;
        Matrix matrix;
        for (std::size_t row = 0; row < 4; ++row) std::copy_n(trf[row], 4, matrix[row].begin());
        const Vec3 point = Transformed({in_point[0], in_point[1], in_point[2]}, matrix);
        out_point[0] = point.x;
        out_point[1] = point.y;
        out_point[2] = point.z;
        return PRO_TK_NO_ERROR;
    });
}
