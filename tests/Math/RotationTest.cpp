#include "Engine/Common/Math/Rotation.h"
#include "Engine/Common/Math/Math.h"

#include "MathTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Quillanor::Common;
using QcTest::CircDiff;

TEST(Rotation, XYZDegrees) {
    const cRotation r = cRotation::FromXYZDegrees({90.0f, 0.0f, 0.0f});
    EXPECT_FLOAT_EQ(r.pitch, -cMath::HalfPi);
    EXPECT_EQ(r.yaw, 0.0f);
    EXPECT_EQ(r.roll, 0.0f);
    const cVector3 back = r.ToXYZDegrees();
    EXPECT_FLOAT_EQ(back.x, 90.0f);
    EXPECT_EQ(back.y, 0.0f);
    EXPECT_EQ(back.z, 0.0f);

    const cRotation r2 = cRotation::FromXYZDegrees({10.0f, 20.0f, 30.0f});
    EXPECT_NEAR(r2.yaw, -20.0 * cMath::DPi / 180, 1e-6);
    EXPECT_NEAR(r2.pitch, -10.0 * cMath::DPi / 180, 1e-6);
    EXPECT_NEAR(r2.roll, -30.0 * cMath::DPi / 180, 1e-6);

    std::mt19937 rng(3);
    std::uniform_real_distribution<float> deg(-720.0f, 720.0f);
    for (int i = 0; i < 2000; ++i) {
        const cVector3 d(deg(rng), deg(rng), deg(rng));
        const cVector3 e = cRotation::FromXYZDegrees(d).ToXYZDegrees();
        ASSERT_NEAR(e.x, d.x, 1e-3f);
        ASSERT_NEAR(e.y, d.y, 1e-3f);
        ASSERT_NEAR(e.z, d.z, 1e-3f);
        const cRotation plain(d.x, d.y, d.z);
        const cRotation rt = plain.ToRadians().ToDegrees();
        ASSERT_NEAR(rt.yaw, d.x, 1e-3f);
        ASSERT_NEAR(rt.pitch, d.y, 1e-3f);
        ASSERT_NEAR(rt.roll, d.z, 1e-3f);
    }
    const cRotation deg90 = cRotation(cMath::HalfPi, cMath::Pi, 0.0f).ToDegrees();
    EXPECT_FLOAT_EQ(deg90.yaw, 90.0f);
    EXPECT_FLOAT_EQ(deg90.pitch, 180.0f);
}

TEST(Rotation, DirectionForms) {
    const cRotation forward(cVector3(0, 0, 1), 0.0f);
    EXPECT_EQ(forward.yaw, 0.0f);
    EXPECT_EQ(forward.pitch, 0.0f);
    const cRotation right(cVector3(1, 0, 0), 0.25f);
    EXPECT_FLOAT_EQ(right.yaw, cMath::HalfPi);
    EXPECT_EQ(right.roll, 0.25f);
    const cRotation down(cVector3(0, -5, 0), 0.0f); // not normalised
    EXPECT_FLOAT_EQ(down.pitch, cMath::HalfPi);

    std::mt19937 rng(4);
    std::uniform_real_distribution<float> yaw(-3.1f, 3.1f), pitch(-1.5f, 1.5f), len(0.1f, 10.0f);
    for (int i = 0; i < 2000; ++i) {
        const cRotation r(yaw(rng), pitch(rng), 0.0f);
        const cVector3 dir = r.ToDirection();
        ASSERT_NEAR(dir.Length(), 1.0f, 1e-5f);
        const cRotation back(dir * len(rng), 0.0f);
        ASSERT_NEAR(back.yaw, r.yaw, 2e-4f);
        ASSERT_NEAR(back.pitch, r.pitch, 2e-4f);
        const cVector3 viaCast = static_cast<cVector3>(r);
        ASSERT_EQ(viaCast, dir);
    }
}

TEST(Rotation, ComponentWiseOperations) {
    const cRotation a(1, 2, 3), b(0.5f, -1, 4);
    EXPECT_EQ(a + b, cRotation(1.5f, 1, 7));
    EXPECT_EQ(a - b, cRotation(0.5f, 3, -1));
    EXPECT_EQ(-a, cRotation(-1, -2, -3));
    EXPECT_EQ(a * 2.0f, cRotation(2, 4, 6));
    EXPECT_EQ(a / 2.0f, cRotation(0.5f, 1, 1.5f));
    cRotation c = a;
    c /= 4.0f;
    EXPECT_EQ(c, cRotation(0.25f, 0.5f, 0.75f));
    EXPECT_EQ(a.Min(b), cRotation(0.5f, -1, 3));
    EXPECT_EQ(a.Max(b), cRotation(1, 2, 4));
    EXPECT_EQ(a.Lerp(b, 0.5f), cRotation(0.75f, 0.5f, 3.5f));
    EXPECT_EQ(a[0], 1.0f);
    EXPECT_EQ(a[1], 2.0f);
    EXPECT_EQ(a[2], 3.0f);
    c[1] = 9.0f;
    EXPECT_EQ(c.pitch, 9.0f);
    EXPECT_EQ(cRotation::Null, cRotation(0, 0, 0));
}

