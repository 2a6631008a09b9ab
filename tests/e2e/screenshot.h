#pragma once

#include <filesystem>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// What the screen shows at one moment, kept in memory.
class ScreenPicture {
public:
    ScreenPicture();
    ~ScreenPicture();
    ScreenPicture(const ScreenPicture&) = delete;
    ScreenPicture& operator=(const ScreenPicture&) = delete;

    /// Writes it as a PNG file. Throws DriveError when that fails.
    void Save(const std::filesystem::path& file) const;

private:
    HBITMAP picture_;
};

/// Writes what the screen shows within a window's frame as a PNG file. With `null` it is the whole
/// screen. Throws DriveError when that fails.
void SaveScreenshot(HWND window, const std::filesystem::path& file);

}  // namespace swiftpatch::e2e
