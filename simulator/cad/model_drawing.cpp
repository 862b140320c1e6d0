#include "simulator/cad/model_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace sim {

namespace {

constexpr double kWidth = 640;
constexpr double kHeight = 480;
constexpr double kMargin = 20;
constexpr std::size_t kDeepest = 25;
// What a face away from the light keeps of its colour.
constexpr double kDarkest = 0.55;

struct Face {
    std::array<Vec3, 4> corners;  // on the screen: x to the right, y upwards, z to the viewer
    double depth = 0;
    double light = 1;
    Look look;
};

// Corners of a box by bits: 1 is the greater x, 2 the greater y, 4 the greater z.
constexpr std::array<std::array<unsigned, 4>, 6> kFaces = {
    {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}}};

class Scene {
public:
    Scene(const SimModel& top, const Matrix& view) : top_(top), turn_(view) { turn_[3] = {0, 0, 0, 1}; }

    std::vector<Face> Faces() {
        Add(top_, turn_, nullptr);
        // The farthest are drawn first.
        std::ranges::stable_sort(faces_, {}, &Face::depth);
        return std::move(faces_);
    }

private:
    // What the active representation leaves out is left out with all that is below it.
    // `given`: the look that an assembly above gives to all that is in it; null: each has its own.
    void Add(const SimModel& model, const Matrix& placement, const Look* given) {
        const auto own = top_.occurrenceLooks.find(path_);
        if (given == nullptr && own != top_.occurrenceLooks.end()) given = &own->second;
        if (given == nullptr && model.look) given = &*model.look;
        if (model.Kind() == ModelKind::kPart) AddPart(model, placement, given);
        if (path_.size() == kDeepest) return;
        for (const Feature& feature : model.Features()) {
            const bool isShown = feature.component != nullptr && feature.isVisible && !feature.isHidden &&
                                 feature.status == kFeatureActive;
            if (!isShown) continue;
            path_.push_back(feature.id);
            if (!top_.IsLeftOut(path_)) Add(*feature.component, Product(feature.placement, placement), given);
            path_.pop_back();
        }
    }

    // The looks of single surfaces are not seen on the box around them.
    void AddPart(const SimModel& part, const Matrix& placement, const Look* given) {
        const std::optional<Box> box = BoxOf(part);
        if (!box) return;
        const Look look = given == nullptr ? Look() : *given;
        for (const auto& numbers : kFaces) {
            Face face;
            face.look = look;
            for (std::size_t i = 0; i < numbers.size(); ++i)
                face.corners[i] = Transformed(Corner(*box, numbers[i]), placement);
            AddFace(face);
        }
    }

    // Of a solid box the faces towards the viewer hide the others; of a see-through one all are seen.
    void AddFace(Face face) {
        const auto& [a, b, c, d] = face.corners;
        const double x = (b.y - a.y) * (c.z - a.z) - (b.z - a.z) * (c.y - a.y);
        const double y = (b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z);
        const double z = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        const double length = std::hypot(x, y, z);
        if (length == 0 || (z <= 0 && face.look.transparency == 0)) return;
        // The light falls from above the viewer's left shoulder.
        const double slope = (-0.3 * x + 0.6 * y + 0.74 * z) / length;
        face.light = kDarkest + (1 - kDarkest) * std::max(0.0, slope);
        for (const Vec3& corner : face.corners) face.depth += corner.z / 4;
        faces_.push_back(face);
    }

    static Vec3 Corner(const Box& box, unsigned number) {
        return {(number & 1U) != 0 ? box.maximum.x : box.minimum.x,
                (number & 2U) != 0 ? box.maximum.y : box.minimum.y,
                (number & 4U) != 0 ? box.maximum.z : box.minimum.z};
    }

    static std::optional<Box> BoxOf(const SimModel& part) {
        if (part.Surfaces().empty()) return std::nullopt;
        Box all = part.Surfaces().front()->box;
        for (const auto& surface : part.Surfaces()) {
            const auto& [low, high] = surface->box;
            all.minimum = {std::min(all.minimum.x, low.x), std::min(all.minimum.y, low.y),
                           std::min(all.minimum.z, low.z)};
            all.maximum = {std::max(all.maximum.x, high.x), std::max(all.maximum.y, high.y),
                           std::max(all.maximum.z, high.z)};
        }
        return all;
    }

    const SimModel& top_;
    Matrix turn_;
    std::vector<int> path_;
    std::vector<Face> faces_;
};

// From the scene to the picture.
struct Fit {
    double scale = 1, left = 0, top = 0;
};

Fit FitOf(const std::vector<Face>& faces) {
    constexpr double kFar = std::numeric_limits<double>::max();
    double left = kFar, right = -kFar, bottom = kFar, top = -kFar;
    for (const Face& face : faces)
        for (const Vec3& corner : face.corners) {
            left = std::min(left, corner.x);
            right = std::max(right, corner.x);
            bottom = std::min(bottom, corner.y);
            top = std::max(top, corner.y);
        }
    const double width = std::max(right - left, 1e-9);
    const double height = std::max(top - bottom, 1e-9);
    const double scale = std::min((kWidth - 2 * kMargin) / width, (kHeight - 2 * kMargin) / height);
    return {scale, left - (kWidth / scale - width) / 2, top + (kHeight / scale - height) / 2};
}

std::string FaceText(const Face& face, const Fit& fit) {
    std::string points;
    char text[96];
    for (const Vec3& corner : face.corners) {
        std::snprintf(text, sizeof text, "%s%.1f,%.1f", points.empty() ? "" : " ",
                      (corner.x - fit.left) * fit.scale, (fit.top - corner.y) * fit.scale);
        points += text;
    }
    const auto part = [&](std::size_t i) {
        return static_cast<int>(std::lround(255 * face.look.colour[i] * face.light));
    };
    std::snprintf(text, sizeof text, "fill=\"#%02x%02x%02x\" fill-opacity=\"%.2f\"", part(0), part(1),
                  part(2), 1 - face.look.transparency);
    return "<polygon points=\"" + points + "\" " + text + "/>\n";
}

}  // namespace

std::string ModelDrawing(const SimModel& model, const Matrix& view) {
    const std::vector<Face> faces = Scene(model, view).Faces();
    char head[200];
    std::snprintf(head, sizeof head,
                  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\">\n"
                  "<rect width=\"100%%\" height=\"100%%\" fill=\"#eef1f5\"/>\n"
                  "<g stroke=\"#333\" stroke-width=\"0.6\" stroke-linejoin=\"round\">\n",
                  kWidth, kHeight);
    std::string text = head;
    const Fit fit = FitOf(faces);
    for (const Face& face : faces) text += FaceText(face, fit);
    return text + "</g>\n</svg>\n";
}

}  // namespace sim
