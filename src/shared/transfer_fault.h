#pragma once

#include <string>

#include "runtime/inet.h"

namespace swiftpatch {

/// A sentence for the person who looks into it; empty for TransferFault::kNone.
std::string TransferFaultText(TransferFault fault);

}  // namespace swiftpatch
