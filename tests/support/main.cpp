// Runs all tests: a host's problems become failures of the test that made it, and settings are fresh for each
// test.

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/plugin_home.h"

namespace {

class FreshSettings : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { test::RestoreSettings(); }
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // The test runner lists the tests in a build step, before there is a home to copy.
    if (!testing::GTEST_FLAG(list_tests)) {
        sim::SimHost::SetDefaultPluginHome(test::PluginHome());
        sim::SimHost::SetProblemHandler([](const std::string& problem) { ADD_FAILURE() << problem; });
        testing::UnitTest::GetInstance()->listeners().Append(new FreshSettings);
    }
    return RUN_ALL_TESTS();
}
