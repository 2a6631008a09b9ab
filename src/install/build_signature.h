#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/files.h"
#include "signing/blake2b.h"
#include "signing/signature_file.h"

namespace swiftpatch {

/// What the maker's signature says of builds, where the deployment names the keys that have to have
/// signed them. Holds the signature file of the present check, which is kept in memory only, and
/// hashes a build while it comes in.
///
/// Whatever goes wrong with a signature counts as none: nothing here raises an error.
class BuildSignature {
public:
    /// True where builds have to be signed, also by keys that cannot be read.
    static bool IsWanted();
    /// Reads the keys, which comes before all else; false where they cannot be read.
    bool ReadKeys();

    /// What the server sent; empty for nothing.
    void Take(const std::string& file) { blocks_ = ParseSignatureFile(file); }
    /// True where it holds a signature by one of the keys, right or wrong.
    bool IsThere() const { return HasBlockOf(blocks_, keys_); }

    /// A build comes in, from its first byte to its last.
    void BeginBuild();
    void AddToBuild(std::string_view bytes);
    /// Ends the build that came in.
    void EndBuild() { hash_ = incoming_.Finish(); }
    /// Reads the build from the disk, and calls `afterEachBlock` as often as a yield is due.
    void ReadBuild(LockedFile& build, const std::function<void()>& afterEachBlock);

    /// Whether the maker has signed the build that was seen last; false if it could not be read.
    bool Fits() const;
    /// Whether the file is that build once more, byte for byte.
    bool IsSameBuild(LockedFile& file) const;

private:
    std::vector<SigningKey> keys_;
    std::vector<SignatureBlock> blocks_;
    Blake2b incoming_;
    std::optional<Blake2b::Digest> hash_;  ///< Of the build that was seen last.
};

/// True where a build of the product version `offered` would take the place of a later one. All
/// four parts count, as numbers; a version that cannot be read is earlier than any.
bool IsDowngrade(const std::string& installed, const std::string& offered);

/// Deletes a build that was refused. Where somebody holds it, it stays, and is looked at again in
/// each run.
void DeleteRefusedBuild();

}  // namespace swiftpatch
