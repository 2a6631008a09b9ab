#include "install/build_signature.h"

#include <algorithm>

#include "runtime/numbers.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"
#include "runtime/system.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;
constexpr std::uint32_t kSse2 = 10;  // PF_XMMI64_INSTRUCTIONS_AVAILABLE.

/// The hash goes along with a download, and so has to be fast.
Blake2b NewHash() {
    return Blake2b(IsProcessorFeaturePresent(kSse2) ? Blake2b::Mixing::kSse2
                                                    : Blake2b::Mixing::kPlain);
}

std::optional<Blake2b::Digest> HashOf(LockedFile& file,
                                      const std::function<void()>& afterEachBlock) {
    try {
        Blake2b hash = NewHash();
        std::vector<std::uint8_t> block(kBlock);
        while (const std::size_t count = file.Read(block)) {
            hash.Update({block.data(), count});
            afterEachBlock();
        }
        return hash.Finish();
    } catch (const RuntimeError&) {
        return {};
    }
}

/// The four numbers of 16 bits. The text shows those above 32767 as negative ones.
std::vector<std::int32_t> Parts(const std::string& version) {
    const std::vector<std::string> texts = Split(version, '.');
    std::vector<std::int32_t> parts(texts.size());
    std::transform(texts.begin(), texts.end(), parts.begin(), [](const std::string& part) {
        return IsNumeric(part) ? ToLong(part) & 0xFFFF : 0;
    });
    return parts;
}

}  // namespace

bool BuildSignature::IsWanted() { return shared.SigningKeys.has_value(); }

bool BuildSignature::ReadKeys() {
    keys_ = ParseSigningKeys(shared.SigningKeys.value_or("")).value_or(std::vector<SigningKey>());
    return !keys_.empty();
}

void BuildSignature::BeginBuild() { incoming_ = NewHash(); }

void BuildSignature::AddToBuild(std::string_view bytes) {
    incoming_.Update({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

void BuildSignature::ReadBuild(LockedFile& build, const std::function<void()>& afterEachBlock) {
    hash_ = HashOf(build, afterEachBlock);
}

bool BuildSignature::Fits() const {
    return hash_ &&
           JudgeSignature(blocks_, keys_, *hash_, kStagedBuild) == SignatureVerdict::kSigned;
}

bool BuildSignature::IsSameBuild(LockedFile& file) const {
    return hash_ && HashOf(file, [] {}) == hash_;
}

void DeleteRefusedBuild() {
    try {
        if (FileExists(AppFile(kStagedBuild))) {
            Kill(AppFile(kStagedBuild));
        }
    } catch (const RuntimeError&) {
        return;
    }
}

bool IsDowngrade(const std::string& installed, const std::string& offered) {
    return Parts(offered) < Parts(installed);
}

}  // namespace swiftpatch
