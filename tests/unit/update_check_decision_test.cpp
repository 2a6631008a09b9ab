#include "unit/check_support.h"

namespace swiftpatch {
namespace {

class UpdateCheckDecision : public CheckTest {
protected:
    /// True when the check asks for the build, false when it offers the staged one.
    bool Downloads(DateTime staged, const std::string& lastModified) {
        Offer(250000, lastModified);
        Stage("3.0.12.5", 250000, staged);
        world.network.Answer(Get(kNewBuild), SilentReply());
        RunCheck(5000);
        const bool downloads = Requested(Get(kNewBuild));
        EXPECT_NE(downloads, Window().lblStatus.Caption.Get() == "Click on Install Button.");
        return downloads;
    }
};

TEST_F(UpdateCheckDecision, ServerCopyLaterInTheSameMinuteNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime, "Tue, 10 Mar 2026 10:00:59 GMT"));
}

TEST_F(UpdateCheckDecision, ServerCopyEarlierInTheSameMinuteNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime + std::chrono::seconds(59), kServerDate));
}

TEST_F(UpdateCheckDecision, OneSecondAcrossAMinuteBoundaryIsADownload) {
    EXPECT_TRUE(Downloads(serverTime - std::chrono::seconds(1), kServerDate));
}

TEST_F(UpdateCheckDecision, OlderServerCopyNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime + std::chrono::minutes(1), kServerDate));
}

TEST_F(UpdateCheckDecision, ServerDateIsMovedIntoLocalTime) {
    world.utcOffsetMinutes = 120;
    EXPECT_TRUE(Downloads(serverTime + std::chrono::minutes(119), kServerDate));
    EXPECT_EQ(Window().check.ageGap, 1);
}

TEST_F(UpdateCheckDecision, StagedBuildOfTheMovedDateNeedsNoDownload) {
    world.utcOffsetMinutes = -90;
    EXPECT_FALSE(Downloads(serverTime - std::chrono::minutes(90), kServerDate));
}

TEST_F(UpdateCheckDecision, UnknownServerDateCountsAsOld) {
    EXPECT_FALSE(Downloads(serverTime, "yesterday"));
}

TEST_F(UpdateCheckDecision, SameVersionsButNewerServerDateDownloads) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 210000));
    EXPECT_TRUE(Downloads(serverTime - std::chrono::minutes(1), kServerDate));
}

TEST_F(UpdateCheckDecision, StagedBuildOfTheInstalledLengthIsDownloadedAgain) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 250000));
    EXPECT_TRUE(Downloads(serverTime, kServerDate));
}

TEST_F(UpdateCheckDecision, MissingStagedBuildCountsAsOneMinuteOlder) {
    Offer(250000);
    world.network.Answer(Get(kNewBuild), SilentReply());
    world.user.Answer("The file does not exist.");
    RunCheck(5000);
    EXPECT_EQ(Window().check.ageGap, 1);
    EXPECT_TRUE(Requested(Get(kNewBuild)));
}

}  // namespace
}  // namespace swiftpatch
