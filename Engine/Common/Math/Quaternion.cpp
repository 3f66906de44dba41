#include "Engine/Common/Math/Quaternion.h"

#include "Engine/Common/Math/Math.h"

#include <algorithm>
#include <cmath>

namespace Quillanor::Common {

cQuaternion::cQuaternion(const cVector3& pAxis, float pAngle) {
    const cVector3 axis = pAxis.Normalized();
    const float s = std::sin(pAngle * 0.5f);
    x = axis.x * s;
    y = axis.y * s;
    z = axis.z * s;
    w = std::cos(pAngle * 0.5f);
}

cQuaternion::cQuaternion(const cRotation& r) {
    const float cy = std::cos(r.yaw * 0.5f), sy = std::sin(r.yaw * 0.5f);
    const float cp = std::cos(r.pitch * 0.5f), sp = std::sin(r.pitch * 0.5f);
    const float cr = std::cos(r.roll * 0.5f), sr = std::sin(r.roll * 0.5f);
    x = cy * sp * cr + sy * cp * sr;
    y = sy * cp * cr - cy * sp * sr;
    z = cy * cp * sr - sy * sp * cr;
    w = cy * cp * cr + sy * sp * sr;
}

cQuaternion::cQuaternion(const cMatrix4& pM) {
    const auto& m = pM.m;
    const float trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0.0f) {
        const float s = std::sqrt(trace + 1.0f) * 2.0f; // 4w
        w = 0.25f * s;
        x = (m[1][2] - m[2][1]) / s;
        y = (m[2][0] - m[0][2]) / s;
        z = (m[0][1] - m[1][0]) / s;
    } else if (m[0][0] >= m[1][1] && m[0][0] >= m[2][2]) {
        const float s = std::sqrt(1.0f + m[0][0] - m[1][1] - m[2][2]) * 2.0f; // 4x
        x = 0.25f * s;
        y = (m[0][1] + m[1][0]) / s;
        z = (m[0][2] + m[2][0]) / s;
        w = (m[1][2] - m[2][1]) / s;
    } else if (m[1][1] >= m[2][2]) {
        const float s = std::sqrt(1.0f + m[1][1] - m[0][0] - m[2][2]) * 2.0f; // 4y
        x = (m[0][1] + m[1][0]) / s;
        y = 0.25f * s;
        z = (m[1][2] + m[2][1]) / s;
        w = (m[2][0] - m[0][2]) / s;
    } else {
        const float s = std::sqrt(1.0f + m[2][2] - m[0][0] - m[1][1]) * 2.0f; // 4z
        x = (m[0][2] + m[2][0]) / s;
        y = (m[1][2] + m[2][1]) / s;
        z = 0.25f * s;
        w = (m[0][1] - m[1][0]) / s;
    }
}

cMatrix4 cQuaternion::ToMatrix() const {
    const float xx = x * x, yy = y * y, zz = z * z;
    const float xy = x * y, xz = x * z, yz = y * z;
    const float wx = w * x, wy = w * y, wz = w * z;
    return {1.0f - 2.0f * (yy + zz),
            2.0f * (xy + wz),
            2.0f * (xz - wy),
            0.0f,
            2.0f * (xy - wz),
            1.0f - 2.0f * (xx + zz),
            2.0f * (yz + wx),
            0.0f,
            2.0f * (xz + wy),
            2.0f * (yz - wx),
            1.0f - 2.0f * (xx + yy),
            0.0f,
            0.0f,
            0.0f,
            0.0f,
            1.0f};
}

cRotation cQuaternion::ToRotation() const {
    // The float with bits 0x3F7FFFEA: beyond it the pitch is taken as exactly +-pi/2.
    constexpr float kPoleLimit = 0.99999869f;
    const float s = 2.0f * (x * w - y * z);
    if (s > kPoleLimit) {
        return {0.0f, 1.5707964f,
                std::atan2(2.0f * (x * z - w * y), 1.0f - 2.0f * (y * y + z * z))};
    }
    if (s < -kPoleLimit) {
        return {0.0f, -1.5707964f,
                -std::atan2(2.0f * (x * z - w * y), 1.0f - 2.0f * (y * y + z * z))};
    }
    return {std::atan2(2.0f * (w * y + x * z), 1.0f - 2.0f * (x * x + y * y)), std::asin(s),
            std::atan2(2.0f * (x * y + z * w), 1.0f - 2.0f * (x * x + z * z))};
}

void cQuaternion::AsAxisAng(cVector3& pAxis, float& pAngle) const {
    pAxis = {x, y, z};
    pAngle = 2.0f * std::acos(std::clamp(w, -1.0f, 1.0f));
}

float& cQuaternion::operator[](int pIdx) {
    QC_ASSERT(pIdx >= 0 && pIdx < 4);
    return pIdx == 0 ? x : pIdx == 1 ? y : pIdx == 2 ? z : w;
}

float cQuaternion::operator[](int pIdx) const {
    QC_ASSERT(pIdx >= 0 && pIdx < 4);
    return pIdx == 0 ? x : pIdx == 1 ? y : pIdx == 2 ? z : w;
}

float cQuaternion::Length() const {
    return std::sqrt(LengthSq());
}

cQuaternion cQuaternion::Normalized() const {
    const float len = Length();
    if (len == 0.0f) {
        return {0.0f, 0.0f, 0.0f, 0.0f};
    }
    return {x / len, y / len, z / len, w / len};
}

cQuaternion cQuaternion::Inverse() const {
    const float n = LengthSq();
    return {-x / n, -y / n, -z / n, w / n};
}

cQuaternion cQuaternion::Slerp(const cQuaternion& pTo, float t) const {
    float cosOmega = Dot(pTo);
    float sign = 1.0f;
    if (cosOmega < 0.0f) {
        cosOmega = -cosOmega;
        sign = -1.0f;
    }
    float from = 1.0f - t;
    float to = t;
    // Nearly the same orientation: the arc is too short for sin() to be accurate.
    if (1.0f - cosOmega > 0.001f) {
        const float omega = std::acos(cosOmega);
        const float sinOmega = std::sin(omega);
        from = std::sin(from * omega) / sinOmega;
        to = std::sin(to * omega) / sinOmega;
    }
    to *= sign;
    return {from * x + to * pTo.x, from * y + to * pTo.y, from * z + to * pTo.z,
            from * w + to * pTo.w};
}

} // namespace Quillanor::Common
