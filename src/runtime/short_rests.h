#pragma once

#include <chrono>

namespace swiftpatch {

/// Whether a rest of a millisecond pays that lets more of a fast body come in before the next look
/// at it. Some platforms rest for a whole tick of their clock instead, up to fifteen milliseconds,
/// in which a fast wire would stand still; there only one rest in `kLeftOut` is tried.
class ShortRests {
public:
    static constexpr std::chrono::milliseconds kLongest{4};
    static constexpr int kLeftOut = 64;

    /// Whether the next rest is to be taken.
    bool Due() {
        if (toLeaveOut_ > 0) {
            --toLeaveOut_;
            return false;
        }
        return true;
    }

    /// How long the rest really was.
    void Took(std::chrono::microseconds time) { toLeaveOut_ = time > kLongest ? kLeftOut : 0; }

private:
    int toLeaveOut_ = 0;
};

}  // namespace swiftpatch
