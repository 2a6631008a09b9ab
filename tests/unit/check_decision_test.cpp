#include "unit/check_support.h"

namespace swiftpatch {
namespace {

/// A staged build that can be installed at once.
CheckFacts ReadyFacts() {
    CheckFacts facts;
    facts.serverSize = 250000;
    facts.stagedDate = MakeDateTime({2026, 3, 10, 10, 0, 0});
    facts.ageGap = 0;
    facts.stagedLength = 250000;
    facts.installedLength = 210000;
    facts.stagedProductVersion = "3.00.12.05";
    facts.installedProductVersion = "3.00.11.00";
    return facts;
}

TEST(UpdateDecision, StagedBuildOfTheServersSizeAndAgeIsReadyToInstall) {
    EXPECT_EQ(Decide(ReadyFacts()), CheckOutcome::kReadyToInstall);
}

TEST(UpdateDecision, SameVersionsAndNothingNewerIsTheLatestVersion) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = facts.stagedProductVersion;
    EXPECT_EQ(Decide(facts), CheckOutcome::kLatestVersion);
}

TEST(UpdateDecision, SameVersionsButNewerServerDownloads) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = facts.stagedProductVersion;
    facts.ageGap = 1;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(UpdateDecision, VersionsThatDifferInCaseOnlyDiffer) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = "3.00.12.05a";
    facts.stagedProductVersion = "3.00.12.05A";
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
}

TEST(UpdateDecision, EqualDatesNeedNoDownload) {
    CheckFacts facts = ReadyFacts();
    EXPECT_FALSE(facts.DownloadNeeded());
    facts.ageGap = 1;
    EXPECT_TRUE(facts.DownloadNeeded());
    facts.ageGap = -1;
    EXPECT_FALSE(facts.DownloadNeeded());
}

TEST(UpdateDecision, MissingStagedBuildNeedsADownload) {
    CheckFacts facts = ReadyFacts();
    facts.stagedDate.reset();
    EXPECT_TRUE(facts.DownloadNeeded());
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(UpdateDecision, StagedBuildAsLongAsTheInstalledProgramIsDownloadedAgain) {
    CheckFacts facts = ReadyFacts();
    facts.installedLength = facts.stagedLength;
    EXPECT_EQ(facts.SizeGap(), 0);
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(UpdateDecision, SizeGapIsInstalledLessStaged) {
    CheckFacts facts = ReadyFacts();
    EXPECT_EQ(facts.SizeGap(), -40000);
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
    facts.installedLength = 250001;
    EXPECT_EQ(facts.SizeGap(), 1);
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
}

TEST(UpdateDecision, StagedBuildOfAnotherSizeThanTheServersIsDownloadedAgain) {
    CheckFacts facts = ReadyFacts();
    facts.stagedLength = 249999;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(UpdateDecision, EmptyStagedBuildIsNeverReady) {
    CheckFacts facts = ReadyFacts();
    facts.stagedLength = 0;
    facts.serverSize = 0;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

class UpdateDecisionOfARun : public CheckTest {
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

TEST_F(UpdateDecisionOfARun, ServerCopyLaterInTheSameMinuteNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime, "Tue, 10 Mar 2026 10:00:59 GMT"));
}

TEST_F(UpdateDecisionOfARun, ServerCopyEarlierInTheSameMinuteNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime + std::chrono::seconds(59), kServerDate));
}

TEST_F(UpdateDecisionOfARun, OneSecondAcrossAMinuteBoundaryIsADownload) {
    EXPECT_TRUE(Downloads(serverTime - std::chrono::seconds(1), kServerDate));
}

TEST_F(UpdateDecisionOfARun, OlderServerCopyNeedsNoDownload) {
    EXPECT_FALSE(Downloads(serverTime + std::chrono::minutes(1), kServerDate));
}

TEST_F(UpdateDecisionOfARun, ServerDateIsMovedIntoLocalTime) {
    world.utcOffsetMinutes = 120;
    EXPECT_TRUE(Downloads(serverTime + std::chrono::minutes(119), kServerDate));
    EXPECT_EQ(Window().check.ageGap, 1);
}

TEST_F(UpdateDecisionOfARun, StagedBuildOfTheMovedDateNeedsNoDownload) {
    world.utcOffsetMinutes = -90;
    EXPECT_FALSE(Downloads(serverTime - std::chrono::minutes(90), kServerDate));
}

TEST_F(UpdateDecisionOfARun, UnknownServerDateCountsAsOld) {
    EXPECT_FALSE(Downloads(serverTime, "yesterday"));
}

TEST_F(UpdateDecisionOfARun, SameVersionsButNewerServerDateDownloads) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 210000));
    EXPECT_TRUE(Downloads(serverTime - std::chrono::minutes(1), kServerDate));
}

TEST_F(UpdateDecisionOfARun, StagedBuildOfTheInstalledLengthIsDownloadedAgain) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 250000));
    EXPECT_TRUE(Downloads(serverTime, kServerDate));
}

TEST_F(UpdateDecisionOfARun, MissingStagedBuildCountsAsOneMinuteOlder) {
    Offer(250000);
    world.network.Answer(Get(kNewBuild), SilentReply());
    world.user.Answer("The file does not exist.");
    RunCheck(5000);
    EXPECT_EQ(Window().check.ageGap, 1);
    EXPECT_TRUE(Requested(Get(kNewBuild)));
}

}  // namespace
}  // namespace swiftpatch
