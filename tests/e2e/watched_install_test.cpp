// Others read and hold the files of an install all the while: at no moment is the main program
// anything but the old or the new build.
#include <atomic>
#include <iostream>
#include <list>
#include <optional>
#include <thread>

#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/padded_build.h"
#include "e2e/process.h"
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

// What a file holds, read by one who hinders nobody; nothing while somebody lets nobody read.
std::optional<std::string> Contents(const fs::path& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const bool held = GetLastError() == ERROR_SHARING_VIOLATION;
        return held ? std::nullopt : std::optional<std::string>("");
    }
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD count = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    bytes.resize(count);
    CloseHandle(file);
    return bytes;
}

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

// Other programs that open files of the install; they end with this object.
class Bystanders {
public:
    explicit Bystanders(unsigned seed) : seed_(seed) {}
    ~Bystanders() { CloseHandle(over_); }
    Bystanders(const Bystanders&) = delete;
    Bystanders& operator=(const Bystanders&) = delete;

    void Add(const std::wstring& task) {
        others_.emplace_back(TestOptions().fixtures / "bystander.exe",
                             kOver + (L" " + std::to_wstring(seed_++)) + L" " + task);
    }
    // How often each of them had a file open, in the order in which they came.
    std::vector<int> End() {
        SetEvent(over_);
        std::vector<int> opened;
        for (const Process& other : others_) {
            EXPECT_TRUE(other.WaitForEnd(kLongestStage));
            opened.push_back(static_cast<int>(other.ExitCode()));
        }
        return opened;
    }

private:
    static constexpr wchar_t kOver[] = L"WatchedInstallIsOver";

    HANDLE over_ = CreateEventW(nullptr, TRUE, FALSE, kOver);
    unsigned seed_;
    std::list<Process> others_;
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
        const std::optional<std::string> bytes = Contents(folder_->File("tolvex.exe"));
        if (!bytes) {
            return;
        }
        ++looks_;
        if (*bytes == new_) {
            ++looksAtNew_;
        } else if (*bytes != old_) {
            ++wrong_;
            smallest_ = std::min(smallest_, bytes->size());
        }
    }

    // Everything that is no file of the update, its result or its backup, is unfinished.
    std::wstring HoldingWhatIsUnfinished() const {
        std::wstring task = L"holds " + Quoted(folder_->Path()) + L" tolvex30.exe " + Wide(kBackup);
        for (const std::string& name : kFurnished) {
            task += L" " + Wide(name);
        }
        return task;
    }

    const std::string old_;
    const std::string new_;
    std::atomic<int> looks_{0};
    std::atomic<int> looksAtNew_{0};
    std::atomic<int> wrong_{0};
    std::size_t smallest_ = kNewSize;
};

TEST_F(WatchedInstall, ShowsTheOldOrTheNewBuildAtEveryLook) {
    int installed = 0;
    int opened = 0;
    int held = 0;
    for (int run = 0; run < TestOptions().installs && !HasFailure(); ++run) {
        Restore(old_, new_);
        Bystanders bystanders(TestOptions().seed + static_cast<unsigned>(2 * run));
        bystanders.Add(L"reads " + Quoted(folder_->File("tolvex.exe")));
        bystanders.Add(HoldingWhatIsUnfinished());
        {
            const Meanwhile watcher([this] { Look(); });
            InstallToTheEnd();
        }
        const std::vector<int> times = bystanders.End();
        opened += times[0];
        held += times[1];
        installed += folder_->Read("tolvex.exe") == new_ ? 1 : 0;
        EXPECT_EQ(wrong_, 0) << "in run " << run << "; " << smallest_ << " bytes at the least";
    }
    std::cout << "seed " << TestOptions().seed << "\n"
              << TestOptions().installs << " installs\n"
              << "  new build in place: " << installed << "\n"
              << "  looks: " << looks_ << "\n"
              << "  looks that saw the new build: " << looksAtNew_ << "\n"
              << "  opened by another program: " << opened << "\n"
              << "  unfinished file held by a third: " << held << "\n";
    EXPECT_GT(opened, 0);
    EXPECT_GT(held, 0);
    EXPECT_GT(installed, 0);
}

}  // namespace
}  // namespace swiftpatch::e2e
