#include "install/modVersion.h"

#include <vector>

#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "runtime/system.h"

namespace swiftpatch::modVersion {
namespace {

constexpr std::size_t kFixedBlockSize = 52;  // sizeof(VS_FIXEDFILEINFO)

void ReportNoVersion(const std::string& path) {
    const std::string quoted = "'" + path + "'";
    const std::string start = "No version information available for\r\n" + quoted + "\r\n\r\n";
    if (FileExists(path)) {
        MsgBox(start + "The file is probably corrupt.\r\n\r\nDeleting " + quoted);
    } else {
        // Nothing is downloaded here; the text announces what the caller does next.
        MsgBox(start + "The file does not exist.\r\n\r\nDownloading " + quoted);
    }
}

FileVersionRecord ReadBlock(const std::string& path, std::uint32_t size) {
    std::vector<std::uint8_t> buffer(size);
    std::span<const std::uint8_t> block;
    if (!GetFileVersionInfoA(path, buffer) || !VerQueryValueA(buffer, "\\", block) ||
        block.size() < kFixedBlockSize) {
        return {};
    }
    return DescribeFixedBlock(block);
}

}  // namespace

FileVersionRecord ReadFileVersion(const std::string& path) {
    const std::uint32_t size = GetFileVersionInfoSizeA(path);
    return size == 0 ? FileVersionRecord() : ReadBlock(path, size);
}

FileVersionRecord GetFileVersion(const std::string& path) {
    std::uint32_t size = GetFileVersionInfoSizeA(path);
    if (size == 0) {
        const bool unread = FileIsHeld(path);
        ReportNoVersion(path);
        // A file that nobody could read may be a whole build: it is looked at again before it goes.
        size = unread ? GetFileVersionInfoSizeA(path) : 0;
    }
    if (size == 0) {
        if (FileExists(path)) {
            Kill(path);
        }
        return {};
    }
    return ReadBlock(path, size);
}

}  // namespace swiftpatch::modVersion
