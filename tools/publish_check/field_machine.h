#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "mainwindow/check_facts.h"
#include "publish_check/server_state.h"
#include "publish_check/version.h"
#include "runtime/datetime.h"
#include "runtime/headless/disk.h"

namespace publish_check {

/// What a run of an updater comes to.
enum class Outcome {
    kOffered,           ///< The published build can be installed.
    kLatest,            ///< "You are running the latest version."
    kNothingNewer,      ///< The build was fetched, and found to be no newer than the installed one.
    kNoConnection,      ///< The server does not count as there.
    kBadLink,           ///< The build does not count as there.
    kBadAnimationLink,  ///< The animation is missing here and there, and that ends the run.
    kBrokenDownload,    ///< The connection was lost while the build came in.
    kNoVersion,         ///< What came could not be compared.
    kNoProgram,         ///< There is no main program to compare with.
    kSignatureMissing,  ///< The build has no signature by one of the keys, and was not fetched.
    kSignatureInvalid,  ///< The build was fetched, and none of the keys has signed it.
    kSigningKeyInvalid,  ///< The keys cannot be read.
    kFailed,             ///< Anything else that ends a run.
};

/// What a user would have seen of a run, and the server.
struct FieldRun {
    Outcome outcome = Outcome::kFailed;
    std::vector<std::string> requests;  ///< "HEAD tolvex30.exe", in their order.
    /// The title and the text of each failure that was shown.
    std::vector<std::pair<std::string, std::string>> failures;
    std::vector<std::string> boxes;  ///< The texts of the message boxes.
    std::string status;              ///< The last texts of lblStatus,
    std::string message;             ///< lblAnimationMsg,
    std::string available;           ///< lblTolvexVersion
    std::string caption;             ///< and the window.
    swiftpatch::CheckFacts facts;    ///< What the check found out.

    bool Asked(const std::string& request) const;
};

/// A server folder that machines in memory can ask as often as it takes. Its state has to outlive
/// it.
class PublishedFolder {
public:
    explicit PublishedFolder(const ServerState& state) : state_(state) {}

    const std::string& Address() const { return state_.address; }
    /// Tells the scripted server of the machine that exists now what to answer.
    void Publish() const;

private:
    void Publish(const std::string& name, const PublishedFile& file) const;

    const ServerState& state_;
};

/// A machine in the field: the real program runs on it, over a disk, a clock and a server in
/// memory.
class FieldMachine {
public:
    /// What its clock says, in UTC, and the keys that its data file names; without them builds need
    /// not be signed.
    explicit FieldMachine(swiftpatch::DateTime now, std::optional<std::string> keys = {})
        : now_(now), keys_(std::move(keys)) {}

    /// Puts a sample build of so many bytes there; one without a version block without `version`.
    void PutBuild(const std::string& name, const std::optional<Version>& version, std::size_t size,
                  swiftpatch::DateTime changed = {});
    void PutFile(const std::string& name, const std::string& bytes,
                 swiftpatch::DateTime changed = {});

    /// Starts the updater, has every question answered by its first button, and waits for the end
    /// of the check and of what follows from it. The files stay for the next run.
    FieldRun Run(const PublishedFolder& folder);

private:
    swiftpatch::DateTime now_;
    std::optional<std::string> keys_;
    std::map<std::string, swiftpatch::headless::File> files_;
};

/// The server folder that an updater uses when its data file says `text`.
std::string FolderFromDataFile(const std::string& text);

}  // namespace publish_check
