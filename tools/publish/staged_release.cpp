#include "publish/staged_release.h"

#include <algorithm>
#include <numeric>

#include "publish/animation.h"
#include "publish/files.h"
#include "publish/publish_error.h"
#include "publish/server_folder.h"
#include "publish/system.h"
#include "publish_check/folder_server.h"
#include "publish_check/signature_findings.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::ServerState;
using swiftpatch::SigningKey;

namespace {

void Append(std::vector<BlockText>& blocks, const std::vector<BlockText>& more) {
    blocks.insert(blocks.end(), more.begin(), more.end());
}

/// The signature that somebody has put beside a build: only what fits, where anything does.
std::vector<BlockText> BlocksBeside(const fs::path& build, const std::vector<SigningKey>& keys,
                                    const swiftpatch::Blake2b::Digest& hash) {
    const fs::path beside = SignatureBeside(build);
    if (!fs::is_regular_file(beside)) {
        return {};
    }
    const std::string text = ReadFile(beside);
    const std::vector<BlockText> fitting = FittingBlocks(text, keys, hash);
    return fitting.empty() ? BlocksIn(text) : fitting;
}

bool HasBlockOfSameKey(const std::vector<BlockText>& blocks, const BlockText& block) {
    constexpr std::size_t kLetters = 13;  // "RU" or "RW" and the key's number, as base64.
    const auto key = [](const BlockText& text) {
        const std::size_t line = text.find('\n');
        return line == std::string::npos ? text : text.substr(line + 1, kLetters);
    };
    return std::any_of(blocks.begin(), blocks.end(),
                       [&](const BlockText& each) { return key(each) == key(block); });
}

/// The web server is another user.
void MakeReadable(const fs::path& file) {
    using fs::perms;
    fs::permissions(
        file, perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
}

/// Leaves out the blocks of keys that have signed among `others`.
void LeaveOutSameKeys(std::vector<BlockText>& blocks, const std::vector<BlockText>& others) {
    std::erase_if(blocks,
                  [&others](const BlockText& block) { return HasBlockOfSameKey(others, block); });
}

void LeaveOut(std::vector<BlockText>& blocks, const std::vector<BlockText>& others) {
    std::erase_if(blocks, [&others](const BlockText& block) {
        return std::find(others.begin(), others.end(), block) != others.end();
    });
}

/// Those that fit, and those of keys that nobody has named here: they cannot be checked, and are
/// those of builds before where they stand beside one that was kept.
std::vector<BlockText> BlocksOfPresent(const Order& order, const std::vector<SigningKey>& keys,
                                       const ServerState& present) {
    if (!IsThere(present.build) || !IsThere(present.signature)) {
        return {};
    }
    const std::string& file = present.signature.get.body;
    std::vector<BlockText> blocks =
        FittingBlocks(file, keys, publish_check::HashOfBuild(present.build.get.body));
    std::vector<BlockText> unknown = BlocksOfOtherKeys(file, keys);
    for (const KeptBuild& kept : KeptBuilds(order.folder)) {
        const fs::path beside = kept.folder / swiftpatch::kBuildSignature;
        if (fs::is_regular_file(beside)) {
            LeaveOut(unknown, BlocksIn(ReadFile(beside)));
        }
    }
    Append(blocks, unknown);
    return blocks;
}

/// Those of an upload that was broken off, but for those of the build with this hash: it is signed
/// anew with each try.
std::vector<BlockText> BlocksOfUpload(const Order& order, const std::vector<SigningKey>& keys,
                                      const swiftpatch::Blake2b::Digest& hash) {
    const fs::path marker = UploadedSignatures(order.folder);
    if (!fs::is_regular_file(marker)) {
        return {};
    }
    const std::string file = ReadFile(marker);
    std::vector<BlockText> blocks = BlocksIn(file);
    LeaveOut(blocks, FittingBlocks(file, keys, hash));
    return blocks;
}

}  // namespace

fs::path SignatureBeside(const fs::path& build) {
    fs::path beside = build;
    beside += ".minisig";
    return beside;
}

fs::path UploadedSignatures(const fs::path& folder) {
    return folder / kWorkshop / "uploaded.minisig";
}

StagedRelease::StagedRelease(const fs::path& folder, const Order& order, const ServerState& present,
                             Steps& steps)
    : folder_(folder), build_(folder / swiftpatch::kStagedBuild), state_(present) {
    if (!fs::is_regular_file(order.build)) {
        throw PublishError("there is no file " + publish_check::Utf8(order.build));
    }
    fs::copy_file(order.build, build_);
    MakeNew();
    const publish_check::PublishedFile staged = ReadStaged(swiftpatch::kStagedBuild);
    changesBuild_ = !IsThere(present.build) || present.build.get.body != staged.get.body;
    if (changesBuild_) {
        state_.build = staged;
    } else {
        fs::last_write_time(build_, fs::last_write_time(order.folder / swiftpatch::kStagedBuild));
    }
    if (order.keys) {
        StageSignature(order, present, steps);
    } else if (!IsThere(present.animation)) {
        StageAnimation();
        steps.Add("adds", std::string(swiftpatch::kBusyAnimation) +
                              ", for updaters that have none beside them");
    }
    files_.push_back(build_);
    for (const fs::path& file : files_) {
        MakeReadable(file);
    }
    FlushFile(build_);
}

publish_check::PublishedFile StagedRelease::ReadStaged(const std::string& name) const {
    return publish_check::ReadPublishedFile(folder_, name);
}

void StagedRelease::MakeNew() const {
    fs::last_write_time(build_, fs::file_time_type::clock::now());
}

void StagedRelease::StageAnimation() {
    const fs::path file = folder_ / swiftpatch::kBusyAnimation;
    WriteFile(file, AnimationFile());
    state_.animation = ReadStaged(swiftpatch::kBusyAnimation);
    files_.push_back(file);
}

/// Behind the signatures of the new build stand those of the build that is there until then, and
/// those of an upload that was broken off, whose build may be there: so whoever asks at any moment
/// gets a build and its signature.
void StagedRelease::StageSignature(const Order& order, const ServerState& present, Steps& steps) {
    const auto keys = swiftpatch::ParseSigningKeys(*order.keys).value_or(std::vector<SigningKey>());
    const swiftpatch::Blake2b::Digest hash = publish_check::HashOfBuild(state_.build.get.body);
    std::vector<BlockText> blocks = NewBlocks(order, steps);
    if (blocks.empty()) {
        blocks = BlocksBeside(order.build, keys, hash);
    }
    if (blocks.empty() && changesBuild_) {
        throw PublishError(
            "the updaters want a signed build: name the secret key with --key, or "
            "put the signature beside the build");
    }
    std::vector<BlockText> before = BlocksOfPresent(order, keys, present);
    if (!changesBuild_) {
        LeaveOutSameKeys(before, blocks);
    }
    std::vector<BlockText> lost =
        BlocksOfOtherKeys(std::accumulate(before.begin(), before.end(), std::string()), keys);
    LeaveOutSameKeys(lost, blocks);
    losesKey_ = !order.keysAreNamed && !lost.empty();
    Append(blocks, before);
    Append(blocks, BlocksOfUpload(order, keys, hash));
    const fs::path file = folder_ / swiftpatch::kBuildSignature;
    WriteFile(file, JoinBlocks(blocks));
    state_.signature = ReadStaged(swiftpatch::kBuildSignature);
    files_.push_back(file);
}

std::vector<BlockText> StagedRelease::NewBlocks(const Order& order, Steps& steps) const {
    std::vector<BlockText> blocks;
    for (const std::string& secretKey : order.secretKeys) {
        const fs::path scratch = folder_ / "signature";
        Append(blocks, BlocksIn(SignWithMinisign(build_, secretKey, scratch)));
        fs::remove(scratch);
        steps.Add("signed", "with " + secretKey);
    }
    return blocks;
}

}  // namespace publish
