#include "runtime/internal/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

/// A reader of `text` that gets it in blocks of `size` bytes.
LineReader In(const std::string& text, std::size_t size) {
    return LineReader([text, size, position = std::size_t{0}]() mutable {
        const std::string block = text.substr(position, size);
        position += block.size();
        return block;
    });
}

std::vector<std::string> Lines(LineReader reader) {
    std::vector<std::string> lines;
    while (!reader.AtEnd()) {
        lines.push_back(reader.Next());
    }
    return lines;
}

void ExpectLines(const std::string& text, const std::vector<std::string>& lines) {
    for (std::size_t size = 1; size <= text.size() + 1; ++size) {
        EXPECT_EQ(Lines(In(text, size)), lines) << "in blocks of " << size;
    }
}

TEST(LineReader, LinesEndWithCrLfWhereverABlockEnds) {
    ExpectLines("one\r\ntwo\r\n\r\nfour\r\n", {"one", "two", "", "four"});
}

TEST(LineReader, LastLineMayHaveNoEnding) {
    ExpectLines("one\r\ntwo", {"one", "two"});
    ExpectLines("one\r\n\r", {"one", "\r"});
}

TEST(LineReader, EmptyTextHasNoLine) { ExpectLines("", {}); }

TEST(LineReader, LoneCrAndLfBelongToTheLine) {
    ExpectLines("a\nb\rc\r\n\nd\r\r\n\n\r\n", {"a\nb\rc", "\nd\r", "\n"});
}

TEST(LineReader, NulIsACharacterLikeAnother) {
    ExpectLines(std::string("a\0b\r\n\0\r\n", 8), {std::string("a\0b", 3), std::string("\0", 1)});
}

TEST(LineReader, ReadingPastTheEndRaises62) {
    LineReader reader = In("one", 10);
    EXPECT_EQ(reader.Next(), "one");
    try {
        reader.Next();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kInputPastEndOfFile);
    }
}

TEST(LineReader, NextNeedsNoLookForTheEndBefore) {
    LineReader reader = In("one\r\ntwo\r\n", 4);
    EXPECT_EQ(reader.Next(), "one");
    EXPECT_EQ(reader.Next(), "two");
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_TRUE(reader.AtEnd());
}

TEST(LineReader, LineOfManyBlocksTakesTimeInStepWithItsLength) {
    const std::string line(3'000'000, 'x');
    EXPECT_THAT(Lines(In(line + "\r\nend", 64 * 1024)), ElementsAre(line, "end"));
}

TEST(LineReader, ErrorsOfTheSourceComeThrough) {
    LineReader reader([]() -> std::string { throw RuntimeError(error_number::kDeviceIoError); });
    EXPECT_THROW(reader.AtEnd(), RuntimeError);
    EXPECT_THROW(reader.Next(), RuntimeError);
}

}  // namespace
}  // namespace swiftpatch
