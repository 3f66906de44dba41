// Lookup tables of the reflected CRC-32 polynomial 0xEDB88320 for slicing by 8 bytes,
// computed at compile time. Internal to the CRC-32 units.
#pragma once

#include <array>
#include <cstdint>

namespace Quillanor::Common::Detail {

struct sCrc32Tables {
    std::uint32_t mTable[8][256];
};

constexpr sCrc32Tables MakeCrc32Tables() {
    sCrc32Tables t{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int k = 0; k < 8; ++k) {
            c = (c & 1) ? (c >> 1) ^ 0xEDB88320u : c >> 1;
        }
        t.mTable[0][i] = c;
    }
    for (std::uint32_t i = 0; i < 256; ++i) {
        for (int s = 1; s < 8; ++s) {
            const std::uint32_t prev = t.mTable[s - 1][i];
            t.mTable[s][i] = (prev >> 8) ^ t.mTable[0][prev & 0xFF];
        }
    }
    return t;
}

inline constexpr sCrc32Tables kCrc32Tables = MakeCrc32Tables();

// Continues the inverted CRC state over pLength bytes with the tables.
std::uint32_t Crc32Slice8(std::uint32_t pState, const unsigned char* pData,
                          unsigned long long pLength);

// The carry-less-multiply kernel: needs pLength >= 64 and a processor with PCLMULQDQ and
// SSE4.1; consumes a multiple of 16 bytes and returns the state and the bytes consumed.
std::uint32_t Crc32FoldClmul(std::uint32_t pState, const unsigned char* pData,
                             unsigned long long pLength, unsigned long long& pConsumed);

// True when the processor runs Crc32FoldClmul.
bool Crc32ClmulAvailable();

} // namespace Quillanor::Common::Detail
