// A file of another program as a workspace.

#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace sim {

struct ImportReport {
    std::vector<std::string> tops;  // "PUMP.ASM", what nothing else contains
    std::size_t models = 0;
    std::size_t components = 0;      // each time that a model is placed in another one
    std::vector<std::string> notes;  // what is not as in the file, one line each
};

// Makes a workspace of a STEP file (.stp, .step, .p21) or a table (.csv). The folder must not exist, or be
// empty; it is there in full or not at all. Throws ImportError.
ImportReport ImportWorkspace(const std::filesystem::path& file, const std::filesystem::path& workspace);

}  // namespace sim
