#pragma once

#include "runtime/datetime.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

/// The system's date and time without its fraction of a second.
inline DateTime ToDateTime(const SYSTEMTIME& time) {
    return MakeDateTime(
        {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond});
}

}  // namespace swiftpatch
