#include "Engine/Common/Math/Math.h"

#include <cmath>

namespace Quillanor::Common {

double cMath::InterpNoise(double x) {
    const double fl = std::floor(x);
    const int i = static_cast<int>(fl);
    const double t = x - fl;
    const double a = Noise(i - 1);
    const double b = Noise(i);
    const double c = Noise(i + 1);
    const double d = Noise(i + 2);
    const double p = (d - c) - (a - b);
    const double q = (a - b) - p;
    const double r = c - a;
    return ((p * t + q) * t + r) * t + b;
}

int cMath::StartRandom(int seed) {
    if (seed == 0) {
        seed = static_cast<int>(SystemRandomImpl());
    }
    return static_cast<int>(Noise(seed) * 2147483647.0);
}

} // namespace Quillanor::Common
