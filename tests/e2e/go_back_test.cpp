// The way back to the build that was installed before, in the real program.
#include "e2e/go_back_run.h"
#include "e2e/held_file.h"
#include "e2e/hurry.h"
#include "e2e/keyboard.h"
#include "e2e/options.h"
#include "e2e/read_only_folder.h"
#include "e2e/small_disk.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};
constexpr char kLatest[] = "You are running the latest version of q-tolvex";

class WayBack : public WayBackRun {
protected:
    /// Goes to the end of the check without having to wait for it.
    void StartAndAwait(const std::string& message) {
        Start();
        HurryIntoCheck(*updater_);
        updater_->AwaitText(kLblAnimationMsg, message, kLongest);
        updater_->AwaitEnabled(kCmdClose, kSoon);
    }

    void ExpectNotOffered() {
        StartAndAwait(kLatest);
        EXPECT_FALSE(updater_->Visible(kCmdGoBack));
        CloseQuietly();
        ExpectFiles({});
    }

    void GoBack() {
        StartAndAwait(kLatest);
        PressAndAgree();
        AwaitBack();
        CloseQuietly();
        ExpectBack();
    }

    void ExpectBack() {
        ExpectFiles({"changed tolvex.exe", std::string("created ") + kBackupAbove});
        EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
        EXPECT_TRUE(folder_->Read(kBackupAbove) == Build("3.0.12.5"));
    }

    void ExpectRefused(const std::string& reason) {
        AnswerBox("Go Back Error!\r\n\r\n" + reason + "\r\ntolvex.exe not changed.", IDOK);
        updater_->AwaitEnabled(kCmdGoBack, kSoon);
        EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
        EXPECT_TRUE(folder_->Read(kBackupBelow) == Build("3.0.11.0"));
    }
};

TEST_F(WayBack, WithoutItsKeyIsNotOffered) {
    folder_->WriteSettings(ServerFolder());
    ExpectNotOffered();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe"});
}

TEST_F(WayBack, WithoutAWholeBackupOfAnEarlierVersionIsNotOffered) {
    const std::string whole = Build("3.0.11.0");
    folder_->Write(kBackupBelow, whole.substr(0, whole.size() - 100));
    folder_->Write("tolvex.3.00.10.00.exe", "");
    folder_->Write("tolvex.3.00.09.00.exe", Build("none"));
    folder_->Write("tolvex.3.00.08.00.exe", Build("3.0.11.0"));
    folder_->Write("tolvex.3.01.00.123.exe", Build("3.1.0.123"));
    std::filesystem::create_directory(folder_->File("tolvex.2.09.00.00.exe"));
    ExpectNotOffered();
}

TEST_F(WayBack, AndForwardAgain) {
    StartAndAwait(kLatest);
    EXPECT_EQ(updater_->Caption(kMain), "Swift Patch");
    EXPECT_EQ(updater_->Text(kCmdGoBack), "Go Back...");
    PressAndAgree();
    AwaitBack();
    EXPECT_FALSE(updater_->Visible(kCmdGoBack));
    CloseQuietly();
    ExpectBack();

    StartAndAwait(
        "You went back from version 3.00.12.05.\r\n"
        "It is installed only when you press Install.");
    EXPECT_EQ(updater_->Text(kLblStatus), kOffer);
    updater_->Press(kCmdInstall);
    updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                        kSoon);
    CloseQuietly();
    ExpectFiles({"changed tolvex.exe"});
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));

    StartAndAwait(kLatest);
    PressAndAgree();
    AwaitBack();
    CloseQuietly();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
}

TEST_F(WayBack, StartsTheEarlierBuildAtTheEnd) {
    LetMainProgramRecord();
    StartAndAwait(kLatest);
    PressAndAgree();
    AwaitBack();
    Close();
    MainProgram(folder_->Path(), kSoon).Close();
    EXPECT_TRUE(BeginsWith(RecordIn(folder_->Path()).front(), "started 3.0.11.0 "));
}

TEST_F(WayBack, TakesTheNewestBackupBelowTheInstalledBuild) {
    folder_->Write("tolvex.2.09.00.00.exe", Build("2.9.0.0"));
    GoBack();
    EXPECT_TRUE(folder_->Read("tolvex.2.09.00.00.exe") == Build("2.9.0.0"));
}

