// A disk that gets full, files that others hold, a folder that takes nothing or goes: the main
// program is never lost and the next run, with the disk in order again, finishes the update.
#include <algorithm>
#include <cctype>
#include <iostream>

#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/read_only_folder.h"
#include "e2e/shell_below.h"
#include "e2e/small_disk.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestStage{60000};
constexpr char kBackup[] = "tolvex.3.00.11.00.exe";
// Less than a build needs.
constexpr std::int64_t kLittle = 100000;

class DiskFaults : public UpdateRun {
protected:
    void Prepare(bool staged) {
        Reply reply = BuildReply("3.0.12.5");
        reply.bytesPerSecond = reply.body.Size();
        Publish(reply);
        Install("3.0.11.0");
        folder_->WriteSettings(ServerFolder(), "InstallAtOnce=1\r\n");
        if (staged) {
            Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
        }
    }

    /// Lets a run come to rest without a person's help. Every box must be one of the product's.
    void RunToRest() {
        HurryIntoCheck(*updater_);
        AwaitRest();
    }

    void AwaitRest() {
        const auto resting = [this] {
            return !AnswerWhateverAsks(*updater_) && updater_->Enabled(kCmdClose) && Listens();
        };
        // Close can be pressed for a moment between two stages.
        const auto restingForAWhile = [&] {
            for (int look = 0; look < 10; ++look) {
                if (!updater_->Running().Running()) {
                    return true;
                }
                if (!resting()) {
                    return false;
                }
                std::this_thread::sleep_for(milliseconds(50));
            }
            return true;
        };
        if (!WaitUntil(restingForAWhile, kLongestStage)) {
            ADD_FAILURE() << "the run does not come to rest; " << updater_->Describe();
        }
    }

    /// While a file is being copied the program answers nobody.
    bool Listens() const {
        constexpr UINT kSoon = 200;
        return SendMessageTimeoutW(updater_->Window(kMain), WM_NULL, 0, 0, SMTO_NORMAL, kSoon,
                                   nullptr) != 0;
    }

    void End() {
        if (updater_->Running().Running()) {
            CloseQuietly();
        }
        updater_.reset();
    }

    /// Wine itself moves no folder in which a program runs.
    static void Move(const std::filesystem::path& from, const std::filesystem::path& to) {
        RunBelow("mv \\\"$0\\\" \\\"$1\\\"", {PathBelow(from), PathBelow(to)});
        Await(
            "the move of a folder",
            [&] { return std::filesystem::exists(to) && !std::filesystem::exists(from); },
            kLongestStage);
    }

    void ExpectNothingLost() const {
        const std::string program = folder_->Read("tolvex.exe");
        EXPECT_TRUE(program == Build("3.0.11.0") || program == Build("3.0.12.5"))
            << "tolvex.exe has " << program.size() << " bytes";
        EXPECT_TRUE(!folder_->Has(kBackup) || folder_->Read(kBackup) == Build("3.0.11.0"))
            << "the backup has " << folder_->Read(kBackup).size() << " bytes";
        for (const auto& [name, contents] : folder_->Take()) {
            const bool known = name == "swiftpatch.exe" || name == "tolvex.dta.txt" ||
                               name == "filecopy.avi" || name == "tolvex.exe" ||
                               name == "tolvex30.exe" || name == kBackup;
            EXPECT_TRUE(known) << "left behind: " << name;
        }
    }

    void ExpectFinishedByTheNextRun() {
        updater_.emplace(folder_->Updater());
        RunToRest();
        End();
        ExpectNothingLost();
        EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.12.5"));
    }
};

class FullDisk : public DiskFaults {
protected:
    FullDisk() : disk_(TestOptions().scratch / "small") { UseFolder(L"small\\app"); }

    void TearDown() override {
        DiskFaults::TearDown();
        folder_.reset();
    }

    void StartOnFullDisk() {
        if (disk_.Mounted()) {
            disk_.Leave(kLittle);
            updater_.emplace(folder_->Updater());
        } else {
            StartWithSmallFiles();
        }
    }

