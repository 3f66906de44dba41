#include "Engine/Common/Math/Rational.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>

using namespace Quillanor::Common;

namespace {

::testing::AssertionResult Is(const cRational& r, int num, int den) {
    if (r.Numerator() == num && r.Denominator() == den) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << r.Numerator() << "/" << r.Denominator() << " instead of " << num << "/" << den;
}

// The distance of the fraction closest to v among all p/q with |p| <= limit, 1 <= q <= limit.
long double BestDistance(double v, int limit) {
    long double best = std::numeric_limits<long double>::infinity();
    for (int q = 1; q <= limit; ++q) {
        long double p = std::round(static_cast<long double>(v) * q);
        p = std::clamp<long double>(p, -limit, limit);
        best = std::min(best, std::fabs(static_cast<long double>(v) - p / q));
        if (std::fabs(v) * q > limit + 1.0) {
            break; // larger denominators only move p/q further away
        }
    }
    return best;
}

long double Distance(double v, const cRational& r) {
    return std::fabs(static_cast<long double>(v) -
                     static_cast<long double>(r.Numerator()) / r.Denominator());
}

} // namespace

TEST(Rational, ConstructionNormalisesSignAndReduces) {
    EXPECT_TRUE(Is(cRational(6, -4, true), -3, 2));
    EXPECT_TRUE(Is(cRational(-6, -4, true), 3, 2));
    EXPECT_TRUE(Is(cRational(0, 5, true), 0, 1));
    EXPECT_TRUE(Is(cRational(0, -5, true), 0, 1));
    EXPECT_TRUE(Is(cRational(6, 4, false), 6, 4));
    EXPECT_TRUE(Is(cRational(6, -4, false), -6, 4));
    EXPECT_TRUE(Is(cRational(30000, 1001, true), 30000, 1001));
    EXPECT_TRUE(Is(cRational(7), 7, 1));
    EXPECT_TRUE(Is(cRational(), 0, 1));
    EXPECT_TRUE(Is(cRational(2147483647, 2147483647, true), 1, 1));
    EXPECT_TRUE(Is(cRational(-2147483647 - 1, 1 << 30, true), -2, 1));
}

TEST(Rational, BinaryGcdAgreesWithStd) {
    std::mt19937_64 rng(7);
    for (int i = 0; i < 4000; ++i) {
        // Shared factors of two and of small primes make the cases interesting.
        const std::uint64_t f = (rng() % 64 + 1) << (rng() % 12);
        const std::uint64_t a = (rng() >> (rng() % 50)) * f, b = (rng() >> (rng() % 50)) * f;
        ASSERT_EQ(cRational::Gcd(a, b), std::gcd(a, b)) << a << " " << b;
        const auto a32 = static_cast<std::uint32_t>(a), b32 = static_cast<std::uint32_t>(b);
        ASSERT_EQ(cRational::Gcd(a32, b32), std::gcd(a32, b32)) << a32 << " " << b32;
    }
    EXPECT_EQ(cRational::Gcd(std::uint32_t{0}, std::uint32_t{12}), 12u);
    EXPECT_EQ(cRational::Gcd(std::uint64_t{12}, std::uint64_t{0}), 12u);
}

TEST(Rational, Arithmetic) {
    const cRational half(1, 2), third(1, 3);
    EXPECT_TRUE(Is(half + third, 5, 6));
    EXPECT_TRUE(Is(half - third, 1, 6));
    EXPECT_TRUE(Is(third - half, -1, 6));
    EXPECT_TRUE(Is(cRational(2, 3) * cRational(3, 4), 1, 2));
    EXPECT_TRUE(Is(half / cRational(-1, 4), -2, 1));
    EXPECT_TRUE(Is(cRational(2, 4, false) + cRational(2, 4, false), 1, 1));
    EXPECT_DOUBLE_EQ(cRational(30000, 1001).ToDouble(), 30000.0 / 1001.0);
    EXPECT_EQ(static_cast<double>(cRational(-3, 4)), -0.75);
    // 32-bit arithmetic wraps instead of trapping: (2^31 - 1) + 1 is -2^31.
    EXPECT_TRUE(Is(cRational(2147483647) + cRational(1), -2147483647 - 1, 1));
}

