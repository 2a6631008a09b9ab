#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kBackUp =
    "FileCopy C:\\Tolvex\\tolvex.exe -> C:\\Tolvex\\tolvex.3.00.11.00.exe";
constexpr const char* kReplace = "FileCopy C:\\Tolvex\\tolvex30.exe -> C:\\Tolvex\\tolvex.exe";
constexpr const char* kBackUpNotice =
    "A backup file for your current version of tolvex was not found in\r\n'C:\\Tolvex'.\r\n\r\n"
    "Making a copy of tolvex.exe as 'tolvex.3.00.11.00.exe'";

class Install : public WindowTest {
protected:
    Install() {
        world.AddFile("tolvex.exe", oldBuild);
        world.AddFile("tolvex30.exe", newBuild);
        LoadWindow();
        Window().cmdInstall.Enabled = true;
        world.trace.Clear();
    }

    std::string Press() {
        world.Click(Window(), Window().cmdInstall);
        return Joined(Steps());
    }

    /// The steps that end every install.
    static std::string Finished(const std::string& version = "3.00.12.05") {
        return Joined(
            {"cmdInstall.Visible = False",
             Set("lblTolvexVersion.Caption", "q-tolvex Version installed: " + version),
             "lblTolvexVersion.Visible = True",
             Set("lblAnimationMsg.Caption", "You have installed the latest version of q-tolvex."),
             Set("lblStatus.Caption", ""), "cmdClose.Enabled = True"});
    }

    /// A running main program that answers WM_CLOSE with `refused`.
    void RunProgram(std::int32_t refused) {
        world.desktop.push_back(
            {0x500, "q-Tolvex.exe", "q-Tolvex.exe", 0, false,
             [refused](std::uint32_t message) { return message == 0x0010 ? refused : 0; }});
    }

    const std::string oldBuild = headless::Build("3.0.11.0", 300);
    const std::string newBuild = headless::Build("3.0.12.5", 400);
    const std::string backup = "tolvex.3.00.11.00.exe";
};

TEST_F(Install, BacksUpThenReplacesThenReports) {
    world.user.Answer("A backup file");
    EXPECT_EQ(Press(), Joined({"EnumWindows", Box(kBackUpNotice), kBackUp, kReplace, Finished()}));
    EXPECT_EQ(Content(backup), oldBuild);
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
    EXPECT_EQ(Content("tolvex30.exe"), newBuild);
    EXPECT_EQ(world.disk.Names().size(), 4U);
}

TEST_F(Install, KeepsABackupOfTheSameVersion) {
    world.AddFile(backup, "kept");
    EXPECT_EQ(Press(), Joined({"EnumWindows", kReplace, Finished()}));
    EXPECT_EQ(Content(backup), "kept");
}

TEST_F(Install, OfTwoBuildsOfOneVersionKeepsTheFirstBackup) {
    world.user.Answer("A backup file");
    Press();
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 999));
    Window().cmdInstall.Visible = true;
    Press();
    EXPECT_EQ(Content(backup), oldBuild);
    EXPECT_EQ(world.trace.Count(kBackUp), 1U);
    EXPECT_EQ(world.trace.Count(kReplace), 2U);
}

TEST_F(Install, NamesTheBackupByTheFormattedProductVersion) {
    world.AddFile("tolvex.exe", headless::Build("3.1.0.123", 300));
    world.user.Answer("'tolvex.3.01.00.123.exe'");
    Press();
    EXPECT_EQ(Content("tolvex.3.01.00.123.exe").size(), 300U);
}

TEST_F(Install, WhileTheProgramRunsTouchesNothing) {
    RunProgram(1);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kNo);
    world.user.Answer("Install Error!");
    const std::string steps = Press();
    EXPECT_TRUE(
        steps.ends_with(Box("Install Error!\r\n\r\nCannot install the updated Tolvex "
                            "program while\r\nTolvex is still running.",
                            16)))
        << steps;
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_FALSE(Window().cmdClose.Enabled);
}

