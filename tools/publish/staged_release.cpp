#include "publish/staged_release.h"

#include <algorithm>

#include "publish/animation.h"
#include "publish/files.h"
#include "publish/publish_error.h"
#include "publish/server_folder.h"
#include "publish/signatures.h"
#include "publish/system.h"
#include "publish_check/folder_server.h"
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
    fs::path beside = build;
    beside += ".minisig";
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
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read,
                    fs::perm_options::add);
}

}  // namespace

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
    const ServerState staged = publish_check::ReadFolder(folder_, false);
    changesBuild_ = !IsThere(present.build) || present.build.get.body != staged.build.get.body;
    if (changesBuild_) {
        MakeNew();
        state_.build = publish_check::ReadFolder(folder_, false).build;
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

void StagedRelease::MakeNew() const {
    fs::last_write_time(build_, fs::file_time_type::clock::now());
}

void StagedRelease::StageAnimation() {
    const fs::path file = folder_ / swiftpatch::kBusyAnimation;
    WriteFile(file, AnimationFile());
    state_.animation = publish_check::ReadFolder(folder_, false).animation;
    files_.push_back(file);
}

/// Behind the signatures of the new build stand those of the build that is there until then, and
/// those of an upload that was broken off, whose build may be there: so whoever asks at any moment
/// gets a build and its signature.
void StagedRelease::StageSignature(const Order& order, const ServerState& present, Steps& steps) {
    const auto keys = swiftpatch::ParseSigningKeys(*order.keys);
    std::vector<BlockText> blocks = NewBlocks(order, steps);
    if (blocks.empty() && changesBuild_) {
        throw PublishError(
            "the updaters want a signed build: name the secret key with --key, or "
            "put the signature beside the build");
    }
    if (keys && IsThere(present.build) && IsThere(present.signature)) {
        std::vector<BlockText> before =
            FittingBlocks(present.signature.get.body, *keys, HashOf(present.build.get.body));
        if (!changesBuild_) {
            std::erase_if(before, [&blocks](const BlockText& block) {
                return HasBlockOfSameKey(blocks, block);
            });
        }
        Append(blocks, before);
    }
    if (fs::is_regular_file(UploadedSignatures(order.folder))) {
        Append(blocks, BlocksIn(ReadFile(UploadedSignatures(order.folder))));
    }
    const fs::path file = folder_ / swiftpatch::kBuildSignature;
    WriteFile(file, JoinBlocks(blocks));
    state_.signature = publish_check::ReadFolder(folder_, true).signature;
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
    if (blocks.empty()) {
        const auto keys = swiftpatch::ParseSigningKeys(*order.keys);
        blocks = BlocksBeside(order.build, keys.value_or(std::vector<SigningKey>()),
                              HashOf(state_.build.get.body));
    }
    return blocks;
}

}  // namespace publish
