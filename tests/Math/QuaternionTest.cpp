#include "Engine/Common/Math/Quaternion.h"
#include "Engine/Common/Math/Math.h"

#include "MathTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Quillanor::Common;
using QcTest::CircDiff;
using QcTest::MatrixNear;

namespace {

// Equal as rotations: q and -q are the same rotation.
::testing::AssertionResult SameRotation(const cQuaternion& a, const cQuaternion& b, float tol) {
    const float d = std::fabs(a.Dot(b));
    if (std::fabs(d - 1.0f) <= tol) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "|dot| = " << d << " for (" << a.x << ", " << a.y << ", " << a.z << ", " << a.w
           << ") and (" << b.x << ", " << b.y << ", " << b.z << ", " << b.w << ")";
}

struct sRandomRotations {
    std::mt19937 rng{2024};
    std::uniform_real_distribution<float> angle{-cMath::Pi, cMath::Pi};
    std::uniform_real_distribution<float> halfAngle{-cMath::HalfPi, cMath::HalfPi};
    cRotation Next() { return {angle(rng), halfAngle(rng), angle(rng)}; }
    cQuaternion NextQuaternion() { return cQuaternion(Next()); }
};

} // namespace

TEST(Quaternion, IdentityAndBasics) {
    const cQuaternion id;
    EXPECT_EQ(id, cQuaternion(0, 0, 0, 1));
    EXPECT_EQ(id, cQuaternion::Identity);
    EXPECT_EQ(id.ToRotation(), cRotation(0, 0, 0));
    EXPECT_EQ(id.ToMatrix(), cMatrix4::Identity);
    EXPECT_EQ(cQuaternion(1, 2, 3, 4).Conjugated(), cQuaternion(-1, -2, -3, 4));
    cQuaternion c(1, 2, 3, 4);
    c.Conjugate();
    EXPECT_EQ(c, cQuaternion(-1, -2, -3, 4));
    EXPECT_EQ(c[0], -1.0f);
    EXPECT_EQ(c[3], 4.0f);
    c[2] = 7.0f;
    EXPECT_EQ(c.z, 7.0f);
    EXPECT_FLOAT_EQ(cQuaternion(1, 2, 3, 4).Length(), std::sqrt(30.0f));
    EXPECT_FLOAT_EQ(cQuaternion(1, 2, 3, 4).Normalized().Length(), 1.0f);
    EXPECT_EQ(cQuaternion(0, 0, 0, 0).Normalized(), cQuaternion(0, 0, 0, 0));
    EXPECT_EQ(static_cast<cMatrix4>(id), cMatrix4::Identity);
    EXPECT_EQ(static_cast<cRotation>(id), cRotation::Null);
}

TEST(Quaternion, AxisAngle) {
    // The axis need not be unit length.
    const cQuaternion qx(cVector3(3, 0, 0), 0.7f);
    EXPECT_TRUE(MatrixNear(qx.ToMatrix(), cMatrix4::RotationX(0.7f), 1e-6f));
    EXPECT_TRUE(MatrixNear(cQuaternion(cVector3(0, 2, 0), -1.2f).ToMatrix(),
                           cMatrix4::RotationY(-1.2f), 1e-6f));
    EXPECT_TRUE(MatrixNear(cQuaternion(cVector3(0, 0, 0.5f), 2.5f).ToMatrix(),
                           cMatrix4::RotationZ(2.5f), 1e-6f));

    std::mt19937 rng(11);
    std::uniform_real_distribution<float> c(-1.0f, 1.0f), ang(0.01f, 6.2f);
    for (int i = 0; i < 2000; ++i) {
        const cVector3 axis = cVector3(c(rng), c(rng), c(rng)) + cVector3(0.01f, 0, 0);
        const float angle = ang(rng);
        const cQuaternion q(axis * 4.0f, angle);
        ASSERT_NEAR(q.Length(), 1.0f, 1e-5f);
        // The axis is left in place by the rotation.
        const cVector3 moved = q.ToMatrix().TransformNormal(axis);
        ASSERT_NEAR((moved - axis).Length(), 0.0f, 1e-5f * axis.Length() + 1e-6f);
        cVector3 outAxis;
        float outAngle = 0;
        q.AsAxisAng(outAxis, outAngle);
        ASSERT_NEAR(outAngle, angle, 2e-3f);
        // The axis comes back as the vector part, scaled by sin(angle / 2).
        const cVector3 expected = axis.Normalized() * std::sin(angle / 2);
        ASSERT_NEAR((outAxis - expected).Length(), 0.0f, 1e-5f);
    }
}

