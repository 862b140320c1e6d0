// Names of models made of names of products.
//
// The rule: blanks around the name and an extension of a model file at its end go; every other run of
// characters that no model name may have becomes one "_"; a name that Windows keeps for devices gets a "_";
// what is longer than 31 characters is cut; a name that another model of that kind has gets "-2", "-3" and
// so on at its end, and is cut to make room for it. Without any character it is UNNAMED.

#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/cad/model.h"

namespace sim {

class ModelNames {
public:
    // The name for a model of this kind, which from now on is taken.
    std::wstring Take(std::wstring_view product, ModelKind kind);

private:
    using Key = std::pair<ModelKind, std::wstring>;  // with the name in upper case

    std::set<Key> taken_;
    std::map<Key, int> next_;  // number to be tried for a name that is taken
};

// A name that a parameter may have, by the same rule, without dashes; empty for one without any character.
std::wstring ParameterName(std::wstring_view title);

}  // namespace sim
