#include "mainwindow/version_comparison.h"

#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr std::int16_t kUntouched = 99;

std::int32_t ErrorOf(const std::string& installed, const std::string& offered) {
    try {
        CompareVersionTexts(installed, offered);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

TEST(VersionComparison, OfEqualVersionsFindsNothingNewer) {
    EXPECT_EQ(CompareVersionTexts("3.00.12.05", "3.00.12.05"), 1);
}

TEST(VersionComparison, OfAnOlderBuildFindsANewerOne) {
    EXPECT_EQ(CompareVersionTexts("3.00.11.00", "3.00.12.00"), 2);
}

TEST(VersionComparison, OfAHigherInstalledMinorFindsNothingNewerInAHigherMajor) {
    EXPECT_EQ(CompareVersionTexts("2.09.00.00", "3.00.00.00"), 1);
}

TEST(VersionComparison, OfAHigherMajorWithAnEqualMinorFindsANewerOne) {
    EXPECT_EQ(CompareVersionTexts("2.00.00.00", "3.00.00.00"), 2);
}

TEST(VersionComparison, OfAHigherMajorWithAnEqualMinorAndALowerBuildFindsNothingNewer) {
    EXPECT_EQ(CompareVersionTexts("2.00.05.00", "3.00.04.00"), 1);
}

TEST(VersionComparison, OfAHigherInstalledMajorFindsNothingNewer) {
    EXPECT_EQ(CompareVersionTexts("4.00.00.00", "3.09.09.00"), 1);
}

TEST(VersionComparison, OfAHigherInstalledBuildFindsNothingNewer) {
    EXPECT_EQ(CompareVersionTexts("3.01.05.00", "3.01.04.00"), 1);
}

TEST(VersionComparison, OfAHigherMinorFindsANewerOneWhateverTheBuild) {
    EXPECT_EQ(CompareVersionTexts("3.00.99.00", "3.01.00.00"), 2);
}

TEST(VersionComparison, DoesNotLookAtTheRevision) {
    EXPECT_EQ(CompareVersionTexts("3.00.12.05", "3.00.12.06"), 1);
    EXPECT_EQ(CompareVersionTexts("3.00.12", "3.00.12.06"), 1);
}

TEST(VersionComparison, ComparesPartsAsNumbers) {
    EXPECT_EQ(CompareVersionTexts("3.9.0.0", "3.10.0.0"), 2);
    EXPECT_EQ(CompareVersionTexts("3.00.-25536.00", "3.00.01.00"), 2);
}

TEST(VersionComparison, OfNoInstalledVersionFindsWhatIsOffered) {
    EXPECT_EQ(CompareVersionTexts("", "3.00.12.05"), 2);
    EXPECT_EQ(CompareVersionTexts("", "3"), 2);
}

TEST(VersionComparison, OfNoVersionsAtAllFindsNothingOnOffer) {
    EXPECT_EQ(CompareVersionTexts("", ""), 0);
}

TEST(VersionComparison, OfNothingOnOfferIsOutOfBounds) { EXPECT_EQ(ErrorOf("3.00.12.05", ""), 9); }

TEST(VersionComparison, OfMissingPartsIsOutOfBounds) {
    EXPECT_EQ(ErrorOf("3", "3.00.12.05"), 9);
    EXPECT_EQ(ErrorOf("3.00", "3.00.12.05"), 9);
    EXPECT_EQ(ErrorOf("3.00.12", "3.00"), 9);
}

TEST(VersionComparison, DoesNotLookForPartsItHasNoNeedOf) {
    EXPECT_EQ(CompareVersionTexts("4", "3"), 1);
    EXPECT_EQ(CompareVersionTexts("3.1", "3.0"), 1);
}

class VersionComparisonOfBuilds : public WindowTest {
protected:
    std::int16_t Compare(std::string name = "tolvex.exe") {
        std::int16_t result = kUntouched;
        world.Dispatch([&] {
            try {
                Window().CompareProductVersions(name, result);
            } catch (const RuntimeError& error) {
                raised = error.Number();
            }
        });
        return result;
    }

    std::int32_t raised = 0;
};

TEST_F(VersionComparisonOfBuilds, FindsTheNamedFileMissing) {
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 100));
    EXPECT_EQ(Compare(), -3);
    EXPECT_TRUE(world.trace.Lines().empty());
    EXPECT_EQ(Window().stagedVersion.ProductVersion, "");
}

TEST_F(VersionComparisonOfBuilds, ShowsAndKeepsTheVersionOnOffer) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 100));
    EXPECT_EQ(Compare(), 2);
    EXPECT_EQ(Joined(Steps()), Joined({Set("lblTolvexVersion.Caption",
                                           "q-tolvex Version available to install: 3.00.12.05"),
                                       "lblTolvexVersion.Visible = True"}));
    EXPECT_EQ(Window().stagedVersion.ProductVersion, "3.00.12.05");
}

TEST_F(VersionComparisonOfBuilds, ShowsTheVersionOnOfferWhenNothingIsNewerToo) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100));
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 100));
    EXPECT_EQ(Compare(), 1);
    EXPECT_TRUE(Window().lblTolvexVersion.Visible);
}

TEST_F(VersionComparisonOfBuilds, TakesAnyFileOfTheFolder) {
    world.AddFile("controlfile.ini", headless::Build("4.0.0.0", 100));
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 100));
    EXPECT_EQ(Compare("controlfile.ini"), 1);
}

TEST_F(VersionComparisonOfBuilds, DeletesAProgramWithoutVersionBlockAndFindsANewerOne) {
    world.AddFile("tolvex.exe", headless::Build("", 100));
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 100));
    world.user.Answer("'C:\\Tolvex\\tolvex.exe'");
    EXPECT_EQ(Compare(), 2);
    EXPECT_EQ(Content("tolvex.exe"), "(no such file)");
}

TEST_F(VersionComparisonOfBuilds, OfTwoFilesWithoutVersionBlockFindsNothingOnOffer) {
    world.AddFile("tolvex.exe", headless::Build("", 100));
    world.AddFile("tolvex30.exe", headless::Build("", 100));
    world.user.Answer("'C:\\Tolvex\\tolvex.exe'");
    world.user.Answer("'C:\\Tolvex\\tolvex30.exe'");
    EXPECT_EQ(Compare(), 0);
    EXPECT_TRUE(Window().lblTolvexVersion.Visible);
}

TEST_F(VersionComparisonOfBuilds, OfAnOfferWithoutVersionBlockRaisesToItsCaller) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    world.AddFile("tolvex30.exe", headless::Build("", 100));
    world.user.Answer("'C:\\Tolvex\\tolvex30.exe'");
    EXPECT_EQ(Compare(), kUntouched);
    EXPECT_EQ(raised, 9);
}

}  // namespace
}  // namespace swiftpatch
