#include "simulator/cad/outline.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace sim {

namespace {

constexpr std::size_t kDeepestComponent = 25;

class Outline {
public:
    explicit Outline(const SimModel& top) : top_(top) {}

    void Add(const SimModel& model, const Matrix& placement) {
        for (const auto& surface : model.Surfaces()) AddBox(surface->box, placement);
        if (path_.size() == kDeepestComponent) return;
        for (const Feature& feature : model.Features()) {
            if (feature.component == nullptr || feature.status != kFeatureActive) continue;
            path_.push_back(feature.id);
            if (!top_.IsLeftOut(path_)) Add(*feature.component, Product(feature.placement, placement));
            path_.pop_back();
        }
    }

    void AddPoint(const Vec3& point) {
        if (!box_) box_ = Box{point, point};
        box_->minimum = {std::min(box_->minimum.x, point.x), std::min(box_->minimum.y, point.y),
                         std::min(box_->minimum.z, point.z)};
        box_->maximum = {std::max(box_->maximum.x, point.x), std::max(box_->maximum.y, point.y),
                         std::max(box_->maximum.z, point.z)};
    }

    const std::optional<Box>& Result() const { return box_; }

private:
    void AddBox(const Box& box, const Matrix& placement) {
        for (const double x : {box.minimum.x, box.maximum.x})
            for (const double y : {box.minimum.y, box.maximum.y})
                for (const double z : {box.minimum.z, box.maximum.z})
                    AddPoint(Transformed({x, y, z}, placement));
    }

    const SimModel& top_;
    std::vector<int> path_;
    std::optional<Box> box_;
};

}  // namespace

std::optional<Box> OutlineOf(const SimModel& model, const Matrix& view, bool withSystems) {
    Outline outline(model);
    outline.Add(model, view);
    if (withSystems)
        for (const CoordinateSystem& system : model.CoordinateSystems()) {
            const auto& [x, y, z, one] = system.placement[3];
            outline.AddPoint(Transformed({x, y, z}, view));
        }
    return outline.Result();
}

}  // namespace sim
