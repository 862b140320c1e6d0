#include <ProSolid.h>

#include <algorithm>

#include "simulator/cad/outline.h"
#include "simulator/report/call_plugin.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The visit that features and surfaces share. `filter` and `action` call the plug-in; they may visit the same
// items again, but not change them: nobody knows what the host would go on with.
template <typename Items, typename Filter, typename Action>
ProError Visit(Session& host, const SimModel& model, const Items& items, Filter filter, Action action) {
    const int before = model.StructureChanges();
    bool anyVisited = false;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const ProError chosen = filter(i);
        const ProError answer = chosen == PRO_TK_CONTINUE ? PRO_TK_NO_ERROR : action(i, chosen);
        if (model.StructureChanges() != before) {
            host.report.Violation("the visited items of " + Utf8(model.Name()) + " were changed meanwhile");
            return PRO_TK_GENERAL_ERROR;
        }
        if (chosen == PRO_TK_CONTINUE) continue;
        anyVisited = true;
        if (answer != PRO_TK_NO_ERROR) return answer;
    }
    return anyVisited ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

}  // namespace

ProError ProSolidMdlnameCreate(ProMdlName name, ProType type, ProSolid* p_handle) {
    static const CallSite kSite("ProSolidMdlnameCreate",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_FOUND, PRO_TK_LINE_TOO_LONG});
    return Traced(kSite, {name, type, Out(p_handle)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_MDLNAME_SIZE);
        if (!text || text->empty() || p_handle == nullptr || (type != PRO_PART && type != PRO_ASSEMBLY))
            return PRO_TK_BAD_INPUTS;
        if (text->size() >= PRO_NAME_SIZE) return PRO_TK_LINE_TOO_LONG;
        const ModelKind kind = type == PRO_PART ? ModelKind::kPart : ModelKind::kAssembly;
        if (host.models.Find(*text, kind) != nullptr) return PRO_TK_E_FOUND;
        SimModel* model = IsModelName(*text) ? host.models.Create(*text, kind) : nullptr;
        if (model == nullptr) return PRO_TK_GENERAL_ERROR;
        *p_handle = reinterpret_cast<ProSolid>(model);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSolidFeatVisit(ProSolid p_handle, ProFeatureVisitAction visit_action,
                           ProFeatureFilterAction filter_action, ProAppData app_data) {
    static const CallSite kSite("ProSolidFeatVisit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_handle, visit_action, filter_action, app_data}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, p_handle);
        if (model == nullptr || visit_action == nullptr) return PRO_TK_BAD_INPUTS;
        // Each callback gets a structure of its own: what it writes there reaches nobody.
        const auto feature = [&](std::size_t i) {
            return ProFeature{PRO_FEATURE, model->Features()[i].id, model};
        };
        return Visit(
            host, *model, model->Features(),
            [&](std::size_t i) {
                if (filter_action == nullptr) return PRO_TK_NO_ERROR;
                ProFeature item = feature(i);
                return CallPlugin(host.report, filter_action, &item, app_data);
            },
            [&](std::size_t i, ProError chosen) {
                ProFeature item = feature(i);
                return CallPlugin(host.report, visit_action, &item, chosen, app_data);
            });
    });
}

ProError ProSolidSurfaceVisit(ProSolid p_handle, ProSurfaceVisitAction visit_action,
                              ProSurfaceFilterAction filter_action, ProAppData app_data) {
    static const CallSite kSite("ProSolidSurfaceVisit",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_MULTIBODY_UNSUPPORTED});
    return Traced(kSite, {p_handle, visit_action, filter_action, app_data}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, p_handle);
        if (model == nullptr || visit_action == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->Kind() == ModelKind::kAssembly) return PRO_TK_E_NOT_FOUND;
        if (model->BodyCount() > 1) return PRO_TK_MULTIBODY_UNSUPPORTED;
        const auto surface = [&](std::size_t i) {
            SurfaceItem* item = model->Surfaces()[i].get();
            host.desk.HandOut(*item);
            return reinterpret_cast<ProSurface>(item);
        };
        return Visit(
            host, *model, model->Surfaces(),
            [&](std::size_t i) {
                if (filter_action == nullptr) return PRO_TK_NO_ERROR;
                return CallPlugin(host.report, filter_action, surface(i), app_data);
            },
            [&](std::size_t i, ProError chosen) {
                return CallPlugin(host.report, visit_action, surface(i), chosen, app_data);
            });
    });
}

