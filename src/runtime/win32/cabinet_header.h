#pragma once

#include <string>

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// What a cabinet says about itself at its start.
struct CabinetHeader {
    unsigned files = 0;        ///< Files in this cabinet.
    bool hasPrevious = false;  ///< Another cabinet of its set comes before it.
};

/// Reads the header. Returns 0 or the number of the system's error; ERROR_INVALID_DATA for a file
/// that is no cabinet.
DWORD ReadCabinetHeader(const std::string& path, CabinetHeader& header);

}  // namespace swiftpatch
