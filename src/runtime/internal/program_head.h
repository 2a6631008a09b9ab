#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace swiftpatch {

/// How much of a program's beginning is looked at: the linkers in use put their headers into less.
inline constexpr std::size_t kProgramHead = 4096;

/// How long the file of a Windows program (Portable Executable) that begins with `head` is at
/// least: up to the end of the last of its sections and of its certificates. Nothing where that is
/// no beginning of one, or ends within the headers.
std::optional<std::uint64_t> LengthOfProgram(std::span<const std::uint8_t> head);

}  // namespace swiftpatch
