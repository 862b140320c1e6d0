#include <ProView.h>

#include <algorithm>
#include <cmath>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

constexpr double kRounding = 1e-6;

double RowLength(const Matrix& matrix, std::size_t row) {
    return std::hypot(matrix[row][0], matrix[row][1], matrix[row][2]);
}

// NULL is the current model. Only the present view of a model is known here.
SimModel* FindViewed(Session& host, ProMdl model, ProView view) {
    if (view != nullptr) {
        host.report.Violation("is given a view, which is not one of those that models have here");
        return nullptr;
    }
    return model == nullptr ? host.models.current : FindModel(host, model);
}

bool IsRotation(const Matrix& matrix) {
    for (std::size_t row = 0; row < 3; ++row)
        if (!(RowLength(matrix, row) > 0) || matrix[row][3] != 0) return false;
    return matrix[3][3] == 1;
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
