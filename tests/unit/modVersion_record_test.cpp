#include <gtest/gtest.h>

#include <array>

#include "install/modVersion.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

using modVersion::DescribeFixedBlock;
using modVersion::FileVersionRecord;

/// The members of the fixed block that have a text, by their place.
enum Member : std::size_t {
    kStructure = 1,
    kFileHigh,
    kFileLow,
    kProductHigh,
    kProductLow,
    kMask,
    kFlags,
    kOs,
    kType,
    kSubtype
};

using Members = std::array<std::uint32_t, 13>;

FileVersionRecord Describe(const Members& members) {
    std::vector<std::uint8_t> block;
    for (const std::uint32_t member : members) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            block.push_back(static_cast<std::uint8_t>(member >> shift & 0xFF));
        }
    }
    return DescribeFixedBlock(block);
}

FileVersionRecord Describe(Member member, std::uint32_t value) {
    Members members{0xFEEF04BD};
    members[member] = value;
    return Describe(members);
}

TEST(modVersionRecord, HasEveryText) {
    const FileVersionRecord record =
        Describe({0xFEEF04BD, 0x00010000, 0x00030000, 0x000C0005, 0x00030001, 0x0000007B, 0x3F,
                  0x03, 0x00040004, 3, 1, 0, 0});
    EXPECT_EQ(record.StrucVersion, "1.0");
    EXPECT_EQ(record.FileVersion, "3.00.12.05");
    EXPECT_EQ(record.ProductVersion, "3.01.00.123");
    EXPECT_EQ(record.FileFlags, "Debug PreRel");
    EXPECT_EQ(record.FileOS, "NT-Win32");
    EXPECT_EQ(record.FileType, "Driver");
    EXPECT_EQ(record.FileSubtype, "Printer drv");
}

TEST(modVersionRecord, StructureVersionIsNotPadded) {
    EXPECT_EQ(Describe(kStructure, 0x00010002).StrucVersion, "1.2");
    EXPECT_EQ(Describe(kStructure, 0xFFFF000A).StrucVersion, "-1.10");
}

TEST(modVersionRecord, PartsAreFilledUpToTwoDigitsAndNeverCut) {
    EXPECT_EQ(Describe(kProductLow, 5).ProductVersion, "0.00.00.05");
    EXPECT_EQ(Describe(kProductLow, 123).ProductVersion, "0.00.00.123");
    EXPECT_EQ(Describe(kProductLow, 0x007B0000).ProductVersion, "0.00.123.00");
    EXPECT_EQ(Describe(kProductHigh, 0x00030000).ProductVersion, "3.00.00.00");
    EXPECT_EQ(Describe(kProductHigh, 0x000C000B).ProductVersion, "12.11.00.00");
}

TEST(modVersionRecord, WordsAreSigned) {
    EXPECT_EQ(Describe(kProductLow, 40000U << 16).ProductVersion, "0.00.-25536.00");
    EXPECT_EQ(Describe(kFileHigh, 0x80007FFF).FileVersion, "-32768.32767.00.00");
    EXPECT_EQ(Describe(kFileLow, 0xFFFF).FileVersion, "0.00.00.-01");
}

TEST(modVersionRecord, FileAndProductVersionAreTheirOwn) {
    const FileVersionRecord record = Describe(kFileLow, 7);
    EXPECT_EQ(record.FileVersion, "0.00.00.07");
    EXPECT_EQ(record.ProductVersion, "0.00.00.00");
}

TEST(modVersionRecord, FlagsOfZeroHaveNoText) { EXPECT_EQ(Describe(kFlags, 0).FileFlags, ""); }

TEST(modVersionRecord, EachFlagHasItsWord) {
    EXPECT_EQ(Describe(kFlags, 0x01).FileFlags, "Debug");
    EXPECT_EQ(Describe(kFlags, 0x02).FileFlags, "PreRel");
    EXPECT_EQ(Describe(kFlags, 0x04).FileFlags, "Patched");
    EXPECT_EQ(Describe(kFlags, 0x08).FileFlags, "Private");
    EXPECT_EQ(Describe(kFlags, 0x10).FileFlags, "Info");
    EXPECT_EQ(Describe(kFlags, 0x20).FileFlags, "Special");
    EXPECT_EQ(Describe(kFlags, 0x3F).FileFlags, "Debug PreRel Patched Private Info Special");
    EXPECT_EQ(Describe(kFlags, 0xFFFFFFC0).FileFlags, "");
}

TEST(modVersionRecord, FlagsAreNotMasked) {
    Members members{0xFEEF04BD};
    members[kMask] = 0;
    members[kFlags] = 0x03;
    EXPECT_EQ(Describe(members).FileFlags, "Debug PreRel");
    members[kMask] = 0x3F;
    members[kFlags] = 0;
    EXPECT_EQ(Describe(members).FileFlags, "");
}

TEST(modVersionRecord, OperatingSystemsAreComparedWhole) {
    EXPECT_EQ(Describe(kOs, 0x00010001).FileOS, "DOS-Win16");
    EXPECT_EQ(Describe(kOs, 0x00010004).FileOS, "DOS-Win32");
    EXPECT_EQ(Describe(kOs, 0x00020002).FileOS, "OS/2-16 PM-16");
    EXPECT_EQ(Describe(kOs, 0x00030003).FileOS, "OS/2-16 PM-32");
    EXPECT_EQ(Describe(kOs, 0x00040004).FileOS, "NT-Win32");
    EXPECT_EQ(Describe(kOs, 0x00040000).FileOS, "Unknown");
    EXPECT_EQ(Describe(kOs, 0).FileOS, "Unknown");
}

TEST(modVersionRecord, TypesHaveTheirNames) {
    const std::vector<std::string> names{"Unknown", "APP",     "DLL", "Driver", "Font",
                                         "VxD",     "Unknown", "Lib", "Unknown"};
    for (std::uint32_t type = 0; type < names.size(); ++type) {
        EXPECT_EQ(Describe(kType, type).FileType, names[type]) << type;
    }
    EXPECT_EQ(Describe(kType, 0xFFFFFFFF).FileType, "Unknown");
}

TEST(modVersionRecord, DriversHaveASubtype) {
    const std::vector<std::string> names{
        "Unknown",     "Printer drv", "Keyboard drv", "Language drv", "Display drv", "Mouse drv",
        "Network drv", "System drv",  "Installable",  "Sound drv",    "Comm drv",    ""};
    for (std::uint32_t subtype = 0; subtype < names.size(); ++subtype) {
        Members members{0xFEEF04BD};
        members[kType] = 3;
        members[kSubtype] = subtype;
        EXPECT_EQ(Describe(members).FileType, "Driver");
        EXPECT_EQ(Describe(members).FileSubtype, names[subtype]) << subtype;
    }
}

TEST(modVersionRecord, OtherTypesHaveNoSubtype) {
    for (const std::uint32_t type : {0U, 1U, 2U, 4U, 5U, 6U, 7U, 8U}) {
        Members members{0xFEEF04BD};
        members[kType] = type;
        members[kSubtype] = 1;
        EXPECT_EQ(Describe(members).FileSubtype, "") << type;
    }
}

}  // namespace
}  // namespace swiftpatch