    /// Where nothing may be mounted: no file that the updater writes can get larger than that.
    void StartWithSmallFiles() {
        std::cout << "no file system can be mounted here; the size of files is limited instead\n";
        RunBelow(
            "trap '' XFSZ; ulimit -f " + std::to_string(kLittle / 512) + "; exec wine \\\"$0\\\"",
            {PathBelow(folder_->Updater())});
        DWORD process = 0;
        Await(
            "the splash window",
            [&process] {
                GetWindowThreadProcessId(FindWindowW(kSplash, nullptr), &process);
                return process != 0;
            },
            kLongestStage);
        updater_.emplace(process);
    }

    SmallDisk disk_;
};

TEST_F(FullDisk, DuringTheDownloadLosesNothing) {
    Prepare(false);
    StartOnFullDisk();
    RunToRest();
    EXPECT_TRUE(updater_->Running().Running());
    End();
    ExpectNothingLost();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
    disk_.MakeRoom();
    ExpectFinishedByTheNextRun();
}

TEST_F(FullDisk, DuringTheInstallLosesNothing) {
    Prepare(true);
    StartOnFullDisk();
    RunToRest();
    End();
    ExpectNothingLost();
    disk_.MakeRoom();
    ExpectFinishedByTheNextRun();
}

// A direct copy would find no room for all of the build, either.
TEST_F(FullDisk, ThatTakesNoNewFileDuringTheInstallLosesNothing) {
    if (!disk_.Mounted()) {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    Prepare(true);
    disk_.Leave(kLittle / 10);
    disk_.TakeNames();
    updater_.emplace(folder_->Updater());
    RunToRest();
    End();
    ExpectNothingLost();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
    disk_.GiveNamesBack();
    disk_.MakeRoom();
    ExpectFinishedByTheNextRun();
}

TEST_F(DiskFaults, ReadOnlyFolderDuringTheInstallLosesNothing) {
    Prepare(true);
    {
        const ReadOnlyFolder locked(folder_->Path());
        ASSERT_TRUE(locked.Effective());
        updater_.emplace(folder_->Updater());
        RunToRest();
        End();
        ExpectNothingLost();
    }
    ExpectFinishedByTheNextRun();
}

// As a drive that is unplugged, or a share that is no longer there.
TEST_F(DiskFaults, FolderThatGoesDuringTheDownloadLosesNothing) {
    Prepare(false);
    updater_.emplace(folder_->Updater());
    HurryIntoCheck(*updater_);
    Await(
        "the request for the build",
        [this] {
            AnswerWhateverAsks(*updater_);
            const std::vector<Request> requests = server_.Requests();
            return !requests.empty() && requests.back().method == "GET";
        },
        kLongestStage);
    const std::filesystem::path elsewhere = TestOptions().scratch / "gone";
    std::filesystem::remove_all(elsewhere);
    Move(folder_->Path(), elsewhere);
    AwaitRest();
    EXPECT_FALSE(std::filesystem::exists(folder_->File("tolvex.exe")));
    End();
    std::filesystem::remove_all(folder_->Path());
    Move(elsewhere, folder_->Path());
    ExpectNothingLost();
    EXPECT_TRUE(folder_->Read("tolvex.exe") == Build("3.0.11.0"));
    ExpectFinishedByTheNextRun();
}

/// A file that somebody else has open for himself alone, from the start to the end of the run.
class HeldFiles : public DiskFaults, public ::testing::WithParamInterface<const char*> {};

TEST_P(HeldFiles, LoseNothing) {
    Prepare(true);
    const HANDLE held = CreateFileW(folder_->File(GetParam()).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    updater_.emplace(folder_->Updater());
    RunToRest();
    End();
    CloseHandle(held);
    ExpectNothingLost();
    ExpectFinishedByTheNextRun();
}

INSTANTIATE_TEST_SUITE_P(DiskFaults, HeldFiles,
                         ::testing::Values("tolvex.exe", "tolvex30.exe", "filecopy.avi",
                                           "tolvex.dta.txt"),
                         [](const auto& parameter) {
                             std::string name = parameter.param;
                             std::replace_if(
                                 name.begin(), name.end(),
                                 [](unsigned char letter) { return !std::isalnum(letter); }, '_');
                             return name;
                         });

}  // namespace
}  // namespace swiftpatch::e2e
