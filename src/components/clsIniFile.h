#pragma once

#include <string>

namespace swiftpatch {

/// Reads and writes keys of one INI file (sections in square brackets, key=value lines) through the
/// system's private-profile functions. Remembers the file's path and nothing else; keeps no file
/// open. No operation reports an error: a missing file or section reads as the default, a failed
/// write is silent.
class clsIniFile {
public:
    /// Sets the path to `sDrv` and `sDir` joined by one "\". Creates no file.
    void CreateIni(const std::string& sDrv, const std::string& sDir);

    /// Writes `sValue` as the key's value.
    void WriteFile(const std::string& sSection, const std::string& sKey,
                   const std::string& sValue) const;

    /// The key's value, or `sDefault` when section or key is missing; at most 255 characters.
    std::string GetKey(const std::string& sSection, const std::string& sKey,
                       const std::string& sDefault) const;

    const std::string& INIFile() const { return iniPath_; }
    /// Sets the path as given, without joining or checking.
    void SetINIFile(std::string sNewIniPath);

private:
    std::string iniPath_;
};

}  // namespace swiftpatch
