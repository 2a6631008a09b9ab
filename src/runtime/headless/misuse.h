#pragma once

#include <string>

namespace swiftpatch::headless {

/// Reports that the program asked for what nobody had scripted, or that a script was never needed.
/// Fails the test that runs; a program that is no test defines it otherwise.
void ReportMisuse(const std::string& what);

}  // namespace swiftpatch::headless
