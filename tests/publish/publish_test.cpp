#include <gmock/gmock.h>

#include <chrono>

#include "publish/published_folder.h"
#include "publish/system.h"
#include "signing/signature_file.h"
#include "support/minisign_signer.h"

namespace publish {
namespace {

namespace fs = std::filesystem;
using publish_check::Version;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class PublishTest : public PublishedFolder {};

TEST_F(PublishTest, FirstBuildComesWithTheAnimation) {
    EXPECT_EQ(Publish(kNew), 0) << output;
    EXPECT_THAT(Names(), ElementsAre("filecopy.avi", "tolvex30.exe"));
    EXPECT_EQ(Published(), BuildOf(kNew));
    EXPECT_THAT(output, HasSubstr("3.0.12.5 is published."));
    EXPECT_THAT(output, HasSubstr("It can be played."));
}

TEST_F(PublishTest, AnimationThatIsThereStays) {
    Write("filecopy.avi", std::string(2000, 'a'));
    EXPECT_EQ(Publish(kNew), 0) << output;
    EXPECT_EQ(Read("filecopy.avi"), std::string(2000, 'a'));
}

TEST_F(PublishTest, BuildBeforeIsKeptUnderItsVersionWithItsDate) {
    ASSERT_EQ(Publish(kOld), 0) << output;
    const auto date = fs::last_write_time(folder / "tolvex30.exe");
    ASSERT_EQ(Publish(kNew), 0) << output;
    EXPECT_THAT(Names(), ElementsAre("filecopy.avi", "previous", "previous/3.0.11.0",
                                     "previous/3.0.11.0/tolvex30.exe", "tolvex30.exe"));
    EXPECT_EQ(Read("previous/3.0.11.0/tolvex30.exe"), BuildOf(kOld));
    EXPECT_EQ(fs::last_write_time(folder / "previous/3.0.11.0/tolvex30.exe"), date);
}

TEST_F(PublishTest, BuildGetsTheTimeOfItsPublication) {
    const auto before = fs::file_time_type::clock::now() - std::chrono::seconds(2);
    ASSERT_EQ(Publish(kNew), 0) << output;
    EXPECT_GT(fs::last_write_time(folder / "tolvex30.exe"), before);
}

TEST_F(PublishTest, BuildCanBeReadByTheWebServer) {
    const fs::path build = MakeBuild(kNew);
    fs::permissions(build, fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_EQ(Run({folder.string(), build.string()}), 0) << output;
    EXPECT_NE(fs::status(folder / "tolvex30.exe").permissions() & fs::perms::others_read,
              fs::perms::none);
}

TEST_F(PublishTest, OlderBuildIsRefusedAndTheFolderStaysAsItWas) {
    ASSERT_EQ(Publish(kNew), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kOld), 1) << output;
    EXPECT_THAT(output, HasSubstr("FAULT    It is older than the build that is there now, 3.0.12"));
    EXPECT_THAT(output, HasSubstr("NOT PUBLISHED"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(PublishTest, OtherBuildOfTheSameVersionIsRefused) {
    ASSERT_EQ(Publish(kNew), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Run({folder.string(), MakeBuild(kNew, 220000).string()}), 1) << output;
    EXPECT_THAT(output,
                HasSubstr("FAULT    Another build with its version, 3.0.12.5, is or was there"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(PublishTest, SameBuildAgainChangesNothing) {
    ASSERT_EQ(Publish(kNew), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew), 0) << output;
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(PublishTest, BuildThatIsHiddenFromAKeptVersionIsRefused) {
    ASSERT_EQ(Publish({2, 9, 0, 0}), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish({3, 0, 0, 0}), 1) << output;
    EXPECT_THAT(output, HasSubstr("WARNING: the published build is newer, but updaters compare"));
    EXPECT_EQ(Snapshot(), before);
    ASSERT_EQ(Publish({3, 9, 1, 0}), 0) << output;
    EXPECT_EQ(Publish({4, 0, 0, 0}), 1) << output;
    EXPECT_THAT(output, HasSubstr("An updater beside version 2.09.00.00"));
    EXPECT_THAT(output, HasSubstr("An updater beside version 3.09.01.00"));
}

TEST_F(PublishTest, NamedVersionsAreAskedAboutInPlaceOfTheKeptOnes) {
    ASSERT_EQ(Publish({2, 9, 0, 0}), 0) << output;
    EXPECT_EQ(Publish({3, 0, 0, 0}, {"--installed", "2.0"}), 0) << output;
    EXPECT_THAT(output, Not(HasSubstr("beside version 2.09")));
}

TEST_F(PublishTest, BuildWithoutAVersionIsRefused) {
    const fs::path build = work / "plain.exe";
    WriteBytes(build, std::string(210000, 'x'));
    EXPECT_EQ(Run({folder.string(), build.string()}), 1) << output;
    EXPECT_THAT(output, HasSubstr("It carries no version block"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(PublishTest, SmallBuildNeedsALicence) {
    const std::string build = MakeBuild(kNew, 90000).string();
    EXPECT_EQ(Run({folder.string(), build}), 1) << output;
    EXPECT_THAT(Names(), ElementsAre());
    Write("LICENSE.TXT", std::string(4000, 'l'));
    EXPECT_EQ(Run({folder.string(), build}), 0) << output;
}

TEST_F(PublishTest, WhatIsNotThereIsSaidSo) {
    EXPECT_EQ(Run({(work / "none").string(), MakeBuild(kNew).string()}), 1);
    EXPECT_THAT(output, HasSubstr("there is no folder"));
    EXPECT_EQ(Run({folder.string(), (work / "none.exe").string()}), 1);
    EXPECT_THAT(output, HasSubstr("there is no file"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(PublishTest, DryRunSaysTheSameAndChangesNothing) {
    ASSERT_EQ(Publish(kOld), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew, {"--dry-run"}), 0) << output;
    EXPECT_THAT(output, HasSubstr("It fetches 3.00.12.05 and offers to install it."));
    EXPECT_THAT(output, HasSubstr("3.0.12.5 can be published; nothing was changed."));
    EXPECT_EQ(Publish({3, 0, 10, 0}, {"--dry-run"}), 1) << output;
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(PublishTest, SecondOneAtTheSameTimeIsKeptOut) {
    const FolderLock first(folder);
    EXPECT_EQ(Publish(kNew), 1);
    EXPECT_THAT(output, HasSubstr("another publish is at work in this folder"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(PublishTest, LeftoversOfAKillAreClearedAway) {
    fs::create_directories(folder / ".publish/publish-1/new");
    Write(".publish/publish-1/new/tolvex30.exe", "half");
    EXPECT_EQ(Publish(kNew), 0) << output;
    EXPECT_THAT(Names(), ElementsAre("filecopy.avi", "tolvex30.exe"));
}

TEST_F(PublishTest, WorkshopOfSomebodyElseIsLeftAlone) {
    const fs::path outside = work / "outside";
    fs::create_directory(outside);
    WriteBytes(outside / "publish-1", "precious");
    fs::create_directory_symlink(outside, folder / ".publish");
    EXPECT_EQ(Publish(kNew), 1) << output;
    EXPECT_THAT(output, HasSubstr(".publish is no folder"));
    EXPECT_EQ(ReadBytes(outside / "publish-1"), "precious");
    fs::remove(folder / ".publish");
    fs::create_directory(folder / ".publish");
    Write(".publish/notes.txt", "mine");
    EXPECT_EQ(Publish(kNew), 0) << output;
    EXPECT_EQ(Read(".publish/notes.txt"), "mine");
}

TEST_F(PublishTest, BuildOfTheFutureIsNotFollowedByOneOfToday) {
    ASSERT_EQ(Publish(kOld), 0) << output;
    fs::last_write_time(folder / "tolvex30.exe",
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew), 1) << output;
    EXPECT_THAT(output, HasSubstr("FAULT    The build that is there has a later date than the"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(PublishTest, VersionThatWasPublishedBeforeIsNotUsedAgain) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Run({folder.string(), MakeBuild(kNew, 220000).string()}), 1);
    EXPECT_THAT(output, HasSubstr("FAULT    Another build with its version, 3.0.12.5, is or was"));
    EXPECT_EQ(Publish(kNew), 0) << output;
}

TEST_F(PublishTest, KeptBuildsAreNoFolderToPublishTo) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    EXPECT_EQ(Run({(folder / "previous/3.0.11.0").string(), MakeBuild(kNext).string()}), 1);
    EXPECT_THAT(output, HasSubstr("one of those in which earlier builds are kept"));
}

TEST_F(PublishTest, NobodyButTheOwnerMayWriteAPublishedBuild) {
    const fs::path build = MakeBuild(kNew);
    fs::permissions(build, fs::perms::all | fs::perms::set_uid);
    ASSERT_EQ(Run({folder.string(), build.string()}), 0) << output;
    EXPECT_EQ(fs::status(folder / "tolvex30.exe").permissions(), fs::perms{0644});
}

TEST_F(PublishTest, ReportForMachinesIsOneObject) {
    ASSERT_EQ(Publish(kOld), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--json"}), 0) << output;
    EXPECT_THAT(
        output,
        testing::StartsWith(
            R"({"published":true,"publishable":true,"dryRun":false,)"
            R"("version":"3.0.12.5","problem":"","left":"as-it-was","steps":[{"kind":"kept",)"
            R"("text":"previous/3.0.11.0"},{"kind":"placed",)"
            R"("text":"tolvex30.exe"},{"kind":"checked")"));
    EXPECT_THAT(output, testing::EndsWith("}]}}\n"));
    EXPECT_EQ(Publish(kOld, {"--json"}), 1);
    EXPECT_THAT(output, HasSubstr(R"("published":false,"publishable":false)"));
}

TEST_F(PublishTest, CommandLineThatCannotBeReadEndsWith2) {
    const std::string build = MakeBuild(kNew).string();
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {},
             {folder.string()},
             {folder.string(), build, "more"},
             {folder.string(), build, "--what"},
             {folder.string(), build, "--key"},
             {folder.string(), build, "--upload", "true"},
             {folder.string(), build, "--upload", "cp '{file}' srv"},
             {folder.string(), build, "--to", "3.0"},
             {folder.string(), build, "--key", "/none.key"},
             {folder.string(), build, "--installed", "3.x"},
             {folder.string(), build, "--roll-back"}}) {
        EXPECT_EQ(Run(arguments), 2) << testing::PrintToString(arguments);
        EXPECT_THAT(output, HasSubstr("usage: publish FOLDER BUILD"));
    }
    EXPECT_THAT(Names(), ElementsAre());
    EXPECT_EQ(Run({"--help"}), 0);
}

class RollBack : public PublishedFolder {};

TEST_F(RollBack, BringsTheNextLowerVersionAndKeepsTheHigherOne) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Publish(kNext), 0);
    const auto published = fs::last_write_time(folder / "tolvex30.exe");
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kNew));
    EXPECT_GE(fs::last_write_time(folder / "tolvex30.exe"), published);
    EXPECT_EQ(Read("previous/3.0.13.0/tolvex30.exe"), BuildOf(kNext));
    EXPECT_THAT(output, HasSubstr("Its next run offers to install the published build, which is "
                                  "OLDER"));
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kOld));
}

TEST_F(RollBack, SaysWhoFollowsAndWhoDoesNot) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_THAT(output, testing::EndsWith("3.0.11.0 is published.\nMachines with 3.00.12.05 are "
                                          "offered it in their second run from now.\n"));
}

TEST_F(RollBack, GoesPastABuildThatWasRolledBackFrom) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Run({"--roll-back", folder.string()}), 0);
    ASSERT_EQ(Publish(kNext), 0);
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kOld));
    EXPECT_THAT(output, HasSubstr("Machines with 3.00.12.05"));
    EXPECT_THAT(output, HasSubstr("Machines with 3.00.13.00"));
}

TEST_F(RollBack, BuildThatWasPublishedAgainIsNoLongerWithdrawn) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Run({"--roll-back", folder.string()}), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Publish(kNext), 0);
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kNew));
}