TEST_F(WayBack, AnsweredNoChangesNothing) {
    StartAndAwait(kLatest);
    AwaitWayBack();
    updater_->Press(kCmdGoBack);
    AnswerBox(kWayBackQuestion, IDNO);
    updater_->AwaitEnabled(kCmdGoBack, kSoon);
    AwaitFocus(*updater_, kCmdClose);
    CloseQuietly();
    ExpectFiles({});
}

TEST_F(WayBack, CanBeGoneByTheKeyboardAlone) {
    StartAndAwait(kLatest);
    AwaitFocus(*updater_, kCmdClose);
    PressKey(*updater_, VK_TAB, Shift::kUp);
    AwaitFocus(*updater_, kCmdGoBack);
    PressKey(*updater_, VK_SPACE, Shift::kUp);
    const Box box = updater_->AwaitMessageBox(kSoon);
    AwaitFocus(*updater_, box);
    PressKey(*updater_, VK_RETURN, Shift::kUp);
    AwaitBack();
    AwaitFocus(*updater_, kCmdClose);
    CloseQuietly();
    ExpectBack();
}

TEST_F(WayBack, IsThereWithoutAConnection) {
    server_.On(kBuildTarget, NotFound());
    server_.On(kLicenceTarget, NotFound());
    Start();
    HurryIntoCheck(*updater_);
    updater_->AwaitWindow(kFailure, kLongest);
    EXPECT_TRUE(updater_->Visible(kCmdGoBack));
    EXPECT_FALSE(updater_->Enabled(kCmdGoBack));
    AnswerNoConnection();
    PressAndAgree();
    AwaitBack();
    CloseQuietly();
    ExpectBack();
}

TEST_F(WayBack, IsClosedWhileABuildComesIn) {
    Reply slow = BuildReply("3.1.0.123");
    slow.lastModified = "Fri, 07 Feb 2020 08:12:00 GMT";
    slow.bytesPerSecond = 200000;
    Publish(slow);
    Start();
    AwaitPercentage(20);
    EXPECT_TRUE(updater_->Visible(kCmdGoBack));
    EXPECT_FALSE(updater_->Enabled(kCmdGoBack));
    AwaitOffer();
    PressAndAgree();
    AwaitBack();
    EXPECT_EQ(updater_->Text(kLblStatus), kOffer);
    updater_->Press(kCmdInstall);
    updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                        kSoon);
    CloseQuietly();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.1.0.123"));
    EXPECT_TRUE(folder_->Read(kBackupAbove) == Build("3.0.12.5"));
}

TEST_F(WayBack, IsNotUndoneByAnInstallAtOnce) {
    Configure("InstallAtOnce=1\r\n");
    GoBack();
    StartAndAwait(
        "You went back from version 3.00.12.05.\r\n"
        "It is installed only when you press Install.");
    EXPECT_EQ(updater_->Text(kLblStatus), kOffer);
    CloseQuietly();
    ExpectFiles({});

    Reply newer = BuildReply("3.1.0.123");
    newer.lastModified = "Fri, 07 Feb 2020 08:12:00 GMT";
    Publish(newer);
    StartAndAwait("You have installed the latest version of q-tolvex.");
    EXPECT_FALSE(updater_->Visible(kCmdGoBack));
    CloseQuietly();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.1.0.123"));
}

TEST_F(WayBack, NeedsNoSignatureAndTheWayForwardKeepsIts) {
    Configure(Sign(Build("3.0.12.5")));
    GoBack();
    Start();
    HurryIntoCheck(*updater_);
    AwaitOffer();
    updater_->Press(kCmdInstall);
    updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                        kSoon);
    CloseQuietly();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
}

TEST_F(WayBack, ClosesTheMainProgramAsAnInstallDoes) {
    StartAndAwait(kLatest);
    const MainProgram running(folder_->File("tolvex.exe"), L"");
    PressAndAgree();
    const Box box = updater_->AwaitMessageBox(kSoon);
    EXPECT_TRUE(BeginsWith(box.title, "q-Tolvex.exe Detected Running"));
    updater_->Answer(box, IDYES);
    EXPECT_TRUE(running.Running().WaitForEnd(kSoon));
    AwaitBack();
    CloseQuietly();
    ExpectBack();
}

