#pragma once

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "publish/order.h"
#include "publish/steps.h"
#include "publish_check/assessment.h"

namespace publish {

struct Result {
    bool published = false;  ///< The folder has the build now, or would have without --dry-run.
    std::string version;     ///< Of the build, "3.0.12.5"; empty when it has none.
    std::vector<publish_check::Installed> installed;      ///< Those that were asked about.
    std::optional<publish_check::Assessment> assessment;  ///< What the updaters do with it.
};

/// Publishes a build. Throws PublishError, which says what is left, or any other exception of the
/// standard library, after which the folder is as it was.
Result Publish(Order order, Steps& steps);

/// What an exception says, in words for a person.
std::string ReasonOf(const std::exception& error);

}  // namespace publish