TEST_F(RollBack, NamedVersionComesBackWhateverLiesBetween) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Publish(kNext), 0);
    fs::resize_file(folder / "previous/3.0.12.5/tolvex30.exe", 100000);
    const auto before = Snapshot();
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 1);
    EXPECT_THAT(output,
                HasSubstr("is not of that version, or damaged: name another one with --to"));
    EXPECT_EQ(Snapshot(), before);
    EXPECT_EQ(Run({"--roll-back", folder.string(), "--to", "3.0.11.0"}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kOld));
    EXPECT_EQ(Run({"--roll-back", folder.string(), "--to", "2.0"}), 1);
    EXPECT_THAT(output, HasSubstr("no build of version 2.0.0.0 was kept"));
}

TEST_F(RollBack, WithoutALowerVersionEndsWith1) {
    ASSERT_EQ(Publish(kOld), 0);
    const auto before = Snapshot();
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 1);
    EXPECT_THAT(output, HasSubstr("no build with a lower version was kept"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(RollBack, IsNotStoppedByAVersionThatItIsHiddenFrom) {
    ASSERT_EQ(Publish({2, 9, 0, 0}), 0);
    ASSERT_EQ(Publish({3, 0, 0, 0}, {"--installed", "2.0"}), 0);
    ASSERT_EQ(Publish({3, 1, 0, 0}, {"--installed", "2.0"}), 0);
    EXPECT_EQ(Run({"--roll-back", folder.string()}), 0) << output;
    EXPECT_EQ(Published(), BuildOf({3, 0, 0, 0}));
}

TEST_F(RollBack, HigherVersionThanTheBadOneIsPublishedAfterwards) {
    ASSERT_EQ(Publish(kOld), 0);
    ASSERT_EQ(Publish(kNew), 0);
    ASSERT_EQ(Run({"--roll-back", folder.string()}), 0);
    EXPECT_EQ(Publish(kNext), 0) << output;
    EXPECT_THAT(output, HasSubstr("An updater beside version 3.00.12.05\n  ok       It fetches "
                                  "3.00.13.00 and offers to install it."));
}

class SignedPublish : public PublishedFolder {
protected:
    std::string signatures() const { return Read("tolvex30.exe.minisig"); }
    bool FitsPublished() const { return Fits(signatures(), Published(), publicKeys.at("work")); }

    std::string work_ = MakeKey("work");
};

TEST_F(SignedPublish, KeyBesideTheSecretOneChecksTheSignature) {
    EXPECT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    EXPECT_TRUE(FitsPublished());
    EXPECT_THAT(Names(), ElementsAre("tolvex30.exe", "tolvex30.exe.minisig"));
    EXPECT_THAT(output, HasSubstr("has signed this build."));
}

TEST_F(SignedPublish, SignatureOfTheBuildBeforeStandsBehindTheNewOne) {
    ASSERT_EQ(Publish(kOld, {"--key", work_}), 0) << output;
    const std::string before = signatures();
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    EXPECT_TRUE(FitsPublished());
    EXPECT_THAT(signatures(), testing::EndsWith(before));
    EXPECT_EQ(swiftpatch::ParseSignatureFile(signatures()).size(), 2U);
    EXPECT_EQ(Read("previous/3.0.11.0/tolvex30.exe.minisig"), before);
    ASSERT_EQ(Publish(kNext, {"--key", work_}), 0) << output;
    EXPECT_EQ(swiftpatch::ParseSignatureFile(signatures()).size(), 2U);
    EXPECT_FALSE(Fits(signatures(), BuildOf(kOld), publicKeys.at("work")));
}

TEST_F(SignedPublish, SignatureBesideTheBuildIsTaken) {
    const fs::path build = MakeBuild(kNew);
    WriteBytes(build.string() + ".minisig",
               minisign.Sign("work", "tolvex30.exe", BuildOf(kNew), ""));
    EXPECT_EQ(Run({folder.string(), build.string(), "--keys", publicKeys["work"]}), 0) << output;
    EXPECT_TRUE(FitsPublished());
}

TEST_F(SignedPublish, SignatureOfAnotherBuildIsRefused) {
    const fs::path build = MakeBuild(kNew);
    WriteBytes(build.string() + ".minisig",
               minisign.Sign("work", "tolvex30.exe", BuildOf(kOld), ""));
    EXPECT_EQ(Run({folder.string(), build.string(), "--keys", publicKeys["work"]}), 1);
    EXPECT_THAT(output, HasSubstr("FAULT    It is the signature of another build"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(SignedPublish, KeyThatNoUpdaterHasIsRefused) {
    MakeKey("other");
    EXPECT_EQ(Publish(kNew, {"--key", work_, "--keys", publicKeys["other"]}), 1);
    EXPECT_THAT(output, HasSubstr("FAULT    It is signed with another key"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(SignedPublish, SignatureBesideTheBuildNeedsAKeyToBeCheckedWith) {
    const fs::path build = MakeBuild(kNew);
    WriteBytes(build.string() + ".minisig", "four lines");
    EXPECT_EQ(Run({folder.string(), build.string()}), 1);
    EXPECT_THAT(output,
                HasSubstr("there is a signature beside the build: name the updaters' keys"));
    EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(SignedPublish, KeyThatIsLeftOutIsAFaultUnlessTheKeysAreNamed) {
    const std::string next = MakeKey("next");
    ASSERT_EQ(Publish(kOld, {"--key", work_}), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew, {"--key", next}), 1);
    EXPECT_THAT(output, HasSubstr("signed with a key that has not signed this one"));
    EXPECT_EQ(Snapshot(), before);
    EXPECT_EQ(Publish(kNew, {"--key", next, "--keys", publicKeys["next"]}), 0) << output;
    EXPECT_TRUE(Fits(signatures(), BuildOf(kOld), publicKeys["work"]))
        << "which is in service until the very last moment";
    EXPECT_EQ(Publish(kNext, {"--key", next}), 0) << output;
    EXPECT_FALSE(Fits(signatures(), BuildOf(kOld), publicKeys["work"]));
}

TEST_F(SignedPublish, MoreSignaturesThanUpdatersReadAreRefused) {
    const fs::path build = MakeBuild(kNew);
    std::string many;
    for (int i = 0; i < 12; ++i) {
        many += minisign.Sign("work", "tolvex30.exe", BuildOf(kNew),
                              "file:tolvex30.exe\tnumber:" + std::to_string(i));
    }
    const std::string one = minisign.Sign("work", "tolvex30.exe", BuildOf(kOld), "");
    WriteBytes(build.string() + ".minisig", many);
    WriteBytes(MakeBuild(kOld).string() + ".minisig", one);
    const std::vector<std::string> keys{"--keys", publicKeys["work"]};
    ASSERT_EQ(Publish(kOld, keys), 0) << output;
    const auto before = Snapshot();
    WriteBytes(build.string() + ".minisig", many + one + many.substr(0, many.size() / 12));
    ASSERT_EQ(Publish(kNew, keys), 0) << output;
    WriteBytes(MakeBuild(kNext).string() + ".minisig",
               minisign.Sign("work", "tolvex30.exe", BuildOf(kNext), "") +
                   minisign.Sign("work", "tolvex30.exe", BuildOf(kNext), "file:tolvex30.exe"));
    EXPECT_EQ(Publish(kNext, keys), 1) << output;
    EXPECT_THAT(output, HasSubstr("updaters read 13 and 4096"));
    EXPECT_EQ(Published(), BuildOf(kNew));
}

TEST_F(SignedPublish, KeptBuildGetsTheSignatureThatItHadLast) {
    const std::string next = MakeKey("next");
    const std::vector<std::string> keys{"--keys", publicKeys["work"], publicKeys["next"]};
    const auto with = [&keys](std::vector<std::string> more) {
        more.insert(more.end(), keys.begin(), keys.end());
        return more;
    };
    ASSERT_EQ(Publish(kOld, with({"--key", work_})), 0) << output;
    ASSERT_EQ(Publish(kNew, with({"--key", work_})), 0) << output;
    ASSERT_EQ(Run(with({"--roll-back", folder.string()})), 0) << output;
    ASSERT_EQ(Publish(kOld, with({"--key", next})), 0) << output;
    ASSERT_EQ(Publish(kNext, with({"--key", work_})), 0) << output;
    EXPECT_TRUE(
        Fits(Read("previous/3.0.11.0/tolvex30.exe.minisig"), BuildOf(kOld), publicKeys["next"]));
}

TEST_F(SignedPublish, UnsignedBuildInPlaceOfASignedOneIsRefused) {
    ASSERT_EQ(Publish(kOld, {"--key", work_}), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew), 1);
    EXPECT_THAT(output, HasSubstr("the build that is there is signed"));
    EXPECT_EQ(Publish(kNew, {"--keys", publicKeys["work"]}), 1);
    EXPECT_THAT(output, HasSubstr("the updaters want a signed build"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(SignedPublish, TwoKeysSignOneBuild) {
    const std::string next = MakeKey("next");
    EXPECT_EQ(Publish(kNew, {"--key", work_, "--key", next}), 0) << output;
    EXPECT_TRUE(FitsPublished());
    EXPECT_TRUE(Fits(signatures(), Published(), publicKeys["next"]));
}

TEST_F(SignedPublish, SecondKeyIsAddedWithoutANewDate) {
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    const auto date = fs::last_write_time(folder / "tolvex30.exe");
    const std::string next = MakeKey("next");
    EXPECT_EQ(Publish(kNew, {"--key", next, "--keys", publicKeys["work"], publicKeys["next"]}), 0)
        << output;
    EXPECT_TRUE(FitsPublished());
    EXPECT_TRUE(Fits(signatures(), Published(), publicKeys["next"]));
    EXPECT_EQ(fs::last_write_time(folder / "tolvex30.exe"), date);
}

TEST_F(SignedPublish, SigningOnceMoreReplacesTheSignatureOfTheSameKey) {
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    EXPECT_EQ(swiftpatch::ParseSignatureFile(signatures()).size(), 1U);
    EXPECT_TRUE(FitsPublished());
}

TEST_F(SignedPublish, RollBackTakesTheKeptSignatureAndSaysWhoStays) {
    ASSERT_EQ(Publish(kOld, {"--key", work_}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    EXPECT_EQ(Run({"--roll-back", folder.string(), "--keys", publicKeys["work"]}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kOld));
    EXPECT_TRUE(FitsPublished());
    EXPECT_TRUE(Fits(signatures(), BuildOf(kNew), publicKeys["work"]));
    EXPECT_THAT(output, HasSubstr("The published build is OLDER than the installed one, and where "
                                  "builds have to be signed that is never offered."));
}

TEST_F(SignedPublish, RollBackToABuildFromBeforeSigningNeedsAKey) {
    ASSERT_EQ(Publish(kOld), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", work_}), 0) << output;
    EXPECT_EQ(Run({"--roll-back", folder.string(), "--keys", publicKeys["work"]}), 1);
    EXPECT_THAT(output, HasSubstr("the updaters want a signed build"));
    EXPECT_EQ(Run({"--roll-back", folder.string(), "--key", work_}), 0) << output;
    EXPECT_EQ(Published(), BuildOf(kOld));
    EXPECT_TRUE(FitsPublished());
}

TEST_F(SignedPublish, KeyThatCannotSignChangesNothing) {
    ASSERT_EQ(Publish(kOld, {"--key", work_}), 0) << output;
    const auto before = Snapshot();
    WriteBytes(work / "broken.key", "no key\n");
    EXPECT_EQ(
        Publish(kNew, {"--key", (work / "broken.key").string(), "--keys", publicKeys["work"]}), 1);
    EXPECT_THAT(output, HasSubstr("minisign has not signed with"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(SignedPublish, DryRunSignsATrialOnly) {
    EXPECT_EQ(Publish(kNew, {"--key", work_, "--dry-run"}), 0) << output;
    EXPECT_THAT(output, HasSubstr("has signed this build."));
    EXPECT_THAT(Names(), ElementsAre());
}

}  // namespace
}  // namespace publish
