// A release comes about beside the folder's files, in .publish, where it is signed and judged; then
// the build that is there is kept, and each file is put in its place by one renaming: the signature
// file first, which at that moment is that of both builds. So an updater that asks at any moment
// gets a build with its signature. Whatever goes wrong is undone on the way out. A kill undoes
// nothing; it leaves the old build or the new one in service, and .publish, which the next call
// clears away.
#include "publish/publish.h"

#include <new>
#include <optional>
#include <utility>

#include "publish/files.h"
#include "publish/judgement.h"
#include "publish/placement.h"
#include "publish/publish_error.h"
#include "publish/server_folder.h"
#include "publish/staged_release.h"
#include "publish/system.h"
#include "publish/upload.h"
#include "publish/workshop.h"
#include "publish_check/folder_server.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::Assessment;
using publish_check::Installed;
using publish_check::PlainText;
using publish_check::ServerState;
using publish_check::Utf8;
using publish_check::Version;

namespace {

void CheckSigning(const Order& order) {
    const bool isSigned = fs::exists(order.folder / swiftpatch::kBuildSignature) ||
                          fs::exists(UploadedSignatures(order.folder));
    if (!order.keys && isSigned) {
        throw PublishError(std::string("the build that is there is signed: sign the new one with "
                                       "--key, or name the updaters' keys with --keys where ") +
                           swiftpatch::kBuildSignature + " lies beside it");
    }
    if (!order.keys && fs::exists(SignatureBeside(order.build))) {
        throw PublishError(
            "there is a signature beside the build: name the updaters' keys with "
            "--keys, so that it can be checked");
    }
}

void CheckFolder(const Order& order, const ServerState& present) {
    if (!present.build.nearlyNamed.empty()) {
        throw PublishError("the folder has a build under another name: " +
                           present.build.nearlyNamed);
    }
    const fs::path kept = order.folder / kKeptBuilds;
    if (fs::exists(fs::symlink_status(kept)) && !fs::is_directory(kept)) {
        throw PublishError(Utf8(kept) +
                           " is no folder, and earlier builds are kept in one of this name");
    }
    if (fs::weakly_canonical(order.folder).parent_path().filename() == kKeptBuilds) {
        throw PublishError("this folder is one of those in which earlier builds are kept");
    }
}

/// Until the upload is done nobody knows which build the server has.
void RememberUpload(const Order& order, const StagedRelease& release, const Workshop& workshop) {
    if (order.keys) {
        ReplaceFile(UploadedSignatures(order.folder), release.State().signature.get.body,
                    workshop.Scratch());
    }
}

/// The date of a build is that of the moment at which it gets there.
void HandOver(const Order& order, const StagedRelease& release, Steps& steps) {
    for (const fs::path& file : release.Files()) {
        if (release.ChangesBuild() && file.filename() == swiftpatch::kStagedBuild) {
            release.MakeNew();
        }
        Upload(order.upload, file);
        steps.Add("uploaded", Utf8(file.filename()));
    }
}

void PutInPlace(const StagedRelease& release, Placement& placement, Steps& steps) {
    for (const fs::path& file : release.Files()) {
        const bool isBuild = file.filename() == swiftpatch::kStagedBuild;
        if (!isBuild || release.ChangesBuild()) {
            placement.Place(file);
            steps.Add("placed", Utf8(file.filename()));
        }
    }
}

Assessment CheckOnceMore(const Order& order, const StagedRelease& release,
                         const std::vector<Installed>& installed) {
    const ServerState now = publish_check::ReadFolder(order.folder, order.keys.has_value());
    Assessment assessment = AssessFor(order, now, installed);
    if (now.build.get.body != release.State().build.get.body || !assessment.Served()) {
        throw PublishError("the folder is not as it was left: somebody else changes it");
    }
    return assessment;
}

/// What is known of the present build, all of which is gone once it has been replaced.
struct Present {
    std::string signature;
    fs::file_time_type date;
    std::optional<KeptPlace> kept;
};

Present KeepPresent(const Order& order, const ServerState& state, const StagedRelease& release,
                    const Workshop& workshop, Steps& steps) {
    Present present;
    if (release.ChangesBuild() && IsThere(state.build)) {
        present.signature = state.signature.get.body;
        present.date = fs::last_write_time(order.folder / swiftpatch::kStagedBuild);
        present.kept = KeepPresentBuild(order.folder, state.build.get.body, workshop.Kept());
        steps.Add("kept", Utf8(present.kept->folder.lexically_relative(order.folder)));
    }
    return present;
}

/// The release is in service, so that nothing of this may fail it.
void TidyUp(const Order& order, const Present& present, const Workshop& workshop) {
    std::error_code error;
    if (!order.upload.empty()) {
        fs::remove(UploadedSignatures(order.folder), error);
    }
    if (!present.kept) {
        return;
    }
    try {
        if (!present.kept->made) {
            Refresh(*present.kept, present.signature, present.date, workshop.Scratch());
        }
        if (order.rollBack) {
            Withdraw(*present.kept);
        }
    } catch (const std::exception&) {
        // Then it is kept as it was.
    }
}

Assessment Release(const Order& order, const ServerState& state, const StagedRelease& release,
                   const Workshop& workshop, const std::vector<Installed>& installed,
                   Steps& steps) {
    Placement placement(order.folder, workshop.Before());
    Left left = Left::kAsItWas;
    try {
        const Present present = KeepPresent(order, state, release, workshop, steps);
        placement.Kept(present.kept.value_or(KeptPlace()));
        if (!order.upload.empty()) {
            RememberUpload(order, release, workshop);
            left = Left::kUploaded;
            HandOver(order, release, steps);
        } else if (release.ChangesBuild()) {
            release.MakeNew();
        }
        PutInPlace(release, placement, steps);
        Assessment assessment = CheckOnceMore(order, release, installed);
        TidyUp(order, present, workshop);
        steps.Add("checked", "the folder, once more");
        return assessment;
    } catch (const std::exception& error) {
        throw PublishError(ReasonOf(error), placement.PutBack() ? left : Left::kChanged);
    }
}

/// The version that comes back, and its build.
std::optional<Version> ChooseBuild(Order& order, const ServerState& present, Steps& steps) {
    if (!order.rollBack) {
        return std::nullopt;
    }
    const KeptBuild kept =
        KeptBuildToReturn(order.folder, order.backTo, VersionOf(present.build.get.body));
    order.build = kept.folder / swiftpatch::kStagedBuild;
    steps.Add("back to", PlainText(kept.version));
    return kept.version;
}

}  // namespace

