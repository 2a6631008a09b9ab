#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace publish {

/// The whole program: reads the arguments, writes the result, returns the exit status.
int RunPublish(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors);

}  // namespace publish
