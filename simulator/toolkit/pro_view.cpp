#include <ProView.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>
#include <optional>
#include <string>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

constexpr double kRounding = 1e-6;

double RowLength(const Matrix& matrix, std::size_t row) {
    return std::hypot(matrix[row][0], matrix[row][1], matrix[row][2]);
}

// NULL is the current model. Matrices are those of its present view only.
SimModel* FindViewed(Session& host, ProMdl model, ProView view) {
    if (view != nullptr) {
        host.report.Violation("is given a saved view, whose matrix the simulator does not give or take");
        return nullptr;
    }
    return model == nullptr ? host.models.current : FindModel(host, model);
}

bool IsRotation(const Matrix& matrix) {
    for (std::size_t row = 0; row < 3; ++row)
        if (!(RowLength(matrix, row) > 0) || matrix[row][3] != 0) return false;
    return matrix[3][3] == 1;
}

// A part or an assembly that the current window shows; null, with a violation, for anything else that is
// given.
SimModel* FindShown(Session& host, ProMdl model) {
    SimModel* shown = host.models.current;
    if (shown != nullptr && shown->MfgAssembly() != nullptr) shown = shown->MfgAssembly();
    SimModel* viewed = model == nullptr ? shown : FindSolid(host, model);
    if (viewed == nullptr || viewed == shown) return viewed;
    host.report.Violation("is given " + Utf8(viewed->Name()) + ", which the current window does not show");
    return nullptr;
}

// A name of a saved view in capitals; nothing for a text that is none.
std::optional<std::wstring> ViewName(Session& host, const wchar_t* text) {
    const auto name = TextInput(host, text, PRO_LINE_SIZE);
    const auto isPart = [](wchar_t character) { return character == L'_' || std::iswalnum(character) != 0; };
    if (!name || name->empty() || !std::ranges::all_of(*name, isPart)) return std::nullopt;
    return UpperName(*name);
}

ProView HandleOf(SavedView& view) {
    return reinterpret_cast<ProView>(&view);
}

bool IsNormalised(const Matrix& matrix) {
    for (std::size_t row = 0; row < 3; ++row)
        if (std::abs(RowLength(matrix, row) - 1) > kRounding) return false;
    return matrix[3][0] == 0 && matrix[3][1] == 0 && matrix[3][2] == 0;
}

// The host fits the turned model in: its own scale and shift stay.
Matrix Fitted(const Matrix& rotation, const Matrix& before) {
    Matrix view = rotation;
    const double scale = RowLength(before, 0);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) view[row][column] *= scale;
    view[3] = before[3];
    return view;
}

}  // namespace

