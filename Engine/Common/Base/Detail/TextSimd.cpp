#include "Engine/Common/Base/Detail/TextSimd.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define QC_TEXT_X86 1
#define QC_TARGET_SSSE3 __attribute__((target("ssse3")))
#define QC_TARGET_AVX2 __attribute__((target("avx2")))
#endif

namespace Quillanor::Common::Detail {

namespace {

struct sCpu {
    int level = 0;
    bool ssse3 = false;
};

const sCpu& Cpu() {
    static const sCpu cpu = [] {
        sCpu c;
#if defined(QC_TEXT_X86)
        __builtin_cpu_init();
#if defined(__SSE2__)
        c.level = __builtin_cpu_supports("avx2") ? 2 : 1;
#endif
        c.ssse3 = __builtin_cpu_supports("ssse3");
#endif
        return c;
    }();
    return cpu;
}

int Level() {
    return TextLevel();
}

#if defined(QC_TEXT_X86) && defined(__SSE2__)

QC_TARGET_AVX2 inline __m256i Load256(const char16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

QC_TARGET_AVX2 inline std::uint32_t Mask256(__m256i v) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(v));
}

// The 256-bit form of sFold128::Ok.
QC_TARGET_AVX2 inline __m256i FoldOk256(__m256i x, __m256i y) {
    const __m256i bit = _mm256_set1_epi16(0x20);
    const __m256i bias = _mm256_set1_epi16(static_cast<short>(0x8000 - 'a'));
    const __m256i limit = _mm256_set1_epi16(static_cast<short>(-0x8000 + 26));
    const __m256i letter =
        _mm256_cmpgt_epi16(limit, _mm256_add_epi16(_mm256_or_si256(x, bit), bias));
    const __m256i flipped = _mm256_cmpeq_epi16(_mm256_xor_si256(x, y), bit);
    return _mm256_or_si256(_mm256_cmpeq_epi16(x, y), _mm256_and_si256(flipped, letter));
}

QC_TARGET_AVX2 std::size_t FoldMismatchAvx2(const char16_t* a, const char16_t* b, std::size_t n) {
    if (n < 16) {
        return AsciiFoldMismatchSse2(a, b, n);
    }
    std::size_t i = 0;
    for (; i + 64 <= n; i += 64) {
        const __m256i d0 = _mm256_xor_si256(Load256(a + i), Load256(b + i));
        const __m256i d1 = _mm256_xor_si256(Load256(a + i + 16), Load256(b + i + 16));
        const __m256i d2 = _mm256_xor_si256(Load256(a + i + 32), Load256(b + i + 32));
        const __m256i d3 = _mm256_xor_si256(Load256(a + i + 48), Load256(b + i + 48));
        const __m256i diff = _mm256_or_si256(_mm256_or_si256(d0, d1), _mm256_or_si256(d2, d3));
        if (_mm256_testz_si256(diff, diff)) {
            continue;
        }
        // Some units differ: fold the four blocks (again from memory, to keep the fast loop
        // free of spills).
        for (std::size_t k = i; k < i + 64; k += 16) {
            const std::uint32_t ok = Mask256(FoldOk256(Load256(a + k), Load256(b + k)));
            if (ok != 0xFFFFFFFFu) {
                return k + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
            }
        }
    }
    for (; i + 32 <= n; i += 32) {
        const __m256i x0 = Load256(a + i);
        const __m256i y0 = Load256(b + i);
        const __m256i x1 = Load256(a + i + 16);
        const __m256i y1 = Load256(b + i + 16);
        const __m256i same =
            _mm256_and_si256(_mm256_cmpeq_epi16(x0, y0), _mm256_cmpeq_epi16(x1, y1));
        if (Mask256(same) == 0xFFFFFFFFu) {
            continue;
        }
        const std::uint64_t ok =
            Mask256(FoldOk256(x0, y0)) | std::uint64_t{Mask256(FoldOk256(x1, y1))} << 32;
        if (ok != ~std::uint64_t{0}) {
            return i + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
    }
    if (i + 16 <= n) {
        const std::uint32_t ok = Mask256(FoldOk256(Load256(a + i), Load256(b + i)));
        if (ok != 0xFFFFFFFFu) {
            return i + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
        i += 16;
    }
    if (i < n) {
        const std::size_t at = n - 16;
        const std::uint32_t ok = Mask256(FoldOk256(Load256(a + at), Load256(b + at)));
        if (ok != 0xFFFFFFFFu) {
            return at + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
    }
    return n;
}

bool HasZeroSse2(const char16_t* p, std::size_t n) {
    const __m128i zero = _mm_setzero_si128();
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(v, zero)) != 0) {
            return true;
        }
    }
    for (; i < n; ++i) {
        if (p[i] == 0) {
            return true;
        }
    }
    return false;
}

#endif // SSE2

#if defined(QC_TEXT_X86)

// Five three-byte sequences in the first 15 of 16 bytes: lead bytes 1110xxxx at 0, 3, 6, 9
// and 12, continuation bytes 10xxxxxx between them. Lane k of the shuffles gathers the lead
// byte (t0) and the two continuation bytes, the second in the low half (t1). Returns the
// number of leading lanes that hold a well-formed sequence of U+0800..U+FFFF outside the
// surrogates, and their units in `c`.
struct sThreeByte {
    __m128i patternMask =
        _mm_setr_epi8(-16, -64, -64, -16, -64, -64, -16, -64, -64, -16, -64, -64, -16, -64, -64, 0);
    __m128i pattern = _mm_setr_epi8(-32, -128, -128, -32, -128, -128, -32, -128, -128, -32, -128,
                                    -128, -32, -128, -128, 0);
    __m128i leads = _mm_setr_epi8(0, -128, 3, -128, 6, -128, 9, -128, 12, -128, -128, -128, -128,
                                  -128, -128, -128);
    __m128i trails =
        _mm_setr_epi8(2, 1, 5, 4, 8, 7, 11, 10, 14, 13, -128, -128, -128, -128, -128, -128);
    __m128i middleBits = _mm_set1_epi16(0x0FC0);
    __m128i lowBits = _mm_set1_epi16(0x003F);
    __m128i topBits = _mm_set1_epi16(static_cast<short>(0xF800));
    __m128i surrogates = _mm_set1_epi16(static_cast<short>(0xD800));

