#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace publish_check {

/// The whole program: reads the arguments, writes the result, returns the exit status.
int RunPublishCheck(const std::vector<std::string>& arguments, std::ostream& out,
                    std::ostream& errors);

}  // namespace publish_check
