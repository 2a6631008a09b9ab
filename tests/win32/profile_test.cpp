#include "runtime/profile.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

class RealMayHoldKey : public testing::Test {
protected:
    Workplace place;
};

TEST_F(RealMayHoldKey, LooksForTheKeyOnEachLine) {
    EXPECT_TRUE(MayHoldKey("Key", place.Put("with.txt", std::string(5000, '\n') + "key RW\r\n")));
    EXPECT_FALSE(MayHoldKey("Key", place.Put("without.txt", "[Updates]\r\n;Key=RW\r\n")));
}

TEST_F(RealMayHoldKey, FileThatNobodyMayReadCouldHoldIt) {
    const std::string file = place.Put("held.txt", "");
    const HeldFile hold(file);
    EXPECT_TRUE(MayHoldKey("Key", file));
}

TEST_F(RealMayHoldKey, NoFileAndAFolderHoldNone) {
    EXPECT_FALSE(MayHoldKey("Key", place.PathOf("none.txt")));
    EXPECT_FALSE(MayHoldKey("Key", place.PathOf("none\\none.txt")));
    EXPECT_FALSE(MayHoldKey("Key", place.Out()));
}

}  // namespace
}  // namespace swiftpatch::real_system
