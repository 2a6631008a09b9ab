#pragma once

#include <algorithm>
#include <chrono>

namespace swiftpatch {

/// Whether a rest of a millisecond pays that lets more of a fast body come in before the next look
/// at it. Some platforms rest for a whole tick of their clock instead, up to fifteen milliseconds,
/// in which a fast wire would stand still. After a rest that long the next one is left out, and
/// while they stay long, twice as many each time, up to `kMostLeftOut`; so a single one, for which
/// a busy machine is to blame, costs little.
class ShortRests {
public:
    static constexpr std::chrono::milliseconds kLongest{4};
    static constexpr int kMostLeftOut = 64;

    /// Whether the next rest is to be taken.
    bool Due() {
        if (toLeaveOut_ > 0) {
            --toLeaveOut_;
            return false;
        }
        return true;
    }

    /// How long the rest really was.
    void Took(std::chrono::microseconds time) {
        leftOut_ = time > kLongest ? std::clamp(2 * leftOut_, 1, kMostLeftOut) : 0;
        toLeaveOut_ = leftOut_;
    }

private:
    int leftOut_ = 0;  ///< After the last rest.
    int toLeaveOut_ = 0;
};

}  // namespace swiftpatch
