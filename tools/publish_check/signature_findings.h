#pragma once

#include <string>
#include <vector>

#include "publish_check/finding.h"
#include "publish_check/server_state.h"

namespace publish_check {

/// What there is to say about the signature of the build, where one of these keys, as a data file
/// names them, has to have signed it.
void CheckSignature(const ServerState& state, const std::string& keys, std::vector<Finding>& list);

}  // namespace publish_check
