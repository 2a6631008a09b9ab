#include "publish_check/version.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "install/modVersion.h"

namespace publish_check {
namespace {

constexpr std::size_t kFixedBlockSize = 52;       // sizeof(VS_FIXEDFILEINFO)
constexpr std::size_t kProductVersionPlace = 16;  // In that block: high words first.

void PutWord(std::array<std::uint8_t, kFixedBlockSize>& block, std::size_t at, unsigned word) {
    block[at] = static_cast<std::uint8_t>(word & 0xFFU);
    block[at + 1] = static_cast<std::uint8_t>(word >> 8U & 0xFFU);
}

}  // namespace

std::optional<Version> ParseVersion(std::string_view text) {
    Version version{};
    for (std::uint16_t& part : version) {
        const auto result = std::from_chars(text.data(), text.data() + text.size(), part);
        if (result.ec != std::errc()) {
            return std::nullopt;
        }
        text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
        if (text.empty()) {
            return version;
        }
        if (text.front() != '.') {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return std::nullopt;
}

std::string PlainText(const Version& version) {
    std::string text;
    for (const std::uint16_t part : version) {
        text += (text.empty() ? "" : ".") + std::to_string(part);
    }
    return text;
}

std::string ShownText(const Version& version) {
    std::array<std::uint8_t, kFixedBlockSize> block{};
    constexpr std::array<std::size_t, 4> kPlaces{2, 0, 6, 4};
    for (std::size_t i = 0; i < version.size(); ++i) {
        PutWord(block, kProductVersionPlace + kPlaces[i], version[i]);
    }
    return swiftpatch::modVersion::DescribeFixedBlock(block).ProductVersion;
}

bool HasNegativePart(const Version& version) {
    constexpr int kLargest = std::numeric_limits<std::int16_t>::max();
    return std::any_of(version.begin(), version.end(), [](int part) { return part > kLargest; });
}

}  // namespace publish_check
