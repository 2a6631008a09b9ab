#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kNoStagedBuild =
    "No version information available for\r\n'C:\\Tolvex\\tolvex30.exe'\r\n\r\n"
    "The file does not exist.\r\n\r\nDownloading 'C:\\Tolvex\\tolvex30.exe'";
constexpr const char* kNoProgram =
    "No version information available for\r\n'C:\\Tolvex\\tolvex.exe'\r\n\r\n"
    "The file does not exist.\r\n\r\nDownloading 'C:\\Tolvex\\tolvex.exe'";
constexpr const char* kDamagedStagedBuild =
    "No version information available for\r\n'C:\\Tolvex\\tolvex30.exe'\r\n\r\n"
    "The file is probably corrupt.\r\n\r\nDeleting 'C:\\Tolvex\\tolvex30.exe'";

class UpdateCheckLocalFiles : public CheckTest {
protected:
    UpdateCheckLocalFiles() {
        Offer(250000);
        world.network.Answer(Get(kNewBuild), SilentReply());
    }
};

TEST_F(UpdateCheckLocalFiles, MissingStagedBuildIsAnnouncedAndDownloaded) {
    world.user.Answer("The file does not exist.");
    RunCheck(5000);
    EXPECT_EQ(Joined(world.trace.StartingWith("MsgBox")), Box(kNoStagedBuild));
    EXPECT_TRUE(Requested(Get(kNewBuild)));
}

TEST_F(UpdateCheckLocalFiles, MissingProgramIsAnnouncedAfterTheStagedBuild) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    world.user.Answer("tolvex30.exe");
    world.user.Answer("tolvex.exe");
    RunCheck(5000);
    EXPECT_EQ(Joined(world.trace.StartingWith("MsgBox")),
              Joined({Box(kNoStagedBuild), Box(kNoProgram)}));
    EXPECT_EQ(Window().check.installedLength, 0);
}

TEST_F(UpdateCheckLocalFiles, StagedBuildWithoutVersionBlockIsDeletedAndDownloadedAgain) {
    Stage("", 250000, serverTime);
    world.user.Answer("The file is probably corrupt.");
    RunCheck(5000);
    EXPECT_EQ(Joined(world.trace.StartingWith("MsgBox")), Box(kDamagedStagedBuild));
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
    EXPECT_TRUE(Requested(Get(kNewBuild)));
    EXPECT_TRUE(Window().txtDebug.Text.Get().starts_with("Support Information is not available"));
}

TEST_F(UpdateCheckLocalFiles, VersionsThatCannotBeReadAreEqual) {
    Stage("3.0.12.5", 250000, serverTime);
    world.machine.versionReadFails = true;
    RunCheck();
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
}

TEST_F(UpdateCheckLocalFiles, ErrorOfTheCheckIsReportedAsInternetError) {
    Stage("", 250000, serverTime);
    world.disk.Find(world.PathOf("tolvex30.exe"))->held = true;
    world.user.Answer("The file is probably corrupt.");
    world.user.Answer("Internet Error:");
    RunCheck();
    const std::vector<std::string> boxes = world.trace.StartingWith("MsgBox");
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_TRUE(boxes[1].starts_with(
        "MsgBox 64 \"SwiftPatch\" \"Internet Error: 75\\r\\n\\r\\nPath/File access error"))
        << boxes[1];
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_FALSE(Requested(Get(kNewBuild)));
    EXPECT_FALSE(world.RunOver());
}

TEST_F(UpdateCheckLocalFiles, ReadyBuildWaitsForTheButton) {
    Stage("3.0.12.5", 250000, serverTime);
    RunCheck();
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_TRUE(Window().cmdInstall.Enabled);
    EXPECT_TRUE(Window().lblTolvexVersion.Visible);
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
}

TEST_F(UpdateCheckLocalFiles, ReadyBuildIsInstalledAtOnceWhenThatIsSet) {
    shared.InstallAtOnce = true;
    Stage("3.0.12.5", 250000, serverTime);
    const std::string build = Content("tolvex30.exe");
    world.user.Answer("A backup file for your current version of tolvex was not found in");
    RunCheck();
    EXPECT_TRUE(InOrder(
        Steps(), {Set("lblStatus.Caption", "Click on Install Button."), "cmdClose.Enabled = True",
                  "EnumWindows", "FileCopy C:\\Tolvex\\tolvex30.exe -> C:\\Tolvex\\tolvex.exe"}));
    EXPECT_EQ(Content("tolvex.exe"), build);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You have installed the latest version of q-tolvex.");
}

// The error of the install has no trap of its own; the check that pressed the button has one.
TEST_F(UpdateCheckLocalFiles, ErrorOfAnInstallAtOnceIsReportedAsInternetError) {
    shared.InstallAtOnce = true;
    Stage("3.0.12.5", 250000, serverTime);
    world.disk.Fail("Kill", error_number::kPathFileAccess);
    world.user.Answer("A backup file", MsgBoxAnswer::kOk,
                      [this] { world.AddFile("tolvex30.exe", headless::Build("", 400)); });
    world.user.Answer("The file is probably corrupt.");
    world.user.Answer("Internet Error: 438");
    RunCheck();
    EXPECT_FALSE(world.RunOver());
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_TRUE(world.trace
                    .StartingWith(Set("lblAnimationMsg.Caption",
                                      "You have installed the latest version of q-tolvex."))
                    .empty());
}

TEST_F(UpdateCheckLocalFiles, LatestVersionIsNeverInstalledAtOnce) {
    shared.InstallAtOnce = true;
    Stage("3.0.11.0", 250000, serverTime);
    RunCheck();
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
    EXPECT_FALSE(Window().cmdInstall.Visible);
}

TEST_F(UpdateCheckLocalFiles, BeforeTheCheckTheInstallButtonIsThereButDisabled) {
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_FALSE(Window().cmdInstall.Enabled);
    EXPECT_FALSE(Window().cmdClose.Enabled);
    EXPECT_FALSE(Window().cmdRetry.Visible);
    EXPECT_FALSE(Window().lblTolvexVersion.Visible);
    EXPECT_FALSE(Window().lblSimulation.Visible);
    EXPECT_EQ(Window().chkRunTolvex.Value.Get(), CheckState::kChecked);
}

}  // namespace
}  // namespace swiftpatch
