// Small float vectors of 2, 3 and 4 components, laid out like the D3DX vectors (x, y, z, w).
//
// Plain value types with public fields, no hidden state, usable from any thread. Arithmetic is
// component-wise; `*` and `/` with a float scale every component.
#pragma once

#include "Engine/Common/Base/Assert.h"

#include <algorithm>
#include <cmath>

namespace Quillanor::Common {
namespace Detail {

// Component pIdx (already checked) of a vector with fields x, y, z, w.
template <typename V>
constexpr auto& Component(V& v, int pIdx) {
    if constexpr (requires { v.w; }) {
        if (pIdx == 3) {
            return v.w;
        }
    }
    if constexpr (requires { v.z; }) {
        if (pIdx == 2) {
            return v.z;
        }
    }
    return pIdx == 0 ? v.x : v.y;
}

} // namespace Detail

class cVector2 {
public:
    float x = 0.0f, y = 0.0f;

    static const cVector2 Null;
    static const cVector2 One;

    constexpr cVector2() = default;
    constexpr cVector2(float pX, float pY) : x(pX), y(pY) {}

    float& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < 2);
        return Detail::Component(*this, pIdx);
    }
    float operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < 2);
        return Detail::Component(*this, pIdx);
    }

    constexpr cVector2 operator+(const cVector2& v) const { return {x + v.x, y + v.y}; }
    constexpr cVector2 operator-(const cVector2& v) const { return {x - v.x, y - v.y}; }
    constexpr cVector2 operator-() const { return {-x, -y}; }
    constexpr cVector2 operator*(float s) const { return {x * s, y * s}; }
    constexpr cVector2 operator/(float s) const { return {x / s, y / s}; }
    // Component-wise product.
    constexpr cVector2 operator*(const cVector2& v) const { return {x * v.x, y * v.y}; }
    cVector2& operator+=(const cVector2& v) { return *this = *this + v; }
    cVector2& operator-=(const cVector2& v) { return *this = *this - v; }
    cVector2& operator*=(float s) { return *this = *this * s; }
    cVector2& operator/=(float s) { return *this = *this / s; }
    constexpr bool operator==(const cVector2&) const = default;

    constexpr float Dot(const cVector2& v) const { return x * v.x + y * v.y; }
    constexpr float LengthSq() const { return Dot(*this); }
    float Length() const { return std::sqrt(LengthSq()); }
    // The unit vector of the same direction; the zero vector stays zero.
    cVector2 Normalized() const {
        const float len = Length();
        return len > 0.0f ? *this / len : *this;
    }
    void Normalize() { *this = Normalized(); }
    constexpr cVector2 Lerp(const cVector2& v, float t) const { return *this + (v - *this) * t; }
    cVector2 Min(const cVector2& v) const { return {std::min(x, v.x), std::min(y, v.y)}; }
    cVector2 Max(const cVector2& v) const { return {std::max(x, v.x), std::max(y, v.y)}; }
};

class cVector3 {
public:
    float x = 0.0f, y = 0.0f, z = 0.0f;

    static const cVector3 Null;
    static const cVector3 One;

    constexpr cVector3() = default;
    constexpr cVector3(float pX, float pY, float pZ) : x(pX), y(pY), z(pZ) {}