TEST_F(Install, WhileTheProgramRefusesToCloseTouchesNothing) {
    RunProgram(1);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("Install Error!");
    Press();
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
}

TEST_F(Install, GoesOnOnceTheProgramHasClosed) {
    RunProgram(0);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("A backup file");
    Press();
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
}

TEST_F(Install, PressedAgainWhileTheProgramIsBeingClosedInstallsOnceAndAtOnce) {
    RunProgram(0);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("A backup file");
    std::string steps;
    world.After(1000, [this, &steps] {
        world.desktop.clear();
        world.trace.Clear();
        steps = Press();
    });
    const std::string all = Press();
    EXPECT_EQ(steps, Joined({"EnumWindows", Box(kBackUpNotice), kBackUp, kReplace, Finished()}));
    EXPECT_EQ(all, steps);
    EXPECT_EQ(Content(backup), oldBuild);
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
    EXPECT_EQ(world.disk.Names().size(), 4U);
}

TEST_F(Install, PressedAgainDuringAWaitThatCrossedMidnightInstalls) {
    world.SetLocalTime(MakeDateTime({2026, 3, 10, 23, 59, 58}));
    RunProgram(0);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("A backup file");
    world.After(60000, [this] {
        world.desktop.clear();
        Press();
    });
    world.After(120000, [this] { world.Close(Window()); });
    Press();
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
    EXPECT_EQ(Content(backup), oldBuild);
    EXPECT_EQ(world.trace.Count(kReplace), 1U);
}

TEST_F(Install, ThatALaterPressLeftUndoneIsNotDoneByTheEarlierOne) {
    RunProgram(0);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kNo);
    world.user.Answer("Install Error!");
    world.After(1000, [this] { world.Click(Window(), Window().cmdInstall); });
    Press();
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_TRUE(Window().cmdInstall.Visible);
}

TEST_F(Install, BegunWhileTheBackupIsAnnouncedIsTheOnlyOne) {
    world.user.Answer("A backup file", MsgBoxAnswer::kOk, [this] {
        world.user.Answer("A backup file");
        Window().cmdInstall_Click();
    });
    Press();
    EXPECT_EQ(world.trace.Count(kBackUp), 1U);
    EXPECT_EQ(world.trace.Count(kReplace), 1U);
    EXPECT_EQ(Content(backup), oldBuild);
}

TEST_F(Install, ThatChangedNothingCanBePressedAgain) {
    RunProgram(1);
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kNo);
    world.user.Answer("Install Error!");
    Press();
    world.desktop.clear();
    world.user.Answer("A backup file");
    Press();
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
}

TEST_F(Install, WithoutAProgramInstallsWithoutBackup) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    world.user.Answer("tolvex.exe not found in");
    EXPECT_EQ(Press(), Joined({"EnumWindows",
                               Box("tolvex.exe not found in 'C:\\Tolvex'.\r\n\r\n"
                                   "Installing tolvex.exe in 'C:\\Tolvex'."),
                               kReplace, Finished()}));
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
    EXPECT_EQ(world.disk.Names().size(), 3U);
}

TEST_F(Install, OverAProgramWithoutVersionDeletesItAndMakesNoBackup) {
    world.AddFile("tolvex.exe", headless::Build("", 300));
    world.user.Answer("The file is probably corrupt.");
    EXPECT_EQ(Press(), Joined({"EnumWindows",
                               Box("No version information available for\r\n"
                                   "'C:\\Tolvex\\tolvex.exe'\r\n\r\n"
                                   "The file is probably corrupt.\r\n\r\n"
                                   "Deleting 'C:\\Tolvex\\tolvex.exe'"),
                               "Kill C:\\Tolvex\\tolvex.exe", kReplace, Finished()}));
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
}

