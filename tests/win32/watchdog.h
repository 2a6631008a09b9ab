#pragma once

namespace swiftpatch::real_system {

/// Ends the program with status 3 when one test takes longer than this; a test that hangs would
/// otherwise keep all others from being run and reported.
void WatchTests(int seconds);

}  // namespace swiftpatch::real_system
