// Somebody tries to put his own build in the place of the one that was checked, at every moment
// from the offer to the end of the install: what is installed is always what the maker signed.
#include <array>
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

// Large enough that the check and the copy take a while.
constexpr std::size_t kSize = 7U << 20U;

// Writes `forged` over the build in the folder and over every unfinished copy of it, puts it in the
// place of each, and keeps the program from being replaced meanwhile, again and again until it
// goes.
class Forger {
public:
    Forger(fs::path folder, const std::string& forged, milliseconds delay)
        : folder_(std::move(folder)), forged_(forged), thread_([this, delay] {
              std::this_thread::sleep_for(delay);
              while (!over_) {
                  Forge();
                  std::this_thread::sleep_for(milliseconds(1));
              }
          }) {}
    ~Forger() {
        over_ = true;
        thread_.join();
        fs::remove(folder_.parent_path() / "forged.tmp");
        fs::remove(folder_.parent_path() / "signed.tmp");
    }
    Forger(const Forger&) = delete;
    Forger& operator=(const Forger&) = delete;

    int Tries() const { return tries_; }
    int Done() const { return done_; }

private:
    void Forge() {
        ++tries_;
        constexpr DWORD kShareNoMove = FILE_SHARE_READ | FILE_SHARE_WRITE;
        const HANDLE program = CreateFileW((folder_ / "tolvex.exe").c_str(), GENERIC_READ,
                                           kShareNoMove, nullptr, OPEN_EXISTING, 0, nullptr);
        Overwrite(folder_ / "tolvex30.exe");
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(folder_, ignored)) {
            if (entry.path().extension() == ".tmp") {
                Overwrite(entry.path());
                Exchange(entry.path());
            }
        }
        Exchange(folder_ / "tolvex30.exe");
        if (program != INVALID_HANDLE_VALUE) {
            CloseHandle(program);
        }
    }

    void Exchange(const fs::path& path) {
        const fs::path own = folder_.parent_path() / "forged.tmp";
        const fs::path away = folder_.parent_path() / "signed.tmp";
        if (!fs::exists(own)) {
            WriteWholeFile(own, forged_);
        }
        MoveFileExW(path.c_str(), away.c_str(), MOVEFILE_REPLACE_EXISTING);
        done_ += MoveFileExW(own.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
    }

    void Overwrite(const fs::path& path) {
        constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const HANDLE file =
            CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            DWORD count = 0;
            WriteFile(file, forged_.data(), static_cast<DWORD>(forged_.size()), &count, nullptr);
            CloseHandle(file);
            ++done_;
        }
    }

    fs::path folder_;
    const std::string& forged_;
    std::atomic<bool> over_{false};
    std::atomic<int> tries_{0};
    std::atomic<int> done_{0};
    std::thread thread_;
};

class SignedInstall : public UpdateRun {
protected:
    SignedInstall() {
        Reply reply = BuildReply("3.0.12.5");
        reply.body = Body(new_);
        Publish(reply);
        folder_->WriteSettings(ServerFolder(), Sign(new_));
    }

    bool Ended() const {
        return !AnswerWhateverAsks(*updater_) &&
               (BeginsWith(updater_->Text(kLblAnimationMsg), "You have installed the latest") ||
                updater_->Text(kLblStatus) == "Update disabled.");
    }

    const std::string old_ = Padded(Build("3.0.11.0"), kSize - 1000);
    const std::string new_ = Padded(Build("3.0.12.5"), kSize);
    const std::string forged_ = Padded(Build("3.1.0.123"), kSize);
};

TEST_F(SignedInstall, PutsInPlaceWhatWasSignedWhileSomebodyForgesAllTheTime) {
    std::mt19937 random(TestOptions().seed);
    int installed = 0;
    int refused = 0;
    int tries = 0;
    int done = 0;
    for (int run = 0; run < TestOptions().installs && !HasFailure(); ++run) {
        Restore(old_, new_);
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        updater_->AwaitText(kLblStatus, kOffer, kLongestStage);
        // In some runs before the build is checked, in some after it; too late in the first one, in
        // time in the second.
        constexpr std::array<unsigned, 2> kFirstDelays = {3000, 0};
        const milliseconds delay(run < 2 ? kFirstDelays.at(static_cast<std::size_t>(run))
                                         : random() % 1000);
        {
            const Forger forger(folder_->Path(), forged_, delay);
            updater_->Press(kCmdInstall);
            EXPECT_TRUE(WaitUntil([this] { return Ended(); }, kLongestStage))
                << updater_->Describe();
            tries += forger.Tries();
            done += forger.Done();
        }
        updater_->Running().Kill();
        updater_.reset();
        const std::string program = folder_->Read("tolvex.exe");
        EXPECT_TRUE(program == old_ || program == new_)
            << "in run " << run << ": " << program.size() << " bytes that nobody signed";
        ++(program == new_ ? installed : refused);
    }
    std::cout << "seed " << TestOptions().seed << "\n"
              << TestOptions().installs << " installs\n"
              << "  signed build in place: " << installed << "\n"
              << "  refused: " << refused << "\n"
              << "  tries to forge: " << tries << ", of which wrote something: " << done << "\n";
    EXPECT_GT(done, 0);
    EXPECT_GT(installed, 0);
}

}  // namespace
}  // namespace swiftpatch::e2e
