#pragma once

namespace swiftpatch {

/// Runs the whole program: prepares the process, calls `Main`, and pumps until the last window has
/// gone. To be called once, by the executable's entry point. Returns the process's exit code.
int RunProgram();

}  // namespace swiftpatch
