#pragma once

#include <string>
#include <vector>

#include "publish/order.h"

namespace publish {

/// Reads the arguments that follow the program's name. Where secret keys are named and no keys of
/// the updaters, those are read from the files that minisign has written beside the secret ones.
/// Throws publish_check::UsageError.
Order ReadCommandLine(const std::vector<std::string>& arguments);

/// The first lines of what --help prints.
std::string UsageLines();

/// What --help prints.
std::string HelpText();

}  // namespace publish
