#pragma once

#include <string>

namespace swiftpatch {

class frmSwiftPatch;

/// True when the update server answers with plausible files: the system reports a connection and
/// the staged build at `url`, or else the licence text beside it, is large enough. Raises no error.
/// Pumps.
bool check_internet_connectivity(frmSwiftPatch& window, const std::string& url);

}  // namespace swiftpatch
