#pragma once

#include <string>
#include <string_view>

namespace publish_check {

/// Why the system's animation control, which shows the busy animation, cannot play these bytes as
/// an AVI file: it plays one silent picture stream, uncompressed or run-length encoded. Empty when
/// it can.
std::string ReasonNotPlayable(std::string_view animation);

}  // namespace publish_check
