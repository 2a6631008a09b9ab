#pragma once

#include <optional>

#include "signing/limbs.h"

namespace swiftpatch {

/// A number modulo p = 2^255 - 19 (RFC 8032 section 5.1). Between two steps it may be any number
/// below 2^256 that leaves the same rest; the one below p is made where bytes or an answer are.
struct FieldElement {
    Limbs limbs{};
};

FieldElement operator+(const FieldElement& a, const FieldElement& b);
FieldElement operator-(const FieldElement& a, const FieldElement& b);
FieldElement operator*(const FieldElement& a, const FieldElement& b);

/// No element for p and what is above it, which would be a second form of a small number.
std::optional<FieldElement> FieldElementOf(const Limbs& number);

/// The number below p.
Limbs Canonical(const FieldElement& a);

bool IsZero(const FieldElement& a);

/// Whether the number below p is odd: which of two square roots it is.
bool IsOdd(const FieldElement& a);

/// 1/a; zero for zero.
FieldElement Inverse(const FieldElement& a);

/// One of the two square roots of u/v, if it has any (RFC 8032 section 5.1.3); v is not zero.
std::optional<FieldElement> SquareRootOfQuotient(const FieldElement& u, const FieldElement& v);

}  // namespace swiftpatch
