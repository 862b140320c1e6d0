#include "simulator/toolkit/support/component_call.h"

#include <cmath>

#include "simulator/toolkit/support/arguments.h"

namespace sim {

Placed FindComponent(Session& host, const ProModelitem* item) {
    const Feature* feature = FindFeature(host, item);
    if (feature == nullptr || feature->type != kComponentType || feature->component == nullptr) return {};
    SimModel* owner = host.models.FromHandle(item->owner);
    return {owner, owner->FindFeature(item->id)};
}

bool IsPlacement(const Matrix& matrix) {
    constexpr double kClose = 1e-6;
    const auto isClose = [](double a, double b) { return std::abs(a - b) < kClose; };
    for (std::size_t i = 0; i < 4; ++i)
        if (!isClose(matrix[i][3], i == 3 ? 1 : 0)) return false;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) {
            double product = 0;
            for (std::size_t k = 0; k < 3; ++k) product += matrix[i][k] * matrix[j][k];
            if (!isClose(product, i == j ? 1 : 0)) return false;
        }
    return true;
}

}  // namespace sim
