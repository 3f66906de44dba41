#include "Engine/Common/Math/Color.h"
#include "Engine/Common/Math/Math.h"
#include "Engine/Common/Math/Matrix4.h"
#include "Engine/Common/Math/Quaternion.h"
#include "Engine/Common/Math/Transformation.h"
#include "Engine/Common/Math/Vector.h"

#include "MathTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Quillanor::Common;
using QcTest::MatrixNear;

namespace {

::testing::AssertionResult VectorNear(const cVector3& a, const cVector3& b, float tolerance) {
    if ((a - b).Length() <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") vs ("
                                         << b.x << ", " << b.y << ", " << b.z << ")";
}

} // namespace

TEST(Vector, Arithmetic) {
    const cVector3 a(1, 2, 3), b(4, -5, 6);
    EXPECT_EQ(a + b, cVector3(5, -3, 9));
    EXPECT_EQ(a - b, cVector3(-3, 7, -3));
    EXPECT_EQ(-a, cVector3(-1, -2, -3));
    EXPECT_EQ(a * 2.0f, cVector3(2, 4, 6));
    EXPECT_EQ(2.0f * a, cVector3(2, 4, 6));
    EXPECT_EQ(a / 2.0f, cVector3(0.5f, 1, 1.5f));
    EXPECT_EQ(a * b, cVector3(4, -10, 18));
    EXPECT_EQ(a.Dot(b), 12.0f);
    EXPECT_EQ(cVector3(1, 0, 0).Cross(cVector3(0, 1, 0)), cVector3(0, 0, 1));
    EXPECT_EQ(a.Cross(b).Dot(a), 0.0f);
    EXPECT_FLOAT_EQ(cVector3(2, 3, 6).Length(), 7.0f);
    EXPECT_FLOAT_EQ(cVector3(2, 3, 6).Normalized().Length(), 1.0f);
    EXPECT_EQ(cVector3::Null.Normalized(), cVector3::Null);
    EXPECT_EQ(a.Lerp(b, 0.5f), cVector3(2.5f, -1.5f, 4.5f));
    EXPECT_EQ(a.Min(b), cVector3(1, -5, 3));
    EXPECT_EQ(a.Max(b), cVector3(4, 2, 6));
    cVector3 c = a;
    c += b;
    c -= a;
    c *= 2.0f;
    c /= 4.0f;
    EXPECT_EQ(c, b * 0.5f);
    c[2] = 10.0f;
    EXPECT_EQ(c.z, 10.0f);
    EXPECT_EQ(a[1], 2.0f);

    EXPECT_EQ(cVector2(1, 2) + cVector2(3, 4), cVector2(4, 6));
    EXPECT_EQ(cVector2(3, 4).Length(), 5.0f);
    EXPECT_EQ(cVector2(3, 4).Dot(cVector2(1, 1)), 7.0f);
    EXPECT_EQ(cVector4(1, 2, 3, 4) - cVector4(1, 1, 1, 1), cVector4(0, 1, 2, 3));
    EXPECT_EQ(cVector4(cVector3(1, 2, 3), 9).w, 9.0f);
    EXPECT_EQ(cVector4(1, 2, 3, 4).XYZ(), cVector3(1, 2, 3));
    EXPECT_EQ(cVector4(1, 2, 3, 4)[3], 4.0f);
    EXPECT_FLOAT_EQ(cVector4(1, 1, 1, 1).Normalized().Length(), 1.0f);
    EXPECT_EQ(cVector2::Null, cVector2(0, 0));
    EXPECT_EQ(cVector3::One, cVector3(1, 1, 1));
    EXPECT_EQ(cVector4::Null, cVector4(0, 0, 0, 0));
    EXPECT_EQ(cVector4::One, cVector4(1, 1, 1, 1));
}

TEST(Matrix4, LayoutAndProducts) {
    const cMatrix4 t = cMatrix4::Translation({1, 2, 3});
    EXPECT_EQ(t[12], 1.0f); // translation in the fourth row
    EXPECT_EQ(t(3, 1), 2.0f);
    EXPECT_EQ(t.TransformCoord({1, 1, 1}), cVector3(2, 3, 4));
    EXPECT_EQ(t.TransformNormal({1, 1, 1}), cVector3(1, 1, 1));
    const cMatrix4 s = cMatrix4::Scaling({2, 3, 4});
    // Row vectors: s * t scales first, then moves.
    EXPECT_EQ((s * t).TransformCoord({1, 1, 1}), cVector3(3, 5, 7));
    EXPECT_EQ((t * s).TransformCoord({1, 1, 1}), cVector3(4, 9, 16));
    EXPECT_EQ(s.Determinant(), 24.0f);
    EXPECT_EQ(cMatrix4::Identity * s, s);
    EXPECT_EQ(s * cMatrix4::Identity, s);
    EXPECT_EQ(cVector4(1, 1, 1, 1) * t, cVector4(2, 3, 4, 1));

    // Left-handed: a quarter turn about Y takes +Z to +X, about X takes +Y to +Z.
    EXPECT_TRUE(VectorNear(cMatrix4::RotationY(cMath::HalfPi).TransformNormal({0, 0, 1}), {1, 0, 0},
                           1e-6f));
    EXPECT_TRUE(VectorNear(cMatrix4::RotationX(cMath::HalfPi).TransformNormal({0, 1, 0}), {0, 0, 1},
                           1e-6f));
    EXPECT_TRUE(VectorNear(cMatrix4::RotationZ(cMath::HalfPi).TransformNormal({1, 0, 0}), {0, 1, 0},
                           1e-6f));
    // Yaw-pitch-roll is roll, then pitch, then yaw.
    EXPECT_TRUE(MatrixNear(
        cMatrix4::RotationYawPitchRoll(0.4f, -0.3f, 1.1f),
        cMatrix4::RotationZ(1.1f) * cMatrix4::RotationX(-0.3f) * cMatrix4::RotationY(0.4f), 1e-6f));

    float values[16];
    for (int i = 0; i < 16; ++i) {
        values[i] = static_cast<float>(i);
    }
    const cMatrix4 m(values);
    EXPECT_EQ(m(1, 2), 6.0f);
    EXPECT_EQ(m.Transposed()(2, 1), 6.0f);
    EXPECT_EQ(m.Transposed().Transposed(), m);
    EXPECT_EQ((m + m)[5], 10.0f);
    EXPECT_EQ((m - m), cMatrix4::Zero);
    EXPECT_EQ((m * 0.5f)[4], 2.0f);
    EXPECT_NE(m, cMatrix4::Identity);
}

TEST(Matrix4, InverseOfRandomMatrices) {
    std::mt19937 rng(21);
    std::uniform_real_distribution<float> v(-2.0f, 2.0f);
    int inverted = 0;
    for (int n = 0; n < 3000; ++n) {
        cMatrix4 m;
        for (int i = 0; i < 16; ++i) {
            m[i] = v(rng);
        }
        if (std::fabs(m.Determinant()) < 0.5f) {
            continue; // badly conditioned: float round-off would dominate the check
        }
        bool ok = false;
        const cMatrix4 inv = m.Inverse(&ok);
        ASSERT_TRUE(ok);
        ASSERT_TRUE(MatrixNear(m * inv, cMatrix4::Identity, 2e-4f)) << n;
        ASSERT_TRUE(MatrixNear(inv * m, cMatrix4::Identity, 2e-4f)) << n;
        ASSERT_NEAR(m.Determinant() * inv.Determinant(), 1.0f, 1e-3f);
        ++inverted;
    }
    EXPECT_GT(inverted, 1000);

    cMatrix4 singular = cMatrix4::Scaling({1, 0, 1});
    bool ok = true;
    EXPECT_EQ(singular.Inverse(&ok), cMatrix4::Zero);
    EXPECT_FALSE(ok);
    EXPECT_FALSE(singular.Invert());
    EXPECT_EQ(singular, cMatrix4::Scaling({1, 0, 1}));
    cMatrix4 t = cMatrix4::Translation({1, 2, 3});
    EXPECT_TRUE(t.Invert());
    EXPECT_EQ(t, cMatrix4::Translation({-1, -2, -3}));
}

TEST(Transformation, FormsAndMatrix) {
    EXPECT_FALSE(cTransformation::Identity.IsMatrix());
    EXPECT_EQ(cTransformation::Identity.ToMatrix(), cMatrix4::Identity);
    EXPECT_EQ(cTransformation(), cTransformation::Identity);
    EXPECT_EQ(cTransformation::Zero.Scaling(), cVector3::Null);
    EXPECT_EQ(cTransformation::Zero.Translation(), cVector3::Null);
    EXPECT_EQ(cTransformation::Zero.Rotation(), cRotation::Null);
    EXPECT_NE(cTransformation::Zero, cTransformation::Identity);
    EXPECT_EQ(cTransformation(cMatrix4::Identity), cTransformation::Identity);
    EXPECT_TRUE(cTransformation(cMatrix4::Identity).IsMatrix());

    const cVector3 pos(1, 2, 3), scale(2, 3, 0.5f);
    const cRotation rot(0.3f, -0.2f, 1.0f);
    const cTransformation tr(pos, rot, scale);
    EXPECT_TRUE(MatrixNear(tr.ToMatrix(),
                           cMatrix4::Scaling(scale) *
                               cMatrix4::RotationYawPitchRoll(rot.yaw, rot.pitch, rot.roll) *
                               cMatrix4::Translation(pos),
                           1e-6f));
    EXPECT_TRUE(VectorNear(tr.TransformCoord({0, 0, 0}), pos, 1e-6f));
    EXPECT_EQ(tr, tr);
    EXPECT_NE(tr, cTransformation(pos, rot, cVector3::One));
    // A component form equals the matrix form of its own matrix.
    EXPECT_EQ(tr, cTransformation(tr.ToMatrix()));
    const cTransformation both = tr * cTransformation(cMatrix4::Translation({1, 0, 0}));
    EXPECT_TRUE(both.IsMatrix());
    EXPECT_TRUE(VectorNear(both.Translation(), pos + cVector3(1, 0, 0), 1e-6f));
}

TEST(Transformation, MatrixFormGivesBackItsComponents) {
    std::mt19937 rng(31);
    std::uniform_real_distribution<float> angle(-3.1f, 3.1f), pitch(-1.5f, 1.5f),
        scale(0.1f, 10.0f), pos(-100.0f, 100.0f);
    for (int i = 0; i < 2000; ++i) {
        const cTransformation c({pos(rng), pos(rng), pos(rng)},
                                {angle(rng), pitch(rng), angle(rng)},
                                {scale(rng), scale(rng), scale(rng)});
        const cTransformation m(c.ToMatrix());
        ASSERT_TRUE(m.IsMatrix());
        ASSERT_EQ(m.Translation(), c.Translation());
        ASSERT_TRUE(VectorNear(m.Scaling(), c.Scaling(), 1e-4f * c.Scaling().Length()));
        // The rotation may come back as another triple with the same orientation.
        const cRotation r = m.Rotation();
        ASSERT_TRUE(MatrixNear(cMatrix4::RotationYawPitchRoll(r.yaw, r.pitch, r.roll),
                               cQuaternion(c.Rotation()).ToMatrix(), 1e-4f))
            << i;
    }
}

TEST(Color, PackingPutsAlphaOnTopThenRedGreenBlue) {
    EXPECT_EQ(cColor4(1, 0, 0, 1).ToBGRA(), 0xFFFF0000u);
    EXPECT_EQ(cColor4(0, 1, 0, 0).ToBGRA(), 0x0000FF00u);
    EXPECT_EQ(cColor4(0, 0, 1, 0).ToBGRA(), 0x000000FFu);
    EXPECT_EQ(cColor4::WHITE.ToBGRA(), 0xFFFFFFFFu);
    EXPECT_EQ(cColor4::Null.ToBGRA(), 0u);
    EXPECT_EQ(cColor4(0.5f, 0.25f, 1.0f / 255, 0.5f).ToBGRA(), 0x80804001u);
    // Out-of-range and NaN channels are clamped when packed.
    EXPECT_EQ(cColor4(2.0f, -1.0f, std::nanf(""), 1.0f).ToBGRA(), 0xFFFF0000u);

    std::mt19937 rng(41);
    for (int i = 0; i < 5000; ++i) {
        const std::uint32_t packed = rng();
        ASSERT_EQ(cColor4::FromBGRA(packed).ToBGRA(), packed);
    }
    const cColor4 c = cColor4::FromBGRA(0x80FF0000u);
    EXPECT_EQ(c.r, 1.0f);
    EXPECT_EQ(c.g, 0.0f);
    EXPECT_FLOAT_EQ(c.a, 128.0f / 255.0f);
}

TEST(Color, Arithmetic) {
    const cColor4 a(1, 0.5f, 0.25f, 1), b(0.5f, 0.5f, 0.5f, 0.5f);
    EXPECT_EQ(cColor4(1, 2, 3).a, 1.0f);
    EXPECT_EQ(a + b, cColor4(1.5f, 1, 0.75f, 1.5f));
    EXPECT_EQ(a - b, cColor4(0.5f, 0, -0.25f, 0.5f));
    EXPECT_EQ(a * b, cColor4(0.5f, 0.25f, 0.125f, 0.5f));
    EXPECT_EQ(a * 2.0f, cColor4(2, 1, 0.5f, 2));
    EXPECT_EQ(a / 2.0f, cColor4(0.5f, 0.25f, 0.125f, 0.5f));
    EXPECT_EQ(a.Lerp(b, 0.5f), cColor4(0.75f, 0.5f, 0.375f, 0.75f));
    EXPECT_EQ((a * 2.0f).Saturated(), cColor4(1, 1, 0.5f, 1));
    EXPECT_EQ(a[1], 0.5f);
    EXPECT_NE(a, b);
    EXPECT_EQ(cColor4::Null, cColor4(0, 0, 0, 0));
    EXPECT_EQ(cColor4::WHITE, cColor4(1, 1, 1, 1));
}

TEST(ValueTypesDeathTest, IndexOutOfRangeAsserts) {
    cVector3 v;
    EXPECT_EXIT(v[3] = 1.0f, testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < 3");
    const cMatrix4 m;
    EXPECT_EXIT((void)m[16], testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < 16");
}