    float& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < 3);
        return Detail::Component(*this, pIdx);
    }
    float operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < 3);
        return Detail::Component(*this, pIdx);
    }

    constexpr cVector3 operator+(const cVector3& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr cVector3 operator-(const cVector3& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr cVector3 operator-() const { return {-x, -y, -z}; }
    constexpr cVector3 operator*(float s) const { return {x * s, y * s, z * s}; }
    constexpr cVector3 operator/(float s) const { return {x / s, y / s, z / s}; }
    constexpr cVector3 operator*(const cVector3& v) const { return {x * v.x, y * v.y, z * v.z}; }
    cVector3& operator+=(const cVector3& v) { return *this = *this + v; }
    cVector3& operator-=(const cVector3& v) { return *this = *this - v; }
    cVector3& operator*=(float s) { return *this = *this * s; }
    cVector3& operator/=(float s) { return *this = *this / s; }
    constexpr bool operator==(const cVector3&) const = default;

    constexpr float Dot(const cVector3& v) const { return x * v.x + y * v.y + z * v.z; }
    // Cross product; in the left-handed system (1,0,0) x (0,1,0) = (0,0,1).
    constexpr cVector3 Cross(const cVector3& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr float LengthSq() const { return Dot(*this); }
    float Length() const { return std::sqrt(LengthSq()); }
    cVector3 Normalized() const {
        const float len = Length();
        return len > 0.0f ? *this / len : *this;
    }
    void Normalize() { *this = Normalized(); }
    constexpr cVector3 Lerp(const cVector3& v, float t) const { return *this + (v - *this) * t; }
    cVector3 Min(const cVector3& v) const {
        return {std::min(x, v.x), std::min(y, v.y), std::min(z, v.z)};
    }
    cVector3 Max(const cVector3& v) const {
        return {std::max(x, v.x), std::max(y, v.y), std::max(z, v.z)};
    }
};

class cVector4 {
public:
    float x = 0.0f, y = 0.0f, z = 0.0f, w = 0.0f;

    static const cVector4 Null;
    static const cVector4 One;

    constexpr cVector4() = default;
    constexpr cVector4(float pX, float pY, float pZ, float pW) : x(pX), y(pY), z(pZ), w(pW) {}
    constexpr cVector4(const cVector3& v, float pW) : x(v.x), y(v.y), z(v.z), w(pW) {}

    float& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < 4);
        return Detail::Component(*this, pIdx);
    }
    float operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < 4);
        return Detail::Component(*this, pIdx);
    }
    // The first three components.
    constexpr cVector3 XYZ() const { return {x, y, z}; }

    constexpr cVector4 operator+(const cVector4& v) const {
        return {x + v.x, y + v.y, z + v.z, w + v.w};
    }
    constexpr cVector4 operator-(const cVector4& v) const {
        return {x - v.x, y - v.y, z - v.z, w - v.w};
    }
    constexpr cVector4 operator-() const { return {-x, -y, -z, -w}; }
    constexpr cVector4 operator*(float s) const { return {x * s, y * s, z * s, w * s}; }
    constexpr cVector4 operator/(float s) const { return {x / s, y / s, z / s, w / s}; }
    constexpr cVector4 operator*(const cVector4& v) const {
        return {x * v.x, y * v.y, z * v.z, w * v.w};
    }
    cVector4& operator+=(const cVector4& v) { return *this = *this + v; }
    cVector4& operator-=(const cVector4& v) { return *this = *this - v; }
    cVector4& operator*=(float s) { return *this = *this * s; }
    cVector4& operator/=(float s) { return *this = *this / s; }
    constexpr bool operator==(const cVector4&) const = default;

    constexpr float Dot(const cVector4& v) const { return x * v.x + y * v.y + z * v.z + w * v.w; }
    constexpr float LengthSq() const { return Dot(*this); }
    float Length() const { return std::sqrt(LengthSq()); }
    cVector4 Normalized() const {
        const float len = Length();
        return len > 0.0f ? *this / len : *this;
    }
    void Normalize() { *this = Normalized(); }
    constexpr cVector4 Lerp(const cVector4& v, float t) const { return *this + (v - *this) * t; }
    cVector4 Min(const cVector4& v) const {
        return {std::min(x, v.x), std::min(y, v.y), std::min(z, v.z), std::min(w, v.w)};
    }
    cVector4 Max(const cVector4& v) const {
        return {std::max(x, v.x), std::max(y, v.y), std::max(z, v.z), std::max(w, v.w)};
    }
};

inline constexpr cVector2 cVector2::Null{0.0f, 0.0f};
inline constexpr cVector2 cVector2::One{1.0f, 1.0f};
inline constexpr cVector3 cVector3::Null{0.0f, 0.0f, 0.0f};
inline constexpr cVector3 cVector3::One{1.0f, 1.0f, 1.0f};
inline constexpr cVector4 cVector4::Null{0.0f, 0.0f, 0.0f, 0.0f};
inline constexpr cVector4 cVector4::One{1.0f, 1.0f, 1.0f, 1.0f};

constexpr cVector2 operator*(float s, const cVector2& v) {
    return v * s;
}
constexpr cVector3 operator*(float s, const cVector3& v) {
    return v * s;
}
constexpr cVector4 operator*(float s, const cVector4& v) {
    return v * s;
}

} // namespace Quillanor::Common
