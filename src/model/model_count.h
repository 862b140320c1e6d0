// How often models are placed.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "model/model_walk.h"

namespace kv {

// A distinct model of a walk with its name; an unreadable name is empty.
struct NamedModel {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    std::wstring name;
};

// Reads the names of the models that a walk met, in its order. One host call a model.
std::vector<NamedModel> NamesOf(std::span<const DistinctModel> models);

// Which models are the same: letter case of names, and whether types have to agree.
enum class NameMatch { Exact, AnyCase };
enum class TypeMatch { Same, Any };

// For each model the index of the first that is the same. One without a name is the same as none but itself.
std::vector<unsigned int> FirstOfSame(std::span<const NamedModel> models, NameMatch names, TypeMatch types);

struct ModelCount {
    unsigned int model;  // index of the first that is the same
    unsigned int count;  // placements
};

// How often each model is placed, in the order of first meeting. Models of the same type and name are one.
std::vector<ModelCount> CountModels(std::span<const NamedModel> models, std::span<const PlacedModel> placed,
                                    NameMatch rule);

}  // namespace kv
