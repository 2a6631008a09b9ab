#pragma once

#include <cstdint>

namespace swiftpatch {

/// Counts the seconds for which a download's expected size has stood. It measures only: nothing
/// acts on the count, deliberately; a transfer ends through the transfer control's own error.
class DownloadWatchdog {
public:
    /// One second has passed while `size` was expected. Raises error 6 when the count would pass
    /// the largest 32-bit number.
    void Tick(std::int32_t size);

    std::int32_t lastSize = 0;
    std::int32_t tickCount = 0;
};

}  // namespace swiftpatch