TEST_F(Install, WithoutAnUpdateFileChangesNothing) {
    world.disk.Remove(world.PathOf("tolvex30.exe"));
    world.user.Answer("The update file");
    EXPECT_EQ(Press(), Joined({"EnumWindows",
                               Box("The update file 'tolvex30.exe'\r\n"
                                   "not found in 'C:\\Tolvex'.\r\ntolvex.exe not updated.")}));
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_FALSE(Window().cmdClose.Enabled);
}

TEST_F(Install, WithoutBothFilesSaysBoth) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    world.disk.Remove(world.PathOf("tolvex30.exe"));
    world.user.Answer("tolvex.exe not found in");
    world.user.Answer("The update file");
    Press();
    EXPECT_EQ(world.disk.Names().size(), 1U);
}

TEST_F(Install, ReplacesTheProgramEvenWhenTheBackupFails) {
    world.disk.Fail("FileCopy", error_number::kDiskFull);
    world.user.Answer("A backup file");
    world.user.Answer("backup File Copy Error");
    EXPECT_EQ(Press(), Joined({"EnumWindows", Box(kBackUpNotice), kBackUp,
                               Box("tolvex.exe backup File Copy Error: 61\r\nDisk full"), kReplace,
                               Finished()}));
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
    EXPECT_EQ(Content(backup), "(no such file)");
}

TEST_F(Install, OverALockedProgramStillReportsSuccess) {
    world.disk.Find(world.PathOf("tolvex.exe"))->held = true;
    world.user.Answer("A backup file");
    world.user.Answer("tolvex30.exe to tolvex.exe File Copy Error: 70");
    EXPECT_EQ(Press(),
              Joined({"EnumWindows", Box(kBackUpNotice), kBackUp, kReplace,
                      Box("tolvex30.exe to tolvex.exe File Copy Error: 70\r\nPermission denied"),
                      Finished("3.00.11.00")}));
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You have installed the latest version of q-tolvex.");
}

TEST_F(Install, WaitsForSomebodyWhoReadsTheProgram) {
    world.disk.Find(world.PathOf("tolvex.exe"))->openUntil = world.uptime + 1500;
    world.user.Answer("A backup file");
    EXPECT_EQ(Press(), Joined({"EnumWindows", Box(kBackUpNotice), kBackUp, kReplace, Finished()}));
    EXPECT_EQ(Content("tolvex.exe"), newBuild);
}

TEST_F(Install, OverAProgramThatStaysOpenKeepsItWhole) {
    world.disk.Find(world.PathOf("tolvex.exe"))->openUntil = world.uptime + 60000;
    world.user.Answer("A backup file");
    world.user.Answer("tolvex30.exe to tolvex.exe File Copy Error: 70");
    EXPECT_TRUE(Press().ends_with(Finished("3.00.11.00")));
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
}

TEST_F(Install, BesideSomebodyElsesUnfinishedCopyTouchesNothing) {
    world.disk.folders.insert(world.PathOf(kUnfinishedCopy));
    world.user.Answer("A backup file");
    world.user.Answer("tolvex.exe backup File Copy Error: 75");
    world.user.Answer("tolvex30.exe to tolvex.exe File Copy Error: 75");
    EXPECT_TRUE(Press().ends_with(Finished("3.00.11.00")));
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_EQ(Content(backup), "(no such file)");
}

TEST_F(Install, OfAProgramThatIsHeldForAMomentKeepsIt) {
    world.disk.Find(world.PathOf("tolvex.exe"))->lockedUntil = world.uptime + 1500;
    world.user.Answer("A backup file");
    EXPECT_EQ(Press(), Joined({"EnumWindows", Box(kBackUpNotice), kBackUp, kReplace, Finished()}));
    EXPECT_EQ(Content(backup), oldBuild);
}