TEST(Rotation, NormalizedWrapsYawAndRollOnly) {
    const float t = 3.0f * cMath::Pi / 2.0f;
    const cRotation n = cRotation(t, t, -t).Normalized();
    EXPECT_NEAR(n.yaw, -cMath::HalfPi, 1e-6f);
    EXPECT_EQ(n.pitch, t);
    EXPECT_NEAR(n.roll, cMath::HalfPi, 1e-6f);
    cRotation m(t, t, -t);
    m.Normalize();
    EXPECT_EQ(m, n);

    std::mt19937 rng(5);
    std::uniform_real_distribution<float> any(-40.0f, 40.0f);
    for (int i = 0; i < 3000; ++i) {
        const cRotation r(any(rng), any(rng), any(rng));
        const cRotation w = r.Normalized();
        ASSERT_GE(w.yaw, -cMath::DPi - 1e-6);
        ASSERT_LT(w.yaw, cMath::DPi + 1e-6);
        ASSERT_GE(w.roll, -cMath::DPi - 1e-6);
        ASSERT_LT(w.roll, cMath::DPi + 1e-6);
        ASSERT_LT(CircDiff(w.yaw, r.yaw), 1e-5);
        ASSERT_LT(CircDiff(w.roll, r.roll), 1e-5);
        ASSERT_EQ(w.pitch, r.pitch);
        ASSERT_TRUE(w.CircNearTo(r));
    }
}

TEST(Rotation, MatchNormalizedMovesEveryAngleNextToTheReference) {
    std::mt19937 rng(6);
    std::uniform_real_distribution<float> any(-40.0f, 40.0f), ref(-10.0f, 10.0f);
    for (int i = 0; i < 3000; ++i) {
        const cRotation r(any(rng), any(rng), any(rng));
        const cRotation reference(ref(rng), ref(rng), ref(rng));
        const cRotation m = r.MatchNormalized(reference);
        for (int k = 0; k < 3; ++k) {
            ASSERT_GE(m[k], reference[k] - cMath::Pi - 1e-5f);
            ASSERT_LE(m[k], reference[k] + cMath::Pi + 1e-5f);
            ASSERT_LT(CircDiff(m[k], r[k]), 1e-4);
        }
        cRotation inPlace = r;
        inPlace.MatchNormalize(reference);
        ASSERT_EQ(inPlace, m);
    }
    const cRotation m = cRotation(0.1f, 6.0f, -6.0f).MatchNormalized(cRotation(6.0f, 0.0f, 0.0f));
    EXPECT_NEAR(m.yaw, 0.1 + cMath::DTwoPi, 1e-5);
    EXPECT_NEAR(m.pitch, 6.0 - cMath::DTwoPi, 1e-5);
    EXPECT_NEAR(m.roll, -6.0 + cMath::DTwoPi, 1e-5);
}

TEST(Rotation, CircLerpTakesTheShortWay) {
    const cRotation from(0.1f, 0.2f, 0.0f);
    const cRotation to(cMath::TwoPi - 0.1f, 0.4f, cMath::Pi / 2);
    const cRotation mid = from.CircLerp(to, 0.5f);
    // Crosses zero: the result is 0 up to a whole turn (it is kept in [0, 2pi)), never pi.
    EXPECT_LT(CircDiff(mid.yaw, 0.0), 1e-6);
    EXPECT_GE(mid.yaw, 0.0f);
    EXPECT_LT(mid.yaw, cMath::TwoPi);
    EXPECT_NEAR(mid.pitch, 0.3f, 1e-6f);
    EXPECT_NEAR(mid.roll, cMath::Pi / 4, 1e-6f);

    // A negative start comes out in [0, 2pi).
    EXPECT_NEAR(cRotation(-1.0f, 0, 0).CircLerp(cRotation(-1.0f, 0, 0), 0.3f).yaw,
                cMath::DTwoPi - 1.0, 1e-5);
    // Half a turn goes backwards.
    EXPECT_NEAR(cRotation(0, 0, 0).CircLerp(cRotation(cMath::Pi, 0, 0), 0.5f).yaw,
                3 * cMath::DHalfPi, 1e-5);

    std::mt19937 rng(8);
    std::uniform_real_distribution<float> any(-10.0f, 10.0f), unit(0.0f, 1.0f);
    for (int i = 0; i < 3000; ++i) {
        const cRotation a(any(rng), 0, any(rng)), b(any(rng), 0, any(rng));
        const float t = unit(rng);
        const cRotation r = a.CircLerp(b, t);
        ASSERT_LT(CircDiff(a.CircLerp(b, 0.0f).yaw, a.yaw), 1e-5);
        ASSERT_LT(CircDiff(a.CircLerp(b, 1.0f).roll, b.roll), 1e-5);
        // Never more than half a turn in total from a to b through the result.
        const double total = CircDiff(r.yaw, a.yaw) + CircDiff(r.yaw, b.yaw);
        ASSERT_LT(total, cMath::DPi + 1e-4);
        ASSERT_NEAR(total, CircDiff(a.yaw, b.yaw), 1e-4);
    }
}

TEST(Rotation, CircNear) {
    EXPECT_TRUE(cRotation(0, 0, 0).CircNearTo(cRotation(cMath::TwoPi, 0, 0)));
    EXPECT_TRUE(cRotation(cMath::TwoPi, -cMath::TwoPi, 2 * cMath::TwoPi).CircNearNull());
    EXPECT_TRUE(cRotation(5e-6f, -5e-6f, 0).CircNearNull());
    EXPECT_FALSE(cRotation(2e-5f, 0, 0).CircNearNull());
    EXPECT_FALSE(cRotation(0, 0, cMath::Pi).CircNearNull());
    EXPECT_FALSE(cRotation(0, -cMath::Pi, 0).CircNearNull());
    EXPECT_FALSE(cRotation(0, 0, 0).CircNearTo(cRotation(0, 0.001f, 0)));
    EXPECT_TRUE(cRotation(1, 2, 3).CircNearTo(cRotation(1 - cMath::TwoPi, 2 + cMath::TwoPi, 3)));
}

TEST(RotationDeathTest, IndexOutOfRangeAsserts) {
    cRotation r;
    EXPECT_EXIT(r[3] = 1.0f, testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < 3");
}
