#include "runtime/profile.h"

#include <array>

#include "runtime/win32/handle.h"

namespace swiftpatch {
namespace {

constexpr const char* kSettingsStore = "Software\\VB and VBA Program Settings\\";

UniqueKey OpenSettings(const std::string& application, const std::string& section) {
    const std::string path = kSettingsStore + application + "\\" + section;
    HKEY key = nullptr;
    const LSTATUS failure = ::RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key);
    return UniqueKey(failure == ERROR_SUCCESS ? key : nullptr);
}

}  // namespace

std::size_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                     const std::string& defaultValue, std::string& buffer,
                                     const std::string& file) {
    return ::GetPrivateProfileStringA(section.c_str(), key.c_str(), defaultValue.c_str(),
                                      buffer.data(), static_cast<DWORD>(buffer.size()),
                                      file.c_str());
}

bool WritePrivateProfileStringA(const std::string& section, const std::string& key,
                                const std::string& value, const std::string& file) {
    return ::WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(),
                                        file.c_str()) != FALSE;
}

std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& defaultValue) {
    const UniqueKey settings = OpenSettings(application, section);
    std::array<char, 1024> text{};
    DWORD size = text.size() - 1;  // The last NUL stays: a stored text need not end in one.
    DWORD type = 0;
    if (!settings ||
        ::RegQueryValueExA(settings.Get(), key.c_str(), nullptr, &type,
                           reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return defaultValue;
    }
    return text.data();
}

}  // namespace swiftpatch