TEST(Rational, ComparisonsReturnRationals) {
    EXPECT_TRUE(Is(cRational(1, 2, true) == cRational(2, 4, false), 0, 1));
    EXPECT_TRUE(Is(cRational(1, 2, true) != cRational(2, 4, false), 1, 1));
    EXPECT_TRUE(Is(cRational(1, 2) == cRational(2, 4), 1, 1));
    EXPECT_TRUE(Is(cRational(1, 3, true) < cRational(1, 2, true), 1, 1));
    EXPECT_TRUE(Is(cRational(1, 2) < cRational(1, 3), 0, 1));
    EXPECT_TRUE(Is(cRational(1, 2) <= cRational(2, 4, false), 1, 1));
    EXPECT_TRUE(Is(cRational(1, 2) > cRational(2, 4, false), 0, 1));
    EXPECT_TRUE(Is(cRational(-1, 2) >= cRational(-2, 3), 1, 1));
    EXPECT_TRUE(Is(cRational(-1, 2) > cRational(-2, 3), 1, 1));
    EXPECT_NE((cRational(1, 3) < cRational(1, 2)).ToDouble(), 0.0);
}

TEST(Rational, ApproximatesDoubles) {
    EXPECT_TRUE(Is(cRational(0.5, 1000), 1, 2));
    EXPECT_TRUE(Is(cRational(-0.5, 1000), -1, 2));
    EXPECT_TRUE(Is(cRational(0.333333333333, 100), 1, 3));
    EXPECT_TRUE(Is(cRational(29.97002997002997, 1000000), 30000, 1001));
    EXPECT_TRUE(Is(cRational(59.94005994005994, 1000000), 60000, 1001));
    EXPECT_TRUE(Is(cRational(23.976023976023978, 1000000), 24000, 1001));
    EXPECT_TRUE(Is(cRational(3.141592653589793, 1000), 355, 113));
    EXPECT_TRUE(Is(cRational(3.141592653589793, 100), 22, 7)); // the numerator bound decides
    EXPECT_TRUE(Is(cRational(25.0, 1000000), 25, 1));
    EXPECT_TRUE(Is(cRational(0.0, 10), 0, 1));
    EXPECT_TRUE(Is(cRational(1e-20, 1000000), 0, 1));
    // Beyond the limit the numerator bound decides.
    EXPECT_TRUE(Is(cRational(12345.678, 1000), 1000, 1));
    EXPECT_TRUE(Is(cRational(-12345.678, 1000), -1000, 1));
    // One small term is enough to keep the exact fraction, even if the other is beyond the limit.
    EXPECT_TRUE(Is(cRational(50.5, 100), 101, 2));
    EXPECT_TRUE(Is(cRational(std::nan(""), 100), 0, 1));
}

TEST(Rational, ApproximationStaysWithinTheLimitAndIsTheBestFraction) {
    std::mt19937_64 rng(1234);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::uniform_int_distribution<int> limits(1, 300);
    for (int i = 0; i < 4000; ++i) {
        const int limit = limits(rng);
        // Mostly inside (-1, 1), where both terms are bounded; some up to three times the limit.
        const double v = i % 4 == 0 ? unit(rng) * 3.0 * limit : unit(rng);
        const cRational r(v, limit);
        ASSERT_GT(r.Denominator(), 0);
        ASSERT_LE(r.Denominator(), limit) << v << " " << limit;
        ASSERT_LE(std::abs(r.Numerator()), limit) << v << " " << limit;
        const long double best = BestDistance(v, limit);
        ASSERT_LE(Distance(v, r), best * (1 + 1e-12L) + 1e-18L)
            << v << " limit " << limit << ": " << r.Numerator() << "/" << r.Denominator();
    }
}

TEST(Rational, LargeLimitsGiveTheBestFractionToo) {
    std::mt19937_64 rng(99);
    std::uniform_real_distribution<double> rates(1.0, 240.0);
    for (int i = 0; i < 300; ++i) {
        const double v = rates(rng);
        const cRational r(v, 1000000);
        ASSERT_LE(r.Denominator(), 1000000);
        ASSERT_LE(r.Numerator(), 1000000);
        ASSERT_LE(Distance(v, r), BestDistance(v, 1000000) * (1 + 1e-12L)) << v;
    }
}

TEST(RationalDeathTest, ZeroDenominatorAsserts) {
    EXPECT_EXIT(cRational(1, 0, true), testing::ExitedWithCode(0), "pDenominator != 0");
}
