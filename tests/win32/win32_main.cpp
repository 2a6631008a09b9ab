// Runs the tests of the runtime over the real system.
//
// usage: win32_tests --scratch=FOLDER
#include "runtime/program.h"
#include "win32/run_tests.h"

namespace swiftpatch {

/// The runtime here serves the tests, not the updater.
const ProgramIdentity kProgram{"SwiftPatch runtime tests", "SwiftPatch.Runtime.Tests", 1, 0, 0};

}  // namespace swiftpatch

int main(int argc, char** argv) { return swiftpatch::real_system::RunTests(argc, argv); }
