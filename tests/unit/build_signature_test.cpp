#include "install/build_signature.h"

#include "shared/shared_state.h"
#include "unit/signed_builds_support.h"

namespace swiftpatch {
namespace {

class BuildSignatureTest : public SignedTest {
protected:
    BuildSignatureTest() { EXPECT_TRUE(signature.ReadKeys()); }

    BuildSignature signature;
};

TEST_F(BuildSignatureTest, FitsTheBuildThatCameInInAnyPieces) {
    signature.Take(Signature(newBuild));
    signature.BeginBuild();
    signature.AddToBuild(newBuild.substr(0, 1));
    signature.AddToBuild(newBuild.substr(1, 100000));
    signature.AddToBuild(newBuild.substr(100001));
    signature.EndBuild();
    EXPECT_TRUE(signature.Fits());
}

TEST_F(BuildSignatureTest, FitsOnAProcessorWithoutSse2Too) {
    world.machine.hasSse2 = false;
    signature.Take(Signature(newBuild));
    signature.BeginBuild();
    signature.AddToBuild(newBuild);
    signature.EndBuild();
    EXPECT_TRUE(signature.Fits());
}

TEST_F(BuildSignatureTest, EachBuildBeginsAnew) {
    signature.Take(Signature(newBuild));
    for (const std::string& build : {oldBuild, newBuild}) {
        signature.BeginBuild();
        signature.AddToBuild(build);
        signature.EndBuild();
        EXPECT_EQ(signature.Fits(), build == newBuild);
    }
}

TEST_F(BuildSignatureTest, WithoutKeysNothingFits) {
    shared.SigningKeys = "";
    EXPECT_FALSE(signature.ReadKeys());
    signature.Take(Signature(newBuild));
    signature.BeginBuild();
    signature.AddToBuild(newBuild);
    signature.EndBuild();
    EXPECT_FALSE(signature.IsThere());
    EXPECT_FALSE(signature.Fits());
}

TEST_F(BuildSignatureTest, WithoutABuildNothingFits) {
    signature.Take(Signature(""));
    EXPECT_FALSE(signature.Fits());
}

TEST_F(BuildSignatureTest, SameBuildIsTheOneThatWasSeenLast) {
    world.AddFile("copy.exe", newBuild);
    signature.BeginBuild();
    signature.AddToBuild(newBuild);
    signature.EndBuild();
    LockedFile same(world.PathOf("copy.exe"));
    EXPECT_TRUE(signature.IsSameBuild(same));
    world.AddFile("copy.exe", newBuild + "x");
    LockedFile other(world.PathOf("copy.exe"));
    EXPECT_FALSE(signature.IsSameBuild(other));
}

TEST(IsDowngrade, AllFourPartsCountAsNumbers) {
    EXPECT_TRUE(IsDowngrade("3.00.12.05", "3.00.12.04"));
    EXPECT_TRUE(IsDowngrade("3.00.12.05", "2.99.99.99"));
    EXPECT_TRUE(IsDowngrade("3.100.00.00", "3.99.00.00"));
    EXPECT_FALSE(IsDowngrade("3.00.12.05", "3.00.12.05"));
    EXPECT_FALSE(IsDowngrade("3.09.01.00", "4.00.01.00"));
    EXPECT_FALSE(IsDowngrade("3.99.00.00", "3.100.00.00"));
}

TEST(IsDowngrade, NumbersThatAreShownAsNegativeOnesAreLarge) {
    EXPECT_TRUE(IsDowngrade("3.00.-25536.01", "3.00.12.05"));
    EXPECT_FALSE(IsDowngrade("3.00.12.05", "3.00.-25536.01"));
}

TEST(IsDowngrade, UnknownVersionIsTheEarliest) {
    EXPECT_TRUE(IsDowngrade("3.00.12.05", ""));
    EXPECT_FALSE(IsDowngrade("", "0.00.00.01"));
    EXPECT_FALSE(IsDowngrade("", ""));
}

}  // namespace
}  // namespace swiftpatch
