#include "Engine/Common/Base/Md5.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace Quillanor::Common {

namespace {

inline std::uint32_t LoadLe32(const md5_byte_t* p) {
    std::uint32_t v;
    std::memcpy(&v, p, 4);
    if constexpr (std::endian::native == std::endian::big) {
        v = __builtin_bswap32(v);
    }
    return v;
}

inline void StoreLe32(md5_byte_t* p, std::uint32_t v) {
    if constexpr (std::endian::native == std::endian::big) {
        v = __builtin_bswap32(v);
    }
    std::memcpy(p, &v, 4);
}

// The four rounds of RFC 1321; F and G in the forms with one operation fewer.
#define QC_MD5_F(x, y, z) ((z) ^ ((x) & ((y) ^ (z))))
#define QC_MD5_G(x, y, z) ((y) ^ ((z) & ((x) ^ (y))))
#define QC_MD5_H(x, y, z) ((x) ^ (y) ^ (z))
#define QC_MD5_I(x, y, z) ((y) ^ ((x) | ~(z)))
#define QC_MD5_STEP(f, a, b, c, d, x, t, s)                                                        \
    (a) += f((b), (c), (d)) + (x) + static_cast<std::uint32_t>(t);                                 \
    (a) = std::rotl((a), (s)) + (b)

void ProcessBlocks(md5_word_t pAbcd[4], const md5_byte_t* pData, std::size_t pBlocks) {
    std::uint32_t a = pAbcd[0], b = pAbcd[1], c = pAbcd[2], d = pAbcd[3];
    for (; pBlocks > 0; --pBlocks, pData += 64) {
        std::uint32_t x[16];
        for (int i = 0; i < 16; ++i) {
            x[i] = LoadLe32(pData + 4 * i);
        }
        const std::uint32_t aa = a, bb = b, cc = c, dd = d;

        QC_MD5_STEP(QC_MD5_F, a, b, c, d, x[0], 0xd76aa478, 7);
        QC_MD5_STEP(QC_MD5_F, d, a, b, c, x[1], 0xe8c7b756, 12);
        QC_MD5_STEP(QC_MD5_F, c, d, a, b, x[2], 0x242070db, 17);
        QC_MD5_STEP(QC_MD5_F, b, c, d, a, x[3], 0xc1bdceee, 22);
        QC_MD5_STEP(QC_MD5_F, a, b, c, d, x[4], 0xf57c0faf, 7);
        QC_MD5_STEP(QC_MD5_F, d, a, b, c, x[5], 0x4787c62a, 12);
        QC_MD5_STEP(QC_MD5_F, c, d, a, b, x[6], 0xa8304613, 17);
        QC_MD5_STEP(QC_MD5_F, b, c, d, a, x[7], 0xfd469501, 22);
        QC_MD5_STEP(QC_MD5_F, a, b, c, d, x[8], 0x698098d8, 7);
        QC_MD5_STEP(QC_MD5_F, d, a, b, c, x[9], 0x8b44f7af, 12);
        QC_MD5_STEP(QC_MD5_F, c, d, a, b, x[10], 0xffff5bb1, 17);
        QC_MD5_STEP(QC_MD5_F, b, c, d, a, x[11], 0x895cd7be, 22);
        QC_MD5_STEP(QC_MD5_F, a, b, c, d, x[12], 0x6b901122, 7);
        QC_MD5_STEP(QC_MD5_F, d, a, b, c, x[13], 0xfd987193, 12);
        QC_MD5_STEP(QC_MD5_F, c, d, a, b, x[14], 0xa679438e, 17);
        QC_MD5_STEP(QC_MD5_F, b, c, d, a, x[15], 0x49b40821, 22);

        QC_MD5_STEP(QC_MD5_G, a, b, c, d, x[1], 0xf61e2562, 5);
        QC_MD5_STEP(QC_MD5_G, d, a, b, c, x[6], 0xc040b340, 9);
        QC_MD5_STEP(QC_MD5_G, c, d, a, b, x[11], 0x265e5a51, 14);
        QC_MD5_STEP(QC_MD5_G, b, c, d, a, x[0], 0xe9b6c7aa, 20);
        QC_MD5_STEP(QC_MD5_G, a, b, c, d, x[5], 0xd62f105d, 5);
        QC_MD5_STEP(QC_MD5_G, d, a, b, c, x[10], 0x02441453, 9);
        QC_MD5_STEP(QC_MD5_G, c, d, a, b, x[15], 0xd8a1e681, 14);
        QC_MD5_STEP(QC_MD5_G, b, c, d, a, x[4], 0xe7d3fbc8, 20);
        QC_MD5_STEP(QC_MD5_G, a, b, c, d, x[9], 0x21e1cde6, 5);
        QC_MD5_STEP(QC_MD5_G, d, a, b, c, x[14], 0xc33707d6, 9);
        QC_MD5_STEP(QC_MD5_G, c, d, a, b, x[3], 0xf4d50d87, 14);
        QC_MD5_STEP(QC_MD5_G, b, c, d, a, x[8], 0x455a14ed, 20);
        QC_MD5_STEP(QC_MD5_G, a, b, c, d, x[13], 0xa9e3e905, 5);
        QC_MD5_STEP(QC_MD5_G, d, a, b, c, x[2], 0xfcefa3f8, 9);
        QC_MD5_STEP(QC_MD5_G, c, d, a, b, x[7], 0x676f02d9, 14);
        QC_MD5_STEP(QC_MD5_G, b, c, d, a, x[12], 0x8d2a4c8a, 20);

        QC_MD5_STEP(QC_MD5_H, a, b, c, d, x[5], 0xfffa3942, 4);
        QC_MD5_STEP(QC_MD5_H, d, a, b, c, x[8], 0x8771f681, 11);
        QC_MD5_STEP(QC_MD5_H, c, d, a, b, x[11], 0x6d9d6122, 16);
        QC_MD5_STEP(QC_MD5_H, b, c, d, a, x[14], 0xfde5380c, 23);
        QC_MD5_STEP(QC_MD5_H, a, b, c, d, x[1], 0xa4beea44, 4);
        QC_MD5_STEP(QC_MD5_H, d, a, b, c, x[4], 0x4bdecfa9, 11);
        QC_MD5_STEP(QC_MD5_H, c, d, a, b, x[7], 0xf6bb4b60, 16);
        QC_MD5_STEP(QC_MD5_H, b, c, d, a, x[10], 0xbebfbc70, 23);
        QC_MD5_STEP(QC_MD5_H, a, b, c, d, x[13], 0x289b7ec6, 4);
        QC_MD5_STEP(QC_MD5_H, d, a, b, c, x[0], 0xeaa127fa, 11);
        QC_MD5_STEP(QC_MD5_H, c, d, a, b, x[3], 0xd4ef3085, 16);
        QC_MD5_STEP(QC_MD5_H, b, c, d, a, x[6], 0x04881d05, 23);
        QC_MD5_STEP(QC_MD5_H, a, b, c, d, x[9], 0xd9d4d039, 4);
        QC_MD5_STEP(QC_MD5_H, d, a, b, c, x[12], 0xe6db99e5, 11);
        QC_MD5_STEP(QC_MD5_H, c, d, a, b, x[15], 0x1fa27cf8, 16);
        QC_MD5_STEP(QC_MD5_H, b, c, d, a, x[2], 0xc4ac5665, 23);

        QC_MD5_STEP(QC_MD5_I, a, b, c, d, x[0], 0xf4292244, 6);
        QC_MD5_STEP(QC_MD5_I, d, a, b, c, x[7], 0x432aff97, 10);
        QC_MD5_STEP(QC_MD5_I, c, d, a, b, x[14], 0xab9423a7, 15);
        QC_MD5_STEP(QC_MD5_I, b, c, d, a, x[5], 0xfc93a039, 21);
        QC_MD5_STEP(QC_MD5_I, a, b, c, d, x[12], 0x655b59c3, 6);
        QC_MD5_STEP(QC_MD5_I, d, a, b, c, x[3], 0x8f0ccc92, 10);
        QC_MD5_STEP(QC_MD5_I, c, d, a, b, x[10], 0xffeff47d, 15);
        QC_MD5_STEP(QC_MD5_I, b, c, d, a, x[1], 0x85845dd1, 21);
        QC_MD5_STEP(QC_MD5_I, a, b, c, d, x[8], 0x6fa87e4f, 6);
        QC_MD5_STEP(QC_MD5_I, d, a, b, c, x[15], 0xfe2ce6e0, 10);
        QC_MD5_STEP(QC_MD5_I, c, d, a, b, x[6], 0xa3014314, 15);
        QC_MD5_STEP(QC_MD5_I, b, c, d, a, x[13], 0x4e0811a1, 21);
        QC_MD5_STEP(QC_MD5_I, a, b, c, d, x[4], 0xf7537e82, 6);
        QC_MD5_STEP(QC_MD5_I, d, a, b, c, x[11], 0xbd3af235, 10);
        QC_MD5_STEP(QC_MD5_I, c, d, a, b, x[2], 0x2ad7d2bb, 15);
        QC_MD5_STEP(QC_MD5_I, b, c, d, a, x[9], 0xeb86d391, 21);

        a += aa;
        b += bb;
        c += cc;
        d += dd;
    }
    pAbcd[0] = a;
    pAbcd[1] = b;
    pAbcd[2] = c;
    pAbcd[3] = d;
}

} // namespace

