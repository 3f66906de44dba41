#include "Engine/Common/Math/Math.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <set>

using namespace Quillanor::Common;

TEST(ScalarMath, ConstantsAreTheRoundedValuesOfPi) {
    EXPECT_EQ(cMath::Pi, static_cast<float>(std::numbers::pi));
    EXPECT_EQ(cMath::HalfPi, static_cast<float>(std::numbers::pi / 2));
    EXPECT_EQ(cMath::TwoPi, static_cast<float>(std::numbers::pi * 2));
    EXPECT_EQ(cMath::DPi, std::numbers::pi);
    EXPECT_EQ(cMath::DHalfPi, std::numbers::pi / 2);
    EXPECT_EQ(cMath::DTwoPi, std::numbers::pi * 2);
    EXPECT_EQ(cMath::Epsilon, 1e-5f);
    EXPECT_EQ(cMath::DEpsilon, 1e-14);
    EXPECT_EQ(cMath::Eps<float>(), cMath::Epsilon);
    EXPECT_EQ(cMath::Eps<double>(), cMath::DEpsilon);
}

TEST(ScalarMath, MaxValues) {
    EXPECT_EQ(cMath::MaxValue<short>(), 32767);
    EXPECT_EQ(cMath::MaxValue<unsigned short>(), 65535);
    EXPECT_EQ(cMath::MaxValue<int>(), 2147483647);
    EXPECT_EQ(cMath::MaxValue<unsigned int>(), 4294967295u);
    EXPECT_EQ(cMath::MaxValue<std::int64_t>(), 9223372036854775807LL);
    EXPECT_EQ(cMath::MaxValue<std::uint64_t>(), 18446744073709551615ULL);
    EXPECT_EQ(cMath::MaxValue<float>(), 3.40282347e38f);
    EXPECT_EQ(cMath::MaxValue<double>(), 1.7976931348623157e308);
}

TEST(ScalarMath, PModAndDivCeil) {
    EXPECT_EQ(cMath::PMod(7, 3), 1);
    EXPECT_EQ(cMath::PMod(-7, 3), 2);
    EXPECT_EQ(cMath::PMod(0, 5), 0);
    EXPECT_EQ(cMath::PMod(-1, 4), 3);
    EXPECT_EQ(cMath::PMod(-8, 4), 0);
    EXPECT_EQ(cMath::DivCeil(7, 2), 4);
    EXPECT_EQ(cMath::DivCeil(8, 2), 4);
    EXPECT_EQ(cMath::DivCeil(-5, 2), -1); // the +1 also applies to a negative inexact quotient
    EXPECT_EQ(cMath::DivCeil(-4, 2), -2);
    for (int a = -200; a <= 200; ++a) {
        for (int b = 1; b <= 17; ++b) {
            const int r = cMath::PMod(a, b);
            ASSERT_GE(r, 0);
            ASSERT_LT(r, b);
            ASSERT_EQ((a - r) % b, 0) << a << " " << b;
            if (a > 0) {
                ASSERT_EQ(cMath::DivCeil(a, b), static_cast<int>(std::ceil(double(a) / b)));
            }
        }
    }
}

TEST(ScalarMath, PowersOfTwo) {
    EXPECT_FALSE(cMath::IsPowerOf2(0));
    EXPECT_FALSE(cMath::IsPowerOf2(-8));
    EXPECT_FALSE(cMath::IsPowerOf2(-2147483647 - 1));
    EXPECT_TRUE(cMath::IsPowerOf2(1));
    EXPECT_TRUE(cMath::IsPowerOf2(1 << 30));
    EXPECT_EQ(cMath::PowerOf2Ceil(0), 1);
    EXPECT_EQ(cMath::PowerOf2Ceil(-5), 1);
    EXPECT_EQ(cMath::PowerOf2Ceil(5), 8);
    EXPECT_EQ(cMath::PowerOf2Ceil(8), 8);
    EXPECT_EQ(cMath::PowerOf2Ceil((1 << 29) + 1), 1 << 30);
    for (int v = 1; v <= 70000; ++v) {
        const auto u = static_cast<unsigned>(v);
        ASSERT_EQ(cMath::IsPowerOf2(v), std::has_single_bit(u)) << v;
        ASSERT_EQ(cMath::PowerOf2Ceil(v), static_cast<int>(std::bit_ceil(u))) << v;
    }
}

