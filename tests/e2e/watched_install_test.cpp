// Others read and hold the files of an install all the while: at no moment is the main program
// anything but the old or the new build.
#include <atomic>
#include <iostream>
#include <random>
#include <thread>

#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/padded_build.h"
#include "e2e/text.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

namespace fs = std::filesystem;

constexpr milliseconds kLongestStage{60000};
constexpr char kBackup[] = "tolvex.3.00.11.00.exe";

// Large enough that a copy takes longer than a look at it.
constexpr std::size_t kOldSize = 6U << 20U;
constexpr std::size_t kNewSize = 7U << 20U;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A file that is open as long as this lives.
class Opened {
public:
    Opened(const fs::path& path, DWORD share)
        : handle_(
              CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)),
          error_(handle_ == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS) {}
    ~Opened() {
        if (*this) {
            CloseHandle(handle_);
        }
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    DWORD Error() const { return error_; }
    std::string All() const {
        std::string bytes(GetFileSize(handle_, nullptr), '\0');
        DWORD count = 0;
        ReadFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        bytes.resize(count);
        return bytes;
    }

private:
    HANDLE handle_;
    DWORD error_;
};

// Does something again and again on a thread of its own until it goes.
class Meanwhile {
public:
    template <class Action>
    explicit Meanwhile(Action action)
        : thread_([this, action] {
              while (!over_) {
                  action();
              }
          }) {}
    ~Meanwhile() {
        over_ = true;
        thread_.join();
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    std::atomic<bool> over_{false};
    std::thread thread_;
};

// Random times for one thread.
class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}
    void Rest(int mostMilliseconds) {
        std::this_thread::sleep_for(
            milliseconds(std::uniform_int_distribution<int>(0, mostMilliseconds)(random_)));
    }

private:
    std::mt19937 random_;
};

class WatchedInstall : public UpdateRun {
protected:
    WatchedInstall()
        : old_(Padded(UpdateRun::Build("3.0.11.0"), kOldSize)),
          new_(Padded(UpdateRun::Build("3.0.12.5"), kNewSize)) {
        Reply reply = BuildReply("3.0.12.5");
        reply.body = Body(new_);
        UpdateRun::Publish(reply);
        folder_->WriteSettings(ServerFolder(), "InstallAtOnce=1\r\n");
    }

    void Restore() const {
        for (const auto& [name, contents] : folder_->Take()) {
            if (known_.count(name) == 0) {
                fs::remove(folder_->File(name));
            }
        }
        folder_->Write("tolvex.exe", old_);
        folder_->Write("tolvex30.exe", new_);
        folder_->SetTime("tolvex30.exe", kServerTime + std::chrono::hours(24));
    }

    void InstallToTheEnd() {
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        const auto finished = [this] {
            if (AnswerWhateverAsks(*updater_)) {
                return false;
            }
            return BeginsWith(updater_->Text(kLblAnimationMsg), "You have installed the latest");
        };
        EXPECT_TRUE(WaitUntil(finished, kLongestStage)) << updater_->Describe();
        updater_->Running().Kill();
        updater_.reset();
    }

    void Look() {
        const Opened program(folder_->File("tolvex.exe"), kShareAll);
        if (!program && program.Error() == ERROR_SHARING_VIOLATION) {
            return;
        }
        ++looks_;
        const std::string bytes = program ? program.All() : "";
        if (bytes == new_) {
            ++looksAtNew_;
        } else if (bytes != old_) {
            ++wrong_;
            smallest_ = std::min<std::size_t>(smallest_, bytes.size());
        }
    }

    // As a scanner does, which lets others read and write but not delete.
    void OpenTheProgram(Dice& dice) {
        const Opened program(folder_->File("tolvex.exe"), FILE_SHARE_READ | FILE_SHARE_WRITE);
        opened_ += program ? 1 : 0;
        dice.Rest(30);
    }

    void HoldWhatIsUnfinished(Dice& dice) {
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(folder_->Path(), ignored)) {
            const std::string name = entry.path().filename().string();
            if (known_.count(name) == 0 && name != "tolvex30.exe" && name != kBackup) {
                const Opened unfinished(entry.path(), FILE_SHARE_READ | FILE_SHARE_WRITE);
                held_ += unfinished ? 1 : 0;
                dice.Rest(100);
            }
        }
        // Seldom enough that a copy gets through between two of them.
        dice.Rest(held_ == 0 ? 1 : 200);
    }

    const std::string old_;
    const std::string new_;
    const std::set<std::string> known_{"swiftpatch.exe", "tolvex.dta.txt", "filecopy.avi",
                                       "tolvex.exe"};
    std::atomic<int> looks_{0};
    std::atomic<int> looksAtNew_{0};
    std::atomic<int> wrong_{0};
    std::size_t smallest_ = kNewSize;
    std::atomic<int> opened_{0};
    std::atomic<int> held_{0};
};

TEST_F(WatchedInstall, ShowsTheOldOrTheNewBuildAtEveryLook) {
    int installed = 0;
    for (int run = 0; run < TestOptions().installs && !HasFailure(); ++run) {
        Restore();
        Dice opening(TestOptions().seed + static_cast<unsigned>(2 * run));
        Dice holding(TestOptions().seed + static_cast<unsigned>(2 * run + 1));
        {
            const Meanwhile watcher([this] { Look(); });
            const Meanwhile reader([&] {
                OpenTheProgram(opening);
                opening.Rest(60);
            });
            const Meanwhile holder([&] { HoldWhatIsUnfinished(holding); });
            InstallToTheEnd();
        }
        installed += folder_->Read("tolvex.exe") == new_ ? 1 : 0;
        EXPECT_EQ(wrong_, 0) << "in run " << run << "; " << smallest_ << " bytes at the least";
    }
    std::cout << "seed " << TestOptions().seed << "\n"
              << TestOptions().installs << " installs\n"
              << "  new build in place: " << installed << "\n"
              << "  looks: " << looks_ << "\n"
              << "  looks that saw the new build: " << looksAtNew_ << "\n"
              << "  opened by another program: " << opened_ << "\n"
              << "  unfinished file held: " << held_ << "\n";
    EXPECT_GT(held_, 0);
    EXPECT_GT(installed, 0);
}

}  // namespace
}  // namespace swiftpatch::e2e
