// Runs the tests of the real components.
//
// usage: component_tests --cabinets=FOLDER --scratch=FOLDER
//        component_tests --report-version      prints what clsSysInfo says, for a test of its own
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "components/files.h"
#include "components/sys_info_report.h"
#include "components/watchdog.h"

namespace {

constexpr int kSecondsPerTest = 120;

std::filesystem::path Given(const std::string& argument, const std::string& option) {
    return std::filesystem::absolute(argument.substr(option.size())).make_preferred();
}

bool Take(const std::string& argument) {
    const std::string cabinets = "--cabinets=";
    const std::string scratch = "--scratch=";
    auto& folders = swiftpatch::components::TestFolders();
    if (argument.starts_with(cabinets)) {
        folders.cabinets = Given(argument, cabinets);
    } else if (argument.starts_with(scratch)) {
        folders.scratch = Given(argument, scratch);
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace swiftpatch::components;
    if (argc == 2 && std::string(argv[1]) == "--report-version") {
        std::fputs(SysInfoReport().c_str(), stdout);
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (!Take(argv[i])) {
            std::fprintf(stderr, "component_tests: unknown argument %s\n", argv[i]);
            return 2;
        }
    }
    if (TestFolders().cabinets.empty() || TestFolders().scratch.empty()) {
        std::fputs("component_tests: --cabinets and --scratch are needed\n", stderr);
        return 2;
    }
    WatchTests(kSecondsPerTest);
    return RUN_ALL_TESTS();
}