TEST(Quaternion, FromRotationRoundTripsAwayFromThePoles) {
    const cRotation r(0.3f, 0.2f, 0.1f);
    const cRotation back = cQuaternion(r).ToRotation();
    EXPECT_NEAR(back.yaw, 0.3f, 1e-6f);
    EXPECT_NEAR(back.pitch, 0.2f, 1e-6f);
    EXPECT_NEAR(back.roll, 0.1f, 1e-6f);

    std::mt19937 rng(12);
    std::uniform_real_distribution<float> angle(-cMath::Pi, cMath::Pi), pitch(-1.5f, 1.5f);
    for (int i = 0; i < 5000; ++i) {
        const cRotation in(angle(rng), pitch(rng), angle(rng));
        const cRotation out = static_cast<cRotation>(cQuaternion(in));
        ASSERT_NEAR(out.pitch, in.pitch, 2e-5f) << i;
        // Yaw and roll lose precision as 1 / cos(pitch) towards the pole.
        ASSERT_LT(CircDiff(out.yaw, in.yaw), 5e-5) << i;
        ASSERT_LT(CircDiff(out.roll, in.roll), 5e-5) << i;
    }
}

TEST(Quaternion, PolesGiveTheWholeTurnToRoll) {
    const cQuaternion up(cRotation(0.5f, cMath::HalfPi, 0.0f));
    const cRotation r = up.ToRotation();
    EXPECT_EQ(r.yaw, 0.0f);
    EXPECT_EQ(r.pitch, 1.5707964f);
    // The combined turn: same orientation as before.
    EXPECT_NEAR(r.roll, -0.5f, 1e-5f);
    EXPECT_TRUE(
        MatrixNear(cMatrix4::RotationYawPitchRoll(r.yaw, r.pitch, r.roll), up.ToMatrix(), 2e-5f));

    const cQuaternion down(cRotation(0.5f, -cMath::HalfPi, 0.2f));
    const cRotation d = down.ToRotation();
    EXPECT_EQ(d.yaw, 0.0f);
    EXPECT_EQ(d.pitch, -1.5707964f);
    EXPECT_TRUE(
        MatrixNear(cMatrix4::RotationYawPitchRoll(d.yaw, d.pitch, d.roll), down.ToMatrix(), 2e-5f));

    // Just inside the limit the general formula is used.
    const cRotation near = cQuaternion(cRotation(0.5f, 1.56f, 0.0f)).ToRotation();
    EXPECT_NEAR(near.yaw, 0.5f, 1e-3f);
    EXPECT_NEAR(near.pitch, 1.56f, 1e-4f);
}

TEST(Quaternion, MatrixIsOrthonormalAndMatchesYawPitchRoll) {
    sRandomRotations gen;
    for (int i = 0; i < 5000; ++i) {
        const cRotation r = gen.Next();
        const cQuaternion q(r);
        ASSERT_NEAR(q.Length(), 1.0f, 1e-5f);
        const cMatrix4 m = q.ToMatrix();
        ASSERT_TRUE(MatrixNear(m * m.Transposed(), cMatrix4::Identity, 1e-5f)) << i;
        ASSERT_NEAR(m.Determinant(), 1.0f, 1e-5f);
        ASSERT_TRUE(MatrixNear(m, cMatrix4::RotationYawPitchRoll(r.yaw, r.pitch, r.roll), 1e-5f))
            << i;
        // And the quaternion read back from the matrix is the same rotation (every branch of the
        // conversion is reached by the random orientations).
        ASSERT_TRUE(SameRotation(cQuaternion(m), q, 1e-5f)) << i;
    }
    // The four branches explicitly: half turns about each axis, and a small rotation.
    for (const cQuaternion& q :
         {cQuaternion(cVector3(1, 0, 0), 3.1f), cQuaternion(cVector3(0, 1, 0), 3.1f),
          cQuaternion(cVector3(0, 0, 1), 3.1f), cQuaternion(cVector3(1, 1, 1), 0.1f)}) {
        EXPECT_TRUE(SameRotation(cQuaternion(q.ToMatrix()), q, 1e-6f));
    }
}

