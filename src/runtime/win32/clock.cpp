#include "runtime/clock.h"

#include "runtime/win32/system_time.h"

namespace swiftpatch {

DateTime Now() {
    SYSTEMTIME time;
    ::GetLocalTime(&time);
    return ToDateTime(time);
}

DateTime UtcNow() {
    SYSTEMTIME time;
    ::GetSystemTime(&time);
    return ToDateTime(time);
}

std::uint32_t TickCount() { return ::GetTickCount(); }

void Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

}  // namespace swiftpatch