    QC_TARGET_SSSE3 unsigned Decode(__m128i v, __m128i& c) const {
        const unsigned shape = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(v, patternMask), pattern)));
        const __m128i t0 = _mm_shuffle_epi8(v, leads);
        const __m128i t1 = _mm_shuffle_epi8(v, trails);
        c = _mm_or_si128(_mm_slli_epi16(t0, 12),
                         _mm_or_si128(_mm_and_si128(_mm_srli_epi16(t1, 2), middleBits),
                                      _mm_and_si128(t1, lowBits)));
        // Overlong forms decode below U+0800, encoded surrogates to D800..DFFF.
        const __m128i top = _mm_and_si128(c, topBits);
        const __m128i bad = _mm_or_si128(_mm_cmpeq_epi16(top, _mm_setzero_si128()),
                                         _mm_cmpeq_epi16(top, surrogates));
        const unsigned badLanes = static_cast<unsigned>(_mm_movemask_epi8(bad)) | 0xFC00u;
        const unsigned shapeLanes = static_cast<unsigned>(std::countr_zero(~shape & 0x7FFFu)) / 3;
        const unsigned valueLanes = static_cast<unsigned>(std::countr_zero(badLanes)) / 2;
        return std::min(shapeLanes, valueLanes);
    }
};

QC_TARGET_SSSE3 std::size_t DecodeThreeByteSsse3(const unsigned char* in, std::size_t n,
                                                 char16_t* out) {
    const sThreeByte decoder;
    std::size_t units = 0;
    while (n >= 16) {
        __m128i c;
        const unsigned k = decoder.Decode(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), c);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + units), c);
        units += k;
        if (k < 5) {
            break;
        }
        in += 15;
        n -= 15;
    }
    return units;
}

#endif // x86

} // namespace

std::atomic<int> gTextSimdLevel{-1};

int TextSimdLevel() {
    int level = gTextSimdLevel.load(std::memory_order_relaxed);
    if (level < 0) {
        level = Cpu().level;
        gTextSimdLevel.store(level, std::memory_order_relaxed);
    }
    return level;
}

int SetTextSimdLevel(int pLevel) {
    const int level = pLevel < 0 ? Cpu().level : std::min(pLevel, Cpu().level);
    gTextSimdLevel.store(level, std::memory_order_relaxed);
    return level;
}

std::size_t AsciiFoldMismatchLong(const char16_t* a, const char16_t* b, std::size_t n) {
#if defined(QC_TEXT_X86) && defined(__SSE2__)
    const int level = Level();
    if (level >= 2) {
        return FoldMismatchAvx2(a, b, n);
    }
    if (level == 1) {
        return AsciiFoldMismatchSse2(a, b, n);
    }
#endif
    return AsciiFoldMismatchLoop(a, b, 0, n);
}

bool HasZeroUnit(const char16_t* p, std::size_t n) {
#if defined(QC_TEXT_X86) && defined(__SSE2__)
    if (Level() >= 1) {
        return HasZeroSse2(p, n);
    }
#endif
    for (std::size_t i = 0; i < n; ++i) {
        if (p[i] == 0) {
            return true;
        }
    }
    return false;
}

std::size_t DecodeThreeByteRun(const unsigned char* in, std::size_t n, char16_t* out) {
#if defined(QC_TEXT_X86)
    if (Level() >= 1 && Cpu().ssse3) {
        return DecodeThreeByteSsse3(in, n, out);
    }
#endif
    static_cast<void>(in);
    static_cast<void>(n);
    static_cast<void>(out);
    return 0;
}

} // namespace Quillanor::Common::Detail
