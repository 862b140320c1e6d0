// How often models are placed.
//
// Names are compared once for each distinct model; a placement then costs one look at a list.

#include "model/model_count.h"

#include <string_view>
#include <unordered_map>

#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"

namespace kv {

static constexpr unsigned int kNone = ~0U;

static std::vector<std::wstring> UpperNames(std::span<const NamedModel> models);

std::vector<NamedModel> NamesOf(std::span<const DistinctModel> models) {
    std::vector<NamedModel> named(models.size());
    for (std::size_t i = 0; i < models.size(); ++i) {
        named[i].model = models[i].model;
        named[i].type = models[i].type;
        if (Failed(ModelNameGet(models[i].model, named[i].name))) named[i].name.clear();
    }
    return named;
}

std::vector<ModelCount> CountModels(std::span<const NamedModel> models, std::span<const PlacedModel> placed,
                                    NameMatch rule) {
    const std::vector<unsigned int> first = FirstOfSame(models, rule, TypeMatch::Same);
    std::vector<unsigned int> entryOf(models.size(), kNone);
    std::vector<ModelCount> counts;
    for (const PlacedModel& placement : placed) {
        const unsigned int model = first[placement.index];
        unsigned int& entry = entryOf[model];
        if (entry == kNone) {
            entry = static_cast<unsigned int>(counts.size());
            counts.push_back({model, 0});
        }
        ++counts[entry].count;
    }
    return counts;
}

std::vector<unsigned int> FirstOfSame(std::span<const NamedModel> models, NameMatch names, TypeMatch types) {
    const std::vector<std::wstring> upper =
        names == NameMatch::AnyCase ? UpperNames(models) : std::vector<std::wstring>();
    // One list for each type that tells models apart.
    std::unordered_map<ProMdlType, std::unordered_map<std::wstring_view, unsigned int>> known;
    std::vector<unsigned int> first(models.size());
    for (unsigned int i = 0; i < models.size(); ++i) {
        first[i] = i;
        const std::wstring_view name = upper.empty() ? models[i].name : upper[i];
        if (name.empty()) continue;
        const ProMdlType type = types == TypeMatch::Same ? models[i].type : PRO_MDL_UNUSED;
        first[i] = known[type].try_emplace(name, i).first->second;
    }
    return first;
}

static std::vector<std::wstring> UpperNames(std::span<const NamedModel> models) {
    std::vector<std::wstring> upper(models.size());
    for (std::size_t i = 0; i < models.size(); ++i) upper[i] = UpperCase(models[i].name);
    return upper;
}

}  // namespace kv
