#pragma once

#include <cstdint>

#include "runtime/inet.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

/// What was being done with a file; some system errors have another number for each.
enum class FileAction { kOpen, kDelete, kCopy };

/// Raises the run-time error that stands for an error of the system.
[[noreturn]] void RaiseFileError(DWORD systemError, FileAction action);

/// The number of the transfer control's error that stands for an error of the system.
/// `inBody`: the answer's headers had come in before.
std::int32_t TransferErrorNumber(DWORD systemError, bool inBody);

/// What the error of a request says beyond that number.
TransferFault TransferFaultOf(DWORD systemError);

}  // namespace swiftpatch