TEST_F(WayBack, WhileTheMainProgramStaysRunningChangesNothing) {
    AppFolder other(TestOptions().scratch / "other", TestOptions().updater);
    other.Write("tolvex.exe", Build("3.0.11.0"));
    StartAndAwait(kLatest);
    // cppcheck-suppress unreadVariable ; that it runs is what is wanted.
    const MainProgram running(other.File("tolvex.exe"), L"--refuse");
    PressAndAgree();
    const Box box = updater_->AwaitMessageBox(kSoon);
    EXPECT_TRUE(BeginsWith(box.title, "q-Tolvex.exe Detected Running"));
    updater_->Answer(box, IDYES);
    ExpectRefused("Cannot go back while Tolvex is still running.");
    CloseQuietly();
    ExpectFiles({});
}

TEST_F(WayBack, OverAProgramThatIsHeldChangesNothing) {
    StartAndAwait(kLatest);
    {
        const HeldFile held(folder_->File("tolvex.exe"));
        PressAndAgree();
        ExpectRefused(
            "tolvex.3.00.11.00.exe to tolvex.exe File Copy Error: 70\r\nPermission denied");
    }
    PressAndAgree();
    AwaitBack();
    CloseQuietly();
    ExpectBack();
}

TEST_F(WayBack, InAFolderThatTakesNoFileChangesNothing) {
    StartAndAwait(kLatest);
    {
        const ReadOnlyFolder locked(folder_->Path());
        ASSERT_TRUE(locked.Effective());
        PressAndAgree();
        const Box box = updater_->AwaitMessageBox(kSoon);
        EXPECT_TRUE(BeginsWith(box.text, "Go Back Error!\r\n\r\ntolvex.exe backup File Copy"))
            << box.text;
        updater_->Answer(box, IDOK);
        updater_->AwaitEnabled(kCmdGoBack, kSoon);
        EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
    }
    CloseQuietly();
    ExpectFiles({});
}

TEST_F(WayBack, ToABackupThatWentMeanwhileChangesNothing) {
    StartAndAwait(kLatest);
    AwaitWayBack();
    updater_->Press(kCmdGoBack);
    const Box box = updater_->AwaitMessageBox(kSoon);
    std::filesystem::remove(folder_->File(kBackupBelow));
    updater_->Answer(box, IDYES);
    AnswerBox(
        "Go Back Error!\r\n\r\ntolvex.3.00.11.00.exe to tolvex.exe File Copy Error: 53\r\n"
        "File not found\r\ntolvex.exe not changed.",
        IDOK);
    CloseQuietly();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
}

class WayBackOnAFullDisk : public WayBack {
protected:
    WayBackOnAFullDisk() : disk_(TestOptions().scratch / "small") {
        UseFolder(L"small\\app");
        Install("3.0.12.5");
        Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
        folder_->Write(kBackupBelow, Build("3.0.11.0"));
        Configure("");
    }

    void TearDown() override {
        WayBack::TearDown();
        folder_.reset();
    }

    SmallDisk disk_;
};

TEST_F(WayBackOnAFullDisk, ChangesNothingAndIsGoneOnceThereIsRoom) {
    if (!disk_.Mounted()) {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    constexpr std::int64_t kLittle = 100000;
    StartAndAwait(kLatest);
    disk_.Leave(kLittle);
    PressAndAgree();
    ExpectRefused("tolvex.exe backup File Copy Error: 61\r\nDisk full");
    // Room for the backup of the installed build, but not for its replacement.
    disk_.Leave(kLittle + static_cast<std::int64_t>(Build("3.0.12.5").size()));
    PressAndAgree();
    ExpectRefused("tolvex.3.00.11.00.exe to tolvex.exe File Copy Error: 61\r\nDisk full");
    EXPECT_TRUE(folder_->Read(kBackupAbove) == Build("3.0.12.5"));
    disk_.MakeRoom();
    PressAndAgree();
    AwaitBack();
    CloseQuietly();
    ExpectBack();
}

}  // namespace
}  // namespace swiftpatch::e2e
