// Models, menus and runs as text for people.

#pragma once

#include <string>
#include <vector>

#include "simulator/host/sim_host.h"
#include "simulator/spreadsheet/sheet.h"

namespace sim::cli {

void PrintMenu(Session& session);
// `withIds`: each component with its identifier in the assembly right above it.
void PrintModel(const SimModel& model, int levels, bool withIds);
// The model's own features and geometry by their identifiers, in the words of a pick.
void PrintItems(const SimModel& model);
// One line a file: what was exported, the sheets, the options.
void PrintExports(const std::vector<ExportedFile>& files);
// The cells row by row, in columns.
void PrintSheet(const Sheet& sheet);
void PrintTrace(const Report& report);
void PrintProfile(const Report& report);
// What the user saw and what was started: boxes, message area, programs.
void PrintSeen(const User& user);

// "GEARBOX.ASM"
std::string FileLabel(const SimModel& model);

}  // namespace sim::cli
