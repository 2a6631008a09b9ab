#include "runtime/internal/program_head.h"

#include <gtest/gtest.h>

#include <vector>

namespace swiftpatch {
namespace {

constexpr std::size_t kNewHeader = 0x80;
constexpr std::size_t kOptional = kNewHeader + 24;

/// The headers of a program, with their table of sections behind an optional header of `size`
/// bytes.
class ProgramHead : public testing::Test {
protected:
    ProgramHead() : head_(1024) {
        Put(0, 0x5A4D, 2);
        Put(0x3C, kNewHeader, 4);
        Put(kNewHeader, 0x4550, 4);
        Begin(0x10B, 224);
    }

    void Put(std::size_t at, std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            head_[at + i] = static_cast<std::uint8_t>(value >> (8 * i) & 0xFF);
        }
    }
    void Begin(std::uint32_t magic, std::size_t optionalSize) {
        optionalSize_ = optionalSize;
        Put(kNewHeader + 20, optionalSize, 2);
        Put(kOptional, magic, 2);
    }
    void AddSection(std::uint32_t place, std::uint32_t size) {
        const std::size_t at = kOptional + optionalSize_ + 40 * sections_++;
        Put(at + 16, size, 4);
        Put(at + 20, place, 4);
        Put(kNewHeader + 6, sections_, 2);
    }

    /// Behind a section that ends there; `at` is where the optional header tells of them.
    void PutCertificates(std::size_t at) {
        Put(kOptional + at, 0x1400, 4);
        Put(kOptional + at + 4, 0x88, 4);
    }

    std::optional<std::uint64_t> Length() const { return LengthOfProgram(head_); }

    std::vector<std::uint8_t> head_;
    std::size_t optionalSize_ = 0;
    std::size_t sections_ = 0;
};

TEST_F(ProgramHead, EndsWithItsLastSectionWhateverTheirOrder) {
    AddSection(0x400, 0x1000);
    AddSection(0x5000, 0x200);
    AddSection(0x1400, 0x600);
    EXPECT_EQ(Length(), 0x5200U);
}

TEST_F(ProgramHead, SectionWithoutBytesInTheFileDoesNotCount) {
    AddSection(0x400, 0x1000);
    AddSection(0x90000, 0);
    EXPECT_EQ(Length(), 0x1400U);
}

TEST_F(ProgramHead, SectionsBeyond4GibAreAddedWithoutOverflow) {
    AddSection(0xFFFFFE00, 0x400);
    EXPECT_EQ(Length(), 0x100000200U);
}

TEST_F(ProgramHead, CertificatesBehindTheSectionsBelongToIt) {
    AddSection(0x400, 0x1000);
    PutCertificates(128);
    EXPECT_EQ(Length(), 0x1488U);
}

TEST_F(ProgramHead, CertificatesOfA64BitProgramStandElsewhere) {
    Begin(0x20B, 240);
    AddSection(0x400, 0x1000);
    PutCertificates(144);
    EXPECT_EQ(Length(), 0x1488U);
}

TEST_F(ProgramHead, ShortOptionalHeaderHasNoCertificates) {
    Begin(0x10B, 96);
    AddSection(0x400, 0x1000);
    EXPECT_EQ(Length(), 0x1400U);
}

TEST_F(ProgramHead, WithoutItsSignaturesIsNone) {
    AddSection(0x400, 0x1000);
    Put(kNewHeader, 0x454E, 4);
    EXPECT_EQ(Length(), std::nullopt);
    Put(kNewHeader, 0x4550, 4);
    Put(0, 0x4D5A, 2);
    EXPECT_EQ(Length(), std::nullopt);
}

TEST_F(ProgramHead, CutOffAnywhereInItsHeadersIsNone) {
    AddSection(0x400, 0x1000);
    AddSection(0x1400, 0x200);
    const std::size_t whole = kOptional + optionalSize_ + 80;
    for (std::size_t size = 0; size < whole; ++size) {
        EXPECT_EQ(LengthOfProgram(std::span(head_).first(size)), std::nullopt) << size;
    }
    EXPECT_EQ(LengthOfProgram(std::span(head_).first(whole)), 0x1600U);
}

TEST_F(ProgramHead, ThatLiesFarBehindItsBeginningIsNone) {
    for (const std::uint32_t place : {1020U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        Put(0x3C, place, 4);
        EXPECT_EQ(Length(), std::nullopt) << place;
    }
}

}  // namespace
}  // namespace swiftpatch
