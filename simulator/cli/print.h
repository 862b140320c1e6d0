// Models, menus and runs as text for people.

#pragma once

#include <string>
#include <vector>

#include "simulator/host/sim_host.h"

namespace sim::cli {

void PrintMenu(Session& session);
void PrintModel(const SimModel& model, int levels);
// One line a file: what was exported, the sheets, the options.
void PrintExports(const std::vector<ExportedFile>& files);
void PrintTrace(const Report& report);
void PrintProfile(const Report& report);
// What the user saw and what was started: boxes, message area, programs.
void PrintSeen(const User& user);

// "GEARBOX.ASM"
std::string FileLabel(const SimModel& model);

}  // namespace sim::cli
