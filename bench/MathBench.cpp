// Quaternions, matrices and rational approximation against GLM (when installed) and plain
// textbook implementations.
#include "Engine/Common/Math/Matrix4.h"
#include "Engine/Common/Math/Quaternion.h"
#include "Engine/Common/Math/Rational.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#if QC_BENCH_HAVE_GLM
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#endif

using namespace Quillanor::Common;

namespace {

constexpr int kCount = 1024; // inputs cycled through, so nothing folds into a constant

std::vector<cQuaternion> RandomQuaternions() {
    std::mt19937 rng(1);
    std::uniform_real_distribution<float> a(-3.0f, 3.0f);
    std::vector<cQuaternion> out;
    for (int i = 0; i < kCount; ++i) {
        out.push_back(cQuaternion(cRotation(a(rng), a(rng) / 2, a(rng))));
    }
    return out;
}

std::vector<cMatrix4> RandomMatrices() {
    std::mt19937 rng(2);
    std::uniform_real_distribution<float> v(-2.0f, 2.0f);
    std::vector<cMatrix4> out(kCount);
    for (auto& m : out) {
        for (int i = 0; i < 16; ++i) {
            m[i] = v(rng);
        }
    }
    return out;
}

std::vector<double> RandomRates() {
    std::mt19937_64 rng(3);
    std::uniform_real_distribution<double> v(1.0, 240.0);
    std::vector<double> out;
    for (int i = 0; i < kCount; ++i) {
        out.push_back(v(rng));
    }
    return out;
}

// Textbook matrix product, three nested loops.
void NaiveMultiply(const float (&a)[4][4], const float (&b)[4][4], float (&r)[4][4]) {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k) {
                sum += a[i][k] * b[k][j];
            }
            r[i][j] = sum;
        }
    }
}

// Textbook continued fraction in floating point: the last convergent within the limit.
std::pair<std::int64_t, std::int64_t> NaiveContinuedFraction(double x, std::int64_t limit) {
    std::int64_t p0 = 0, q0 = 1, p1 = 1, q1 = 0;
    for (int i = 0; i < 64; ++i) {
        const double a = std::floor(x);
        const auto ai = static_cast<std::int64_t>(a);
        const std::int64_t p2 = ai * p1 + p0, q2 = ai * q1 + q0;
        if (p2 > limit || q2 > limit) {
            break;
        }
        p0 = p1;
        q0 = q1;
        p1 = p2;
        q1 = q2;
        const double frac = x - a;
        if (frac < 1e-12) {
            break;
        }
        x = 1.0 / frac;
    }
    return {p1, q1};
}

} // namespace

static void BM_Quaternion_Multiply(benchmark::State& state) {
    const auto qs = RandomQuaternions();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qs[i] * qs[(i + 1) & (kCount - 1)]);
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Quaternion_Multiply);

static void BM_Quaternion_Slerp(benchmark::State& state) {
    const auto qs = RandomQuaternions();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qs[i].Slerp(qs[(i + 1) & (kCount - 1)], 0.3f));
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Quaternion_Slerp);

static void BM_Matrix4_Multiply(benchmark::State& state) {
    const auto ms = RandomMatrices();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ms[i] * ms[(i + 1) & (kCount - 1)]);
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Matrix4_Multiply);

static void BM_NaiveLoops_Matrix4Multiply(benchmark::State& state) {
    const auto ms = RandomMatrices();
    int i = 0;
    float r[4][4];
    for (auto _ : state) {
        NaiveMultiply(ms[i].m, ms[(i + 1) & (kCount - 1)].m, r);
        benchmark::DoNotOptimize(r);
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_NaiveLoops_Matrix4Multiply);

static void BM_Rational_FromDouble(benchmark::State& state) {
    const auto rates = RandomRates();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(cRational(rates[i], 1000000));
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Rational_FromDouble);

static void BM_NaiveFloatContinuedFraction(benchmark::State& state) {
    const auto rates = RandomRates();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(NaiveContinuedFraction(rates[i], 1000000));
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_NaiveFloatContinuedFraction);

#if QC_BENCH_HAVE_GLM
namespace {

std::vector<glm::quat> GlmQuaternions() {
    std::vector<glm::quat> out;
    for (const auto& q : RandomQuaternions()) {
        out.emplace_back(q.w, q.x, q.y, q.z);
    }
    return out;
}

std::vector<glm::mat4> GlmMatrices() {
    std::vector<glm::mat4> out;
    for (const auto& m : RandomMatrices()) {
        glm::mat4 g;
        for (int c = 0; c < 4; ++c) {
            for (int r = 0; r < 4; ++r) {
                g[c][r] = m.m[c][r];
            }
        }
        out.push_back(g);
    }
    return out;
}

} // namespace

static void BM_Glm_QuaternionMultiply(benchmark::State& state) {
    const auto qs = GlmQuaternions();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qs[i] * qs[(i + 1) & (kCount - 1)]);
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Glm_QuaternionMultiply);

static void BM_Glm_QuaternionSlerp(benchmark::State& state) {
    const auto qs = GlmQuaternions();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(glm::slerp(qs[i], qs[(i + 1) & (kCount - 1)], 0.3f));
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Glm_QuaternionSlerp);

static void BM_Glm_Matrix4Multiply(benchmark::State& state) {
    const auto ms = GlmMatrices();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ms[i] * ms[(i + 1) & (kCount - 1)]);
        i = (i + 1) & (kCount - 1);
    }
}
BENCHMARK(BM_Glm_Matrix4Multiply);
#endif
