#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "signing/field_25519.h"
#include "signing/group_scalar.h"

namespace swiftpatch {

/// A point of the curve edwards25519, in extended coordinates (RFC 8032 section 5.1.4): x = X/Z,
/// y = Y/Z, x * y = T/Z.
struct CurvePoint {
    FieldElement x;
    FieldElement y;
    FieldElement z;
    FieldElement t;
};

/// The point that 32 bytes stand for (section 5.1.3). None for bytes that stand for no point, and
/// for a second form of one.
std::optional<CurvePoint> DecodePoint(std::span<const std::uint8_t, 32> bytes);

/// The one form of a point in bytes (section 5.1.2).
std::array<std::uint8_t, 32> EncodePoint(const CurvePoint& point);

CurvePoint Negative(const CurvePoint& point);

/// Whether the point is one of the eight that come to the neutral point when they are added to
/// themselves eight times. For such a key anybody can write signatures.
bool HasSmallOrder(const CurvePoint& point);

/// The base point B times `base`, and `point` times `factor`, added.
CurvePoint SumOfMultiples(const Scalar& base, const Scalar& factor, const CurvePoint& point);

}  // namespace swiftpatch
