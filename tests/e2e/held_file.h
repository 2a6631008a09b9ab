#pragma once

#include <filesystem>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// Keeps a file open so that others may read it, but neither write nor delete it; with no share,
/// that they may not even read it.
class HeldFile {
public:
    explicit HeldFile(const std::filesystem::path& path, DWORD share = FILE_SHARE_READ)
        : handle_(
              CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {}
    ~HeldFile() { CloseHandle(handle_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    HANDLE handle_;
};

}  // namespace swiftpatch::e2e
