#include "signing/ed25519.h"

#include <algorithm>
#include <optional>

#include "signing/curve_point.h"
#include "signing/sha512.h"

namespace swiftpatch {
namespace {

std::optional<CurvePoint> UsablePoint(const Ed25519Key& key) {
    std::optional<CurvePoint> point = DecodePoint(key);
    return point && HasSmallOrder(*point) ? std::nullopt : point;
}

}  // namespace

bool IsUsableEd25519Key(const Ed25519Key& key) { return UsablePoint(key).has_value(); }

bool VerifyEd25519(const Ed25519Key& key, std::span<const std::uint8_t> message,
                   const Ed25519Signature& signature) {
    const std::span<const std::uint8_t, 64> both(signature);
    const auto r = both.first<32>();
    const std::optional<Scalar> s = ScalarOf(both.last<32>());
    const std::optional<CurvePoint> point = UsablePoint(key);
    if (!s || !point) {
        return false;
    }
    Sha512 hash;
    hash.Update(r);
    hash.Update(key);
    hash.Update(message);
    const Scalar k = ReducedScalar(hash.Finish());
    // R as it is written has to be [s]B - [k]A: so R needs no check of its own, since a second form
    // of a point never comes out of this side.
    const CurvePoint expected = SumOfMultiples(*s, k, Negative(*point));
    return std::ranges::equal(EncodePoint(expected), r);
}

}  // namespace swiftpatch
