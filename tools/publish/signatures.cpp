#include "publish/signatures.h"

#include <algorithm>

#include "publish/files.h"
#include "publish/publish_error.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"
#include "signing/signature_file.h"

namespace publish {

std::vector<BlockText> BlocksIn(std::string_view file) {
    constexpr int kLinesOfABlock = 4;
    std::vector<BlockText> blocks;
    int line = 0;
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        std::string_view text = file.substr(0, end);
        file.remove_prefix(std::min(end + 1, file.size()));
        if (text.ends_with('\r')) {
            text.remove_suffix(1);
        }
        if (line++ % kLinesOfABlock == 0) {
            blocks.emplace_back();
        }
        blocks.back() += std::string(text) + "\n";
    }
    return blocks;
}

std::vector<BlockText> FittingBlocks(std::string_view file,
                                     const std::vector<swiftpatch::SigningKey>& keys,
                                     const swiftpatch::Blake2b::Digest& hash) {
    std::vector<BlockText> blocks = BlocksIn(file);
    std::erase_if(blocks, [&](const BlockText& block) {
        return swiftpatch::JudgeSignature(swiftpatch::ParseSignatureFile(block), keys, hash,
                                          swiftpatch::kStagedBuild) !=
               swiftpatch::SignatureVerdict::kSigned;
    });
    return blocks;
}

std::vector<BlockText> BlocksOfOtherKeys(std::string_view file,
                                         const std::vector<swiftpatch::SigningKey>& keys) {
    std::vector<BlockText> blocks = BlocksIn(file);
    std::erase_if(blocks, [&keys](const BlockText& block) {
        const auto parsed = swiftpatch::ParseSignatureFile(block);
        return parsed.empty() || swiftpatch::HasBlockOf(parsed, keys);
    });
    return blocks;
}

std::string JoinBlocks(const std::vector<BlockText>& blocks) {
    std::string file;
    std::size_t count = 0;
    for (const BlockText& block : blocks) {
        if (file.find(block) == std::string::npos) {
            file += block;
            ++count;
        }
    }
    if (count > swiftpatch::kMostSignatureBlocks ||
        file.size() > swiftpatch::kLongestSignatureFile) {
        throw PublishError("the signatures of the new build and of the one that is there are " +
                           std::to_string(count) + " with " + std::to_string(file.size()) +
                           " bytes; updaters read " +
                           std::to_string(swiftpatch::kMostSignatureBlocks) + " and " +
                           std::to_string(swiftpatch::kLongestSignatureFile));
    }
    return file;
}

std::string SignWithMinisign(const std::filesystem::path& build, const std::string& secretKey,
                             const std::filesystem::path& scratch) {
    using publish_check::Utf8;
    const int status = RunInShell("minisign -S -s " + Quoted(secretKey) + " -m " +
                                  Quoted(Utf8(build)) + " -x " + Quoted(Utf8(scratch)));
    if (status != 0) {
        throw PublishError("minisign has not signed with " + secretKey + " (status " +
                           std::to_string(status) + "): is it installed, and the password right?");
    }
    return ReadFile(scratch);
}

}  // namespace publish
