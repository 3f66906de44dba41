#include "Engine/Common/Base/Crc32.h"

#include "Engine/Common/Base/Detail/Crc32Tables.h"

#include <bit>
#include <cstring>

namespace Quillanor::Common {

namespace Detail {

std::uint32_t Crc32Slice8(std::uint32_t pState, const unsigned char* pData,
                          unsigned long long pLength) {
    const auto& t = kCrc32Tables.mTable;
    std::uint32_t c = pState;
    while (pLength >= 8) {
        std::uint64_t word;
        std::memcpy(&word, pData, 8);
        if constexpr (std::endian::native == std::endian::big) {
            word = __builtin_bswap64(word);
        }
        word ^= c;
        c = t[7][word & 0xFF] ^ t[6][(word >> 8) & 0xFF] ^ t[5][(word >> 16) & 0xFF] ^
            t[4][(word >> 24) & 0xFF] ^ t[3][(word >> 32) & 0xFF] ^ t[2][(word >> 40) & 0xFF] ^
            t[1][(word >> 48) & 0xFF] ^ t[0][word >> 56];
        pData += 8;
        pLength -= 8;
    }
    while (pLength-- > 0) {
        c = (c >> 8) ^ t[0][(c ^ *pData++) & 0xFF];
    }
    return c;
}

unsigned int Crc32Portable(unsigned int pCrc, const void* pData, unsigned long long pLength) {
    if (pData == nullptr) {
        return 0;
    }
    return ~Crc32Slice8(~pCrc, static_cast<const unsigned char*>(pData), pLength);
}

unsigned int Crc32Clmul(unsigned int pCrc, const void* pData, unsigned long long pLength) {
    if (pData == nullptr) {
        return 0;
    }
    auto bytes = static_cast<const unsigned char*>(pData);
    std::uint32_t state = ~pCrc;
    if (pLength >= 64 && Crc32ClmulAvailable()) {
        unsigned long long consumed = 0;
        state = Crc32FoldClmul(state, bytes, pLength, consumed);
        bytes += consumed;
        pLength -= consumed;
    }
    return ~Crc32Slice8(state, bytes, pLength);
}

bool Crc32HasClmul() {
    return Crc32ClmulAvailable();
}

} // namespace Detail

unsigned int crc32(unsigned int pCrc, const void* pData, unsigned long long pLength) {
    // Short inputs are not worth the set-up of the folding kernel.
    if (pLength < 64) {
        return Detail::Crc32Portable(pCrc, pData, pLength);
    }
    return Detail::Crc32Clmul(pCrc, pData, pLength);
}

} // namespace Quillanor::Common
