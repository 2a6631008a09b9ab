#pragma once

#include "runtime/console/attendant.h"

namespace swiftpatch {

/// Runs the whole program without a window: prepares the process, calls `Main`, and pumps until the
/// last form has gone. To be called once.
void RunProgram(Attendant& attendant);

}  // namespace swiftpatch
