#include "signing/signature_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "signing/base64.h"

namespace swiftpatch {
namespace {

constexpr std::string_view kUntrusted = "untrusted comment: ";
constexpr std::string_view kTrusted = "trusted comment: ";
constexpr std::string_view kFileField = "file:";
constexpr char kFieldEnd = '\t';

constexpr std::size_t kLinesOfBlock = 4;

// "ED", the number and the signature.
constexpr std::size_t kNumberAt = 2;
constexpr std::size_t kSignatureAt = kNumberAt + std::tuple_size_v<SigningKeyNumber>;
constexpr std::size_t kSignatureSize = std::tuple_size_v<Ed25519Signature>;

/// Takes the first line away from `text`.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos) {
        text = {};
        return line;
    }
    text.remove_prefix(end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::optional<SignatureBlock> ReadBlock(const std::array<std::string_view, kLinesOfBlock>& lines) {
    const std::optional<std::vector<std::uint8_t>> first = DecodeBase64(lines[1]);
    const std::optional<std::vector<std::uint8_t>> second = DecodeBase64(lines[3]);
    if (!lines[0].starts_with(kUntrusted) || !lines[2].starts_with(kTrusted) || !first ||
        first->size() != kSignatureAt + kSignatureSize || first->at(0) != 'E' ||
        first->at(1) != 'D' || !second || second->size() != kSignatureSize) {
        return std::nullopt;
    }
    SignatureBlock block;
    std::copy_n(first->begin() + kNumberAt, block.number.size(), block.number.begin());
    std::copy_n(first->begin() + kSignatureAt, kSignatureSize, block.first.begin());
    block.trustedComment = lines[2].substr(kTrusted.size());
    std::copy_n(second->begin(), kSignatureSize, block.second.begin());
    return block;
}

bool HasFileField(std::string_view comment, std::string_view fileName) {
    for (;;) {
        const std::size_t end = comment.find(kFieldEnd);
        const std::string_view field = comment.substr(0, end);
        if (field.starts_with(kFileField) && field.substr(kFileField.size()) == fileName) {
            return true;
        }
        if (end == std::string_view::npos) {
            return false;
        }
        comment.remove_prefix(end + 1);
    }
}

/// What the second signature is made of.
std::vector<std::uint8_t> SignedComment(const SignatureBlock& block) {
    std::vector<std::uint8_t> bytes(block.first.begin(), block.first.end());
    bytes.insert(bytes.end(), block.trustedComment.begin(), block.trustedComment.end());
    return bytes;
}

SignatureVerdict JudgeBlock(const SignatureBlock& block, const SigningKey& key,
                            const Blake2b::Digest& hash, std::string_view fileName) {
    if (block.number != key.number) {
        return SignatureVerdict::kOfAnotherKey;
    }
    if (!VerifyEd25519(key.key, hash, block.first)) {
        return SignatureVerdict::kOfAnotherBuild;
    }
    if (!VerifyEd25519(key.key, SignedComment(block), block.second)) {
        return SignatureVerdict::kForgedComment;
    }
    return HasFileField(block.trustedComment, fileName) ? SignatureVerdict::kSigned
                                                        : SignatureVerdict::kOfAnotherFile;
}

}  // namespace

std::vector<SignatureBlock> ParseSignatureFile(std::string_view file) {
    std::vector<SignatureBlock> blocks;
    if (file.size() > kLongestSignatureFile) {
        return blocks;
    }
    for (std::size_t group = 0; group < kMostSignatureBlocks; ++group) {
        std::array<std::string_view, kLinesOfBlock> lines;
        for (std::string_view& line : lines) {
            line = TakeLine(file);
        }
        if (std::optional<SignatureBlock> block = ReadBlock(lines)) {
            blocks.push_back(*std::move(block));
        }
    }
    return blocks;
}

bool HasBlockOf(std::span<const SignatureBlock> blocks, std::span<const SigningKey> keys) {
    return std::ranges::any_of(blocks, [keys](const SignatureBlock& block) {
        return std::ranges::any_of(
            keys, [&block](const SigningKey& key) { return key.number == block.number; });
    });
}

SignatureVerdict JudgeSignature(std::span<const SignatureBlock> blocks,
                                std::span<const SigningKey> keys, const Blake2b::Digest& hash,
                                std::string_view fileName) {
    SignatureVerdict best =
        blocks.empty() ? SignatureVerdict::kUnreadable : SignatureVerdict::kOfAnotherKey;
    for (const SignatureBlock& block : blocks) {
        for (const SigningKey& key : keys) {
            if (best != SignatureVerdict::kSigned) {
                best = std::max(best, JudgeBlock(block, key, hash, fileName));
            }
        }
    }
    return best;
}

}  // namespace swiftpatch
