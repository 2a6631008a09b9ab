#pragma once

namespace swiftpatch::real_system {

/// Runs the GoogleTest tests of a program, each for at most two minutes. Takes --scratch=FOLDER
/// (needed) and --cabinets=FOLDER from the arguments. Returns the program's exit status.
int RunTests(int argc, char** argv);

}  // namespace swiftpatch::real_system