void md5_init(md5_state_t* pState) {
    pState->count = 0;
    pState->abcd[0] = 0x67452301;
    pState->abcd[1] = 0xefcdab89;
    pState->abcd[2] = 0x98badcfe;
    pState->abcd[3] = 0x10325476;
}

void md5_append(md5_state_t* pState, const md5_byte_t* pData, std::size_t pLength) {
    if (pLength == 0) {
        return;
    }
    std::size_t used = static_cast<std::size_t>(pState->count & 63);
    pState->count += pLength;
    if (used != 0) {
        const std::size_t take = pLength < 64 - used ? pLength : 64 - used;
        std::memcpy(pState->buf + used, pData, take);
        used += take;
        pData += take;
        pLength -= take;
        if (used < 64) {
            return;
        }
        ProcessBlocks(pState->abcd, pState->buf, 1);
    }
    // Whole blocks straight from the caller's data.
    ProcessBlocks(pState->abcd, pData, pLength / 64);
    pData += pLength & ~std::size_t(63);
    pLength &= 63;
    if (pLength != 0) {
        std::memcpy(pState->buf, pData, pLength);
    }
}

void md5_finish(md5_state_t* pState, md5_byte_t pDigest[16]) {
    // Padding: 0x80, zeros up to 56 mod 64, then the bit length (little-endian, 64 bits).
    static const md5_byte_t pad[64] = {0x80};
    const unsigned long long bits = pState->count << 3;
    md5_byte_t length[8];
    StoreLe32(length, static_cast<std::uint32_t>(bits));
    StoreLe32(length + 4, static_cast<std::uint32_t>(bits >> 32));
    const std::size_t used = static_cast<std::size_t>(pState->count & 63);
    md5_append(pState, pad, ((55 - used) & 63) + 1);
    md5_append(pState, length, 8);
    for (int i = 0; i < 4; ++i) {
        StoreLe32(pDigest + 4 * i, pState->abcd[i]);
    }
}

} // namespace Quillanor::Common
