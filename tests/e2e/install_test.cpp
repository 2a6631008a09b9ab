#include <atomic>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include "e2e/held_file.h"
#include "e2e/shell_below.h"
#include "e2e/update_run.h"
#include "e2e/windows98.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};

/// The drive T:, whose root is a folder.
class Drive {
public:
    explicit Drive(const std::filesystem::path& folder) {
        RunBelow("ln -sfn \\\"$0\\\" \\\"$WINEPREFIX/dosdevices/t:\\\"", {PathBelow(folder)});
        Await(
            "the drive", [this] { return std::filesystem::exists(Root() / "swiftpatch.exe"); },
            kSoon);
    }
    ~Drive() { RunBelow("rm \\\"$WINEPREFIX/dosdevices/t:\\\"", {}); }
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;

    std::filesystem::path Root() const { return "T:\\"; }
};

class InstallFaults : public UpdateRun {
protected:
    /// Goes on to the offer of an earlier download.
    void StartToOffer(const std::string& installed) {
        Publish("3.1.0.123");
        Install(installed);
        Stage("3.1.0.123", kServerTime + std::chrono::hours(24));
        StartToMainWindow();
        AwaitOffer();
    }

    void ExpectFinished(const std::string& version) {
        updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                            kSoon);
        updater_->AwaitEnabled(kCmdClose, kSoon);
        EXPECT_EQ(updater_->Text(kLblTolvexVersion), "q-tolvex Version installed: " + version);
        EXPECT_FALSE(updater_->Visible(kCmdInstall));
        EXPECT_EQ(updater_->Text(kLblStatus), "");
    }
};

TEST_F(InstallFaults, ProgramFileInUseIsReportedAndTheRunFinishesAllTheSame) {
    StartToOffer("3.0.11.0");
    const HeldFile held(folder_->File("tolvex.exe"));
    updater_->Press(kCmdInstall);
    AnswerBackupBox("3.00.11.00");
    AnswerBox("tolvex30.exe to tolvex.exe File Copy Error: 70\r\nPermission denied", IDOK);
    ExpectFinished("3.00.11.00");
    CloseQuietly();
    ExpectFiles({"created tolvex.3.00.11.00.exe"});
}

// Whoever holds the program all through the install lets go while the last box says that it is
// about to be deleted.
TEST_F(InstallFaults, ProgramThatNobodyCouldReadIsNotTakenForCorrupt) {
    StartToOffer("3.0.11.0");
    updater_->Press(kCmdInstall);
    const Box backup = updater_->AwaitMessageBox(kSoon);
    std::optional<HeldFile> held(std::in_place, folder_->File("tolvex.exe"), 0UL);
    updater_->Answer(backup, IDOK);
    AnswerBox("tolvex.exe backup File Copy Error: 70\r\nPermission denied", IDOK);
    AnswerBox("tolvex30.exe to tolvex.exe File Copy Error: 70\r\nPermission denied", IDOK);
    const Box corrupt = updater_->AwaitMessageBox(kSoon);
    EXPECT_NE(corrupt.text.find("The file is probably corrupt."), std::string::npos);
    held.reset();
    updater_->Answer(corrupt, IDOK);
    ExpectFinished("3.00.11.00");
    CloseQuietly();
    ExpectFiles({});
}

