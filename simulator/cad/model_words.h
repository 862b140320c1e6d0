// What reading and writing model files agree on: the words of the format, and the host's limits.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "simulator/cad/model.h"

namespace sim {

template <typename Value>
struct Word {
    std::string_view text;
    Value value;
};

inline constexpr std::string_view kFormat = "hostsim model";
inline constexpr int kFormatVersion = 1;
// Limits of the host: characters of a parameter's name and of its text.
inline constexpr std::size_t kLongestName = 31;
inline constexpr std::size_t kLongestText = 80;

inline constexpr std::array<Word<ModelKind>, 5> kKinds = {{
    {"assembly", ModelKind::kAssembly},
    {"part", ModelKind::kPart},
    {"drawing", ModelKind::kDrawing},
    {"format", ModelKind::kFormat},
    {"manufacturing", ModelKind::kManufacturing},
}};

inline constexpr std::array<Word<ModelSubtype>, 6> kSubtypes = {{
    {"none", ModelSubtype::kNone},
    {"solid", ModelSubtype::kSolidPart},
    {"sheetmetal", ModelSubtype::kSheetmetal},
    {"skeleton", ModelSubtype::kSkeleton},
    {"design", ModelSubtype::kDesignAssembly},
    {"mould", ModelSubtype::kMould},
}};

// The host's feature statuses.
inline constexpr std::array<Word<int>, 8> kStatuses = {{
    {"invalid", -1},
    {"active", kFeatureActive},
    {"inactive", 1},
    {"family table suppressed", 2},
    {"simplified representation suppressed", 3},
    {"program suppressed", 4},
    {"suppressed", kFeatureSuppressed},
    {"unregenerated", 6},
}};

inline constexpr std::array<Word<ViewType>, 7> kViewTypes = {{
    {"general", ViewType::kGeneral},
    {"projection", ViewType::kProjection},
    {"auxiliary", ViewType::kAuxiliary},
    {"detail", ViewType::kDetail},
    {"revolve", ViewType::kRevolve},
    {"copy and align", ViewType::kCopyAndAlign},
    {"flat", ViewType::kFlat},
}};

inline constexpr std::array<Word<double Look::*>, 6> kLookNumbers = {{
    {"ambient", &Look::ambient},
    {"diffuse", &Look::diffuse},
    {"highlight", &Look::highlight},
    {"shininess", &Look::shininess},
    {"transparency", &Look::transparency},
    {"reflection", &Look::reflection},
}};
inline constexpr std::array<Word<std::array<double, 3> Look::*>, 2> kLookColours = {{
    {"colour", &Look::colour},
    {"highlightColour", &Look::highlightColour},
}};

inline constexpr std::array<Word<RepAction>, 2> kRepActions = {{
    {"include", RepAction::kInclude},
    {"exclude", RepAction::kExclude},
}};

enum class ParameterType { kReal, kInteger, kBoolean, kString };
inline constexpr std::array<Word<ParameterType>, 4> kParameterTypes = {{
    {"real", ParameterType::kReal},
    {"integer", ParameterType::kInteger},
    {"boolean", ParameterType::kBoolean},
    {"string", ParameterType::kString},
}};

}  // namespace sim