TEST_F(Install, AttemptsBothCopiesAndFinishesWhenBothFail) {
    world.disk.Fail("FileCopy", error_number::kDiskFull, 1);
    world.disk.Fail("FileCopy", error_number::kPermissionDenied, 2);
    world.user.Answer("A backup file");
    world.user.Answer("tolvex.exe backup File Copy Error: 61");
    world.user.Answer("tolvex30.exe to tolvex.exe File Copy Error: 70");
    const std::string steps = Press();
    EXPECT_TRUE(steps.ends_with(Finished("3.00.11.00"))) << steps;
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
}

TEST_F(Install, OfABuildWithoutVersionDeletesWhatWasInstalled) {
    world.AddFile("tolvex30.exe", headless::Build("", 400));
    world.user.Answer("A backup file");
    world.user.Answer("The file is probably corrupt.");
    const std::string steps = Press();
    EXPECT_TRUE(steps.ends_with(Joined(
        {"Kill C:\\Tolvex\\tolvex.exe",
         Set("lblTolvexVersion.Caption", "q-tolvex Version installed: "),
         "lblTolvexVersion.Visible = True",
         Set("lblAnimationMsg.Caption", "You have installed the latest version of q-tolvex."),
         Set("lblStatus.Caption", ""), "cmdClose.Enabled = True"})))
        << steps;
    EXPECT_EQ(Content("tolvex.exe"), "(no such file)");
    EXPECT_EQ(Content(backup), oldBuild);
}

TEST_F(Install, ErrorOutsideTheCopiesEndsTheProgramWithTheSystemsBox) {
    const std::string damaged = headless::Build("", 300);
    world.AddFile("tolvex.exe", damaged).held = true;
    const std::string message = Window().lblAnimationMsg.Caption;
    world.user.Answer("The file is probably corrupt.");
    world.user.Answer("Run-time error '438'");
    const std::string steps = Press();
    EXPECT_TRUE(steps.ends_with(
        Box("Run-time error '438':\r\n\r\nObject doesn't support this property or method", 16) +
        "\nEnd"))
        << steps;
    EXPECT_TRUE(world.RunOver());
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
    EXPECT_TRUE(world.trace.StartingWith("lblAnimationMsg").empty());
    EXPECT_EQ(Content("tolvex.exe"), damaged);
    EXPECT_EQ(Content("tolvex30.exe"), newBuild);
}

TEST_F(Install, ErrorInItsLastStepEndsTheProgramWithTheSystemsBox) {
    world.AddFile("tolvex30.exe", headless::Build("", 400));
    world.disk.Fail("Kill", error_number::kPathFileAccess);
    world.user.Answer("A backup file");
    world.user.Answer("The file is probably corrupt.");
    world.user.Answer("Run-time error '438'");
    Press();
    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.trace.Count(kReplace), 1U);
    EXPECT_EQ(Content(backup), oldBuild);
    EXPECT_TRUE(world.trace.StartingWith("lblAnimationMsg").empty());
    EXPECT_TRUE(world.trace.StartingWith("cmdClose").empty());
}

TEST_F(Install, WorksInTheRootOfADrive) {
    world.machine.applicationFolder = "D:";
    world.disk.folders.insert("D:");
    world.AddFile("tolvex.exe", oldBuild);
    world.AddFile("tolvex30.exe", newBuild);
    world.user.Answer("was not found in\r\n'D:'.");
    Press();
    EXPECT_EQ(world.disk.Find("D:\\tolvex.exe")->bytes, newBuild);
    EXPECT_EQ(world.disk.Find("D:\\tolvex.3.00.11.00.exe")->bytes, oldBuild);
    EXPECT_EQ(world.disk.Find("C:\\Tolvex\\tolvex.exe")->bytes, oldBuild);
}

TEST_F(Install, ButtonStaysHiddenAfterIt) {
    world.user.Answer("A backup file");
    Press();
    world.trace.Clear();
    EXPECT_EQ(Press(), "");
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

}  // namespace
}  // namespace swiftpatch
