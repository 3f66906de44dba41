// A colour of four float channels r, g, b, a; 1 is full intensity, values above 1 are allowed
// (HDR) and are clamped only when packed.
//
// A plain value type usable from any thread. The packed 32-bit form (ToBGRA, FromBGRA) holds
// alpha in the top byte, then red, green and blue: 0xAARRGGBB, the byte order B, G, R, A in
// little-endian memory.
#pragma once

#include "Engine/Common/Base/Assert.h"

#include <cstdint>

namespace Quillanor::Common {

class cColor4 {
public:
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;

    // All four channels 0 (transparent black).
    static const cColor4 Null;
    // Opaque white.
    static const cColor4 WHITE;

    constexpr cColor4() = default;
    constexpr cColor4(float pR, float pG, float pB, float pA = 1.0f) : r(pR), g(pG), b(pB), a(pA) {}

    // Each channel clamped to [0, 1] and rounded to 0..255 (NaN gives 0).
    constexpr std::uint32_t ToBGRA() const {
        return (Channel(a) << 24) | (Channel(r) << 16) | (Channel(g) << 8) | Channel(b);
    }
    static constexpr cColor4 FromBGRA(std::uint32_t pPacked) {
        return {static_cast<float>((pPacked >> 16) & 0xFF) / 255.0f,
                static_cast<float>((pPacked >> 8) & 0xFF) / 255.0f,
                static_cast<float>(pPacked & 0xFF) / 255.0f,
                static_cast<float>(pPacked >> 24) / 255.0f};
    }

    float& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < 4);
        return pIdx == 0 ? r : pIdx == 1 ? g : pIdx == 2 ? b : a;
    }
    float operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < 4);
        return pIdx == 0 ? r : pIdx == 1 ? g : pIdx == 2 ? b : a;
    }

    constexpr cColor4 operator+(const cColor4& c) const {
        return {r + c.r, g + c.g, b + c.b, a + c.a};
    }
    constexpr cColor4 operator-(const cColor4& c) const {
        return {r - c.r, g - c.g, b - c.b, a - c.a};
    }
    constexpr cColor4 operator*(float s) const { return {r * s, g * s, b * s, a * s}; }
    constexpr cColor4 operator/(float s) const { return {r / s, g / s, b / s, a / s}; }
    // Channel-wise product (modulation).
    constexpr cColor4 operator*(const cColor4& c) const {
        return {r * c.r, g * c.g, b * c.b, a * c.a};
    }
    cColor4& operator+=(const cColor4& c) { return *this = *this + c; }
    cColor4& operator-=(const cColor4& c) { return *this = *this - c; }
    cColor4& operator*=(float s) { return *this = *this * s; }
    cColor4& operator*=(const cColor4& c) { return *this = *this * c; }
    constexpr bool operator==(const cColor4&) const = default;

    constexpr cColor4 Lerp(const cColor4& c, float t) const { return *this + (c - *this) * t; }
    // Every channel clamped to [0, 1].
    constexpr cColor4 Saturated() const { return {Clamp01(r), Clamp01(g), Clamp01(b), Clamp01(a)}; }

private:
    static constexpr float Clamp01(float v) { return v > 0.0f ? (v < 1.0f ? v : 1.0f) : 0.0f; }
    static constexpr std::uint32_t Channel(float v) {
        return static_cast<std::uint32_t>(Clamp01(v) * 255.0f + 0.5f);
    }
};

inline constexpr cColor4 cColor4::Null{0.0f, 0.0f, 0.0f, 0.0f};
inline constexpr cColor4 cColor4::WHITE{1.0f, 1.0f, 1.0f, 1.0f};

} // namespace Quillanor::Common
