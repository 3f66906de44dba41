// Vector kernels of the text code: case-folded comparison of wide text and decoding of runs
// of three-byte UTF-8 sequences. The instruction set is picked at run time (SSE2, SSSE3 and
// AVX2 on x86, plain loops elsewhere); every kernel gives exactly the result of its loop.
#pragma once

#include "Engine/Common/Base/Api.h"

#include <atomic>
#include <bit>
#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Quillanor::Common::Detail {

// Kernel levels: 0 plain loops, 1 SSE2/SSSE3, 2 AVX2.
QC_API int TextSimdLevel();
// Test hook: caps the level (a negative value restores the detected one); returns the level in
// effect afterwards. Not for use while other threads compare or convert text.
QC_API int SetTextSimdLevel(int pLevel);

// The level in effect, -1 before the first use (TextSimdLevel() then detects it).
extern std::atomic<int> gTextSimdLevel;

inline int TextLevel() {
    const int level = gTextSimdLevel.load(std::memory_order_relaxed);
    return level >= 0 ? level : TextSimdLevel();
}

// Units equal up to the case of an ASCII letter.
inline bool AsciiFoldEqual(char16_t x, char16_t y) {
    return x == y || ((x ^ y) == 0x20 && static_cast<unsigned>((x | 0x20) - u'a') < 26u);
}

// Index of the first of `n` units at and after `i` where `a` and `b` are not AsciiFoldEqual,
// or n, by the plain loop.
inline std::size_t AsciiFoldMismatchLoop(const char16_t* a, const char16_t* b, std::size_t i,
                                         std::size_t n) {
    while (i < n && AsciiFoldEqual(a[i], b[i])) {
        ++i;
    }
    return i;
}

#if defined(__SSE2__)

// Lanes that are AsciiFoldEqual: equal, or differing in bit 0x20 only with (x | 0x20) in
// 'a'..'z' (an unsigned range test done as a signed compare after biasing by 0x8000).
struct sAsciiFold128 {
    __m128i bit = _mm_set1_epi16(0x20);
    __m128i bias = _mm_set1_epi16(static_cast<short>(0x8000 - 'a'));
    __m128i limit = _mm_set1_epi16(static_cast<short>(-0x8000 + 26));

    __m128i Ok(__m128i x, __m128i y) const {
        const __m128i letter = _mm_cmplt_epi16(_mm_add_epi16(_mm_or_si128(x, bit), bias), limit);
        const __m128i flipped = _mm_cmpeq_epi16(_mm_xor_si128(x, y), bit);
        return _mm_or_si128(_mm_cmpeq_epi16(x, y), _mm_and_si128(flipped, letter));
    }
    // Two mask bits a lane, set for the lanes that are equal up to case.
    unsigned Mask(const char16_t* a, const char16_t* b) const {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a));
        const __m128i y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
        return static_cast<unsigned>(_mm_movemask_epi8(Ok(x, y)));
    }
};

// AsciiFoldMismatchLoop from 0 with SSE2.
inline std::size_t AsciiFoldMismatchSse2(const char16_t* a, const char16_t* b, std::size_t n) {
    if (n < 8) {
        return AsciiFoldMismatchLoop(a, b, 0, n);
    }
    const sAsciiFold128 fold;
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16) {
        const __m128i x0 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i));
        const __m128i y0 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
        const __m128i x1 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i + 8));
        const __m128i y1 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i + 8));
        const __m128i same = _mm_and_si128(_mm_cmpeq_epi16(x0, y0), _mm_cmpeq_epi16(x1, y1));
        if (_mm_movemask_epi8(same) == 0xFFFF) {
            continue;
        }
        const unsigned ok = static_cast<unsigned>(_mm_movemask_epi8(fold.Ok(x0, y0))) |
                            static_cast<unsigned>(_mm_movemask_epi8(fold.Ok(x1, y1))) << 16;
        if (ok != 0xFFFFFFFFu) {
            return i + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
    }
    if (i + 8 <= n) {
        const unsigned ok = fold.Mask(a + i, b + i);
        if (ok != 0xFFFFu) {
            return i + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
        i += 8;
    }
    if (i < n) {
        // The last eight units, overlapping lanes already known to match.
        const std::size_t at = n - 8;
        const unsigned ok = fold.Mask(a + at, b + at);
        if (ok != 0xFFFFu) {
            return at + static_cast<std::size_t>(std::countr_zero(~ok)) / 2;
        }
    }
    return n;
}

// True when all of 8 to 32 units are AsciiFoldEqual, by overlapping blocks without branches.
inline bool AsciiFoldEqualShortSse2(const char16_t* a, const char16_t* b, std::size_t n) {
    const sAsciiFold128 fold;
    const auto ok = [&](std::size_t at) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + at));
        const __m128i y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + at));
        return fold.Ok(x, y);
    };
    __m128i all = _mm_and_si128(ok(0), ok(n - 8));
    if (n > 16) {
        all = _mm_and_si128(all, _mm_and_si128(ok(8), ok(n - 16)));
    }
    return _mm_movemask_epi8(all) == 0xFFFF;
}

#endif

// AsciiFoldMismatch for long texts, by the best kernel of the level.
std::size_t AsciiFoldMismatchLong(const char16_t* a, const char16_t* b, std::size_t n);

// Index of the first of `n` units where `a` and `b` differ other than by the case of an
// ASCII letter (units beyond the ASCII range must be equal), or n. Zeros are not special.
// Short texts are done inline.
inline std::size_t AsciiFoldMismatch(const char16_t* a, const char16_t* b, std::size_t n) {
#if defined(__SSE2__)
    if (n <= 32 && TextLevel() > 0) {
        if (n >= 8 && AsciiFoldEqualShortSse2(a, b, n)) {
            return n;
        }
        return AsciiFoldMismatchSse2(a, b, n);
    }
#endif
    return AsciiFoldMismatchLong(a, b, n);
}

// True when one of the `n` units at `p` is zero.
bool HasZeroUnit(const char16_t* p, std::size_t n);

// Decodes the leading run of well-formed three-byte sequences (U+0800..U+FFFF without the
// surrogates) of `n` bytes at `in`, as far as the vector code reaches: stops at the first
// other sequence or when fewer than 16 bytes remain. Returns the units written (three bytes
// consumed each); `out` must have room for `n` units (the stores go past the units written).
std::size_t DecodeThreeByteRun(const unsigned char* in, std::size_t n, char16_t* out);

} // namespace Quillanor::Common::Detail