TEST(Quaternion, MultiplicationOrderFollowsMatrixOrder) {
    sRandomRotations gen;
    for (int i = 0; i < 4000; ++i) {
        const cQuaternion a = gen.NextQuaternion(), b = gen.NextQuaternion();
        ASSERT_TRUE(MatrixNear((a * b).ToMatrix(), a.ToMatrix() * b.ToMatrix(), 2e-5f)) << i;
        cQuaternion c = a;
        c *= b;
        ASSERT_EQ(c, a * b);
    }
    // Rotating first about X then about Y is not the same as the other way round.
    const cQuaternion x(cVector3(1, 0, 0), 1.0f), y(cVector3(0, 1, 0), 1.0f);
    EXPECT_TRUE(
        MatrixNear((x * y).ToMatrix(), cMatrix4::RotationX(1) * cMatrix4::RotationY(1), 1e-6f));
    EXPECT_FALSE(MatrixNear((x * y).ToMatrix(), (y * x).ToMatrix(), 1e-3f));
}

TEST(Quaternion, InverseUndoesTheRotation) {
    sRandomRotations gen;
    std::uniform_real_distribution<float> scale(0.2f, 5.0f);
    for (int i = 0; i < 2000; ++i) {
        const cQuaternion q = gen.NextQuaternion();
        const float s = scale(gen.rng);
        const cQuaternion scaled(q.x * s, q.y * s, q.z * s, q.w * s);
        const cQuaternion p = scaled * scaled.Inverse();
        ASSERT_NEAR(p.x, 0.0f, 1e-5f);
        ASSERT_NEAR(p.y, 0.0f, 1e-5f);
        ASSERT_NEAR(p.z, 0.0f, 1e-5f);
        ASSERT_NEAR(p.w, 1.0f, 1e-5f);
        cQuaternion inv = q;
        inv.Invert();
        ASSERT_TRUE(MatrixNear(inv.ToMatrix(), q.ToMatrix().Transposed(), 1e-5f));
        cQuaternion n = scaled;
        n.Normalize();
        ASSERT_TRUE(SameRotation(n, q, 1e-5f));
    }
}

TEST(Quaternion, SlerpFollowsTheShorterArcAtConstantSpeed) {
    sRandomRotations gen;
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    auto angleBetween = [](const cQuaternion& a, const cQuaternion& b) {
        return 2.0 * std::acos(std::min(1.0, std::fabs(static_cast<double>(a.Dot(b)))));
    };
    for (int i = 0; i < 4000; ++i) {
        const cQuaternion a = gen.NextQuaternion();
        // Half of the targets are given with the opposite sign: still the short way.
        cQuaternion b = gen.NextQuaternion();
        if (i % 2 == 0) {
            b = cQuaternion(-b.x, -b.y, -b.z, -b.w);
        }
        const float t = unit(gen.rng);
        const cQuaternion s = a.Slerp(b, t);
        ASSERT_NEAR(s.Length(), 1.0f, 1e-4f);
        ASSERT_TRUE(SameRotation(a.Slerp(b, 0.0f), a, 1e-5f));
        ASSERT_TRUE(SameRotation(a.Slerp(b, 1.0f), b, 1e-5f));
        const double total = angleBetween(a, b);
        ASSERT_LE(total, cMath::DPi + 1e-3);
        ASSERT_NEAR(angleBetween(a, s), t * total, 2e-3) << i;
        ASSERT_NEAR(angleBetween(s, b), (1 - t) * total, 2e-3) << i;
    }
    // Nearly equal orientations fall back to a straight blend without dividing by ~0.
    const cQuaternion a(cVector3(0, 1, 0), 0.3f), b(cVector3(0, 1, 0), 0.30001f);
    const cQuaternion m = a.Slerp(b, 0.5f);
    EXPECT_TRUE(std::isfinite(m.w));
    EXPECT_NEAR(m.y, std::sin(0.150005f), 1e-5f);
}

TEST(QuaternionDeathTest, IndexOutOfRangeAsserts) {
    const cQuaternion q;
    EXPECT_EXIT((void)q[4], testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < 4");
}
