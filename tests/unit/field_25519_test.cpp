#include "signing/field_25519.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace swiftpatch {
namespace {

constexpr std::uint32_t kFull = 0xFFFFFFFF;

/// Any number of 256 bits by its lowest limb, those in between, which are alike, and its highest.
constexpr FieldElement Number(std::uint32_t low, std::uint32_t middle, std::uint32_t high) {
    return {{low, middle, middle, middle, middle, middle, middle, high}};
}

constexpr FieldElement kOne = Number(1, 0, 0);
constexpr FieldElement kPrime = Number(0xFFFFFFED, kFull, 0x7FFFFFFF);

/// Numbers at which a carry begins or ends: around 0, p, 2^255, 2p and below 2^256.
std::vector<FieldElement> Borders() {
    std::vector<FieldElement> borders;
    for (const std::uint32_t low : {0U, 1U, 2U, 18U, 19U, 37U, 38U, 39U}) {
        borders.push_back(Number(low, 0, 0));
        borders.push_back(Number(low, 0, 0x80000000));
        borders.push_back(Number(kFull - low, kFull, 0x7FFFFFFF));
        borders.push_back(Number(kFull - low, kFull, kFull));
    }
    return borders;
}

bool Same(const FieldElement& a, const FieldElement& b) { return Canonical(a) == Canonical(b); }

TEST(Field25519, TheModulusAndItsDoubleAreZero) {
    EXPECT_TRUE(IsZero(kPrime));
    EXPECT_TRUE(IsZero(Number(0xFFFFFFDA, kFull, kFull)));
    EXPECT_TRUE(Same(Number(kFull, kFull, kFull), Number(37, 0, 0)));
    EXPECT_TRUE(Same(Number(0, 0, 0x80000000), Number(19, 0, 0)));
}

TEST(Field25519, SumsAndDifferencesUndoEachOtherAtEveryBorder) {
    for (const FieldElement& a : Borders()) {
        for (const FieldElement& b : Borders()) {
            EXPECT_TRUE(Same(a + b - b, a));
            EXPECT_TRUE(Same(a - b + b, a));
            EXPECT_TRUE(Same(a + b, b + a));
        }
    }
}

TEST(Field25519, ProductsAreTheSameForEveryFormOfANumber) {
    for (const FieldElement& a : Borders()) {
        for (const FieldElement& b : Borders()) {
            const FieldElement reduced = FieldElement{Canonical(a)} * FieldElement{Canonical(b)};
            EXPECT_TRUE(Same(a * b, reduced));
            EXPECT_TRUE(Same(a * (b + kOne), a * b + a));
        }
    }
}

TEST(Field25519, ANumberTimesItsInverseIsOne) {
    for (const FieldElement& a : Borders()) {
        EXPECT_TRUE(IsZero(a) ? IsZero(Inverse(a)) : Same(a * Inverse(a), kOne));
    }
}

TEST(Field25519, ARootIsFoundWhereThereIsOne) {
    for (const FieldElement& a : Borders()) {
        const FieldElement square = a * a;
        const std::optional<FieldElement> root = SquareRootOfQuotient(square, kOne);
        ASSERT_TRUE(root.has_value());
        EXPECT_TRUE(Same(*root * *root, square));
        // Two has no root modulo this p, and so no square times two has one.
        EXPECT_EQ(SquareRootOfQuotient(square + square, kOne).has_value(), IsZero(a));
    }
}

TEST(Field25519, OnlyNumbersBelowTheModulusHaveAForm) {
    EXPECT_TRUE(FieldElementOf(Number(0xFFFFFFEC, kFull, 0x7FFFFFFF).limbs).has_value());
    EXPECT_FALSE(FieldElementOf(kPrime.limbs).has_value());
    EXPECT_FALSE(FieldElementOf(Number(0, 0, 0x80000000).limbs).has_value());
}

}  // namespace
}  // namespace swiftpatch
