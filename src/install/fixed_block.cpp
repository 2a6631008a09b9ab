#include <array>
#include <cstddef>

#include "install/modVersion.h"
#include "runtime/strings.h"

namespace swiftpatch::modVersion {
namespace {

/// The members of VS_FIXEDFILEINFO in their order.
enum Member : std::size_t {
    kSignature,
    kStrucVersion,
    kFileVersionHigh,
    kFileVersionLow,
    kProductVersionHigh,
    kProductVersionLow,
    kFlagsMask,
    kFlags,
    kOs,
    kType,
    kSubtype,
};

std::uint32_t Value(std::span<const std::uint8_t> block, Member member) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | block[member * 4 + i];
    }
    return value;
}

/// Words are signed: one of 32768 or more shows as a negative number, deliberately.
std::int16_t HighWord(std::uint32_t value) { return static_cast<std::int16_t>(value >> 16); }
std::int16_t LowWord(std::uint32_t value) { return static_cast<std::int16_t>(value & 0xFFFF); }

std::string VersionText(std::uint32_t high, std::uint32_t low) {
    return std::to_string(HighWord(high)) + "." + ZeroPadded(LowWord(high), 2) + "." +
           ZeroPadded(HighWord(low), 2) + "." + ZeroPadded(LowWord(low), 2);
}

std::string FlagWords(std::uint32_t flags) {
    constexpr std::array kWords{" Debug", " PreRel", " Patched", " Private", " Info", " Special"};
    std::string text;
    for (std::size_t bit = 0; bit < kWords.size(); ++bit) {
        if ((flags >> bit & 1) != 0) {
            text += kWords[bit];
        }
    }
    return text.empty() ? text : text.substr(1);
}

std::string OsName(std::uint32_t os) {
    switch (os) {
        case 0x00010001:
            return "DOS-Win16";
        case 0x00010004:
            return "DOS-Win32";
        case 0x00020002:
            return "OS/2-16 PM-16";
        case 0x00030003:
            return "OS/2-16 PM-32";  // Not OS/2-32, deliberately.
        case 0x00040004:
            return "NT-Win32";
        default:
            return "Unknown";
    }
}

constexpr std::uint32_t kDriver = 3;  // VFT_DRV

std::string TypeName(std::uint32_t type) {
    constexpr std::array kNames{"Unknown", "APP", "DLL", "Driver", "Font", "VxD", "Unknown", "Lib"};
    return type < kNames.size() ? kNames[type] : "Unknown";
}

std::string DriverName(std::uint32_t subtype) {
    constexpr std::array kNames{"Unknown",     "Printer drv", "Keyboard drv", "Language drv",
                                "Display drv", "Mouse drv",   "Network drv",  "System drv",
                                "Installable", "Sound drv",   "Comm drv"};
    return subtype < kNames.size() ? kNames[subtype] : "";
}

}  // namespace

FileVersionRecord DescribeFixedBlock(std::span<const std::uint8_t> block) {
    const std::uint32_t structure = Value(block, kStrucVersion);
    FileVersionRecord record;
    record.StrucVersion =
        std::to_string(HighWord(structure)) + "." + std::to_string(LowWord(structure));
    record.FileVersion = VersionText(Value(block, kFileVersionHigh), Value(block, kFileVersionLow));
    record.ProductVersion =
        VersionText(Value(block, kProductVersionHigh), Value(block, kProductVersionLow));
    record.FileFlags = FlagWords(Value(block, kFlags));
    record.FileOS = OsName(Value(block, kOs));
    record.FileType = TypeName(Value(block, kType));
    if (Value(block, kType) == kDriver) {
        record.FileSubtype = DriverName(Value(block, kSubtype));
    }
    return record;
}

}  // namespace swiftpatch::modVersion
