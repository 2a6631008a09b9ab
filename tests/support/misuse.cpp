#include "runtime/headless/misuse.h"

#include <gtest/gtest.h>

namespace swiftpatch::headless {

void ReportMisuse(const std::string& what) { ADD_FAILURE() << what; }

}  // namespace swiftpatch::headless
