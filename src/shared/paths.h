#pragma once

#include <string>

#include "runtime/app.h"
#include "shared/branding.h"

namespace swiftpatch {

inline constexpr const char* kSettingsFile = SWIFTPATCH_DATA_FILE;
inline constexpr const char* kBusyAnimation = SWIFTPATCH_ANIMATION_FILE;
inline constexpr const char* kMainProgram = SWIFTPATCH_PROGRAM;
/// The new build, on the server and next to the main program.
inline constexpr const char* kStagedBuild = SWIFTPATCH_STAGED_PROGRAM;
/// On the server, next to the new build.
inline constexpr const char* kLicenceText = SWIFTPATCH_LICENCE_FILE;
inline constexpr const char* kBuildSignature = SWIFTPATCH_STAGED_PROGRAM ".minisig";

/// The full path of a file in the application folder.
inline std::string AppFile(const std::string& name) { return App::Path() + "\\" + name; }

}  // namespace swiftpatch
