#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace swiftpatch::modVersion {

/// The fixed version block of an executable file as display texts; all empty when none could be
/// read.
struct FileVersionRecord {
    std::string StrucVersion;
    std::string FileVersion;     ///< For example 3.00.12.05.
    std::string ProductVersion;  ///< For example 3.00.12.05.
    std::string FileFlags;
    std::string FileOS;
    std::string FileType;
    std::string FileSubtype;  ///< Of drivers only.
};

/// The texts of a VS_FIXEDFILEINFO block: 13 little-endian numbers of 32 bits.
FileVersionRecord DescribeFixedBlock(std::span<const std::uint8_t> block);

/// The version block of the file at `path`; all empty where there is none. Changes nothing.
FileVersionRecord ReadFileVersion(const std::string& path);

/// Reads the version block of the file at `path`. When there is none a box says so, and a file
/// that exists is deleted: it is taken for damaged. Raises 75 when that fails. Pumps.
FileVersionRecord GetFileVersion(const std::string& path);

}  // namespace swiftpatch::modVersion
