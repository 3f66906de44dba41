// Comparisons shared by the math tests.
#pragma once

#include "Engine/Common/Math/Math.h"
#include "Engine/Common/Math/Matrix4.h"

#include <gtest/gtest.h>

#include <cmath>

namespace QcTest {

// Angular distance of a and b modulo a whole turn.
inline double CircDiff(double a, double b) {
    return std::fabs(std::remainder(a - b, Quillanor::Common::cMath::DTwoPi));
}

// Every element of a within `tolerance` of the same element of b.
inline ::testing::AssertionResult MatrixNear(const Quillanor::Common::cMatrix4& a,
                                             const Quillanor::Common::cMatrix4& b,
                                             float tolerance) {
    for (int i = 0; i < 16; ++i) {
        if (!(std::fabs(a[i] - b[i]) <= tolerance)) {
            return ::testing::AssertionFailure()
                   << "element " << i << ": " << a[i] << " vs " << b[i];
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace QcTest
