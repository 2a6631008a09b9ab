#pragma once

#include <string>

#include "publish_check/server_state.h"

namespace publish_check {

/// Asks a live server for its files, `withSignature` for that of the build too. `address` is what a
/// data file names: with or without http://. Throws std::runtime_error when it is no address that
/// an updater can use, or when nobody answers.
ServerState ReadLiveServer(const std::string& address, bool withSignature = false);

}  // namespace publish_check