std::string ReasonOf(const std::exception& error) {
    if (const auto* const system = dynamic_cast<const fs::filesystem_error*>(&error)) {
        return Utf8(system->path1()) + ": " + system->code().message();
    }
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return "not enough memory for files as large as these";
    }
    return error.what();
}

Result Publish(Order order, Steps& steps) {
    if (!fs::is_directory(order.folder)) {
        throw PublishError("there is no folder " + Utf8(order.folder));
    }
    const FolderLock lock(order.folder);
    const ServerState present = publish_check::ReadFolder(order.folder, order.keys.has_value());
    CheckFolder(order, present);
    const std::optional<Version> back = ChooseBuild(order, present, steps);
    CheckSigning(order);
    const Workshop workshop(order);
    workshop.Open();
    const StagedRelease release(workshop.New(), order, present, steps);
    Result result;
    result.installed = VersionsInTheField(order, present, back);
    Assessment assessment = AssessFor(order, release.State(), result.installed);
    CompareWithBefore(order, present, release, assessment);
    result.version = assessment.versions ? PlainText(assessment.versions->product) : "";
    result.published = assessment.Served();
    if (result.published && !order.dryRun) {
        assessment = Release(order, present, release, workshop, result.installed, steps);
    }
    result.assessment = std::move(assessment);
    return result;
}

}  // namespace publish
