#include "runtime/system.h"

#include "runtime/win32/handle.h"
#include "runtime/win32/patience.h"
#include "runtime/win32/wininet.h"

namespace swiftpatch {
namespace {

/// Where the buffer is too small, the look-ups of folders return the size that they need.
std::uint32_t CopiedLength(UINT length, const std::string& buffer) {
    return length < buffer.size() ? length : 0;
}

/// The library that reads the versions of files.
struct VersionLibrary {
    SystemLibrary library{"version.dll"};
    LateFunction<decltype(&::GetFileVersionInfoSizeA)> GetFileVersionInfoSizeA{
        library, "GetFileVersionInfoSizeA"};
    LateFunction<decltype(&::GetFileVersionInfoA)> GetFileVersionInfoA{library,
                                                                       "GetFileVersionInfoA"};
    LateFunction<decltype(&::VerQueryValueA)> VerQueryValueA{library, "VerQueryValueA"};
};

const VersionLibrary& Version() {
    static const VersionLibrary library;
    return library;
}

UniqueFile OpenToRead(const std::string& path) {
    return UniqueFile(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Whoever is told that a file has no version information takes it for damaged: that must not
/// happen to one that a virus scanner or an indexer has in hand.
void WaitUntilReadable(const std::string& path) {
    WaitOutHold([&path] {
        return static_cast<DWORD>(FileIsHeld(path) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS);
    });
}

/// A damaged file can name any size. The system asks for some more than what lies in the file.
bool FitsInto(const std::string& path, DWORD size) {
    const UniqueFile file = OpenToRead(path);
    const DWORD length = file ? ::GetFileSize(file.Get(), nullptr) : INVALID_FILE_SIZE;
    return length == INVALID_FILE_SIZE || size / 2 <= length;
}

}  // namespace

std::uint32_t GetWindowsDirectoryA(std::string& buffer) {
    const UINT size = static_cast<UINT>(buffer.size());
    return CopiedLength(::GetWindowsDirectoryA(buffer.data(), size), buffer);
}

std::uint32_t GetSystemDirectoryA(std::string& buffer) {
    const UINT size = static_cast<UINT>(buffer.size());
    return CopiedLength(::GetSystemDirectoryA(buffer.data(), size), buffer);
}

bool IsProcessorFeaturePresent(std::uint32_t feature) {
    static const SystemLibrary library("kernel32.dll");
    static const LateFunction<decltype(&::IsProcessorFeaturePresent)> function(
        library, "IsProcessorFeaturePresent");
    return function(feature) != FALSE;
}

bool HighContrast() {
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof(contrast);
    return ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

std::uint32_t GetFileVersionInfoSizeA(const std::string& path) {
    WaitUntilReadable(path);
    DWORD unused = 0;
    const DWORD size = Version().GetFileVersionInfoSizeA(path.c_str(), &unused);
    return FitsInto(path, size) ? size : 0;
}

bool FileIsHeld(const std::string& path) {
    return !OpenToRead(path) && ::GetLastError() == ERROR_SHARING_VIOLATION;
}

bool GetFileVersionInfoA(const std::string& path, std::vector<std::uint8_t>& buffer) {
    return Version().GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(buffer.size()),
                                         buffer.data()) != FALSE;
}

bool VerQueryValueA(const std::vector<std::uint8_t>& buffer, const std::string& block,
                    std::span<const std::uint8_t>& value) {
    void* start = nullptr;
    UINT size = 0;
    if (!Version().VerQueryValueA(buffer.data(), block.c_str(), &start, &size) ||
        start == nullptr) {
        return false;
    }
    value = std::span(static_cast<const std::uint8_t*>(start), size);
    // The sizes in a damaged block lead out of it.
    return value.data() >= buffer.data() && size <= buffer.size() &&
           value.data() + size <= buffer.data() + buffer.size();
}

void ShellExecuteA(const std::string& verb, const std::string& file, int showCommand) {
    ::ShellExecuteA(nullptr, verb.c_str(), file.c_str(), nullptr, nullptr, showCommand);
}

bool InternetGetConnectedStateExA(std::uint32_t& flags, std::string& name) {
    DWORD systemFlags = 0;
    const BOOL connected = WinInet().InternetGetConnectedStateExA(
        &systemFlags, name.data(), static_cast<DWORD>(name.size()), 0);
    flags = systemFlags;
    return connected != FALSE;
}

}  // namespace swiftpatch
