#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

class frmSwiftPatch;

/// A build of at least this many bytes shows by itself that the server is there.
inline constexpr std::int32_t kPlausibleBuild = 200000;
/// For a smaller build the licence text beside it has to show that, with at least this many bytes.
inline constexpr std::int32_t kPlausibleLicence = 4000;

/// True when the update server answers with plausible files: the system reports a connection and
/// the staged build at `url`, or else the licence text beside it, is large enough. Raises no error.
/// Pumps.
bool check_internet_connectivity(frmSwiftPatch& window, const std::string& url);

}  // namespace swiftpatch
