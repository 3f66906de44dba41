// A placement in space, held either as components (translation, rotation, scaling) or as a 4x4
// matrix, whichever it was built from; the form is kept so it can be written back as it came.
//
// A plain value type usable from any thread. The matrix of the component form is
// Scaling * RotationYawPitchRoll * Translation in the cMatrix4 (D3DX) convention: scale first,
// then rotate, then move.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Math/Matrix4.h"
#include "Engine/Common/Math/Rotation.h"
#include "Engine/Common/Math/Vector.h"

namespace Quillanor::Common {

// Out-of-line members carry QC_API one by one (see cMatrix4).
class cTransformation {
public:
    // Components all zero (scaling 0 too): collapses everything onto the origin.
    static const cTransformation Zero;
    // Components: no translation, no rotation, scaling 1.
    static const cTransformation Identity;

    // The identity, in component form.
    constexpr cTransformation() = default;
    constexpr cTransformation(const cVector3& pTranslation, const cRotation& pRotation,
                              const cVector3& pScaling)
        : mTranslation(pTranslation), mRotation(pRotation), mScaling(pScaling) {}
    constexpr explicit cTransformation(const cMatrix4& pMatrix)
        : mIsMatrix(true), mMatrix(pMatrix) {}

    bool IsMatrix() const { return mIsMatrix; }
    // The components. For the matrix form they are derived from the matrix: translation from its
    // fourth row, scaling from the lengths of the first three rows, rotation from what remains
    // (exact for matrices without shear).
    QC_API cVector3 Translation() const;
    QC_API cRotation Rotation() const;
    QC_API cVector3 Scaling() const;
    QC_API cMatrix4 ToMatrix() const;

    cVector3 TransformCoord(const cVector3& v) const { return ToMatrix().TransformCoord(v); }
    // This transformation followed by pOther, in matrix form.
    cTransformation operator*(const cTransformation& pOther) const {
        return cTransformation(ToMatrix() * pOther.ToMatrix());
    }

    // Two component forms compare their components, two matrix forms their matrices; a
    // component form and a matrix form compare their matrices.
    QC_API bool operator==(const cTransformation& pOther) const;
    bool operator!=(const cTransformation& pOther) const { return !(*this == pOther); }

private:
    bool mIsMatrix = false;
    cVector3 mTranslation;
    cRotation mRotation;
    cVector3 mScaling = cVector3::One;
    cMatrix4 mMatrix;
};

inline constexpr cTransformation cTransformation::Zero{cVector3::Null, cRotation::Null,
                                                       cVector3::Null};
inline constexpr cTransformation cTransformation::Identity{};

} // namespace Quillanor::Common
