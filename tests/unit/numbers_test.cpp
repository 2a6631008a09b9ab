#include "runtime/numbers.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

std::int32_t ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

TEST(IsNumeric, DigitsWithASignAPointAndBlanks) {
    for (const char* text : {"0", "250000", "+5", "-5", "1.5", ".5", "5.", " 12 ", "\t7\r\n"}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
    }
}

TEST(IsNumeric, OtherTextsAreNone) {
    for (const char* text : {"", " ", ".", "-", "+.", "1.2.3", "1 2", "- 5", "--5", "5-", "12a",
                             "0x10", "1e5", "1,000", "12 bytes"}) {
        EXPECT_FALSE(IsNumeric(text)) << text;
    }
}

TEST(ToLong, WholeNumbers) {
    EXPECT_EQ(ToLong("250000"), 250000);
    EXPECT_EQ(ToLong(" +7 "), 7);
    EXPECT_EQ(ToLong("-7"), -7);
    EXPECT_EQ(ToLong("007"), 7);
}

TEST(ToLong, FractionsRoundToTheNearest) {
    EXPECT_EQ(ToLong("1.49"), 1);
    EXPECT_EQ(ToLong("1.51"), 2);
    EXPECT_EQ(ToLong("-1.51"), -2);
    EXPECT_EQ(ToLong("5."), 5);
    EXPECT_EQ(ToLong(".6"), 1);
}

TEST(ToLong, HalvesRoundToEven) {
    EXPECT_EQ(ToLong("0.5"), 0);
    EXPECT_EQ(ToLong("1.5"), 2);
    EXPECT_EQ(ToLong("2.5"), 2);
    EXPECT_EQ(ToLong("-0.5"), 0);
    EXPECT_EQ(ToLong("-2.5"), -2);
    EXPECT_EQ(ToLong("79999.5"), 80000);
    EXPECT_EQ(ToLong("80000.5"), 80000);
}

TEST(ToLong, LimitsOf32Bits) {
    EXPECT_EQ(ToLong("2147483647"), 2147483647);
    EXPECT_EQ(ToLong("2147483647.4"), 2147483647);
    EXPECT_EQ(ToLong("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToLong("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
}

TEST(ToLong, BeyondTheLimitsIsOverflow) {
    for (const std::string& text :
         {std::string("2147483648"), std::string("2147483647.5"), std::string("-2147483649"),
          std::string("99999999999999999999"), std::string(400, '9'), "-" + std::string(400, '9'),
          std::string(400, '9') + ".5"}) {
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), error_number::kOverflow) << text;
    }
}

TEST(ToLong, TinyFractionsAreZeroAndNoOverflow) {
    EXPECT_EQ(ToLong("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(ToLong("." + std::string(400, '0') + "1"), 0);
}

TEST(ToLong, TextThatIsNoNumberIsATypeMismatch) {
    for (const char* text : {"", "abc", "12a", "1e5"}) {
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), error_number::kTypeMismatch) << text;
    }
}

TEST(ToInteger, HalvesRoundToEven) {
    EXPECT_EQ(ToInteger(0.5), 0);
    EXPECT_EQ(ToInteger(1.5), 2);
    EXPECT_EQ(ToInteger(99.5), 100);
    EXPECT_EQ(ToInteger(98.5), 98);
    EXPECT_EQ(ToInteger(-1.5), -2);
    EXPECT_EQ(ToInteger(99.51), 100);
}

TEST(ToInteger, LimitsOf16Bits) {
    EXPECT_EQ(ToInteger(32767.4), 32767);
    EXPECT_EQ(ToInteger(-32768.5), -32768);
    for (const double number :
         {32767.5, 32768.0, -32769.0, 1e300, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([&] { ToInteger(number); }), error_number::kOverflow) << number;
    }
}

TEST(NumberedText, IsTheNumberAndTheWords) {
    EXPECT_EQ(std::string_view(NumberedText(7, " of 9")), "7 of 9");
    EXPECT_EQ(std::string_view(NumberedText(0, "")), "0");
}

TEST(NumberedText, HasRoomForEveryNumber) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(std::string_view(NumberedText(kLeast, " is 32 characters long, as words")),
              "-2147483648 is 32 characters long, as words");
}

}  // namespace
}  // namespace swiftpatch
