#include "runtime/internal/key_lines.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

using namespace std::string_literals;

TEST(KeyLines, KeyIsFoundWhateverFollowsAndInAnyCase) {
    EXPECT_TRUE(HasLineOfKey("[A]\r\nKey=1\r\n", "Key"));
    EXPECT_TRUE(HasLineOfKey("a=b\n\t kEY", "Key"));
    EXPECT_TRUE(HasLineOfKey("Key: 1", "Key"));
    EXPECT_TRUE(HasLineOfKey("KeyRW", "Key"));
    EXPECT_TRUE(HasLineOfKey("a\rKey\rb", "Key"));
}

TEST(KeyLines, KeyElsewhereInALineIsNone) {
    EXPECT_FALSE(HasLineOfKey("; Key=1\r\nOther=Key\r\nMyKey=1\r\n", "Key"));
    EXPECT_FALSE(HasLineOfKey("", "Key"));
    EXPECT_FALSE(HasLineOfKey("Ke", "Key"));
}

TEST(KeyLines, KeyIsFoundInEachEncoding) {
    EXPECT_TRUE(HasLineOfKey("\xEF\xBB\xBFKey=1", "Key"));
    EXPECT_TRUE(HasLineOfKey("\xFF\xFEK\0e\0y\0=\0"s, "Key"));
}

}  // namespace
}  // namespace swiftpatch
