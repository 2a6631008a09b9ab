#pragma once

#include <filesystem>
#include <string>

namespace swiftpatch::e2e {

/// Where a driver finds what it needs. All paths are absolute.
struct Options {
    std::filesystem::path updater;    ///< The program under test.
    std::filesystem::path fixtures;   ///< The folder of the sample main programs.
    std::filesystem::path scenarios;  ///< The folder of the scenario tables.
    std::filesystem::path scratch;    ///< A folder to work in.
    bool automatic = false;           ///< The demonstration presses the buttons itself.
};

/// Reads --updater=FILE, --fixtures=FOLDER, --scenarios=FOLDER, --scratch=FOLDER and --auto; what
/// is not given is looked for around the driver itself, as the build leaves it. Throws DriveError
/// for anything else.
Options ReadOptions(int count, char** arguments);

/// The options of this run of the tests; set once, before the first test.
Options& TestOptions();

}  // namespace swiftpatch::e2e
