#include "runtime/profile.h"

#include <array>
#include <utility>

#include "runtime/internal/key_lines.h"
#include "runtime/win32/handle.h"
#include "runtime/win32/patience.h"

namespace swiftpatch {
namespace {

constexpr const char* kSettingsStore = "Software\\VB and VBA Program Settings\\";

UniqueKey OpenSettings(const std::string& application, const std::string& section) {
    const std::string path = kSettingsStore + application + "\\" + section;
    HKEY key = nullptr;
    const LSTATUS failure = ::RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key);
    return UniqueKey(failure == ERROR_SUCCESS ? key : nullptr);
}

/// An error of the system's; `text` becomes what lies in the file.
DWORD ReadText(const std::string& path, std::string& text) {
    const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        return ::GetLastError();
    }
    text.clear();
    std::array<char, 4096> block;
    DWORD count = 0;
    do {
        if (!::ReadFile(file.Get(), block.data(), block.size(), &count, nullptr)) {
            return ::GetLastError();
        }
        text.append(block.data(), count);
    } while (count != 0);
    return ERROR_SUCCESS;
}

bool IsFolder(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::size_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                     const std::string& defaultValue, std::string& buffer,
                                     const std::string& file) {
    return ::GetPrivateProfileStringA(section.c_str(), key.c_str(), defaultValue.c_str(),
                                      buffer.data(), static_cast<DWORD>(buffer.size()),
                                      file.c_str());
}

bool MayHoldKey(const std::string& key, const std::string& file) {
    if (IsFolder(file)) {
        return false;
    }
    std::string text;
    const DWORD error = WaitOutHold([&] { return ReadText(file, text); });
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        return false;
    }
    return error != ERROR_SUCCESS || HasLineOfKey(std::move(text), key);
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
