#include "Engine/Common/Math/Matrix4.h"

#include <cmath>

namespace Quillanor::Common {

cMatrix4::cMatrix4(const float* pValues) {
    for (int i = 0; i < 16; ++i) {
        m[i >> 2][i & 3] = pValues[i];
    }
}

cMatrix4 cMatrix4::operator*(const cMatrix4& pOther) const {
    cMatrix4 r;
    for (int i = 0; i < 4; ++i) {
        const float a0 = m[i][0], a1 = m[i][1], a2 = m[i][2], a3 = m[i][3];
        for (int j = 0; j < 4; ++j) {
            r.m[i][j] = a0 * pOther.m[0][j] + a1 * pOther.m[1][j] + a2 * pOther.m[2][j] +
                        a3 * pOther.m[3][j];
        }
    }
    return r;
}

cMatrix4 cMatrix4::operator+(const cMatrix4& pOther) const {
    cMatrix4 r;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            r.m[i][j] = m[i][j] + pOther.m[i][j];
        }
    }
    return r;
}

cMatrix4 cMatrix4::operator-(const cMatrix4& pOther) const {
    cMatrix4 r;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            r.m[i][j] = m[i][j] - pOther.m[i][j];
        }
    }
    return r;
}

cMatrix4 cMatrix4::operator*(float pScale) const {
    cMatrix4 r;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            r.m[i][j] = m[i][j] * pScale;
        }
    }
    return r;
}

bool cMatrix4::operator==(const cMatrix4& pOther) const {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            if (m[i][j] != pOther.m[i][j]) {
                return false;
            }
        }
    }
    return true;
}

cMatrix4 cMatrix4::Transposed() const {
    cMatrix4 r;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            r.m[i][j] = m[j][i];
        }
    }
    return r;
}

namespace {

// The 2x2 minors of the lower and upper row pairs, shared by the determinant and the inverse.
struct sMinors {
    double s[6];
    double c[6];
};

sMinors Minors(const float (&a)[4][4]) {
    sMinors r;
    r.s[0] = double(a[0][0]) * a[1][1] - double(a[1][0]) * a[0][1];
    r.s[1] = double(a[0][0]) * a[1][2] - double(a[1][0]) * a[0][2];
    r.s[2] = double(a[0][0]) * a[1][3] - double(a[1][0]) * a[0][3];
    r.s[3] = double(a[0][1]) * a[1][2] - double(a[1][1]) * a[0][2];
    r.s[4] = double(a[0][1]) * a[1][3] - double(a[1][1]) * a[0][3];
    r.s[5] = double(a[0][2]) * a[1][3] - double(a[1][2]) * a[0][3];
    r.c[5] = double(a[2][2]) * a[3][3] - double(a[3][2]) * a[2][3];
    r.c[4] = double(a[2][1]) * a[3][3] - double(a[3][1]) * a[2][3];
    r.c[3] = double(a[2][1]) * a[3][2] - double(a[3][1]) * a[2][2];
    r.c[2] = double(a[2][0]) * a[3][3] - double(a[3][0]) * a[2][3];
    r.c[1] = double(a[2][0]) * a[3][2] - double(a[3][0]) * a[2][2];
    r.c[0] = double(a[2][0]) * a[3][1] - double(a[3][0]) * a[2][1];
    return r;
}

double Det(const sMinors& k) {
    return k.s[0] * k.c[5] - k.s[1] * k.c[4] + k.s[2] * k.c[3] + k.s[3] * k.c[2] - k.s[4] * k.c[1] +
           k.s[5] * k.c[0];
}

} // namespace

float cMatrix4::Determinant() const {
    return static_cast<float>(Det(Minors(m)));
}

