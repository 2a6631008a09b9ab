#pragma once

#include <cstdint>
#include <optional>

#include "unattended/exit_status.h"

namespace swiftpatch {

/// What is known of a run once it has ended.
struct Ending {
    bool otherUpdater = false;     ///< One was there before.
    bool programReplaced = false;  ///< The main program has become the build that was fetched.
    bool updateReady = false;      ///< A check found what a run would install or fetch.
    std::optional<ExitStatus> failure{};  ///< What the program reported.
    /// The number of the error by which the request for the build failed without a report.
    std::optional<std::int32_t> failedRequest{};
    bool finished = false;  ///< The window was left with nothing to be done.
};

/// The status that a run ends with. What happened to the main program counts most: a copy that
/// failed is followed by the report that all is well, and a failure on the way need not be the end.
ExitStatus StatusOf(const Ending& ending);

}  // namespace swiftpatch
