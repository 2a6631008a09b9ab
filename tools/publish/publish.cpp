// A release comes about beside the folder's files, in .publish, where it is signed and judged; then
// the build that is there is kept, and each file is put in its place by one renaming: the signature
// file first, which at that moment is that of both builds. So an updater that asks at any moment
// gets a build with its signature. Whatever goes wrong is undone on the way out. A kill undoes
// nothing; it leaves the old build or the new one in service, and .publish, which the next call
// clears away.
#include "publish/publish.h"

#include <algorithm>
#include <random>

#include "publish/files.h"
#include "publish/judgement.h"
#include "publish/placement.h"
#include "publish/publish_error.h"
#include "publish/server_folder.h"
#include "publish/staged_release.h"
#include "publish/system.h"
#include "publish/upload.h"
#include "publish_check/folder_server.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::Assessment;
using publish_check::Installed;
using publish_check::PlainText;
using publish_check::ServerState;

namespace {

/// The folder in which a release comes about, and which goes with this. Its name is not used again,
/// since a program that an earlier call has started may still write to its own. Only a trial leaves
/// the server's folder alone.
class Workshop {
public:
    explicit Workshop(const Order& order)
        : parent_(order.dryRun ? fs::temp_directory_path() : order.folder / kWorkshop),
          folder_(parent_ / ("publish-" + std::to_string(std::random_device()()))) {
        if (!order.dryRun) {
            RemoveLeftovers(UploadedSignatures(order.folder));
        }
        fs::create_directories(New());
    }
    ~Workshop() {
        std::error_code error;
        fs::remove_all(folder_, error);
        if (parent_.filename() == kWorkshop) {
            fs::remove(parent_, error);
        }
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    fs::path New() const { return folder_ / "new"; }
    fs::path Before() const { return folder_ / "before"; }
    fs::path Kept() const { return folder_ / "kept"; }

private:
    void RemoveLeftovers(const fs::path& exceptFor) const {
        if (fs::is_directory(parent_)) {
            for (const fs::directory_entry& entry : fs::directory_iterator(parent_)) {
                if (entry.path() != exceptFor) {
                    fs::remove_all(entry.path());
                }
            }
        }
    }

    fs::path parent_;
    fs::path folder_;
};

void TakeKeptBuild(Order& order, const ServerState& present, Steps& steps) {
    const auto now = VersionOf(present.build.get.body);
    const std::vector<KeptBuild> builds = KeptBuilds(order.folder);
    const auto kept = std::find_if(builds.begin(), builds.end(), [&now](const KeptBuild& each) {
        return !now || each.version < *now;
    });
    if (kept == builds.end()) {
        throw PublishError("no build with a lower version was kept in " +
                           publish_check::Utf8(order.folder / kKeptBuilds));
    }
    order.build = kept->folder / swiftpatch::kStagedBuild;
    steps.Add("back to", PlainText(kept->version));
}

void CheckFolder(const Order& order, const ServerState& present) {
    if (!order.keys && fs::exists(order.folder / swiftpatch::kBuildSignature)) {
        throw PublishError(std::string("the build that is there is signed: sign the new one with "
                                       "--key, or name the updaters' keys with --keys where ") +
                           swiftpatch::kBuildSignature + " lies beside it");
    }
    if (!present.build.nearlyNamed.empty()) {
        throw PublishError("the folder has a build under another name: " +
                           present.build.nearlyNamed);
    }
}

void HandOver(const Order& order, const StagedRelease& release, Steps& steps) {
    const fs::path marker = UploadedSignatures(order.folder);
    if (order.keys) {
        WriteFile(marker, release.State().signature.get.body);
        FlushFolder(marker.parent_path());
    }
    for (const fs::path& file : release.Files()) {
        Upload(order.upload, file);
        steps.Add("uploaded", publish_check::Utf8(file.filename()));
    }
}

void PutInPlace(const StagedRelease& release, Placement& placement, Steps& steps) {
    for (const fs::path& file : release.Files()) {
        const bool isBuild = file.filename() == swiftpatch::kStagedBuild;
        if (!isBuild || release.ChangesBuild()) {
            placement.Place(file);
            steps.Add("placed", publish_check::Utf8(file.filename()));
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

Assessment Release(const Order& order, const ServerState& present, const StagedRelease& release,
                   const Workshop& workshop, const std::vector<Installed>& installed,
                   Steps& steps) {
    Placement placement(order.folder, workshop.Before());
    if (release.ChangesBuild()) {
        if (IsThere(present.build)) {
            if (const auto kept =
                    KeepPresentBuild(order.folder, present.build.get.body, workshop.Kept())) {
                placement.Made(*kept);
                steps.Add("kept", publish_check::Utf8(kept->lexically_relative(order.folder)));
            }
        }
        release.MakeNew();
    }
    if (!order.upload.empty()) {
        HandOver(order, release, steps);
    }
    PutInPlace(release, placement, steps);
    Assessment assessment = CheckOnceMore(order, release, installed);
    placement.Keep();
    fs::remove(UploadedSignatures(order.folder));
    steps.Add("checked", "the folder, once more");
    return assessment;
}

}  // namespace

Result Publish(Order order, Steps& steps) {
    if (!fs::is_directory(order.folder)) {
        throw PublishError("there is no folder " + publish_check::Utf8(order.folder));
    }
    const FolderLock lock(order.folder);
    const ServerState present = publish_check::ReadFolder(order.folder, order.keys.has_value());
    CheckFolder(order, present);
    if (order.rollBack) {
        TakeKeptBuild(order, present, steps);
    }
    const Workshop workshop(order);
    const StagedRelease release(workshop.New(), order, present, steps);
    Result result;
    result.installed = VersionsInTheField(order, present);
    Assessment assessment = AssessFor(order, release.State(), result.installed);
    CompareWithPresent(present, release.ChangesBuild(), order.rollBack, assessment);
    result.version = assessment.versions ? PlainText(assessment.versions->product) : "";
    result.published = assessment.Served();
    if (result.published && !order.dryRun) {
        assessment = Release(order, present, release, workshop, result.installed, steps);
    }
    result.assessment = std::move(assessment);
    return result;
}

}  // namespace publish
