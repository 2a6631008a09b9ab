#pragma once

#include <filesystem>
#include <string>

namespace swiftpatch::e2e {

/// Where a driver finds what it needs. All paths are absolute.
struct Options {
    std::filesystem::path updater;     ///< The program under test.
    std::filesystem::path unattended;  ///< The one without a window, beside it.
    std::filesystem::path fixtures;    ///< The folder of the sample main programs.
    std::filesystem::path scenarios;   ///< The folder of the scenario tables.
    std::filesystem::path package;     ///< The folder of the unpacked package.
    std::filesystem::path scratch;     ///< A folder to work in.
    std::string server;                ///< The server folder of a single run; empty for none.
    std::string proxy;                 ///< The proxy of that run, "[user:password@]host:port".
    std::string splash;                ///< The only picture to take, of the splash; empty for all.
    bool automatic = false;            ///< The demonstration presses the buttons itself.
    int kills = 10;                    ///< How often the updater is ended by force.
    int installs = 5;                  ///< How many installs others look at and disturb.
    int monkeySeconds = 20;            ///< How long the monkey is let at the updater.
    unsigned seed = 0;  ///< Of all that happens at random; 0 takes one from the clock.
};

/// Reads --updater=FILE, --fixtures=FOLDER, --scenarios=FOLDER, --package=FOLDER,
/// --scratch=FOLDER, --server=ADDRESS, --proxy=ADDRESS, --splash=NAME, --auto, --kills=N,
/// --installs=N, --monkey=SECONDS and --seed=N; what is not given is looked for around the driver
/// itself, as the build leaves it. Throws DriveError for anything else.
Options ReadOptions(int count, char** arguments);

/// The sample main program of a version, or the one without a version block ("none").
std::string SampleProgram(const Options& options, const std::string& version);

/// The options of this run of the tests; set once, before the first test.
Options& TestOptions();

}  // namespace swiftpatch::e2e
