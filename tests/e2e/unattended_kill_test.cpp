// The updater without a window is ended by force at random moments: nothing may be lost, and its
// next run finishes the update.
#include <iostream>
#include <random>

#include "e2e/options.h"
#include "e2e/padded_build.h"
#include "e2e/text.h"
#include "e2e/unattended_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestStage{60000};
constexpr char kBackup[] = "tolvex.3.00.11.00.exe";

// Large enough that a copy takes a while, which a kill can hit.
constexpr std::size_t kOldSize = 9U << 20U;
constexpr std::size_t kNewSize = 10U << 20U;

class KilledUnattendedRun : public UnattendedRun {
protected:
    KilledUnattendedRun()
        : old_(Padded(Build("3.0.11.0"), kOldSize)), new_(Padded(Build("3.0.12.5"), kNewSize)) {
        Reply reply = BuildReply("3.0.12.5");
        reply.body = Body(new_);
        reply.bytesPerSecond = kNewSize;
        Publish(reply);
    }

    void Renew(bool staged) {
        Restore(old_, staged ? new_ : "");
        folder_->CopyIn(TestOptions().unattended, "swiftpatch-unattended.exe");
    }

    void StartAndKill(const std::string& afterLine, milliseconds later) {
        UnattendedProcess run(Program(), L"--json");
        run.AwaitLine(afterLine, kLongestStage);
        std::this_thread::sleep_for(later);
        run.Running().Kill();
    }

    void KillAtRandom(int kills);
    void ExpectNothingLost(const std::string& when);
    void ExpectUpdated(const std::string& when);

    const std::string old_;
    const std::string new_;
    std::map<std::string, int> hits_;
};

void KilledUnattendedRun::ExpectNothingLost(const std::string& when) {
    const std::string program = folder_->Has("tolvex.exe") ? folder_->Read("tolvex.exe") : "";
    EXPECT_TRUE(program == old_ || program == new_)
        << when << ": tolvex.exe has " << program.size() << " bytes";
    if (folder_->Has(kBackup)) {
        EXPECT_TRUE(folder_->Read(kBackup) == old_) << when << ": the backup is incomplete";
    }
    ++hits_[program == new_         ? "after the replacement"
            : folder_->Has(kBackup) ? "after the backup"
                                    : "before the backup"];
}

void KilledUnattendedRun::ExpectUpdated(const std::string& when) {
    EXPECT_TRUE(folder_->Read("tolvex.exe") == new_) << when << ": not updated by the next run";
    for (const auto& [name, contents] : folder_->Take()) {
        const bool expected = kFurnished.count(name) != 0 || name == "tolvex30.exe" ||
                              name == kBackup || name == "swiftpatch-unattended.exe";
        EXPECT_TRUE(expected) << when << ": left behind: " << name;
    }
}

void KilledUnattendedRun::KillAtRandom(int kills) {
    std::mt19937 random(TestOptions().seed);
    std::cout << "seed " << TestOptions().seed << "\n";
    for (int kill = 0; kill < kills; ++kill) {
        const bool install = kill % 3 != 0;
        const auto later = milliseconds(random() % (install ? 150 : 1000));
        const std::string when =
            "kill " + std::to_string(kill) + " after " + std::to_string(later.count()) + " ms";
        Renew(install);
        StartAndKill(install ? "A backup file" : "downloading the", later);
        ExpectNothingLost(when);
        const DWORD status = Run();
        EXPECT_TRUE(status == unattended::kInstalled || status == unattended::kNothingToDo)
            << when << ": " << status;
        ExpectUpdated(when);
    }
    for (const auto& [where, count] : hits_) {
        std::cout << "  " << where << ": " << count << "\n";
    }
}

TEST_F(KilledUnattendedRun, LosesNothingAndIsFinishedByTheNextRun) {
    KillAtRandom((TestOptions().kills + 1) / 2);
}

TEST_F(KilledUnattendedRun, ThatHasToBeSignedLosesNothingAndIsFinishedByTheNextRun) {
    folder_->WriteSettings(ServerFolder(), Sign(new_));
    KillAtRandom(TestOptions().kills / 2);
}

}  // namespace
}  // namespace swiftpatch::e2e
