#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "publish_check/assessment.h"

namespace publish_check {

/// The command line cannot be understood; says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct CommandLine {
    std::string target;  ///< A folder, or the address of one.
    std::vector<Installed> installed;
    bool json = false;
    bool help = false;
};

/// Reads the arguments that follow the program's name.
CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

/// What --help prints.
std::string HelpText();

}  // namespace publish_check
