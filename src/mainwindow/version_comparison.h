#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

/// What the comparison of an installed program with the build on offer can find.
namespace comparison {
inline constexpr std::int16_t kNamedFileMissing = -3;
inline constexpr std::int16_t kBadName = -1;  ///< Has a report, although no comparison returns it.
inline constexpr std::int16_t kNothingOffered = 0;
inline constexpr std::int16_t kNothingNewer = 1;
inline constexpr std::int16_t kNewerOffered = 2;
}  // namespace comparison

/// Compares two product version texts such as 3.00.12.05 by their first three parts. Raises error
/// 9 when a part that is looked at is missing, 13 when it is no number, 6 when it is too large.
std::int16_t CompareVersionTexts(const std::string& installed, const std::string& offered);

}  // namespace swiftpatch
