#include "runtime/short_rests.h"

#include <gtest/gtest.h>

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

TEST(ShortRests, AreLeftOutForAWhileAfterALongOne) {
    ShortRests rests;
    rests.Took(microseconds(15600));
    EXPECT_EQ(LeftOut(rests), ShortRests::kLeftOut);
}

TEST(ShortRests, AreTakenAgainOnceTheyAreShortAgain) {
    ShortRests rests;
    rests.Took(microseconds(15600));
    LeftOut(rests);
    rests.Took(microseconds(1100));
    EXPECT_TRUE(rests.Due());
}

}  // namespace
}  // namespace swiftpatch
