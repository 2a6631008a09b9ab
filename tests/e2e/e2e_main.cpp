// Runs the tests of the real updater.
#include <gtest/gtest.h>

#include <cstdio>
#include <exception>

#include "e2e/options.h"
#include "e2e/scenario_run.h"
#include "e2e/unattended_scenario.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    try {
        swiftpatch::e2e::TestOptions() = swiftpatch::e2e::ReadOptions(argc, argv);
        swiftpatch::e2e::RegisterScenarios();
        swiftpatch::e2e::RegisterUnattendedScenarios();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "e2e_tests: %s\n", error.what());
        return 2;
    }
    return RUN_ALL_TESTS();
}
