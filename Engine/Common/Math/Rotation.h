// An orientation as yaw, pitch and roll angles in radians: left-handed, Y up; yaw about Y,
// pitch about X, roll about Z, applied roll first, then pitch, then yaw (the order of
// cMatrix4::RotationYawPitchRoll).
//
// A plain value type usable from any thread. Besides component-wise arithmetic it offers the
// circular (wrap-around) forms of comparison and interpolation. User-facing values use the
// XYZ-degrees form (FromXYZDegrees / ToXYZDegrees).
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Math/Vector.h"

namespace Quillanor::Common {

// Out-of-line members carry QC_API one by one (see cMatrix4).
class cRotation {
public:
    float yaw = 0.0f, pitch = 0.0f, roll = 0.0f;

    static const cRotation Null;

    constexpr cRotation() = default;
    constexpr cRotation(float pYaw, float pPitch, float pRoll)
        : yaw(pYaw), pitch(pPitch), roll(pRoll) {}
    // The rotation that looks along pDirection (need not be unit length), with the given roll.
    QC_API cRotation(const cVector3& pDirection, float pRoll);

    // Degrees about X, Y, Z as shown to users: yaw = -y, pitch = -x, roll = -z, in radians.
    QC_API static cRotation FromXYZDegrees(const cVector3& pDegrees);
    QC_API cVector3 ToXYZDegrees() const;
    // Each angle converted, the order kept.
    QC_API cRotation ToDegrees() const;
    QC_API cRotation ToRadians() const;
    // The unit look direction (the Z axis turned by yaw and pitch).
    QC_API cVector3 ToDirection() const;
    explicit operator cVector3() const { return ToDirection(); }

    QC_API float& operator[](int pIdx);
    QC_API float operator[](int pIdx) const;

    constexpr cRotation operator+(const cRotation& r) const {
        return {yaw + r.yaw, pitch + r.pitch, roll + r.roll};
    }
    constexpr cRotation operator-(const cRotation& r) const {
        return {yaw - r.yaw, pitch - r.pitch, roll - r.roll};
    }
    constexpr cRotation operator-() const { return {-yaw, -pitch, -roll}; }
    constexpr cRotation operator*(float s) const { return {yaw * s, pitch * s, roll * s}; }
    constexpr cRotation operator/(float s) const { return {yaw / s, pitch / s, roll / s}; }
    cRotation& operator+=(const cRotation& r) { return *this = *this + r; }
    cRotation& operator-=(const cRotation& r) { return *this = *this - r; }
    cRotation& operator*=(float s) { return *this = *this * s; }
    cRotation& operator/=(float s) { return *this = *this / s; }
    constexpr bool operator==(const cRotation&) const = default;

    QC_API cRotation Min(const cRotation& r) const;
    QC_API cRotation Max(const cRotation& r) const;
    // Component-wise a + (b - a) * t, without wrap-around.
    constexpr cRotation Lerp(const cRotation& r, float t) const { return *this + (r - *this) * t; }
    // Yaw and roll take the shorter way round and come out in [0, 2pi); pitch is linear.
    QC_API cRotation CircLerp(const cRotation& r, float t) const;

    // Yaw and roll wrapped into [-pi, pi); pitch is left as it is.
    QC_API cRotation Normalized() const;
    void Normalize() { *this = Normalized(); }
    // Every angle (pitch too) moved by whole turns into [ref - pi, ref + pi), so that
    // interpolating towards pRef takes the short way.
    QC_API cRotation MatchNormalized(const cRotation& pRef) const;
    void MatchNormalize(const cRotation& pRef) { *this = MatchNormalized(pRef); }

    // True when every angle is within 1e-5 of a whole turn.
    QC_API bool CircNearNull() const;
    bool CircNearTo(const cRotation& pOther) const { return (*this - pOther).CircNearNull(); }

    // a wrapped into [-pi, pi), computed in double precision.
    QC_API static float WrapPi(float a);
};

inline constexpr cRotation cRotation::Null{};

} // namespace Quillanor::Common
