#include "signing/field_25519.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace swiftpatch {
namespace {

// 2^255 - 19, and the powers that are taken (RFC 8032 sections 5.1 and 5.1.3).
constexpr Limbs kPrime = {0xFFFFFFED, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF,
                          0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0x7FFFFFFF};
constexpr Limbs kPrimeLessTwo = {0xFFFFFFEB, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF,
                                 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0x7FFFFFFF};
constexpr Limbs kPrimeLessFiveByEight = {0xFFFFFFFD, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF,
                                         0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0x0FFFFFFF};

// 2^((p-1)/4), whose square is -1.
constexpr FieldElement kRootOfMinusOne{{0x4A0EA0B0, 0xC4EE1B27, 0xAD2FE478, 0x2F431806, 0x3DFBD7A7,
                                        0x2B4D0099, 0x4FC1DF0B, 0x2B832480}};

// 2^256 leaves the same rest as this, since 2^255 leaves 19.
constexpr std::int64_t kFold = 38;

/// Takes in again, as often as it takes, what went over the top or, below zero, was short of it.
void FoldCarry(Limbs& limbs, std::int64_t carry) {
    while (carry != 0) {
        std::int64_t sum = carry * kFold;
        for (std::uint32_t& limb : limbs) {
            sum += limb;
            limb = static_cast<std::uint32_t>(sum);
            sum >>= 32;
        }
        carry = sum;
    }
}

FieldElement Power(const FieldElement& base, const Limbs& exponent) {
    FieldElement power{{1}};
    for (unsigned place = 256; place-- > 0;) {
        power = power * power;
        if (HasBit(exponent, place)) {
            power = power * base;
        }
    }
    return power;
}

}  // namespace

FieldElement operator+(const FieldElement& a, const FieldElement& b) {
    FieldElement sum;
    std::int64_t carry = 0;
    for (std::size_t i = 0; i < sum.limbs.size(); ++i) {
        carry += std::int64_t{a.limbs[i]} + b.limbs[i];
        sum.limbs[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    FoldCarry(sum.limbs, carry);
    return sum;
}

FieldElement operator-(const FieldElement& a, const FieldElement& b) {
    FieldElement difference;
    std::int64_t carry = 0;
    for (std::size_t i = 0; i < difference.limbs.size(); ++i) {
        carry += std::int64_t{a.limbs[i]} - b.limbs[i];
        difference.limbs[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    FoldCarry(difference.limbs, carry);
    return difference;
}

FieldElement operator*(const FieldElement& a, const FieldElement& b) {
    constexpr std::size_t kSize = std::tuple_size_v<Limbs>;
    std::array<std::uint32_t, 2 * kSize> product{};
    for (std::size_t i = 0; i < kSize; ++i) {
        // The greatest product of two limbs leaves room for two more limbs.
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < kSize; ++j) {
            carry += std::uint64_t{a.limbs[i]} * b.limbs[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[i + kSize] = static_cast<std::uint32_t>(carry);
    }
    FieldElement folded;
    std::int64_t carry = 0;
    for (std::size_t i = 0; i < kSize; ++i) {
        carry += product[i] + kFold * product[i + kSize];
        folded.limbs[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    FoldCarry(folded.limbs, carry);
    return folded;
}

std::optional<FieldElement> FieldElementOf(const Limbs& number) {
    return IsBelow(number, kPrime) ? std::optional(FieldElement{number}) : std::nullopt;
}

Limbs Canonical(const FieldElement& a) {
    Limbs number = a.limbs;
    while (!IsBelow(number, kPrime)) {
        number = Difference(number, kPrime);
    }
    return number;
}

bool IsZero(const FieldElement& a) { return Canonical(a) == Limbs{}; }

bool IsOdd(const FieldElement& a) { return HasBit(Canonical(a), 0); }

FieldElement Inverse(const FieldElement& a) { return Power(a, kPrimeLessTwo); }

std::optional<FieldElement> SquareRootOfQuotient(const FieldElement& u, const FieldElement& v) {
    const FieldElement v3 = v * v * v;
    const FieldElement root = u * v3 * Power(u * v3 * v3 * v, kPrimeLessFiveByEight);
    const FieldElement square = v * root * root;
    if (IsZero(square - u)) {
        return root;
    }
    if (IsZero(square + u)) {
        return root * kRootOfMinusOne;
    }
    return std::nullopt;
}

}  // namespace swiftpatch
