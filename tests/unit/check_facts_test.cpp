#include "mainwindow/check_facts.h"

#include <gtest/gtest.h>

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

TEST(CheckFactsDecide, StagedBuildOfTheServersSizeAndAgeIsReadyToInstall) {
    EXPECT_EQ(Decide(ReadyFacts()), CheckOutcome::kReadyToInstall);
}

TEST(CheckFactsDecide, SameVersionsAndNothingNewerIsTheLatestVersion) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = facts.stagedProductVersion;
    EXPECT_EQ(Decide(facts), CheckOutcome::kLatestVersion);
}

TEST(CheckFactsDecide, SameVersionsButNewerServerDownloads) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = facts.stagedProductVersion;
    facts.ageGap = 1;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(CheckFactsDecide, VersionsThatDifferInCaseOnlyDiffer) {
    CheckFacts facts = ReadyFacts();
    facts.installedProductVersion = "3.00.12.05a";
    facts.stagedProductVersion = "3.00.12.05A";
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
}

TEST(CheckFactsDecide, EqualDatesNeedNoDownload) {
    CheckFacts facts = ReadyFacts();
    EXPECT_FALSE(facts.DownloadNeeded());
    facts.ageGap = 1;
    EXPECT_TRUE(facts.DownloadNeeded());
    facts.ageGap = -1;
    EXPECT_FALSE(facts.DownloadNeeded());
}

TEST(CheckFactsDecide, MissingStagedBuildNeedsADownload) {
    CheckFacts facts = ReadyFacts();
    facts.stagedDate.reset();
    EXPECT_TRUE(facts.DownloadNeeded());
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(CheckFactsDecide, StagedBuildAsLongAsTheInstalledProgramIsDownloadedAgain) {
    CheckFacts facts = ReadyFacts();
    facts.installedLength = facts.stagedLength;
    EXPECT_EQ(facts.SizeGap(), 0);
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(CheckFactsDecide, SizeGapIsInstalledLessStaged) {
    CheckFacts facts = ReadyFacts();
    EXPECT_EQ(facts.SizeGap(), -40000);
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
    facts.installedLength = 250001;
    EXPECT_EQ(facts.SizeGap(), 1);
    EXPECT_EQ(Decide(facts), CheckOutcome::kReadyToInstall);
}

TEST(CheckFactsDecide, StagedBuildOfAnotherSizeThanTheServersIsDownloadedAgain) {
    CheckFacts facts = ReadyFacts();
    facts.stagedLength = 249999;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

TEST(CheckFactsDecide, EmptyStagedBuildIsNeverReady) {
    CheckFacts facts = ReadyFacts();
    facts.stagedLength = 0;
    facts.serverSize = 0;
    EXPECT_EQ(Decide(facts), CheckOutcome::kDownload);
}

}  // namespace
}  // namespace swiftpatch
