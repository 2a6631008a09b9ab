#pragma once

#include <cstdint>

#include "runtime/datetime.h"

namespace swiftpatch {

/// The local clock, to the second.
DateTime Now();

/// The system's UTC clock, to the second (GetSystemTime).
DateTime UtcNow();

/// Milliseconds of a clock that is never set; its start is arbitrary and it wraps around.
std::uint32_t TickCount();

/// Sleeps without pumping.
void Sleep(std::uint32_t milliseconds);

}  // namespace swiftpatch
