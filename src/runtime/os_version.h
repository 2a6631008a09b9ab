#pragma once

#include <array>
#include <cstdint>

namespace swiftpatch {

/// The system's extended version record (OSVERSIONINFOEXA).
struct OsVersionRecord {
    std::uint32_t recordSize = 0;  ///< 156 asks for all members, 148 for those up to servicePack.
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    std::uint32_t platform = 0;           ///< 1: Windows 95 family, 2: NT family.
    std::array<char, 128> servicePack{};  ///< ANSI text, ended by a NUL where it is shorter.
    std::uint16_t servicePackMajor = 0;
    std::uint16_t servicePackMinor = 0;
    std::uint16_t suiteMask = 0;
    std::uint8_t productType = 0;
};

/// Fills the members that `record.recordSize` asks for (the system's GetVersionExA). False when
/// the system does not know a record of that size; nothing is filled then.
bool GetVersionExA(OsVersionRecord& record);

}  // namespace swiftpatch
