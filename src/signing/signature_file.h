#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "signing/blake2b.h"
#include "signing/ed25519.h"
#include "signing/signing_keys.h"

namespace swiftpatch {

// The signatures of a build, in the file format of minisign. One signature is a block of four
// lines:
//
//     untrusted comment: ...      anything
//     RU...                       base64: "ED", the key's number, the first signature
//     trusted comment: ...        fields with tabs between them
//     ...                         base64: the second signature
//
// The first signature is that of the build's BLAKE2b hash, the second one that of the first and of
// the trusted comment. A maker who changes to another key has a block of each in the file, one
// behind the other. The older form of a first signature, "Ed", is that of the whole build, which
// would have to be in memory for it: it counts as none.

/// In bytes. A longer file has no signatures.
inline constexpr std::size_t kLongestSignatureFile = 4096;

/// What stands behind these is not looked at. It limits how long a strange file can keep the
/// program busy; more do not fit in well, either.
inline constexpr std::size_t kMostSignatureBlocks = 13;

/// One signature as it stands in the file, not yet judged.
struct SignatureBlock {
    SigningKeyNumber number{};
    Ed25519Signature first{};
    std::string trustedComment;  ///< Without the words in front of it.
    Ed25519Signature second{};
};

/// What a signature file says of a build, from the worst to the best.
enum class SignatureVerdict {
    kUnreadable,      ///< Not one whole block.
    kOfAnotherKey,    ///< No block with the number of one of the keys.
    kOfAnotherBuild,  ///< The first signature is not that of this build by the key.
    kForgedComment,   ///< The second signature does not fit the first one and the comment.
    kOfAnotherFile,   ///< The comment has no field with the name of the file.
    kSigned,          ///< All of it fits: the maker has signed this build.
};

/// The whole blocks of a file, the first four lines being one, the next four another. Four lines
/// that are no whole block are left out. A line ends with LF or CR LF, the last one also with the
/// file.
std::vector<SignatureBlock> ParseSignatureFile(std::string_view file);

/// Whether a block has the number of one of the keys: without one, the build need not be
/// downloaded. Nothing is checked by it.
bool HasBlockOf(std::span<const SignatureBlock> blocks, std::span<const SigningKey> keys);

/// The verdict on the build with this hash, which has to have been signed as `fileName`: the
/// trusted comment has a field "file:" and that name, letter by letter, so that another file that
/// was signed with the same key is no build. The best verdict of all blocks and keys counts. Only
/// kSigned lets a build be installed.
SignatureVerdict JudgeSignature(std::span<const SignatureBlock> blocks,
                                std::span<const SigningKey> keys, const Blake2b::Digest& hash,
                                std::string_view fileName);

}  // namespace swiftpatch
