// A product structure as it comes out of a file of any kind, before models are made of it.

#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "simulator/cad/model.h"

namespace sim {

struct ImportedComponent {
    std::size_t product = 0;  // its place in the structure
    int count = 1;
    Matrix placement = IdentityMatrix();  // in the length unit of the assembly
};

struct ImportedProduct {
    std::wstring name;     // as the file has it
    std::size_t line = 0;  // where the file says so
    ModelKind kind = ModelKind::kPart;
    ModelSubtype subtype = ModelSubtype::kSolidPart;
    std::wstring units;  // name of the unit system; empty: that of a new model
    std::vector<std::pair<std::wstring, std::wstring>> parameters;
    std::vector<ImportedComponent> components;
};

struct ImportedStructure {
    std::string file;  // as errors call it
    std::vector<ImportedProduct> products;
    std::vector<std::string> notes;  // what a person should know about the reading
};

// The products that are no component of another one, in order. Throws ImportError when a product contains
// itself.
std::vector<std::size_t> TopProducts(const ImportedStructure& structure);

}  // namespace sim