cMatrix4 cMatrix4::Inverse(bool* pInvertible) const {
    const sMinors k = Minors(m);
    const double det = Det(k);
    if (det == 0.0 || !std::isfinite(det)) {
        if (pInvertible != nullptr) {
            *pInvertible = false;
        }
        return Zero;
    }
    const double inv = 1.0 / det;
    const auto& a = m;
    const double* s = k.s;
    const double* c = k.c;
    cMatrix4 r;
    r.m[0][0] = float((a[1][1] * c[5] - a[1][2] * c[4] + a[1][3] * c[3]) * inv);
    r.m[0][1] = float((-a[0][1] * c[5] + a[0][2] * c[4] - a[0][3] * c[3]) * inv);
    r.m[0][2] = float((a[3][1] * s[5] - a[3][2] * s[4] + a[3][3] * s[3]) * inv);
    r.m[0][3] = float((-a[2][1] * s[5] + a[2][2] * s[4] - a[2][3] * s[3]) * inv);
    r.m[1][0] = float((-a[1][0] * c[5] + a[1][2] * c[2] - a[1][3] * c[1]) * inv);
    r.m[1][1] = float((a[0][0] * c[5] - a[0][2] * c[2] + a[0][3] * c[1]) * inv);
    r.m[1][2] = float((-a[3][0] * s[5] + a[3][2] * s[2] - a[3][3] * s[1]) * inv);
    r.m[1][3] = float((a[2][0] * s[5] - a[2][2] * s[2] + a[2][3] * s[1]) * inv);
    r.m[2][0] = float((a[1][0] * c[4] - a[1][1] * c[2] + a[1][3] * c[0]) * inv);
    r.m[2][1] = float((-a[0][0] * c[4] + a[0][1] * c[2] - a[0][3] * c[0]) * inv);
    r.m[2][2] = float((a[3][0] * s[4] - a[3][1] * s[2] + a[3][3] * s[0]) * inv);
    r.m[2][3] = float((-a[2][0] * s[4] + a[2][1] * s[2] - a[2][3] * s[0]) * inv);
    r.m[3][0] = float((-a[1][0] * c[3] + a[1][1] * c[1] - a[1][2] * c[0]) * inv);
    r.m[3][1] = float((a[0][0] * c[3] - a[0][1] * c[1] + a[0][2] * c[0]) * inv);
    r.m[3][2] = float((-a[3][0] * s[3] + a[3][1] * s[1] - a[3][2] * s[0]) * inv);
    r.m[3][3] = float((a[2][0] * s[3] - a[2][1] * s[1] + a[2][2] * s[0]) * inv);
    if (pInvertible != nullptr) {
        *pInvertible = true;
    }
    return r;
}

bool cMatrix4::Invert() {
    bool ok = false;
    const cMatrix4 r = Inverse(&ok);
    if (ok) {
        *this = r;
    }
    return ok;
}

cVector4 cMatrix4::Transform(const cVector4& v) const {
    return {v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0] + v.w * m[3][0],
            v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1] + v.w * m[3][1],
            v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2] + v.w * m[3][2],
            v.x * m[0][3] + v.y * m[1][3] + v.z * m[2][3] + v.w * m[3][3]};
}

cVector3 cMatrix4::TransformCoord(const cVector3& v) const {
    const cVector4 r = Transform(cVector4(v, 1.0f));
    return r.XYZ() / r.w;
}

cVector3 cMatrix4::TransformNormal(const cVector3& v) const {
    return Transform(cVector4(v, 0.0f)).XYZ();
}

cMatrix4 cMatrix4::Translation(const cVector3& t) {
    cMatrix4 r = Identity;
    r.m[3][0] = t.x;
    r.m[3][1] = t.y;
    r.m[3][2] = t.z;
    return r;
}

cMatrix4 cMatrix4::Scaling(const cVector3& s) {
    cMatrix4 r = Identity;
    r.m[0][0] = s.x;
    r.m[1][1] = s.y;
    r.m[2][2] = s.z;
    return r;
}

cMatrix4 cMatrix4::RotationX(float pAngle) {
    const float c = std::cos(pAngle), s = std::sin(pAngle);
    return {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1};
}

cMatrix4 cMatrix4::RotationY(float pAngle) {
    const float c = std::cos(pAngle), s = std::sin(pAngle);
    return {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1};
}

cMatrix4 cMatrix4::RotationZ(float pAngle) {
    const float c = std::cos(pAngle), s = std::sin(pAngle);
    return {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

cMatrix4 cMatrix4::RotationYawPitchRoll(float pYaw, float pPitch, float pRoll) {
    const float cy = std::cos(pYaw), sy = std::sin(pYaw);
    const float cp = std::cos(pPitch), sp = std::sin(pPitch);
    const float cr = std::cos(pRoll), sr = std::sin(pRoll);
    // Rz(roll) * Rx(pitch) * Ry(yaw), multiplied out.
    return {cr * cy + sr * sp * sy,
            sr * cp,
            sr * sp * cy - cr * sy,
            0,
            cr * sp * sy - sr * cy,
            cr * cp,
            sr * sy + cr * sp * cy,
            0,
            cp * sy,
            -sp,
            cp * cy,
            0,
            0,
            0,
            0,
            1};
}

} // namespace Quillanor::Common
