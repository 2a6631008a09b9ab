#pragma once

#include "e2e/update_run.h"

namespace swiftpatch::e2e {

/// The backups of the two builds that a way back is between.
inline constexpr char kBackupBelow[] = "tolvex.3.00.11.00.exe";
inline constexpr char kBackupAbove[] = "tolvex.3.00.12.05.exe";

inline constexpr char kWayBackQuestion[] = "Go back from version 3.00.12.05 to version 3.00.11.00?";
inline constexpr char kIsBack[] = "You are back at version 3.00.11.00.";

/// Runs on a machine on which 3.0.12.5 took the place of 3.0.11.0 in an earlier run, and is still
/// the build on the server.
class WayBackRun : public UpdateRun {
protected:
    WayBackRun() {
        Publish("3.0.12.5");
        Install("3.0.12.5");
        Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
        folder_->Write(kBackupBelow, Build("3.0.11.0"));
        Configure("");
    }

    /// The data file, with the way back and further lines.
    void Configure(const std::string& more) {
        folder_->WriteSettings(ServerFolder(), "OfferBackups=1\r\n" + more);
    }

    void AwaitWayBack() const { updater_->AwaitEnabled(kCmdGoBack, kLongest); }
    void PressAndAgree() {
        AwaitWayBack();
        updater_->Press(kCmdGoBack);
        AnswerBox(kWayBackQuestion, IDYES);
    }
    void AwaitBack() const { updater_->AwaitText(kLblAnimationMsg, kIsBack, kLongest); }

    static constexpr milliseconds kLongest{120000};
};

}  // namespace swiftpatch::e2e
