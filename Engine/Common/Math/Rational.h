// An exact fraction of two 32-bit integers, for ratios such as frame rates (30000/1001) that must
// not drift.
//
// A value type. The denominator is positive after construction and the numerator carries the
// sign. Arithmetic is 32-bit and wraps on overflow without a check. The comparison operators
// return a cRational (1/1 for true, 0/1 for false), not a bool: test them through ToDouble().
#pragma once

#include "Engine/Common/Base/Api.h"

#include <cstdint>

namespace Quillanor::Common {

class QC_API cRational {
public:
    cRational() = default;
    // A zero denominator is a fatal assertion; a negative one flips both signs. With pReduce the
    // fraction is divided by the greatest common divisor (a zero numerator gives 0/1).
    cRational(int pNumerator, int pDenominator = 1, bool pReduce = true);
    // The nearest fraction whose numerator and denominator do not exceed pLimit (> 0), by a
    // bounded continued-fraction expansion. If the exact binary value reduces to a fraction with
    // either term within pLimit, that fraction is kept as it is, even if the other term is larger.
    cRational(double pValue, int pLimit);

    int Numerator() const { return mNumerator; }
    int Denominator() const { return mDenominator; }
    double ToDouble() const {
        return static_cast<double>(mNumerator) / static_cast<double>(mDenominator);
    }
    explicit operator double() const { return ToDouble(); }

    cRational operator+(const cRational& pOther) const;
    cRational operator-(const cRational& pOther) const;
    cRational operator*(const cRational& pOther) const;
    cRational operator/(const cRational& pOther) const;

    // Exact term-by-term comparison: unreduced 2/4 differs from 1/2.
    cRational operator==(const cRational& pOther) const;
    cRational operator!=(const cRational& pOther) const;
    // These compare the values as doubles.
    cRational operator<(const cRational& pOther) const;
    cRational operator<=(const cRational& pOther) const;
    cRational operator>(const cRational& pOther) const;
    cRational operator>=(const cRational& pOther) const;

    // Binary (Stein) greatest common divisor; Gcd(0, b) is b.
    static std::uint32_t Gcd(std::uint32_t a, std::uint32_t b);
    static std::uint64_t Gcd(std::uint64_t a, std::uint64_t b);

private:
    static cRational FromBool(bool pValue);

    int mNumerator = 0;
    int mDenominator = 1;
};

} // namespace Quillanor::Common