ProError ProViewMatrixGet(ProMdl model, ProView view_handle, ProMatrix matrix) {
    static const CallSite kSite("ProViewMatrixGet", {PRO_TK_BAD_INPUTS, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {model, view_handle, Out(matrix, 4)}, [&](Session& host) -> ProError {
        if (matrix == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* viewed = FindViewed(host, model, view_handle);
        if (viewed == nullptr) return PRO_TK_GENERAL_ERROR;
        CopyMatrix(host.desk.ViewOf(*viewed), matrix);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewMatrixSet(ProMdl model, ProView view_handle, ProMatrix matrix) {
    static const CallSite kSite("ProViewMatrixSet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {model, view_handle, Place(matrix)}, [&](Session& host) -> ProError {
        if (matrix == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* viewed = FindViewed(host, model, view_handle);
        if (viewed == nullptr) return PRO_TK_BAD_INPUTS;
        const ModelKind kind = viewed->Kind();
        if (kind != ModelKind::kPart && kind != ModelKind::kAssembly && kind != ModelKind::kDrawing)
            return PRO_TK_INVALID_TYPE;
        Matrix view;
        for (std::size_t row = 0; row < 4; ++row) std::copy_n(matrix[row], 4, view[row].begin());
        if (!IsRotation(view)) return PRO_TK_BAD_INPUTS;
        if (IsNormalised(view))
            view = Fitted(view, host.desk.ViewOf(*viewed));
        else if (host.strict.scaledViewRefused)
            return PRO_TK_BAD_INPUTS;
        host.desk.SetView(*viewed, view);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewStore(ProMdl model, ProLine view_name, ProView* p_view) {
    static const CallSite kSite("ProViewStore",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {model, view_name, Out(p_view)}, [&](Session& host) -> ProError {
        SimModel* shown = FindShown(host, model);
        const auto name = ViewName(host, view_name);
        if (shown == nullptr || !name || p_view == nullptr) return PRO_TK_BAD_INPUTS;
        if (shown->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (host.strict.storedViewStays && shown->savedViews.contains(*name)) return PRO_TK_E_FOUND;
        Matrix orientation = host.desk.ViewOf(*shown);
        for (std::size_t row = 0; row < 3; ++row) {
            const double length = RowLength(orientation, row);
            for (std::size_t column = 0; column < 3; ++column) orientation[row][column] /= length;
        }
        orientation[3] = {0, 0, 0, 1};
        SavedView& view = shown->savedViews[*name];
        view = {*name, orientation};
        shown->SetModified(true);
        *p_view = HandleOf(view);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewNamesGet(ProMdl model, ProLine** names, ProLine** alternate_names, int* n) {
    static const CallSite kSite("ProViewNamesGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {model, Out(names), Out(alternate_names), Out(n)}, [&](Session& host) -> ProError {
        const SimModel* owner = FindModel(host, model);
        if (owner == nullptr || n == nullptr) return PRO_TK_BAD_INPUTS;
        if (owner->savedViews.empty()) return PRO_TK_E_NOT_FOUND;
        struct Line {
            ProLine text;
        };
        std::vector<Line> lines(owner->savedViews.size());
        std::size_t filled = 0;
        for (const auto& [key, view] : owner->savedViews)
            if (!FillBuffer<wchar_t>(view.name, lines[filled++].text, PRO_LINE_SIZE))
                return PRO_TK_GENERAL_ERROR;
        *n = static_cast<int>(lines.size());
        for (ProLine** list : {names, alternate_names})
            if (list != nullptr) *list = reinterpret_cast<ProLine*>(NewHostArray(host.memory, lines));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewNameToView(ProMdl model, ProLine view_name, ProView* p_view) {
    static const CallSite kSite("ProViewNameToView", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {model, view_name, Out(p_view)}, [&](Session& host) -> ProError {
        SimModel* owner = FindModel(host, model);
        const auto name = ViewName(host, view_name);
        if (owner == nullptr || !name || p_view == nullptr) return PRO_TK_BAD_INPUTS;
        const auto found = owner->savedViews.find(*name);
        if (found == owner->savedViews.end()) return PRO_TK_E_NOT_FOUND;
        *p_view = HandleOf(found->second);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewDelete(ProMdl model, ProView view) {
    static const CallSite kSite("ProViewDelete", {PRO_TK_BAD_INPUTS, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {model, view}, [&](Session& host) -> ProError {
        SimModel* owner = FindModel(host, model);
        if (owner == nullptr) return PRO_TK_BAD_INPUTS;
        const auto isIt = [view](auto& entry) { return HandleOf(entry.second) == view; };
        const auto found = std::ranges::find_if(owner->savedViews, isIt);
        if (found == owner->savedViews.end()) {
            host.report.Violation("is given a view that " + Utf8(owner->Name()) + " does not have");
            return PRO_TK_BAD_INPUTS;
        }
        owner->savedViews.erase(found);
        owner->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProViewRefit(ProMdl model, ProView view) {
    static const CallSite kSite("ProViewRefit", {PRO_TK_BAD_INPUTS, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {model, view}, [&](Session& host) -> ProError {
        const SimModel* shown = FindShown(host, model);
        if (shown == nullptr || view != nullptr) return PRO_TK_BAD_INPUTS;
        host.desk.Refit(*shown);
        return PRO_TK_NO_ERROR;
    });
}
