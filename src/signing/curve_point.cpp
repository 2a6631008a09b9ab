#include "signing/curve_point.h"

namespace swiftpatch {
namespace {

constexpr FieldElement kZero{{0}};
constexpr FieldElement kOne{{1}};

// d and B of RFC 8032 section 5.1.
constexpr FieldElement kD{{0x135978A3, 0x75EB4DCA, 0x4141D8AB, 0x00700A4D, 0x7779E898, 0x8CC74079,
                           0x2B6FFE73, 0x52036CEE}};
constexpr FieldElement kBaseX{{0x8F25D51A, 0xC9562D60, 0x9525A7B2, 0x692CC760, 0xFDD6DC5C,
                               0xC0A4E231, 0xCD6E53FE, 0x216936D3}};
constexpr FieldElement kBaseY{{0x66666658, 0x66666666, 0x66666666, 0x66666666, 0x66666666,
                               0x66666666, 0x66666666, 0x66666666}};

constexpr CurvePoint kNeutral{kZero, kOne, kOne, kZero};

CurvePoint PointAt(const FieldElement& x, const FieldElement& y) { return {x, y, kOne, x * y}; }

// The letters in the next two are those of section 5.1.4.

CurvePoint Sum(const CurvePoint& p, const CurvePoint& q) {
    const FieldElement a = (p.y - p.x) * (q.y - q.x);
    const FieldElement b = (p.y + p.x) * (q.y + q.x);
    const FieldElement c = p.t * (kD + kD) * q.t;
    const FieldElement d = p.z * (q.z + q.z);
    const FieldElement e = b - a;
    const FieldElement f = d - c;
    const FieldElement g = d + c;
    const FieldElement h = b + a;
    return {e * f, g * h, f * g, e * h};
}

CurvePoint Doubled(const CurvePoint& p) {
    const FieldElement a = p.x * p.x;
    const FieldElement b = p.y * p.y;
    const FieldElement c = p.z * (p.z + p.z);
    const FieldElement h = a + b;
    const FieldElement e = h - (p.x + p.y) * (p.x + p.y);
    const FieldElement g = a - b;
    const FieldElement f = c + g;
    return {e * f, g * h, f * g, e * h};
}

}  // namespace

std::optional<CurvePoint> DecodePoint(std::span<const std::uint8_t, 32> bytes) {
    constexpr std::uint32_t kSign = 0x80000000;
    Limbs number = LimbsOf(bytes);
    const bool odd = (number.back() & kSign) != 0;
    number.back() &= ~kSign;
    const std::optional<FieldElement> y = FieldElementOf(number);
    if (!y) {
        return std::nullopt;
    }
    const FieldElement square = *y * *y;
    const std::optional<FieldElement> x = SquareRootOfQuotient(square - kOne, kD * square + kOne);
    if (!x || (IsZero(*x) && odd)) {
        return std::nullopt;
    }
    return PointAt(IsOdd(*x) == odd ? *x : kZero - *x, *y);
}

std::array<std::uint8_t, 32> EncodePoint(const CurvePoint& point) {
    const FieldElement inverse = Inverse(point.z);
    std::array<std::uint8_t, 32> bytes = BytesOf(Canonical(point.y * inverse));
    if (IsOdd(point.x * inverse)) {
        bytes.back() |= 0x80;
    }
    return bytes;
}

CurvePoint Negative(const CurvePoint& point) {
    return {kZero - point.x, point.y, point.z, kZero - point.t};
}

bool HasSmallOrder(const CurvePoint& point) {
    const CurvePoint eightfold = Doubled(Doubled(Doubled(point)));
    return IsZero(eightfold.x) && IsZero(eightfold.y - eightfold.z);
}

CurvePoint SumOfMultiples(const Scalar& base, const Scalar& factor, const CurvePoint& point) {
    const CurvePoint basePoint = PointAt(kBaseX, kBaseY);
    const CurvePoint both = Sum(basePoint, point);
    CurvePoint sum = kNeutral;
    for (unsigned place = kScalarBits; place-- > 0;) {
        sum = Doubled(sum);
        const bool ofBase = HasBit(base.limbs, place);
        const bool ofPoint = HasBit(factor.limbs, place);
        if (ofBase || ofPoint) {
            sum = Sum(sum, ofBase && ofPoint ? both : ofBase ? basePoint : point);
        }
    }
    return sum;
}

}  // namespace swiftpatch
