#pragma once

#include <filesystem>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// Writes what the screen shows within a window's frame as a PNG file. With `null` it is the whole
/// screen. Throws DriveError when that fails.
void SaveScreenshot(HWND window, const std::filesystem::path& file);

}  // namespace swiftpatch::e2e
