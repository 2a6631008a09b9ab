#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace swiftpatch::real_system {

/// A piece of data: a block of the format, whole or the part of one.
struct CabBlock {
    std::string bytes;
    /// Bytes of the whole block; 0 where it goes on in the next cabinet.
    std::uint16_t wholeSize = 0;
};

struct CabEntry {
    std::string name;
    std::uint32_t size = 0;
    std::uint32_t offset = 0;     ///< In the data of its folder.
    std::uint16_t folder = 0;     ///< 0xFFFD: from the cabinet before; 0xFFFE: goes on in the next.
    std::uint16_t date = 0x5C6A;  ///< 10 March 2026
    std::uint16_t time = 0x6207;  ///< 12:16:14
};

/// One cabinet with at most one folder of stored data, put together byte by byte: for what no tool
/// makes.
struct CabImage {
    std::vector<CabEntry> entries;
    std::vector<CabBlock> blocks;
    std::string previous;  ///< File names of the cabinets before and after; empty for none.
    std::string next;
    std::uint16_t number = 0;  ///< Within its set.

    std::string Bytes() const;
};

/// A cabinet with one file of that name and content.
std::string CabOf(const std::string& name, const std::string& bytes);

/// Adds a file to a cabinet whose files are not spanned.
void AddFile(CabImage& image, const std::string& name, const std::string& bytes);

}  // namespace swiftpatch::real_system
