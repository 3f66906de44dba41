// Scalar constants and helpers shared by the vector, matrix, rotation and colour classes.
//
// cMath has no state: every member is a constant or a pure function, safe from any thread.
// The integer helpers have defined results for negative operands; a zero divisor faults like
// the built-in division.
#pragma once

#include "Engine/Common/Base/Api.h"

#include <cstdint>
#include <limits>

namespace Quillanor::Common {

class QC_API cMath {
public:
    // Single-precision constants are pi rounded to float and its multiples.
    static constexpr float Pi = 3.14159274f;
    static constexpr float HalfPi = 1.57079637f;
    static constexpr float TwoPi = 6.28318548f;
    static constexpr float Epsilon = 1e-5f;
    static constexpr double DPi = 3.141592653589793;
    static constexpr double DHalfPi = 1.5707963267948966;
    static constexpr double DTwoPi = 6.283185307179586;
    static constexpr double DEpsilon = 1e-14;

    // Tolerance of near-equality tests in generic code: Epsilon for float, DEpsilon for double.
    template <typename T>
    static constexpr T Eps();

    // The largest finite value of an arithmetic type.
    template <typename T>
    static constexpr T MaxValue() {
        return std::numeric_limits<T>::max();
    }

    // a % b made non-negative for positive b: PMod(-1, 4) == 3.
    static constexpr int PMod(int a, int b) {
        const int r = a % b;
        return r < 0 ? r + b : r;
    }

    // a / b rounded up for positive operands; a negative inexact quotient is also incremented
    // (DivCeil(-5, 2) == -1).
    static constexpr int DivCeil(int a, int b) {
        const int q = a / b;
        return q * b != a ? q + 1 : q;
    }

    static constexpr bool IsPowerOf2(int v) { return v >= 1 && (v & (v - 1)) == 0; }

    // Smallest power of two >= v, 1 for v < 2. v must not exceed 2^30.
    static constexpr int PowerOf2Ceil(int v) {
        int p = 1;
        while (p < v) {
            p <<= 1;
        }
        return p;
    }

    // Deterministic pseudo-random value in [0, 1) that depends only on x (same on every run and
    // platform).
    static constexpr double Noise(int x) {
        const std::uint32_t u = static_cast<std::uint32_t>(x);
        const std::uint32_t n = (u << 13) ^ u;
        const std::uint32_t m = (n * (n * n * 15731u + 789221u) + 1376312589u) & 0x7FFFFFFFu;
        return static_cast<double>(m) * 9.313225746154785e-10 * 0.5;
    }

    // Smooth noise: the cubic through Noise at the four integers around x; equals Noise(x) at
    // integral x.
    static double InterpNoise(double x);

    // Start value for a random sequence, Noise(seed) scaled to [0, 2147483647). A seed of 0 is
    // first replaced by one from the system's cryptographic random source.
    static int StartRandom(int seed);

private:
    // 32 bits from the system's cryptographic random source (MathPosix.cpp / MathWin32.cpp).
    static std::uint32_t SystemRandomImpl();
};

template <>
constexpr float cMath::Eps<float>() {
    return Epsilon;
}

template <>
constexpr double cMath::Eps<double>() {
    return DEpsilon;
}

} // namespace Quillanor::Common
