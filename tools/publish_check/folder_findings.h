#pragma once

#include <optional>
#include <vector>

#include "publish_check/finding.h"
#include "publish_check/server_state.h"
#include "runtime/datetime.h"

namespace publish_check {

/// What there is to say about the files of a server folder, before any version is looked at. `now`
/// is UTC.
std::vector<Finding> FolderFindings(const ServerState& state, swiftpatch::DateTime now);

/// The date that an updater reads out of the build's headers, UTC; nothing when it cannot read one.
std::optional<swiftpatch::DateTime> PublishedDate(const ServerState& state);

}  // namespace publish_check
