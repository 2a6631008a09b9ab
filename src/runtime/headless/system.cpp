#include "runtime/system.h"

#include <algorithm>

#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

using headless::TheWorld;

constexpr std::size_t kFixedBlockSize = 52;
constexpr std::string_view kVersionMark = "MZ version=";

std::uint32_t CopyDirectory(const std::string& directory, std::string& buffer) {
    std::copy(directory.begin(), directory.end(), buffer.begin());
    buffer[directory.size()] = '\0';
    return static_cast<std::uint32_t>(directory.size());
}

/// The version of a build, or nothing.
std::string VersionIn(const std::string& path) {
    const headless::File* file = TheWorld().disk.Find(path);
    if (file == nullptr) {
        return {};
    }
    if (!file->bytes.starts_with(kVersionMark)) {
        return TheWorld().versionIn ? TheWorld().versionIn(file->bytes) : "";
    }
    const std::size_t end = file->bytes.find(';');
    return file->bytes.substr(kVersionMark.size(), end - kVersionMark.size());
}

void PutWord(std::vector<std::uint8_t>& block, std::size_t at, int word) {
    block[at] = static_cast<std::uint8_t>(word & 0xFF);
    block[at + 1] = static_cast<std::uint8_t>(word >> 8 & 0xFF);
}

}  // namespace

std::uint32_t GetWindowsDirectoryA(std::string& buffer) {
    return CopyDirectory(TheWorld().machine.windowsDirectory, buffer);
}

std::uint32_t GetSystemDirectoryA(std::string& buffer) {
    return CopyDirectory(TheWorld().machine.systemDirectory, buffer);
}

bool IsProcessorFeaturePresent(std::uint32_t) { return TheWorld().machine.hasSse2; }

bool HighContrast() { return TheWorld().machine.highContrast; }

std::uint32_t GetFileVersionInfoSizeA(const std::string& path) {
    const headless::File* const file = TheWorld().disk.Find(path);
    if (file != nullptr && !TheWorld().WaitOutHold(file->lockedUntil)) {
        return 0;
    }
    return VersionIn(path).empty() ? 0 : kFixedBlockSize;
}

bool FileIsHeld(const std::string& path) {
    const headless::File* const file = TheWorld().disk.Find(path);
    return file != nullptr && file->lockedUntil > TheWorld().uptime;
}

bool GetFileVersionInfoA(const std::string& path, std::vector<std::uint8_t>& buffer) {
    if (TheWorld().machine.versionReadFails) {
        return false;
    }
    const std::vector<std::string> words = Split(VersionIn(path), '.');
    constexpr std::size_t kPlaces[] = {10, 8, 14, 12};  // High word first, little-endian.
    for (std::size_t i = 0; i < words.size(); ++i) {
        PutWord(buffer, kPlaces[i], std::stoi(words[i]));
        PutWord(buffer, kPlaces[i] + 8, std::stoi(words[i]));
    }
    return true;
}

bool VerQueryValueA(const std::vector<std::uint8_t>& buffer, const std::string& block,
                    std::span<const std::uint8_t>& value) {
    value = buffer;
    return block == "\\" && !TheWorld().machine.versionQueryFails;
}

void ShellExecuteA(const std::string& verb, const std::string& file, int showCommand) {
    TheWorld().disk.Operation("ShellExecute",
                              verb + " " + file + " " + std::to_string(showCommand));
}

bool InternetGetConnectedStateExA(std::uint32_t& flags, std::string& name) {
    if (TheWorld().machine.connectionError != 0) {
        throw RuntimeError(TheWorld().machine.connectionError);
    }
    name[0] = '\0';
    flags = TheWorld().machine.connectionFlags;
    return TheWorld().machine.connected;
}

}  // namespace swiftpatch
