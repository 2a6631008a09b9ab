#include <functional>

#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/signed_builds_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kBackup = "tolvex.3.00.11.00.exe";

class InstallSigned : public SignedTest {
protected:
    /// A machine on which a signed build has been downloaded and is on offer.
    InstallSigned() {
        ExpectOffered(newBuild);
        world.user.onAnyBox = nullptr;
        world.trace.Clear();
    }

    headless::File& Staged() { return *world.disk.Find(world.PathOf("tolvex30.exe")); }

    void Press() { world.Click(Window(), Window().cmdInstall); }

    /// The box comes up, the program stays what it was, and nothing is started.
    void ExpectRefusal() {
        world.user.Answer(
            "Install Error!\r\n\r\n"
            "The update file 'tolvex30.exe' is not the one that the maker of q-tolvex signed.\r\n"
            "tolvex.exe not updated.");
        Press();
        EXPECT_TRUE(Content("tolvex.exe") == oldBuild);
        EXPECT_FALSE(Window().cmdInstall.Visible);
        EXPECT_TRUE(Window().cmdClose.Enabled);
        EXPECT_TRUE(Window().chkRunTolvex.Value == CheckState::kUnchecked);
        EXPECT_EQ(Content(kUnfinishedCopy), "(no such file)");
    }
};

TEST_F(InstallSigned, BacksUpAndReplaces) {
    world.user.Answer("A backup file");
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == newBuild);
    EXPECT_TRUE(Content(kBackup) == oldBuild);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You have installed the latest version of q-tolvex.");
    EXPECT_EQ(Staged().locks, 0);
}

TEST_F(InstallSigned, BuildThatWasExchangedSinceItsOfferIsRefusedBeforeAnyBackup) {
    Staged().bytes = headless::Build("9.9.9.9", 250000);
    ExpectRefusal();
    EXPECT_EQ(Content(kBackup), "(no such file)");
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

TEST_F(InstallSigned, BuildThatIsLongerByAByteIsRefused) {
    Staged().bytes += 'x';
    ExpectRefusal();
}

TEST_F(InstallSigned, BuildThatSomebodyMayWriteToIsRefused) {
    Staged().openUntil = 10000000;
    ExpectRefusal();
    EXPECT_TRUE(Content(kBackup) == "(no such file)");
}

TEST_F(InstallSigned, BuildThatCannotBeReadIsRefusedAndNoErrorOfTheStage) {
    world.disk.Fail("Read", error_number::kDeviceIoError, 2);
    ExpectRefusal();
}

TEST_F(InstallSigned, BuildThatCannotBeOpenedIsRefusedAndStaysWhileItIsHeld) {
    Staged().held = true;
    ExpectRefusal();
    EXPECT_TRUE(Content("tolvex30.exe") == newBuild);
}

TEST_F(InstallSigned, BuildCannotBeExchangedOnceItWasChecked) {
    bool exchanged = true;
    world.user.Answer("A backup file", MsgBoxAnswer::kOk, [&] {
        exchanged = world.disk.ChangeFromOutside(world.PathOf("tolvex30.exe"), "forged");
    });
    Press();
    EXPECT_FALSE(exchanged);
    EXPECT_TRUE(Content("tolvex.exe") == newBuild);
    EXPECT_TRUE(world.disk.ChangeFromOutside(world.PathOf("tolvex30.exe"), "free again"));
}

TEST_F(InstallSigned, CopyThatDiffersIsNotPutInPlace) {
    world.user.Answer("A backup file");
    world.withEachCopy = [&](headless::File& copy) {
        if (copy.bytes == newBuild) {
            copy.bytes.back() = 'y';
        }
    };
    ExpectRefusal();
    EXPECT_TRUE(Content(kBackup) == oldBuild);
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

TEST_F(InstallSigned, CopyThatCannotBeReadIsNotPutInPlace) {
    world.user.Answer("A backup file");
    const auto reads = world.trace.StartingWith("Read").size();
    EXPECT_EQ(reads, 0U);
    // The build has four blocks and its end; what is read after them is the copy.
    world.disk.Fail("Read", error_number::kDeviceIoError, 6);
    ExpectRefusal();
}

TEST_F(InstallSigned, BuildThatIsOlderThanWhatWasInstalledMeanwhileIsRefused) {
    world.AddFile("tolvex.exe", headless::Build("3.0.13.0", 220000));
    world.user.Answer("Install Error!");
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == headless::Build("3.0.13.0", 220000));
    EXPECT_FALSE(Window().cmdInstall.Visible);
}

TEST_F(InstallSigned, FullDiskIsReportedAsWithoutASignature) {
    world.user.Answer("A backup file");
    world.disk.Fail("FileCopy", error_number::kDiskFull, 2);
    world.user.Answer("tolvex30.exe to tolvex.exe File Copy Error: 61");
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == oldBuild);
}

TEST_F(InstallSigned, PressedAgainWhileItIsCheckedInstallsOnce) {
    world.user.Answer("A backup file");
    world.When([this] { return world.trace.Contains("Read C:\\Tolvex\\tolvex30.exe"); },
               [this] { Press(); });
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == newBuild);
    EXPECT_TRUE(Content(kBackup) == oldBuild);
    EXPECT_EQ(Staged().locks, 0);
}

TEST_F(InstallSigned, PressedAgainWhileAnExchangedBuildIsCheckedIsRefusedOnceAndDeletesIt) {
    Staged().bytes = headless::Build("9.9.9.9", 250000);
    world.When([this] { return world.trace.Contains("Read C:\\Tolvex\\tolvex30.exe"); },
               [this] { Press(); });
    ExpectRefusal();
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

TEST_F(InstallSigned, CannotBePressedAgainOnceItIsRefused) {
    Staged().bytes = headless::Build("9.9.9.9", 250000);
    bool pumped = false;
    world.When([this] { return world.trace.Contains("Kill C:\\Tolvex\\tolvex30.exe"); },
               [&] {
                   pumped = true;
                   EXPECT_FALSE(Window().cmdInstall.Visible);
               });
    ExpectRefusal();
    EXPECT_TRUE(pumped);
}

TEST_F(InstallSigned, ClosedWhileItIsCheckedEndsTheRunWithTheOldProgram) {
    Window().chkRunTolvex.Value = CheckState::kUnchecked;
    world.When([this] { return world.trace.Contains("Read C:\\Tolvex\\tolvex30.exe"); },
               [this] { world.Close(Window()); });
    world.Click(Window(), Window().cmdInstall);
    EXPECT_TRUE(world.RunOver());
    EXPECT_TRUE(Content("tolvex.exe") == oldBuild);
    EXPECT_EQ(Staged().locks, 0);
}

class InstallSignedAtOnce : public SignedTest {};

TEST_F(InstallSignedAtOnce, StagedBuildIsCheckedAndInstalled) {
    shared.InstallAtOnce = true;
    world.AddFile("tolvex30.exe", newBuild, AddMinutes(serverTime, 60));
    world.user.Answer("A backup file");
    RunCheck();
    EXPECT_TRUE(Content("tolvex.exe") == newBuild);
}

}  // namespace
}  // namespace swiftpatch
