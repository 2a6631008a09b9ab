#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Microseconds since some moment, by the platform's finest clock. (The language's own clocks
/// import functions of dates and time zones that nothing here needs.)
inline LONGLONG FineMicroseconds() {
    static const LONGLONG perSecond = [] {
        LARGE_INTEGER frequency;
        return ::QueryPerformanceFrequency(&frequency) ? frequency.QuadPart : LONGLONG{0};
    }();
    LARGE_INTEGER now;
    if (perSecond == 0 || !::QueryPerformanceCounter(&now)) {
        return LONGLONG{1000} * ::GetTickCount();
    }
    // In two parts: all of it times a million would not fit after some days.
    return now.QuadPart / perSecond * 1000000 + now.QuadPart % perSecond * 1000000 / perSecond;
}

}  // namespace swiftpatch
