// What a well-formed layout file may still have wrong: names, attributes, values, places in the grids.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "simulator/layout/res_file.h"

namespace sim {

// Where, and what was expected there.
using ResFindings = std::vector<std::pair<ResPlace, std::string>>;

// `fileStem`: the file's name without ".res", which is the dialog's name too.
void CheckResFile(const ResFile& layout, const std::string& fileStem, ResFindings& findings);

}  // namespace sim
