// A 4x4 float matrix in the D3DX convention: row-major storage, row vectors multiplied on the
// left (v' = v * M), translation in the fourth row, left-handed rotations.
//
// A plain value type usable from any thread. A * B applies A first, then B.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Math/Vector.h"

namespace Quillanor::Common {

// Out-of-line members carry QC_API one by one: the class holds inline constexpr constants,
// which an imported class may not define.
class cMatrix4 {
public:
    // m[row][column]; m[3][0..2] is the translation.
    float m[4][4] = {};

    static const cMatrix4 Zero;
    static const cMatrix4 Identity;

    constexpr cMatrix4() = default;
    constexpr cMatrix4(float p11, float p12, float p13, float p14, float p21, float p22, float p23,
                       float p24, float p31, float p32, float p33, float p34, float p41, float p42,
                       float p43, float p44)
        : m{{p11, p12, p13, p14},
            {p21, p22, p23, p24},
            {p31, p32, p33, p34},
            {p41, p42, p43, p44}} {}
    // From 16 values in storage order.
    QC_API explicit cMatrix4(const float* pValues);

    // Element pIdx (0..15) in storage order.
    float& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < 16);
        return m[pIdx >> 2][pIdx & 3];
    }
    float operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < 16);
        return m[pIdx >> 2][pIdx & 3];
    }
    float& operator()(int pRow, int pColumn) { return m[pRow][pColumn]; }
    float operator()(int pRow, int pColumn) const { return m[pRow][pColumn]; }

    QC_API cMatrix4 operator*(const cMatrix4& pOther) const;
    cMatrix4& operator*=(const cMatrix4& pOther) { return *this = *this * pOther; }
    QC_API cMatrix4 operator+(const cMatrix4& pOther) const;
    QC_API cMatrix4 operator-(const cMatrix4& pOther) const;
    QC_API cMatrix4 operator*(float pScale) const;
    QC_API bool operator==(const cMatrix4& pOther) const;
    bool operator!=(const cMatrix4& pOther) const { return !(*this == pOther); }

    QC_API cMatrix4 Transposed() const;
    void Transpose() { *this = Transposed(); }
    QC_API float Determinant() const;
    // The inverse; a singular matrix gives Zero and sets *pInvertible to false.
    QC_API cMatrix4 Inverse(bool* pInvertible = nullptr) const;
    // Inverts in place; a singular matrix is left unchanged and false is returned.
    QC_API bool Invert();

    // v * M with w = 1, divided by the resulting w (a point).
    QC_API cVector3 TransformCoord(const cVector3& v) const;
    // v * M with w = 0 (a direction: no translation).
    QC_API cVector3 TransformNormal(const cVector3& v) const;
    QC_API cVector4 Transform(const cVector4& v) const;

    QC_API static cMatrix4 Translation(const cVector3& t);
    QC_API static cMatrix4 Scaling(const cVector3& s);
    // Rotations about one axis, angle in radians, clockwise looking along the axis toward the
    // origin (D3DXMatrixRotationX/Y/Z).
    QC_API static cMatrix4 RotationX(float pAngle);
    QC_API static cMatrix4 RotationY(float pAngle);
    QC_API static cMatrix4 RotationZ(float pAngle);
    // Roll about Z first, then pitch about X, then yaw about Y (D3DXMatrixRotationYawPitchRoll).
    QC_API static cMatrix4 RotationYawPitchRoll(float pYaw, float pPitch, float pRoll);
};

inline constexpr cMatrix4 cMatrix4::Zero{};
inline constexpr cMatrix4 cMatrix4::Identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

inline cVector4 operator*(const cVector4& v, const cMatrix4& pM) {
    return pM.Transform(v);
}

} // namespace Quillanor::Common
