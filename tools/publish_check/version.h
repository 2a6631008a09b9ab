#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace publish_check {

/// Major, minor, build and revision. Compares as a person would: the first that differs decides.
using Version = std::array<std::uint16_t, 4>;

/// The versions in an executable's version block.
struct FileVersions {
    Version file{};
    Version product{};
};

/// Reads "3.0.12.5"; parts that are left out at the end count as 0. Nothing for any other text.
std::optional<Version> ParseVersion(std::string_view text);

/// "3.0.12.5"
std::string PlainText(const Version& version);

/// As an updater reads and shows it: "3.00.12.05".
std::string ShownText(const Version& version);

/// True when a part is too large for the updater, which takes it for a negative number.
bool HasNegativePart(const Version& version);

/// True when a Windows executable is shorter than its own headers say.
bool IsCutOff(std::string_view executable);

/// The version block of a Windows executable (its resource of type 16); nothing when the bytes are
/// no such file or have none.
std::optional<FileVersions> ReadFileVersions(std::string_view executable);

}  // namespace publish_check
