#include "Engine/Common/Math/Transformation.h"

#include "Engine/Common/Math/Quaternion.h"

namespace Quillanor::Common {

cVector3 cTransformation::Translation() const {
    if (!mIsMatrix) {
        return mTranslation;
    }
    return {mMatrix.m[3][0], mMatrix.m[3][1], mMatrix.m[3][2]};
}

cVector3 cTransformation::Scaling() const {
    if (!mIsMatrix) {
        return mScaling;
    }
    const auto& m = mMatrix.m;
    return {cVector3(m[0][0], m[0][1], m[0][2]).Length(),
            cVector3(m[1][0], m[1][1], m[1][2]).Length(),
            cVector3(m[2][0], m[2][1], m[2][2]).Length()};
}

cRotation cTransformation::Rotation() const {
    if (!mIsMatrix) {
        return mRotation;
    }
    cMatrix4 r = cMatrix4::Identity;
    for (int i = 0; i < 3; ++i) {
        const cVector3 row =
            cVector3(mMatrix.m[i][0], mMatrix.m[i][1], mMatrix.m[i][2]).Normalized();
        r.m[i][0] = row.x;
        r.m[i][1] = row.y;
        r.m[i][2] = row.z;
    }
    return cQuaternion(r).Normalized().ToRotation();
}

cMatrix4 cTransformation::ToMatrix() const {
    if (mIsMatrix) {
        return mMatrix;
    }
    cMatrix4 m = cMatrix4::RotationYawPitchRoll(mRotation.yaw, mRotation.pitch, mRotation.roll);
    for (int i = 0; i < 3; ++i) {
        const float s = mScaling[i];
        for (int j = 0; j < 3; ++j) {
            m.m[i][j] *= s;
        }
    }
    m.m[3][0] = mTranslation.x;
    m.m[3][1] = mTranslation.y;
    m.m[3][2] = mTranslation.z;
    return m;
}

bool cTransformation::operator==(const cTransformation& pOther) const {
    if (!mIsMatrix && !pOther.mIsMatrix) {
        return mTranslation == pOther.mTranslation && mRotation == pOther.mRotation &&
               mScaling == pOther.mScaling;
    }
    return ToMatrix() == pOther.ToMatrix();
}

} // namespace Quillanor::Common
