#pragma once

#include <optional>
#include <vector>

#include "publish/order.h"
#include "publish/staged_release.h"
#include "publish_check/assessment.h"
#include "publish_check/server_state.h"

namespace publish {

/// The versions in the field: those that the order names, or else those of the builds that are and
/// were in the folder. Where a build comes back, `back`, only those above it count: what was hidden
/// from others before stays so.
std::vector<publish_check::Installed> VersionsInTheField(
    const Order& order, const publish_check::ServerState& present,
    const std::optional<publish_check::Version>& back);

/// What the updaters would do with this state of the folder, now.
publish_check::Assessment AssessFor(const Order& order, const publish_check::ServerState& state,
                                    const std::vector<publish_check::Installed>& installed);

/// Adds what is wrong with a release beside the build that it replaces, and those before.
void CompareWithBefore(const Order& order, const publish_check::ServerState& present,
                       const StagedRelease& release, publish_check::Assessment& assessment);

}  // namespace publish