TEST_F(InstallFaults, FolderMayBeTheRootOfADrive) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    before_ = folder_->Take();
    const Drive drive(folder_->Path());
    updater_.emplace(drive.Root() / "swiftpatch.exe");
    AwaitOffer();
    updater_->Press(kCmdInstall);
    AnswerBox(
        "A backup file for your current version of tolvex was not found in\r\n'T:'.\r\n\r\n"
        "Making a copy of tolvex.exe as 'tolvex.3.00.11.00.exe'",
        IDOK);
    ExpectFinished("3.00.12.05");
    CloseQuietly();
    ExpectFiles({"created tolvex.3.00.11.00.exe", "changed tolvex.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
}

TEST_F(InstallFaults, BackupOfTheSameVersionIsKeptAsItIs) {
    folder_->Write("tolvex.3.00.11.00.exe", "an older backup");
    StartToOffer("3.0.11.0");
    updater_->Press(kCmdInstall);
    ExpectFinished("3.01.00.123");
    CloseQuietly();
    ExpectFiles({"changed tolvex.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.1.0.123"));
}

// Version numbers are signed words.
TEST_F(InstallFaults, BackupOfABuildOver32767CarriesANegativeNumber) {
    StartToOffer("3.0.40000.1");
    updater_->Press(kCmdInstall);
    AnswerBackupBox("3.00.-25536.01");
    ExpectFinished("3.01.00.123");
    CloseQuietly();
    ExpectFiles({"created tolvex.3.00.-25536.01.exe", "changed tolvex.exe"});
}

TEST_F(InstallFaults, BackupThatCannotBeMadeDoesNotStopTheReplacement) {
    StartToOffer("3.0.11.0");
    std::filesystem::create_directory(folder_->File("tolvex.3.00.11.00.exe"));
    updater_->Press(kCmdInstall);
    AnswerBackupBox("3.00.11.00");
    AnswerBox("tolvex.exe backup File Copy Error: 70\r\nPermission denied", IDOK);
    ExpectFinished("3.01.00.123");
    CloseQuietly();
    ExpectFiles({"created tolvex.3.00.11.00.exe", "changed tolvex.exe"});
}

TEST_F(InstallFaults, StagedBuildThatHasGoneIsReported) {
    StartToOffer("3.0.11.0");
    std::filesystem::remove(folder_->File("tolvex30.exe"));
    updater_->Press(kCmdInstall);
    AnswerBox("The update file 'tolvex30.exe'\r\nnot found in '" + FolderText() +
                  "'.\r\ntolvex.exe not updated.",
              IDOK);
    EXPECT_TRUE(updater_->Visible(kCmdInstall));
    CloseQuietly();
    ExpectFiles({"deleted tolvex30.exe"});
}

TEST_F(InstallFaults, MissingProgramFileIsInstalledWithoutABackup) {
    StartToOffer("3.0.11.0");
    std::filesystem::remove(folder_->File("tolvex.exe"));
    updater_->Press(kCmdInstall);
    AnswerBox("tolvex.exe not found in '" + FolderText() + "'.\r\n\r\nInstalling tolvex.exe in '" +
                  FolderText() + "'.",
              IDOK);
    ExpectFinished("3.01.00.123");
    CloseQuietly();
    ExpectFiles({"changed tolvex.exe"});
}

// There a file cannot be moved over another one, but a backup has a new name.
TEST_F(InstallFaults, OnWindows98ABackupIsWholeAtEveryMoment) {
    const OnWindows98 old;
    StartToOffer("3.0.11.0");
    const std::string large = Build("3.0.11.0") + std::string(24 * 1024 * 1024, 'x');
    folder_->Write("tolvex.exe", large);
    std::atomic<bool> over = false;
    std::set<std::uintmax_t> sizes;
    std::thread watcher([this, &over, &sizes] {
        while (!over) {
            std::error_code missing;
            const auto size =
                std::filesystem::file_size(folder_->File("tolvex.3.00.11.00.exe"), missing);
            if (!missing) {
                sizes.insert(size);
            }
        }
    });
    updater_->Press(kCmdInstall);
    AnswerBackupBox("3.00.11.00");
    ExpectFinished("3.01.00.123");
    over = true;
    watcher.join();
    EXPECT_EQ(sizes, std::set<std::uintmax_t>{large.size()});
    CloseQuietly();
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.1.0.123"));
    EXPECT_TRUE(folder_->Read("tolvex.3.00.11.00.exe") == large);
}

// The handler of the install looks up a member that its error object does not have. Nobody traps
// that second error: it ends the program with the system's box.
TEST_F(InstallFaults, UnexpectedErrorEndsTheProgramWithTheSystemsBox) {
    StartToOffer("3.0.11.0");
    folder_->Write("tolvex.exe", Build("none"));
    const HeldFile held(folder_->File("tolvex.exe"));
    updater_->Press(kCmdInstall);
    AnswerCorruptFileBox("tolvex.exe");
    AnswerBox("Run-time error '438':\r\n\r\nObject doesn't support this property or method", IDOK);
    updater_->AwaitEnd(kSoon);
    ExpectFiles({"changed tolvex.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("none"));
}

}  // namespace
}  // namespace swiftpatch::e2e
