#pragma once

#include <chrono>
#include <string>
#include <thread>

#include "e2e/drive_error.h"

namespace swiftpatch::e2e {

using std::chrono::milliseconds;
using std::chrono::seconds;
using SteadyTime = std::chrono::steady_clock::time_point;

/// Looks every few milliseconds whether `condition` holds; false when it never did within `limit`.
template <class Condition>
bool WaitUntil(Condition condition, milliseconds limit) {
    constexpr milliseconds kBetweenLooks{10};
    const SteadyTime deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(kBetweenLooks);
    }
    return true;
}

/// The same, but throws DriveError with what was waited for.
template <class Condition>
void Await(const std::string& what, Condition condition, milliseconds limit) {
    if (!WaitUntil(condition, limit)) {
        throw DriveError("waited " + std::to_string(limit.count()) + " ms in vain for " + what);
    }
}

/// Where the system's sleep is too coarse.
inline void WaitExactly(std::chrono::microseconds time) {
    const SteadyTime end = std::chrono::steady_clock::now() + time;
    constexpr milliseconds kMargin{3};
    if (time > kMargin) {
        std::this_thread::sleep_for(time - kMargin);
    }
    while (std::chrono::steady_clock::now() < end) {
    }
}

}  // namespace swiftpatch::e2e
