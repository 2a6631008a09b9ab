// One run against a server that is there already, for comparison with what publish-check says of it
// (tests/servers). Without --server nothing is run.
#include <iostream>
#include <map>

#include "e2e/options.h"
#include "e2e/text.h"
#include "e2e/tls_front.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestRun{150000};

class AgainstServer : public UpdateRun {
protected:
    /// The word that publish-check has for it; empty while the run goes on.
    std::string Outcome() {
        static const std::map<std::string, std::string> kFailures{
            {"No Connection", "no-connection"},
            {"Bad Download Link", "bad-link"},
            {"Internet Connection Timeout", "broken-download"},
        };
        const std::string failure = updater_->Caption(kFailure);
        if (!failure.empty()) {
            const auto found = kFailures.find(failure);
            updater_->Press(kFailureExit);
            return found == kFailures.end() ? "failed" : found->second;
        }
        if (updater_->Window(kMain) == nullptr) {
            return "";
        }
        if (updater_->Visible(kCmdInstall) && updater_->Enabled(kCmdInstall)) {
            return "offered";
        }
        // Only boxes are answered here: what the failure dialog says is wanted above.
        if (const std::optional<Box> box = updater_->MessageBoxNow();
            box && !box->buttons.empty()) {
            updater_->Answer(*box, IDOK);
        }
        const bool latest = BeginsWith(updater_->Text(kLblAnimationMsg), "You are running the");
        return latest ? "latest" : "";
    }
};

TEST_F(AgainstServer, SaysWhatComesOfARun) {
    if (TestOptions().server.empty()) {
        GTEST_SKIP() << "no --server";
    }
    TrustOwnAuthority();
    Install("3.0.11.0");
    folder_->WriteSettings(TestOptions().server);
    Start(TestOptions().proxy);
    std::string outcome;
    Await(
        "the end of the run", [&] { return !(outcome = Outcome()).empty(); }, kLongestRun);
    const std::string report = updater_->Text(kTxtDebug);
    const bool staged = folder_->Has("tolvex30.exe");
    const bool whole = staged && folder_->Read("tolvex30.exe") == Build("3.0.12.5");
    std::cout << "outcome " << outcome << "\nstaged "
              << (whole    ? "whole"
                  : staged ? "in part"
                           : "nothing")
              << "\nreport " << OneLine(report.substr(0, report.find("\r\n"))) << "\n";
    updater_->Running().Kill();
}

}  // namespace
}  // namespace swiftpatch::e2e
