#include "Engine/Common/Math/Rational.h"

#include "Engine/Common/Base/Assert.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace Quillanor::Common {
namespace {

// Stein's algorithm for any unsigned width.
template <typename T>
T BinaryGcd(T a, T b) {
    if (a == 0) {
        return b;
    }
    if (b == 0) {
        return a;
    }
    const int shift = std::countr_zero(static_cast<T>(a | b));
    a >>= std::countr_zero(a);
    for (;;) {
        b >>= std::countr_zero(b);
        if (a > b) {
            std::swap(a, b);
        }
        b -= a;
        if (b == 0) {
            return a << shift;
        }
    }
}

// Two's-complement wrap of the 32-bit operators, without undefined behaviour.
int Wrap(std::uint32_t v) {
    return static_cast<int>(v);
}
std::uint32_t U(int v) {
    return static_cast<std::uint32_t>(v);
}

} // namespace

std::uint32_t cRational::Gcd(std::uint32_t a, std::uint32_t b) {
    return BinaryGcd(a, b);
}
std::uint64_t cRational::Gcd(std::uint64_t a, std::uint64_t b) {
    return BinaryGcd(a, b);
}

cRational::cRational(int pNumerator, int pDenominator, bool pReduce) {
    QC_ASSERT(pDenominator != 0);
    std::uint32_t num = U(pNumerator);
    std::uint32_t den = U(pDenominator);
    if (pDenominator < 0) {
        num = 0u - num;
        den = 0u - den;
    }
    if (pReduce) {
        if (num == 0) {
            den = 1;
        } else {
            const bool negative = Wrap(num) < 0;
            const std::uint32_t absNum = negative ? 0u - num : num;
            const std::uint32_t g = BinaryGcd(absNum, den);
            num = negative ? 0u - absNum / g : absNum / g;
            den /= g;
        }
    }
    mNumerator = Wrap(num);
    mDenominator = Wrap(den);
}

cRational::cRational(double pValue, int pLimit) {
    QC_ASSERT(pLimit > 0);
    if (std::isnan(pValue)) {
        return;
    }
    int exponent = 0;
    std::frexp(pValue, &exponent);
    const int shift = 61 - std::max(exponent - 1, 0);
    // Beyond 2^61 the scale would drop below 1; such values cannot be held anyway.
    const std::uint64_t scale = std::uint64_t{1} << std::max(shift, 0);
    double scaled = std::floor(std::ldexp(pValue, std::max(shift, 0)) + 0.5);
    constexpr double kMax = 9223372036854774784.0; // the largest double below 2^63
    scaled = std::clamp(scaled, -kMax, kMax);
    const std::int64_t whole = static_cast<std::int64_t>(scaled);
    std::uint64_t n =
        whole < 0 ? 0u - static_cast<std::uint64_t>(whole) : static_cast<std::uint64_t>(whole);
    std::uint64_t d = scale;
    const std::uint64_t g = BinaryGcd(n, d);
    n /= g;
    d /= g;

    const std::uint64_t limit = static_cast<std::uint64_t>(pLimit);
    std::uint64_t resultNum = n;
    std::uint64_t resultDen = d;
    if (n > limit && d > limit) {
        std::uint64_t p0 = 0, q0 = 1, p1 = 1, q1 = 0;
        for (;;) {
            const std::uint64_t a = n / d;
            // p2 = a*p1 + p0 > limit, tested without overflow (p0, q0 <= limit always).
            const bool pOver = p1 != 0 && a > (limit - p0) / p1;
            const bool qOver = q1 != 0 && a > (limit - q0) / q1;
            if (pOver || qOver) {
                std::uint64_t k = ~std::uint64_t{0};
                if (p1 != 0) {
                    k = (limit - p0) / p1;
                }
                if (q1 != 0) {
                    k = std::min(k, (limit - q0) / q1);
                }
                // The semiconvergent is closer than p1/q1 exactly when (q0 + 2k q1) d > q1 n.
                using u128 = unsigned __int128;
                if (u128{q0 + 2 * k * q1} * d > u128{q1} * n) {
                    resultNum = k * p1 + p0;
                    resultDen = k * q1 + q0;
                } else {
                    resultNum = p1;
                    resultDen = q1;
                }
                break;
            }
            const std::uint64_t p2 = a * p1 + p0;
            const std::uint64_t q2 = a * q1 + q0;
            const std::uint64_t rest = n - a * d;
            p0 = p1;
            q0 = q1;
            p1 = p2;
            q1 = q2;
            n = d;
            d = rest;
            if (rest == 0) {
                resultNum = p2;
                resultDen = q2;
                break;
            }
        }
    }
    // Terms above 32 bits (only from the shortcut above) are stored as they come.
    const std::uint32_t num32 = static_cast<std::uint32_t>(resultNum);
    mNumerator = Wrap(whole < 0 ? 0u - num32 : num32);
    mDenominator = Wrap(static_cast<std::uint32_t>(resultDen));
}

cRational cRational::operator+(const cRational& pOther) const {
    return cRational(
        Wrap(U(mNumerator) * U(pOther.mDenominator) + U(pOther.mNumerator) * U(mDenominator)),
        Wrap(U(mDenominator) * U(pOther.mDenominator)), true);
}

cRational cRational::operator-(const cRational& pOther) const {
    return cRational(
        Wrap(U(mNumerator) * U(pOther.mDenominator) - U(pOther.mNumerator) * U(mDenominator)),
        Wrap(U(mDenominator) * U(pOther.mDenominator)), true);
}

cRational cRational::operator*(const cRational& pOther) const {
    return cRational(Wrap(U(mNumerator) * U(pOther.mNumerator)),
                     Wrap(U(mDenominator) * U(pOther.mDenominator)), true);
}

cRational cRational::operator/(const cRational& pOther) const {
    return cRational(Wrap(U(mNumerator) * U(pOther.mDenominator)),
                     Wrap(U(mDenominator) * U(pOther.mNumerator)), true);
}

cRational cRational::FromBool(bool pValue) {
    return cRational(pValue ? 1.0 : 0.0, 1000000);
}

cRational cRational::operator==(const cRational& pOther) const {
    return FromBool(mNumerator == pOther.mNumerator && mDenominator == pOther.mDenominator);
}

cRational cRational::operator!=(const cRational& pOther) const {
    return FromBool(!(mNumerator == pOther.mNumerator && mDenominator == pOther.mDenominator));
}

cRational cRational::operator<(const cRational& pOther) const {
    return FromBool(ToDouble() < pOther.ToDouble());
}

cRational cRational::operator<=(const cRational& pOther) const {
    return FromBool(ToDouble() <= pOther.ToDouble());
}

cRational cRational::operator>(const cRational& pOther) const {
    return FromBool(ToDouble() > pOther.ToDouble());
}

cRational cRational::operator>=(const cRational& pOther) const {
    return FromBool(ToDouble() >= pOther.ToDouble());
}

} // namespace Quillanor::Common
