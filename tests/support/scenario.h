// One scenario a command: the smallest workspace and user in which the command does all of its work. The
// fault sweep runs every scenario again and again.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/host/sim_host.h"

namespace test {

struct Scenario {
    std::string name;
    std::function<void(sim::SimHost&)> arrange;
    std::function<void(sim::SimHost&)> act;
    // The plug-in is not started before `act`.
    bool startsPlugin = false;
};

const std::vector<Scenario>& Scenarios();

}  // namespace test
