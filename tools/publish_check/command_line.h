#pragma once

#include <string>
#include <vector>

#include "publish_check/updater_options.h"
#include "publish_check/usage_error.h"

namespace publish_check {

struct CommandLine : UpdaterOptions {
    std::string target;  ///< A folder, or the address of one.
    bool json = false;
    bool help = false;
};

/// Reads the arguments that follow the program's name, and the files of keys among them. Throws
/// UsageError.
CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

/// The first line of what --help prints.
std::string UsageLine();

/// What --help prints.
std::string HelpText();

}  // namespace publish_check
