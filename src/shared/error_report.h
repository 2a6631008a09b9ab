#pragma once

#include <string>

#include "runtime/runtime_error.h"

namespace swiftpatch {

/// The box in which a procedure reports an error that it did not expect: number, description and
/// `source`, the place it came from. Pumps.
void ReportError(const RuntimeError& error, const std::string& source);

}  // namespace swiftpatch
