#pragma once

#include "unit/check_support.h"

namespace swiftpatch {

/// A test of the download engine: the window is loaded, nothing runs.
class EngineTest : public WindowTest {
protected:
    EngineTest() { LoadWindow(); }

    /// Downloads `reply` as the new build or the animation and runs everything that follows.
    void Download(DownloadMode mode, std::int32_t expectedSize, const headless::Reply& reply,
                  std::int64_t milliseconds = 30000);
    void DownloadBuild(std::int32_t expectedSize, const std::string& body);

    /// Puts a program of the same version as the downloaded builds beside them, so that every
    /// finished download finds nothing newer.
    void InstallSameVersion();

    /// What the label showed of the download, in its order.
    std::vector<std::string> Percentages() const;
};

/// A build of version 3.0.12.5.
inline std::string NewBuild(std::size_t size) { return headless::Build("3.0.12.5", size); }

}  // namespace swiftpatch
