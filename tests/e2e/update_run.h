#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "e2e/app_folder.h"
#include "e2e/http_server.h"
#include "e2e/main_program.h"
#include "e2e/transcript.h"
#include "e2e/updater.h"

namespace swiftpatch::e2e {

/// When the builds on the server were changed last, unless a test says otherwise.
inline constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";
inline constexpr UtcTime kServerTime{std::chrono::seconds(1580890320)};

inline constexpr char kBuildTarget[] = "/upd/tolvex30.exe";
inline constexpr char kSignatureTarget[] = "/upd/tolvex30.exe.minisig";
inline constexpr char kLicenceTarget[] = "/upd/LICENSE.TXT";
inline constexpr char kAnimationTarget[] = "/upd/filecopy.avi";

/// What lies in an application folder before an update.
inline const std::set<std::string> kFurnished{"swiftpatch.exe", "tolvex.dta.txt", "filecopy.avi",
                                              "tolvex.exe"};

inline constexpr char kOffer[] = "Click on Install Button.";
inline constexpr char kApplication[] = "SwiftPatch";

/// One run of the real updater against a scripted server, in an application folder of its own. At
/// the end of each test the program must have ended by itself.
class UpdateRun : public ::testing::Test {
protected:
    UpdateRun();
    ~UpdateRun() override = default;
    void TearDown() override;

    // What is there before the program starts.

    /// Uses another application folder, for its name.
    void UseFolder(const std::wstring& name);
    /// The bytes of a sample main program, by its version ("none": without a version block).
    std::string Build(const std::string& version) const;
    Reply BuildReply(const std::string& version) const;
    /// The server offers a build, the licence text and the animation.
    void Publish(const std::string& version);
    void Publish(const Reply& build);
    /// The server has the maker's signature of `build`; returns what the data file then has to say.
    std::string Sign(const std::string& build);
    /// Puts a build into the application folder as tolvex.exe.
    void Install(const std::string& version) const;
    /// Puts a build into the application folder as tolvex30.exe, last changed at `time`.
    void Stage(const std::string& version, UtcTime time) const;
    /// A main program that the updater starts will record that.
    void LetMainProgramRecord() const;

    // The run.

    void Start(const std::string& httpProxy = {});
    /// Starts the program and waits for its main window.
    void StartToMainWindow();
    /// Answers the next message box, which must read like this.
    void AnswerBox(const std::string& text, int button, const std::string& title = kApplication);
    /// Answers the box that tells of a staged build that is not there.
    void AnswerMissingBuildBox();
    /// Answers the box that tells of a file without a version block.
    void AnswerCorruptFileBox(const std::string& name);
    /// Answers the box that tells of the backup that will be made.
    void AnswerBackupBox(const std::string& version);
    /// Closes the failure dialog, which must have this caption and begin with this message.
    void AnswerFailure(const std::string& caption, const std::string& message);
    /// Closes the failure dialog of a run that found no server.
    void AnswerNoConnection();
    /// Waits until the install is offered.
    void AwaitOffer();
    /// Presses Install, answers the box about the backup of the installed `version`, and waits
    /// until the new build is in.
    void InstallOffered(const std::string& version);
    /// A whole update from 3.0.11.0 to 3.0.12.5: published, fetched, installed, and the new build
    /// started and closed.
    void UpdateFromTheServer();
    /// Waits until the download has come that far.
    void AwaitPercentage(int percentage);
    /// Takes the mark off the check box at the bottom, so that the end does not start the main
    /// program.
    void SwitchOffStart();
    /// Switches off the start of the main program, presses Close and waits for the end.
    void CloseQuietly();
    /// Ends the main program that the updater started, if it did.
    void EndStartedMainProgram() const;
    /// Presses Close and waits for the end; the main program must not be left to be started.
    void Close();

    // What must be true afterwards.

    /// The server saw exactly these requests, "HEAD tolvex30.exe" for one in the server folder.
    void ExpectRequests(const std::vector<std::string>& requests) const;
    /// The application folder as before an update: with this program, and with a build that was
    /// fetched a day after it was published unless `staged` is empty.
    void Restore(const std::string& program, const std::string& staged) const;
    /// Exactly this happened to the files in the application folder: "created NAME", ...
    void ExpectFiles(std::vector<std::string> differences) const;
    /// The updater, which has ended, did not start the main program.
    void ExpectNothingStarted() const;
    /// The control showed these texts in this order, others between them.
    void ExpectInOrder(const Control& control, const std::vector<std::string>& texts) const;
    /// Message boxes with these titles came up, in this order, and no other.
    void ExpectBoxes(const std::vector<std::string>& titles) const;
    /// What remains after a failure: Close can be pressed, the main program will not be started.
    void ExpectStopped() const;

    /// The application folder as the program spells it: by its short name where the system's code
    /// page cannot spell the long one.
    std::string FolderText() const;
    std::string InFolder(const std::string& name) const { return FolderText() + "\\" + name; }
    std::string ServerFolder() const { return server_.Host() + "/upd/"; }

    HttpServer server_;
    std::unique_ptr<AppFolder> folder_;
    Snapshot before_;
    std::optional<Updater> updater_;
    std::optional<Transcript> transcript_;

private:
    void AwaitInTranscript(HWND window);
};

}  // namespace swiftpatch::e2e
