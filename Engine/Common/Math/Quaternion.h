// A rotation quaternion in the D3DX layout and conventions: x, y, z is the vector part, w the
// scalar part, (0, 0, 0, 1) the identity.
//
// A plain value type usable from any thread. Multiplication follows D3DXQuaternionMultiply:
// a * b rotates first by a and then by b, the same order as cMatrix4 products, which is the
// reverse of the mathematical quaternion product.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Math/Matrix4.h"
#include "Engine/Common/Math/Rotation.h"
#include "Engine/Common/Math/Vector.h"

namespace Quillanor::Common {

// Out-of-line members carry QC_API one by one (see cMatrix4).
class cQuaternion {
public:
    float x = 0.0f, y = 0.0f, z = 0.0f, w = 1.0f;

    static const cQuaternion Identity;

    constexpr cQuaternion() = default;
    constexpr cQuaternion(float pX, float pY, float pZ, float pW) : x(pX), y(pY), z(pZ), w(pW) {}
    // Rotation by pAngle radians about pAxis (need not be unit length).
    QC_API cQuaternion(const cVector3& pAxis, float pAngle);
    // The same rotation as cMatrix4::RotationYawPitchRoll of the three angles.
    QC_API explicit cQuaternion(const cRotation& r);
    // The rotation part of a matrix whose upper 3x3 is orthonormal.
    QC_API explicit cQuaternion(const cMatrix4& pM);

    QC_API cMatrix4 ToMatrix() const;
    explicit operator cMatrix4() const { return ToMatrix(); }
    // Yaw, pitch and roll; near the poles (|pitch| = pi/2) yaw is 0 and roll carries the turn.
    QC_API cRotation ToRotation() const;
    explicit operator cRotation() const { return ToRotation(); }
    // The vector part as it is (not normalised) and the angle 2 acos(w).
    QC_API void AsAxisAng(cVector3& pAxis, float& pAngle) const;

    QC_API float& operator[](int pIdx);
    QC_API float operator[](int pIdx) const;

    // Inline: the hot path of animation code. Computes the mathematical product q * this.
    constexpr cQuaternion operator*(const cQuaternion& q) const {
        return {q.w * x + q.x * w + q.y * z - q.z * y, q.w * y - q.x * z + q.y * w + q.z * x,
                q.w * z + q.x * y - q.y * x + q.z * w, q.w * w - q.x * x - q.y * y - q.z * z};
    }
    cQuaternion& operator*=(const cQuaternion& q) { return *this = *this * q; }
    constexpr bool operator==(const cQuaternion&) const = default;

    constexpr float Dot(const cQuaternion& q) const {
        return x * q.x + y * q.y + z * q.z + w * q.w;
    }
    constexpr float LengthSq() const { return Dot(*this); }
    QC_API float Length() const;
    // Unit length; a zero quaternion stays zero.
    QC_API cQuaternion Normalized() const;
    void Normalize() { *this = Normalized(); }
    // Conjugate divided by the squared length.
    QC_API cQuaternion Inverse() const;
    void Invert() { *this = Inverse(); }
    constexpr cQuaternion Conjugated() const { return {-x, -y, -z, w}; }
    void Conjugate() { *this = Conjugated(); }
    // Spherical interpolation from this (t = 0) to pTo (t = 1) along the shorter arc; both should
    // be unit quaternions.
    QC_API cQuaternion Slerp(const cQuaternion& pTo, float t) const;
};

inline constexpr cQuaternion cQuaternion::Identity{};

} // namespace Quillanor::Common
