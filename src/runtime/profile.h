#pragma once

#include <cstddef>
#include <string>

namespace swiftpatch {

/// Reads a key of an INI file (the system's function of this name). The value, or
/// `defaultValue` where file, section or key is missing, is copied to the start of `buffer`, whose
/// length is its capacity; what does not fit, the terminating NUL counted, is cut. Blanks at the
/// end of `defaultValue` are dropped.
/// Returns the number of characters copied, the NUL not counted.
std::size_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                     const std::string& defaultValue, std::string& buffer,
                                     const std::string& file);

/// Whether a key that GetPrivateProfileStringA does not find could be there all the same: the file
/// is there and cannot be read, or a line begins with the key, in any section and whatever follows.
/// Waits up to two seconds for another process that lets nobody read the file. Does not pump.
bool MayHoldKey(const std::string& key, const std::string& file);

/// Writes a key of an INI file (the system's function of this name); the file is created when it
/// is missing. False when that failed.
bool WritePrivateProfileStringA(const std::string& section, const std::string& key,
                                const std::string& value, const std::string& file);

/// Reads a text of the per-user application-settings store, which the system keeps at
/// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>.
std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& defaultValue);

}  // namespace swiftpatch
