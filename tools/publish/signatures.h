#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "signing/blake2b.h"
#include "signing/signing_keys.h"

namespace publish {

/// One signature as it stands in a file: four lines, each ended by LF.
using BlockText = std::string;

/// The blocks of a signature file, whole ones or not.
std::vector<BlockText> BlocksIn(std::string_view file);

/// Those by which one of the keys has signed the build with this hash.
std::vector<BlockText> FittingBlocks(std::string_view file,
                                     const std::vector<swiftpatch::SigningKey>& keys,
                                     const swiftpatch::Blake2b::Digest& hash);

/// Those of keys that are none of these.
std::vector<BlockText> BlocksOfOtherKeys(std::string_view file,
                                         const std::vector<swiftpatch::SigningKey>& keys);

/// A signature file of these blocks, each once. Throws PublishError where they are more than
/// updaters read.
std::string JoinBlocks(const std::vector<BlockText>& blocks);

/// Has minisign sign a build with a secret key, for whose password it asks. Returns what it wrote.
/// `scratch` is the name of a file that may be written. Throws PublishError.
std::string SignWithMinisign(const std::filesystem::path& build, const std::string& secretKey,
                             const std::filesystem::path& scratch);

}  // namespace publish
