#pragma once

#include <string>

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Gives a file the owner and the permissions of another one. Returns the error when the
/// permissions cannot be given; not everybody may give files away, so the owner may stay. Where the
/// drive keeps neither there is nothing to do.
DWORD TakeOverSecurity(const std::string& from, const std::string& to);

/// True when the system says that a file belongs to somebody else than what we create does.
bool BelongsToAnother(const std::string& path);

}  // namespace swiftpatch
