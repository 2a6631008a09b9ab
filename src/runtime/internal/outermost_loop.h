#pragma once

namespace swiftpatch {

class RuntimeError;

/// Runs `loop`, the platform's outermost one, until the run is over, and cleans up behind it. An
/// error that no procedure traps, because no code of the program raises it, goes to `report`: those
/// of the standard library as the run-time errors 7 and 51.
void RunOutermost(void (*loop)(), void (*report)(const RuntimeError&));

}  // namespace swiftpatch
