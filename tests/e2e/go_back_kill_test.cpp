// The updater is ended by force at random moments of a way back: neither build may be lost.
#include <iostream>
#include <random>

#include "e2e/go_back_run.h"
#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/padded_build.h"

namespace swiftpatch::e2e {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

// Large enough that a copy takes a while, which a kill can hit, and is sent to the disk in pieces.
constexpr std::size_t kAboveSize = 19U << 20U;
constexpr std::size_t kBelowSize = 18U << 20U;

class KilledWayBack : public WayBackRun {
protected:
    void Arrange() {
        Restore(above_, Build("3.0.12.5"));
        folder_->Write(kBackupBelow, below_);
    }

    /// Answers the question and leaves the rest to the program.
    void Begin() {
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        AwaitWayBack();
        updater_->Press(kCmdGoBack);
        ClickOn(GetDlgItem(updater_->AwaitMessageBox(kLongest).window, IDYES));
    }

    /// The question may still be on the screen, which would end any other wait.
    void AwaitEndOfCopies() const {
        Await(
            "the report", [this] { return updater_->Text(kLblAnimationMsg) == kIsBack; }, kLongest);
    }

    /// How long the two copies take here.
    microseconds Measure() {
        Arrange();
        Begin();
        const Clock::time_point start = Clock::now();
        AwaitEndOfCopies();
        const auto time = std::chrono::duration_cast<microseconds>(Clock::now() - start);
        updater_.reset();
        return time;
    }

    void BeginAndKill(microseconds after) {
        Begin();
        WaitExactly(after);
        updater_->Running().Kill();
        updater_.reset();
    }

    /// What the folder is like; counts where the kills hit.
    void LookAt(const std::string& when) {
        const std::string program = folder_->Has("tolvex.exe") ? folder_->Read("tolvex.exe") : "";
        const bool kept = folder_->Has(kBackupAbove);
        if (program != above_ && program != below_) {
            ADD_FAILURE() << when << ": tolvex.exe is neither of the two builds but has "
                          << program.size() << " bytes";
        }
        EXPECT_TRUE(folder_->Read(kBackupBelow) == below_) << when << ": the backup is lost";
        EXPECT_TRUE(!kept || folder_->Read(kBackupAbove) == above_) << when << ": half a backup";
        EXPECT_TRUE(kept || program == above_) << when << ": no way forward";
        ++hits_[program == below_ ? "after the replacement"
                : kept            ? "after the backup"
                                  : "before the backup"];
        for (const auto& [name, contents] : folder_->Take()) {
            if (!IsKnown(name)) {
                ++hits_["with a temporary file left"];
            }
        }
    }

    void ExpectFinishedByTheNextRun(const std::string& when) {
        const bool back = folder_->Read("tolvex.exe") == below_;
        if (back) {
            updater_.emplace(folder_->Updater());
            HurryIntoCheck(*updater_);
            AwaitOffer();
        } else {
            Begin();
            AwaitEndOfCopies();
        }
        EXPECT_EQ(updater_->Visible(kCmdGoBack), false) << when;
        updater_.reset();
        EXPECT_TRUE(folder_->Read("tolvex.exe") == below_) << when;
        EXPECT_TRUE(folder_->Read(kBackupAbove) == above_) << when;
        for (const auto& [name, contents] : folder_->Take()) {
            EXPECT_TRUE(IsKnown(name)) << when << ": left behind: " << name;
        }
    }

    static bool IsKnown(const std::string& name) {
        return kFurnished.count(name) != 0 || name == "tolvex30.exe" || name == kBackupBelow ||
               name == kBackupAbove;
    }

    const std::string above_ = Padded(Build("3.0.12.5"), kAboveSize);
    const std::string below_ = Padded(Build("3.0.11.0"), kBelowSize);
    std::map<std::string, int> hits_;
};

TEST_F(KilledWayBack, LosesNeitherBuildAndIsFinishedByTheNextRun) {
    const int kills = (TestOptions().kills + 1) / 2;
    std::mt19937 random(TestOptions().seed);
    const microseconds whole = Measure();
    std::cout << "seed " << TestOptions().seed << ", a way back takes " << whole.count()
              << " microseconds\n";
    for (int kill = 1; kill <= kills && !HasFatalFailure(); ++kill) {
        const microseconds after(
            std::uniform_int_distribution<std::int64_t>(0, whole.count())(random));
        const std::string when = "kill " + std::to_string(kill) + " (after " +
                                 std::to_string(after.count()) + " microseconds)";
        Arrange();
        BeginAndKill(after);
        LookAt(when);
        ExpectFinishedByTheNextRun(when);
    }
    std::cout << kills << " kills\n";
    for (const auto& [where, count] : hits_) {
        std::cout << "  " << where << ": " << count << "\n";
    }
}

}  // namespace
}  // namespace swiftpatch::e2e
