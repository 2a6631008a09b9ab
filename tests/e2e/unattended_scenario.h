#pragma once

namespace swiftpatch::e2e {

/// Makes a test of every row of the scenario table that a run without a person can play: the same
/// requests, files and texts as of the window, and the exit status that belongs to them.
void RegisterUnattendedScenarios();

}  // namespace swiftpatch::e2e
