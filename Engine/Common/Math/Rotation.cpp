#include "Engine/Common/Math/Rotation.h"

#include "Engine/Common/Math/Math.h"

#include <algorithm>
#include <cmath>

namespace Quillanor::Common {
namespace {

constexpr float kDegToRad = cMath::Pi / 180.0f;
constexpr float kRadToDeg = 180.0f / cMath::Pi;

// a moved by whole periods into [lo, lo + range).
float WrapInto(float a, float lo, float range) {
    float v = std::fmod(a - lo, range);
    if (v < 0.0f) {
        v += range;
    }
    return v + lo;
}

// Interpolation with period 2pi along the shorter way; the result lies in [0, 2pi).
float CircLerpAngle(float a, float b, float t) {
    constexpr double period = cMath::DTwoPi;
    double d = std::fmod(double(b) - double(a), period);
    if (d < 0.0) {
        d += period;
    }
    if (d >= period / 2.0) {
        d -= period;
    }
    double r = std::fmod(double(a) + d * double(t), period);
    if (r < 0.0) {
        r += period;
    }
    return static_cast<float>(r);
}

bool AngleNearNull(float a) {
    // Compared on the shifted value, as the wrap produced it.
    const float shifted = cRotation::WrapPi(a) + cMath::Pi;
    return std::fabs(shifted - cMath::Pi) < 1e-5f;
}

} // namespace

float cRotation::WrapPi(float a) {
    double v = std::fmod(double(a) + cMath::DPi, cMath::DTwoPi);
    if (v < 0.0) {
        v += cMath::DTwoPi;
    }
    return static_cast<float>(v - cMath::DPi);
}

cRotation::cRotation(const cVector3& pDirection, float pRoll)
    : yaw(std::atan2(pDirection.x, pDirection.z)),
      pitch(-std::asin(std::clamp(pDirection.Normalized().y, -1.0f, 1.0f))), roll(pRoll) {}

cRotation cRotation::FromXYZDegrees(const cVector3& pDegrees) {
    return {-pDegrees.y * kDegToRad, -pDegrees.x * kDegToRad, -pDegrees.z * kDegToRad};
}

cVector3 cRotation::ToXYZDegrees() const {
    return {-pitch * kRadToDeg, -yaw * kRadToDeg, -roll * kRadToDeg};
}

cRotation cRotation::ToDegrees() const {
    return *this * kRadToDeg;
}

cRotation cRotation::ToRadians() const {
    return *this * kDegToRad;
}

cVector3 cRotation::ToDirection() const {
    const float cp = std::cos(pitch);
    return {std::sin(yaw) * cp, -std::sin(pitch), std::cos(yaw) * cp};
}

float& cRotation::operator[](int pIdx) {
    QC_ASSERT(pIdx >= 0 && pIdx < 3);
    return pIdx == 0 ? yaw : pIdx == 1 ? pitch : roll;
}

float cRotation::operator[](int pIdx) const {
    QC_ASSERT(pIdx >= 0 && pIdx < 3);
    return pIdx == 0 ? yaw : pIdx == 1 ? pitch : roll;
}

cRotation cRotation::Min(const cRotation& r) const {
    return {std::min(yaw, r.yaw), std::min(pitch, r.pitch), std::min(roll, r.roll)};
}

cRotation cRotation::Max(const cRotation& r) const {
    return {std::max(yaw, r.yaw), std::max(pitch, r.pitch), std::max(roll, r.roll)};
}

cRotation cRotation::CircLerp(const cRotation& r, float t) const {
    return {CircLerpAngle(yaw, r.yaw, t), pitch + (r.pitch - pitch) * t,
            CircLerpAngle(roll, r.roll, t)};
}

cRotation cRotation::Normalized() const {
    return {WrapPi(yaw), pitch, WrapPi(roll)};
}

cRotation cRotation::MatchNormalized(const cRotation& pRef) const {
    cRotation result;
    for (int i = 0; i < 3; ++i) {
        const float ref = pRef[i];
        const float lo = ref - cMath::Pi;
        const float range = (ref + cMath::Pi) - lo;
        result[i] = WrapInto((*this)[i], lo, range);
    }
    return result;
}

bool cRotation::CircNearNull() const {
    return AngleNearNull(yaw) && AngleNearNull(pitch) && AngleNearNull(roll);
}

} // namespace Quillanor::Common
