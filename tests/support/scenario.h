// One scenario a command: the smallest workspace and user in which the command does all of its work. The
// fault sweep runs every scenario again and again.
//
// The scenarios of a room stand in tests/plugin/<room>_scenarios.cpp, next to its tests.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/host/sim_host.h"

namespace test {

using Arrangement = std::function<void(sim::SimHost&)>;

struct Scenario {
    std::string name;
    Arrangement arrange;
    std::function<void(sim::SimHost&)> act;
    // The command that `act` runs; empty: something else happens.
    std::string command;
    // The plug-in is not started before `act`.
    bool startsPlugin;
    // Checks what is true afterwards whatever has failed.
    std::function<void(sim::SimHost&)> holds;
};

// Runs the command. `variant` ends the name where a command has several scenarios.
Scenario CommandScenario(const std::string& command, Arrangement arrange, Arrangement holds,
                         const std::string& variant = {});

// ---- Arrangements that several rooms use

// PUMP holds SUB, which holds BOLT, a sheet-metal part with one surface.
void ArrangePump(sim::SimHost& host);
void ArrangePumpWithDrawing(sim::SimHost& host);
sim::SimModel& Bolt(sim::SimHost& host);

// The plug-in is started with its right-click entries, and BOLT is selected.
void ArrangeRightClick(sim::SimHost& host);

// ---- The scenarios of each room, and of all

std::vector<Scenario> HostScenarios();
std::vector<Scenario> SettingsScenarios();
std::vector<Scenario> FolderScenarios();
std::vector<Scenario> ParamsScenarios();
std::vector<Scenario> ModelDataScenarios();
std::vector<Scenario> BomScenarios();
std::vector<Scenario> ExportScenarios();
std::vector<Scenario> DrawingScenarios();
std::vector<Scenario> AssemblyScenarios();
std::vector<Scenario> RenameScenarios();
std::vector<Scenario> DisplayScenarios();

const std::vector<Scenario>& Scenarios();

}  // namespace test
