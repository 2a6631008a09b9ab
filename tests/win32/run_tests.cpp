#include "win32/run_tests.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "win32/files.h"
#include "win32/watchdog.h"

namespace swiftpatch::real_system {
namespace {

constexpr int kSecondsPerTest = 120;

std::filesystem::path Given(const std::string& argument, const std::string& option) {
    return std::filesystem::absolute(argument.substr(option.size())).make_preferred();
}

bool Take(const std::string& argument) {
    const std::string cabinets = "--cabinets=";
    const std::string scratch = "--scratch=";
    Folders& folders = TestFolders();
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

int RunTests(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (!Take(argv[i])) {
            std::fprintf(stderr, "%s: unknown argument %s\n", argv[0], argv[i]);
            return 2;
        }
    }
    if (TestFolders().scratch.empty()) {
        std::fprintf(stderr, "%s: --scratch is needed\n", argv[0]);
        return 2;
    }
    WatchTests(kSecondsPerTest);
    return RUN_ALL_TESTS();
}

}  // namespace swiftpatch::real_system
