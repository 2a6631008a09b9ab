#pragma once

#include <string>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {

/// What a box says of a copy that failed; `what` names it.
inline std::string CopyError(const std::string& what, const RuntimeError& error) {
    return what + " File Copy Error: " + std::to_string(error.Number()) + kCrLf +
           error.Description();
}

}  // namespace swiftpatch
