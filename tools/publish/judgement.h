#pragma once

#include <optional>
#include <vector>

#include "publish/order.h"
#include "publish_check/assessment.h"
#include "publish_check/server_state.h"

namespace publish {

/// The versions in the field: those that the order names, or else those of the builds that are and
/// were in the folder. Of a build that comes back only those count that are there now: what was
/// hidden from others before stays so.
std::vector<publish_check::Installed> VersionsInTheField(const Order& order,
                                                         const publish_check::ServerState& present);

/// What the updaters would do with this state of the folder, now.
publish_check::Assessment AssessFor(const Order& order, const publish_check::ServerState& state,
                                    const std::vector<publish_check::Installed>& installed);

/// Adds what is wrong with a build beside the one that it replaces.
void CompareWithPresent(const publish_check::ServerState& present, bool changesBuild,
                        bool comesBack, publish_check::Assessment& assessment);

}  // namespace publish
