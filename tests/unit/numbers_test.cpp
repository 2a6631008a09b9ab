#include "runtime/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>
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

double ByTheLibrary(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

/// Numerals of all lengths, many of them at a limit or at a tie between two numbers.
class Numerals {
public:
    std::string Next() {
        static constexpr std::array kWholes{"",
                                            "0",
                                            "1",
                                            "2",
                                            "79999",
                                            "2147483647",
                                            "2147483648",
                                            "4294967295",
                                            "4294967296",
                                            "4503599627370495",
                                            "9007199254740991"};
        static constexpr std::array kFractions{"", "0", "4", "5", "25", "75", "49999", "50000"};
        std::string text = Below(2) == 0 ? kWholes[Below(kWholes.size())] : Digits(Below(15));
        text = Blanks() + Sign() + std::string(Below(3), '0') + text;
        if (Below(4) != 0) {
            const std::string fraction =
                Below(2) == 0 ? kFractions[Below(kFractions.size())] : Digits(Below(25));
            text += "." + fraction + std::string(Below(5) == 0 ? Below(400) : Below(30), Filler());
            text += Digits(Below(3));
        }
        return text + Blanks();
    }

private:
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }
    std::string Digits(std::size_t count) {
        std::string digits(count, '0');
        for (char& digit : digits) {
            digit = static_cast<char>('0' + Below(10));
        }
        return digits;
    }
    std::string Blanks() { return std::string(Below(2), ' '); }
    std::string Sign() { return std::array{"", "+", "-"}[Below(3)]; }
    char Filler() { return std::array{'0', '9', '5'}[Below(3)]; }

    std::mt19937 random_{20260310};
};

TEST(NumbersIsNumeric, DigitsWithASignAPointAndBlanks) {
    for (const char* text : {"0", "250000", "+5", "-5", "1.5", ".5", "5.", " 12 ", "\t7\r\n"}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
    }
}

TEST(NumbersIsNumeric, OtherTextsAreNone) {
    for (const char* text : {"", " ", ".", "-", "+.", "1.2.3", "1 2", "- 5", "--5", "5-", "12a",
                             "0x10", "&H10", "1e5", "1d5", "1,000", "12 bytes"}) {
        EXPECT_FALSE(IsNumeric(text)) << text;
    }
}

TEST(NumbersToDouble, IsTheNumberThatTheLibraryFinds) {
    Numerals numerals;
    int compared = 0;
    for (int i = 0; i < 200'000; ++i) {
        const std::string text = numerals.Next();
        const double expected = ByTheLibrary(text);
        // The least number with all its places among those that count.
        if (IsNumeric(text) && (std::abs(expected) >= 1.0 / 512 || expected == 0)) {
            ASSERT_EQ(ToDouble(text), expected) << text;
            ++compared;
        }
    }
    EXPECT_GT(compared, 150'000);
}

TEST(NumbersToDouble, OfAHugeNumberIsHuge) {
    for (const std::string& text :
         {std::string("9007199254740992"), std::string("9007199254740992.5"),
          std::string("18446744073709551616"), std::string(400, '9')}) {
        EXPECT_GE(ToDouble(text), 9007199254740992.0) << text;
        EXPECT_LE(ToDouble("-" + text), -9007199254740992.0) << text;
    }
}

TEST(NumbersToDouble, OfTextThatIsNoNumberIsATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { ToDouble("1e5"); }), error_number::kTypeMismatch);
}

TEST(NumbersToLong, IsTheNumberThatTheLibraryFindsRounded) {
    Numerals numerals;
    for (int i = 0; i < 200'000; ++i) {
        const std::string text = numerals.Next();
        const double expected = std::nearbyint(ByTheLibrary(text));
        if (IsNumeric(text) && expected >= -2147483648.0 && expected <= 2147483647.0) {
            ASSERT_EQ(ToLong(text), expected) << text;
        } else if (IsNumeric(text)) {
            ASSERT_EQ(ErrorOf([&] { ToLong(text); }), error_number::kOverflow) << text;
        }
    }
}

TEST(NumbersToLong, WholeNumbers) {
    EXPECT_EQ(ToLong("250000"), 250000);
    EXPECT_EQ(ToLong(" +7 "), 7);
    EXPECT_EQ(ToLong("-7"), -7);
    EXPECT_EQ(ToLong("007"), 7);
}

TEST(NumbersToLong, FractionsRoundToTheNearest) {
    EXPECT_EQ(ToLong("1.49"), 1);
    EXPECT_EQ(ToLong("1.51"), 2);
    EXPECT_EQ(ToLong("-1.51"), -2);
    EXPECT_EQ(ToLong("5."), 5);
    EXPECT_EQ(ToLong(".6"), 1);
}

TEST(NumbersToLong, HalvesRoundToEven) {
    EXPECT_EQ(ToLong("0.5"), 0);
    EXPECT_EQ(ToLong("1.5"), 2);
    EXPECT_EQ(ToLong("2.5"), 2);
    EXPECT_EQ(ToLong("-0.5"), 0);
    EXPECT_EQ(ToLong("-2.5"), -2);
    EXPECT_EQ(ToLong("79999.5"), 80000);
    EXPECT_EQ(ToLong("80000.5"), 80000);
}

TEST(NumbersToLong, LimitsOf32Bits) {
    EXPECT_EQ(ToLong("2147483647"), 2147483647);
    EXPECT_EQ(ToLong("2147483647.4"), 2147483647);
    EXPECT_EQ(ToLong("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToLong("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
}

TEST(NumbersToLong, BeyondTheLimitsIsOverflow) {
    for (const std::string& text :
         {std::string("2147483648"), std::string("2147483647.5"), std::string("-2147483649"),
          std::string("99999999999999999999"), std::string(400, '9'), "-" + std::string(400, '9'),
          std::string(400, '9') + ".5"}) {
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), error_number::kOverflow) << text;
    }
}

TEST(NumbersToLong, TinyFractionsAreZeroAndNoOverflow) {
    EXPECT_EQ(ToLong("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(ToLong("." + std::string(400, '0') + "1"), 0);
}

TEST(NumbersToLong, TextThatIsNoNumberIsATypeMismatch) {
    for (const char* text : {"", "abc", "12a", "1e5"}) {
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), error_number::kTypeMismatch) << text;
    }
}

TEST(NumbersToInteger, HalvesRoundToEven) {
    EXPECT_EQ(ToInteger(0.5), 0);
    EXPECT_EQ(ToInteger(1.5), 2);
    EXPECT_EQ(ToInteger(99.5), 100);
    EXPECT_EQ(ToInteger(98.5), 98);
    EXPECT_EQ(ToInteger(-1.5), -2);
    EXPECT_EQ(ToInteger(99.51), 100);
}

TEST(NumbersToInteger, LimitsOf16Bits) {
    EXPECT_EQ(ToInteger(32767.4), 32767);
    EXPECT_EQ(ToInteger(-32768.5), -32768);
    for (const double number :
         {32767.5, 32768.0, -32769.0, 1e300, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([&] { ToInteger(number); }), error_number::kOverflow) << number;
    }
}

TEST(NumbersNumberedText, IsTheNumberAndTheWords) {
    EXPECT_EQ(std::string_view(NumberedText(7, " of 9")), "7 of 9");
    EXPECT_EQ(std::string_view(NumberedText(0, "")), "0");
}

TEST(NumbersNumberedText, HasRoomForEveryNumber) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(std::string_view(NumberedText(kLeast, " is 32 characters long, as words")),
              "-2147483648 is 32 characters long, as words");
}

}  // namespace
}  // namespace swiftpatch
