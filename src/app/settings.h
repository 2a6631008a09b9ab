#pragma once

namespace swiftpatch {

/// Reads the data file kSettingsFile of the application folder into the shared state. A missing
/// file or key leaves the defaults; nothing is reported.
void LoadSettings();

}  // namespace swiftpatch
