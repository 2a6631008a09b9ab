#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

/// The English text for a number of the system's last error (ERROR_FILE_NOT_FOUND = 2 to
/// ERROR_INVALID_NAME = 123), the same on every system and in every language. "Unknown error." for
/// every number that extracting files does not meet, 0 included. Has no side effects.
std::string SystemErrorText(const std::int32_t& number);

}  // namespace swiftpatch
