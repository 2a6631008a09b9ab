#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "publish/order.h"
#include "publish/signatures.h"
#include "publish/steps.h"
#include "publish_check/server_state.h"

namespace publish {

/// A release in a folder of its own, with all files that it changes on the server: the signature
/// where builds have to be signed, and the animation where updaters would ask for it in vain.
class StagedRelease {
public:
    /// `order.build` is the build; `present` is what the server has now. Has it signed where the
    /// order says so. Throws PublishError.
    StagedRelease(const std::filesystem::path& folder, const Order& order,
                  const publish_check::ServerState& present, Steps& steps);

    /// What the server will have.
    const publish_check::ServerState& State() const { return state_; }
    /// The build on the server is another one.
    bool ChangesBuild() const { return changesBuild_; }
    /// A key of the build that is there has not signed this one, and is none of the updaters' as
    /// far as anybody said.
    bool LosesKey() const { return losesKey_; }
    /// In the order in which they have to be put in place: the signature, which is that of the
    /// build before as well, and then the build.
    const std::vector<std::filesystem::path>& Files() const { return files_; }
    /// Gives the build the present time, so that machines which have fetched the one before fetch
    /// it.
    void MakeNew() const;

private:
    void StageAnimation();
    void StageSignature(const Order& order, const publish_check::ServerState& present,
                        Steps& steps);
    std::vector<BlockText> NewBlocks(const Order& order, Steps& steps) const;
    publish_check::PublishedFile ReadStaged(const std::string& name) const;

    std::filesystem::path folder_;
    std::filesystem::path build_;
    publish_check::ServerState state_;
    bool changesBuild_ = false;
    std::vector<std::filesystem::path> files_;
    bool losesKey_ = false;
};

/// Where the signature of a build lies that somebody else has signed.
std::filesystem::path SignatureBeside(const std::filesystem::path& build);

/// The file in which the signatures of a release stand while its upload is under way: until that is
/// done, nobody knows whose build the server has.
std::filesystem::path UploadedSignatures(const std::filesystem::path& folder);

}  // namespace publish
