// CRC-32 by folding with carry-less multiplication (PCLMULQDQ), after Gopal et al., "Fast CRC
// Computation for Generic Polynomials Using PCLMULQDQ Instruction" (Intel, 2009), in the
// bit-reflected domain. Eight 128-bit lanes are folded 128 bytes at a time, merged into one,
// reduced to 64 bits and then to 32 bits with a Barrett reduction. The fold constants are
// x^(d+32) and x^(d-32) mod P (bit-reflected, 33 bits) for a fold distance of d bits.
#include "Engine/Common/Base/Detail/Crc32Tables.h"

#if defined(__x86_64__) || defined(__i386__)

#include <immintrin.h>

namespace Quillanor::Common::Detail {

namespace {

#define QC_CLMUL_TARGET __attribute__((target("pclmul,sse4.1")))

QC_CLMUL_TARGET inline __m128i Fold(__m128i pAcc, __m128i pConstants, __m128i pNext) {
    const __m128i lo = _mm_clmulepi64_si128(pAcc, pConstants, 0x00);
    const __m128i hi = _mm_clmulepi64_si128(pAcc, pConstants, 0x11);
    return _mm_xor_si128(_mm_xor_si128(lo, hi), pNext);
}

QC_CLMUL_TARGET inline __m128i Load(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

} // namespace

QC_CLMUL_TARGET std::uint32_t Crc32FoldClmul(std::uint32_t pState, const unsigned char* pData,
                                             unsigned long long pLength,
                                             unsigned long long& pConsumed) {
    const unsigned char* const start = pData;
    const __m128i k1024 = _mm_set_epi64x(0x14a7fe880, 0x1e88ef372); // 8 lanes, 1024 bits
    const __m128i k512 = _mm_set_epi64x(0x1c6e41596, 0x154442bd4);  // 4 lanes, 512 bits
    const __m128i k128 = _mm_set_epi64x(0x0ccaa009e, 0x1751997d0);  // 1 lane, 128 bits
    const __m128i k64 = _mm_set_epi64x(0, 0x163cd6124);
    const __m128i poly = _mm_set_epi64x(0x1f7011641, 0x1db710641); // u' and P'
    const __m128i mask32 = _mm_setr_epi32(-1, 0, -1, 0);

    __m128i x0, x1, x2, x3;
    if (pLength >= 256) {
        __m128i y0 = Load(pData), y1 = Load(pData + 16), y2 = Load(pData + 32),
                y3 = Load(pData + 48), y4 = Load(pData + 64), y5 = Load(pData + 80),
                y6 = Load(pData + 96), y7 = Load(pData + 112);
        y0 = _mm_xor_si128(y0, _mm_cvtsi32_si128(static_cast<int>(pState)));
        pData += 128;
        pLength -= 128;
        while (pLength >= 128) {
            y0 = Fold(y0, k1024, Load(pData));
            y1 = Fold(y1, k1024, Load(pData + 16));
            y2 = Fold(y2, k1024, Load(pData + 32));
            y3 = Fold(y3, k1024, Load(pData + 48));
            y4 = Fold(y4, k1024, Load(pData + 64));
            y5 = Fold(y5, k1024, Load(pData + 80));
            y6 = Fold(y6, k1024, Load(pData + 96));
            y7 = Fold(y7, k1024, Load(pData + 112));
            pData += 128;
            pLength -= 128;
        }
        // Eight lanes to four: lane i is 512 bits ahead of lane i + 4.
        x0 = Fold(y0, k512, y4);
        x1 = Fold(y1, k512, y5);
        x2 = Fold(y2, k512, y6);
        x3 = Fold(y3, k512, y7);
    } else {
        x0 = _mm_xor_si128(Load(pData), _mm_cvtsi32_si128(static_cast<int>(pState)));
        x1 = Load(pData + 16);
        x2 = Load(pData + 32);
        x3 = Load(pData + 48);
        pData += 64;
        pLength -= 64;
    }
    while (pLength >= 64) {
        x0 = Fold(x0, k512, Load(pData));
        x1 = Fold(x1, k512, Load(pData + 16));
        x2 = Fold(x2, k512, Load(pData + 32));
        x3 = Fold(x3, k512, Load(pData + 48));
        pData += 64;
        pLength -= 64;
    }
    // Four lanes to one.
    x0 = Fold(x0, k128, x1);
    x0 = Fold(x0, k128, x2);
    x0 = Fold(x0, k128, x3);
    while (pLength >= 16) {
        x0 = Fold(x0, k128, Load(pData));
        pData += 16;
        pLength -= 16;
    }

    // 128 bits to 64.
    __m128i t = _mm_clmulepi64_si128(x0, k128, 0x10);
    x0 = _mm_xor_si128(_mm_srli_si128(x0, 8), t);
    t = _mm_srli_si128(x0, 4);
    x0 = _mm_and_si128(x0, mask32);
    x0 = _mm_clmulepi64_si128(x0, k64, 0x00);
    x0 = _mm_xor_si128(x0, t);

    // Barrett reduction to 32 bits.
    t = _mm_and_si128(x0, mask32);
    t = _mm_clmulepi64_si128(t, poly, 0x10);
    t = _mm_and_si128(t, mask32);
    t = _mm_clmulepi64_si128(t, poly, 0x00);
    x0 = _mm_xor_si128(x0, t);

    pConsumed = static_cast<unsigned long long>(pData - start);
    return static_cast<std::uint32_t>(_mm_extract_epi32(x0, 1));
}

bool Crc32ClmulAvailable() {
    static const bool available = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
    }();
    return available;
}

} // namespace Quillanor::Common::Detail

#else // no x86: the table path only

namespace Quillanor::Common::Detail {

std::uint32_t Crc32FoldClmul(std::uint32_t pState, const unsigned char*, unsigned long long,
                             unsigned long long& pConsumed) {
    pConsumed = 0;
    return pState;
}

bool Crc32ClmulAvailable() {
    return false;
}

} // namespace Quillanor::Common::Detail

#endif
