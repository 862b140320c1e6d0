#include "simulator/import/structure.h"

#include <algorithm>

#include "simulator/import/import_error.h"

namespace sim {

namespace {

// Takes away, from the bottom up, what contains nothing that is left: what then is left contains itself, or
// something that does.
std::vector<bool> LeftAfterTrimming(const ImportedStructure& structure) {
    const std::size_t count = structure.products.size();
    std::vector<std::vector<std::size_t>> users(count);
    std::vector<std::size_t> below(count);
    std::vector<std::size_t> done;
    for (std::size_t i = 0; i < count; ++i) {
        below[i] = structure.products[i].components.size();
        if (below[i] == 0) done.push_back(i);
        for (const ImportedComponent& component : structure.products[i].components)
            users[component.product].push_back(i);
    }
    std::vector<bool> left(count, true);
    while (!done.empty()) {
        const std::size_t product = done.back();
        done.pop_back();
        left[product] = false;
        for (const std::size_t user : users[product])
            if (--below[user] == 0) done.push_back(user);
    }
    return left;
}

void RefuseCircles(const ImportedStructure& structure) {
    const std::vector<bool> left = LeftAfterTrimming(structure);
    const auto first = std::ranges::find(left, true);
    if (first == left.end()) return;
    // Down through what is left, until a product is met again.
    auto at = static_cast<std::size_t>(first - left.begin());
    std::vector<bool> met(left.size());
    while (!met[at]) {
        met[at] = true;
        const std::vector<ImportedComponent>& components = structure.products[at].components;
        at = std::ranges::find_if(components, [&](const ImportedComponent& one) {
                 return left[one.product];
             })->product;
    }
    throw ImportError(structure.file, structure.products[at].line, "a product that does not contain itself");
}

}  // namespace

std::vector<std::size_t> TopProducts(const ImportedStructure& structure) {
    RefuseCircles(structure);
    std::vector<bool> isUsed(structure.products.size());
    for (const ImportedProduct& product : structure.products)
        for (const ImportedComponent& component : product.components) isUsed[component.product] = true;
    std::vector<std::size_t> tops;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (!isUsed[i]) tops.push_back(i);
    return tops;
}

}  // namespace sim