TEST(ScalarMath, NoiseIsTheSameOnEveryRunAndInRange) {
    // Values of the integer noise function worked out independently of this library.
    EXPECT_EQ(cMath::Noise(0), 0.6408954919315875);
    EXPECT_EQ(cMath::Noise(1), 0.6131865256465971);
    EXPECT_EQ(cMath::Noise(2), 0.3531835596077144);
    EXPECT_EQ(cMath::Noise(3), 0.6285925940610468);
    EXPECT_EQ(cMath::Noise(-1), 0.04993685567751527);
    EXPECT_EQ(cMath::Noise(12345), 0.9464463242329657);
    EXPECT_EQ(cMath::Noise(-2147483647 - 1), 0.6408954919315875);
    EXPECT_EQ(cMath::Noise(2147483647), 0.04993685567751527);

    // Reference written with 64-bit arithmetic and the negative form of the last constant.
    auto reference = [](int x) {
        const std::uint64_t mask = 0xFFFFFFFF;
        const std::uint64_t u = static_cast<std::uint64_t>(static_cast<std::int64_t>(x)) & mask;
        const std::uint64_t n = ((u << 13) ^ u) & mask;
        const std::uint64_t inner = (n * n * 15731 + 789221) & mask;
        const std::uint64_t m = (n * inner - 771171059) & 0x7FFFFFFF;
        return std::ldexp(static_cast<double>(m), -31);
    };
    std::mt19937 rng(20240501);
    std::uniform_int_distribution<int> any(-2147483647 - 1, 2147483647);
    std::set<double> distinct;
    for (int i = 0; i < 5000; ++i) {
        const int x = i < 1000 ? i - 500 : any(rng);
        const double v = cMath::Noise(x);
        ASSERT_GE(v, 0.0);
        ASSERT_LT(v, 1.0);
        ASSERT_EQ(v, reference(x)) << x;
        distinct.insert(v);
    }
    EXPECT_GT(distinct.size(), 4900u);
}

TEST(ScalarMath, InterpNoiseRunsThroughTheSamplesSmoothly) {
    EXPECT_EQ(cMath::InterpNoise(3.0), cMath::Noise(3));
    for (int i = -50; i <= 50; ++i) {
        ASSERT_EQ(cMath::InterpNoise(i), cMath::Noise(i)) << i;
        // Continuous at the next sample: t -> 1 reaches Noise(i + 1).
        ASSERT_NEAR(cMath::InterpNoise(i + 1 - 1e-9), cMath::Noise(i + 1), 1e-7) << i;
    }
    // Between samples the value comes from the samples around floor(x), also below zero.
    const double a = cMath::Noise(-4), b = cMath::Noise(-3), c = cMath::Noise(-2),
                 d = cMath::Noise(-1);
    const double t = 0.25;
    const double p = (d - c) - (a - b);
    const double expected = ((p * t + ((a - b) - p)) * t + (c - a)) * t + b;
    EXPECT_DOUBLE_EQ(cMath::InterpNoise(-2.75), expected);
}

TEST(ScalarMath, StartRandom) {
    for (int seed : {1, 5, -7, 123456, 2147483647}) {
        EXPECT_EQ(cMath::StartRandom(seed), static_cast<int>(cMath::Noise(seed) * 2147483647.0));
    }
    // Seed 0 draws from the system source: repeated calls are in range and not all alike.
    std::set<int> seen;
    for (int i = 0; i < 8; ++i) {
        const int v = cMath::StartRandom(0);
        EXPECT_GE(v, 0);
        EXPECT_LT(v, 2147483647);
        seen.insert(v);
    }
    EXPECT_GT(seen.size(), 1u);
}