ProError ProSolidCsysVisit(ProSolid p_handle, ProCsysVisitAction visit_action,
                           ProCsysFilterAction filter_action, ProAppData app_data) {
    static const CallSite kSite("ProSolidCsysVisit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_handle, visit_action, filter_action, app_data}, [&](Session& host) -> ProError {
        const SimModel* model = FindSolid(host, p_handle);
        if (model == nullptr || visit_action == nullptr) return PRO_TK_BAD_INPUTS;
        const auto system = [&](std::size_t i) {
            return static_cast<ProCsys>(host.desk.HandOut(*model, model->CoordinateSystems()[i]));
        };
        return Visit(
            host, *model, model->CoordinateSystems(),
            [&](std::size_t i) {
                if (filter_action == nullptr) return PRO_TK_NO_ERROR;
                return CallPlugin(host.report, filter_action, system(i), app_data);
            },
            [&](std::size_t i, ProError chosen) {
                return CallPlugin(host.report, visit_action, system(i), chosen, app_data);
            });
    });
}

ProError ProSolidOutlineCompute(ProSolid p_solid, ProMatrix matrix, ProSolidOutlExclTypes excludes[],
                                int num_excludes, Pro3dPnt r_outline_points[2]) {
    static const CallSite kSite("ProSolidOutlineCompute", {PRO_TK_BAD_INPUTS, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {p_solid, Place(matrix), Place(excludes), num_excludes, Out(r_outline_points, 2)},
                  [&](Session& host) -> ProError {
                      const SimModel* model = FindSolid(host, p_solid);
                      if (model == nullptr || r_outline_points == nullptr || num_excludes < 0 ||
                          (excludes == nullptr && num_excludes > 0))
                          return PRO_TK_BAD_INPUTS;
                      const auto isKnown = [](ProSolidOutlExclTypes type) {
                          return type >= PRO_OUTL_EXC_NOT_USED && type <= PRO_OUTL_EXC_ALL_CRVS;
                      };
                      if (!std::all_of(excludes, excludes + num_excludes, isKnown)) return PRO_TK_BAD_INPUTS;
                      std::optional<Matrix> view = matrix == nullptr ? IdentityMatrix() : MatrixFrom(matrix);
                      if (host.strict.outlineTakesPlace) view = Inverse(*view);
                      if (!view) return PRO_TK_BAD_INPUTS;
                      const bool withSystems = std::find(excludes, excludes + num_excludes,
                                                         PRO_OUTL_EXC_DATUM_CSYS) == excludes + num_excludes;
                      const auto box = OutlineOf(*model, *view, withSystems);
                      if (!box) return PRO_TK_GENERAL_ERROR;
                      const Vec3* corners[] = {&box->minimum, &box->maximum};
                      for (std::size_t i = 0; i < 2; ++i) {
                          r_outline_points[i][0] = corners[i]->x;
                          r_outline_points[i][1] = corners[i]->y;
                          r_outline_points[i][2] = corners[i]->z;
                      }
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProSolidDisplay(ProSolid p_solid) {
    static const CallSite kSite("ProSolidDisplay", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE});
    return Traced(kSite, {p_solid}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, p_solid);
        if (model == nullptr) return PRO_TK_BAD_INPUTS;
        host.desk.Display(*model);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSolidRegenerate(ProSolid p_handle, int flags) {
    static const CallSite kSite("ProSolidRegenerate", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY,
                                                       PRO_TK_UNATTACHED_FEATS, PRO_TK_REGEN_AGAIN});
    return Traced(kSite, {p_handle, flags}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, p_handle);
        if (model == nullptr || flags != PRO_REGEN_NO_FLAGS) return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        model->CountRegeneration();
        return PRO_TK_NO_ERROR;
    });
}
