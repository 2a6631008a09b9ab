#pragma once

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// Lets Wine tell an updater that starts while this lives that it runs on Windows 98.
class OnWindows98 {
public:
    OnWindows98() {
        constexpr wchar_t kVersion[] = L"win98";
        RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Wine\\AppDefaults\\swiftpatch.exe", &key_);
        RegSetValueExW(key_, L"Version", 0, REG_SZ, reinterpret_cast<const BYTE*>(kVersion),
                       sizeof kVersion);
    }
    ~OnWindows98() {
        RegDeleteValueW(key_, L"Version");
        RegCloseKey(key_);
    }
    OnWindows98(const OnWindows98&) = delete;
    OnWindows98& operator=(const OnWindows98&) = delete;

private:
    HKEY key_ = nullptr;
};

}  // namespace swiftpatch::e2e
