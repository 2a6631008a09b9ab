#include "runtime/short_rests.h"

#include <gtest/gtest.h>

#include <vector>

namespace swiftpatch {
namespace {

using std::chrono::microseconds;

int LeftOut(ShortRests& rests) {
    int count = 0;
    while (count < 1000 && !rests.Due()) {
        ++count;
    }
    return count;
}

TEST(ShortRests, AreTakenWhereTheyAreShort) {
    ShortRests rests;
    EXPECT_TRUE(rests.Due());
    rests.Took(microseconds(1100));
    EXPECT_TRUE(rests.Due());
    rests.Took(ShortRests::kLongest);
    EXPECT_TRUE(rests.Due());
}

TEST(ShortRests, OneIsLeftOutAfterASingleLongOne) {
    ShortRests rests;
    rests.Took(ShortRests::kLongest + microseconds(1));
    EXPECT_EQ(LeftOut(rests), 1);
    rests.Took(microseconds(1100));
    EXPECT_TRUE(rests.Due());
}

TEST(ShortRests, TwiceAsManyAreLeftOutWhileTheyStayLong) {
    ShortRests rests;
    std::vector<int> leftOut;
    for (int rest = 0; rest < 8; ++rest) {
        rests.Took(microseconds(15600));
        leftOut.push_back(LeftOut(rests));
    }
    EXPECT_EQ(leftOut, (std::vector<int>{1, 2, 4, 8, 16, 32, 64, 64}));
}

TEST(ShortRests, AreTakenAsBeforeOnceTheyAreShortAgain) {
    ShortRests rests;
    for (int rest = 0; rest < 8; ++rest) {
        rests.Took(microseconds(15600));
    }
    LeftOut(rests);
    rests.Took(microseconds(1100));
    EXPECT_TRUE(rests.Due());
    rests.Took(microseconds(15600));
    EXPECT_EQ(LeftOut(rests), 1);
}

}  // namespace
}  // namespace swiftpatch
