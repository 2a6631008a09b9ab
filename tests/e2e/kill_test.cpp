// The updater is ended by force at random moments, as by a loss of power: nothing may be lost.
#include <algorithm>
#include <iostream>
#include <random>

#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/padded_build.h"
#include "e2e/text.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr milliseconds kLongestStage{60000};
constexpr char kBackup[] = "tolvex.3.00.11.00.exe";

// Large enough that a copy takes a while, which a kill can hit, and is sent to the disk in pieces.
constexpr std::size_t kOldSize = 18U << 20U;
constexpr std::size_t kNewSize = 19U << 20U;

// What a kill is aimed at.
enum class Aim { kStart, kDownload, kInstall };

class KilledUpdate : public UpdateRun {
protected:
    KilledUpdate()
        : old_(Padded(Build("3.0.11.0"), kOldSize)), new_(Padded(Build("3.0.12.5"), kNewSize)) {
        Reply reply = BuildReply("3.0.12.5");
        reply.body = Body(new_);
        reply.bytesPerSecond = kNewSize;
        Publish(reply);
        Configure("");
    }

    void Configure(const std::string& keys) {
        folder_->WriteSettings(ServerFolder(), "InstallAtOnce=1\r\n" + keys);
    }

    void KillAtRandom(int kills);

    /// Answers all the boxes before the one about the backup and leaves that one open.
    Box AwaitBackupBox() const {
        for (;;) {
            const Box box = updater_->AwaitMessageBox(kLongestStage);
            if (box.text.find("A backup file") != std::string::npos) {
                return box;
            }
            AnswerWhateverAsks(*updater_);
        }
    }

    bool Finished() const {
        const std::string text = updater_->Text(kLblAnimationMsg);
        return BeginsWith(text, "You have installed the latest") ||
               BeginsWith(text, "You are running the latest");
    }

    /// Lets a run go to its end without a person's help.
    void RunToTheEnd() {
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        const auto finished = [this] {
            return (!AnswerWhateverAsks(*updater_) && Finished()) || !updater_->Running().Running();
        };
        if (!WaitUntil(finished, kLongestStage)) {
            ADD_FAILURE() << "the next run does not finish the update; " << updater_->Describe();
        }
        updater_.reset();
    }

    /// How long the two copies of an install take here.
    microseconds MeasureInstall() {
        Restore(old_, new_);
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        const Box box = AwaitBackupBox();
        const Clock::time_point start = Clock::now();
        ClickOn(GetDlgItem(box.window, box.buttons.front()));
        WaitUntil([this] { return Finished(); }, kLongestStage);
        const auto time = std::chrono::duration_cast<microseconds>(Clock::now() - start);
        updater_.reset();
        return time;
    }

    void StartAndKill(Aim aim, microseconds after) {
        const std::size_t requests = server_.Requests().size();
        updater_.emplace(folder_->Updater());
        if (aim != Aim::kStart) {
            HurryIntoCheck(*updater_);
        }
        if (aim == Aim::kDownload) {
            Await(
                "the download", [this, requests] { return Downloading(requests); }, kLongestStage);
        } else if (aim == Aim::kInstall) {
            const Box box = AwaitBackupBox();
            ClickOn(GetDlgItem(box.window, box.buttons.front()));
        }
        WaitExactly(after);
        updater_->Running().Kill();
        updater_.reset();
    }

    bool Downloading(std::size_t requestsBefore) const {
        AnswerWhateverAsks(*updater_);
        const std::vector<Request> requests = server_.Requests();
        return std::any_of(requests.begin() + static_cast<std::ptrdiff_t>(requestsBefore),
                           requests.end(),
                           [](const Request& request) { return request.method == "GET"; });
    }

    /// What the folder is like; counts where the kills hit.
    void LookAt(const std::string& when) {
        const std::string program = folder_->Has("tolvex.exe") ? folder_->Read("tolvex.exe") : "";
        if (program != old_ && program != new_) {
            ADD_FAILURE() << when << ": tolvex.exe is neither the old nor the new build but has "
                          << program.size() << " bytes";
        }
        if (folder_->Has(kBackup) && folder_->Read(kBackup) != old_) {
            ADD_FAILURE() << when << ": the backup is incomplete: " << folder_->Read(kBackup).size()
                          << " of " << old_.size() << " bytes";
        }
        if (program == new_) {
            ++hits_["after the replacement"];
        } else if (folder_->Has(kBackup)) {
            ++hits_["after the backup"];
        } else if (!folder_->Has("tolvex30.exe")) {
            ++hits_["before the download"];
        } else {
            const bool whole = folder_->Read("tolvex30.exe") == new_;
            ++hits_[whole ? "before the backup" : "in the download"];
        }
        for (const auto& [name, contents] : folder_->Take()) {
            if (kFurnished.count(name) == 0 && name != "tolvex30.exe" && name != kBackup) {
                ++hits_["with a temporary file left"];
            }
        }
    }

    void ExpectUpdated(const std::string& when) const {
        EXPECT_TRUE(folder_->Read("tolvex.exe") == new_) << when << ": not updated by the next run";
        for (const auto& [name, contents] : folder_->Take()) {
            if (name == kBackup) {
                EXPECT_TRUE(contents == old_) << when << ": the backup is not the old build";
            } else if (kFurnished.count(name) == 0 && name != "tolvex30.exe") {
                ADD_FAILURE() << when << ": left behind: " << name;
            }
        }
    }

    const std::string old_;
    const std::string new_;
    std::map<std::string, int> hits_;
};

void KilledUpdate::KillAtRandom(int kills) {
    std::mt19937 random(TestOptions().seed);
    const microseconds install = MeasureInstall();
    std::cout << "seed " << TestOptions().seed << ", an install takes " << install.count()
              << " microseconds\n";
    const auto upTo = [&random](microseconds most) {
        return microseconds(std::uniform_int_distribution<std::int64_t>(0, most.count())(random));
    };
    for (int kill = 1; kill <= kills && !HasFatalFailure(); ++kill) {
        // The install is short and its steps are what matters most.
        const unsigned dice = random() % 20;
        const Aim aim = dice == 0 ? Aim::kStart : dice < 6 ? Aim::kDownload : Aim::kInstall;
        const microseconds after = upTo(aim == Aim::kStart      ? seconds(4)
                                        : aim == Aim::kDownload ? milliseconds(1300)
                                                                : install);
        const std::string when = "kill " + std::to_string(kill) + " (aim " +
                                 std::to_string(static_cast<int>(aim)) + ", after " +
                                 std::to_string(after.count()) + " microseconds)";
        Restore(old_, aim == Aim::kInstall ? new_ : "");
        StartAndKill(aim, after);
        LookAt(when);
        RunToTheEnd();
        ExpectUpdated(when);
    }
    std::cout << kills << " kills\n";
    for (const auto& [where, count] : hits_) {
        std::cout << "  " << where << ": " << count << "\n";
    }
}

TEST_F(KilledUpdate, LosesNothingAndIsFinishedByTheNextRun) {
    KillAtRandom((TestOptions().kills + 1) / 2);
}

TEST_F(KilledUpdate, ThatHasToBeSignedLosesNothingAndIsFinishedByTheNextRun) {
    Configure(Sign(new_));
    KillAtRandom(TestOptions().kills / 2);
}

}  // namespace
}  // namespace swiftpatch::e2e
