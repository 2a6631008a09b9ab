#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "publish_check/finding.h"
#include "publish_check/server_state.h"
#include "signing/blake2b.h"

namespace publish_check {

/// The hash of a build, which its signatures are of.
swiftpatch::Blake2b::Digest HashOfBuild(std::string_view build);

/// What there is to say about the signature of the build, where one of these keys, as a data file
/// names them, has to have signed it.
void CheckSignature(const ServerState& state, const std::string& keys, std::vector<Finding>& list);

}  // namespace publish_check
