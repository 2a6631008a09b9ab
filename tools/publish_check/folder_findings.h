#pragma once

#include <optional>
#include <string>
#include <vector>

#include "publish_check/finding.h"
#include "publish_check/server_state.h"
#include "runtime/datetime.h"

namespace publish_check {

/// What there is to say about the files of a server folder, before any version is looked at. `now`
/// is UTC. With `keys`, as a data file names them, builds have to be signed.
std::vector<Finding> FolderFindings(const ServerState& state, swiftpatch::DateTime now,
                                    const std::optional<std::string>& keys = {});

/// Warns where a file is there under a name that most servers take for another.
void WarnOfOtherCase(const PublishedFile& file, const std::string& name, Findings& findings);

/// The date that an updater reads out of the build's headers, UTC; nothing when it cannot read one.
std::optional<swiftpatch::DateTime> PublishedDate(const ServerState& state);

}  // namespace publish_check
