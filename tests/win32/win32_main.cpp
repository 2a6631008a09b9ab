// Runs the tests of the runtime over the real system.
//
// usage: win32_tests --scratch=FOLDER
#include "win32/run_tests.h"

int main(int argc, char** argv) { return swiftpatch::real_system::RunTests(argc, argv); }
