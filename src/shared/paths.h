#pragma once

#include <string>

#include "runtime/app.h"

namespace swiftpatch {

inline constexpr const char* kSettingsFile = "tolvex.dta.txt";
inline constexpr const char* kBusyAnimation = "filecopy.avi";
inline constexpr const char* kMainProgram = "tolvex.exe";
/// The new build, on the server and next to the main program.
inline constexpr const char* kStagedBuild = "tolvex30.exe";
/// On the server, next to the new build.
inline constexpr const char* kLicenceText = "LICENSE.TXT";
inline constexpr const char* kBuildSignature = "tolvex30.exe.minisig";

/// The full path of a file in the application folder.
inline std::string AppFile(const std::string& name) { return App::Path() + "\\" + name; }

}  // namespace swiftpatch
