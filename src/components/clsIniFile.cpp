#include "components/clsIniFile.h"

#include <utility>

#include "components/join_path.h"
#include "runtime/profile.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kBufferLength = 256;
constexpr char kFill = '\1';

}  // namespace

void clsIniFile::CreateIni(const std::string& sDrv, const std::string& sDir) {
    iniPath_ = JoinPath(sDrv, sDir);
}

void clsIniFile::WriteFile(const std::string& sSection, const std::string& sKey,
                           const std::string& sValue) const {
    WritePrivateProfileStringA(sSection, sKey, sValue, iniPath_);
}

std::string clsIniFile::GetKey(const std::string& sSection, const std::string& sKey,
                               const std::string& sDefault) const {
    std::string buffer(kBufferLength, kFill);
    const std::size_t count = GetPrivateProfileStringA(sSection, sKey, sDefault, buffer, iniPath_);
    return buffer.substr(0, count);
}

void clsIniFile::SetINIFile(std::string sNewIniPath) { iniPath_ = std::move(sNewIniPath); }

}  // namespace swiftpatch
