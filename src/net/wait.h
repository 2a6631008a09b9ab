#pragma once

#include <cstdint>

namespace swiftpatch {

/// Waits until the first whole second after `seconds` have passed, that is up to one second more,
/// and yields all the while. Times of day are compared without a date: a wait whose deadline lies
/// past midnight does not end at the deadline, deliberately. Pumps.
void WaitSeconds(std::int16_t seconds);

}  // namespace swiftpatch
