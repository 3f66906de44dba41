#include "Engine/Common/Base/Base64.h"

#include <cstdint>
#include <cstring>

namespace Quillanor::Common {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Value of each character below 128: the alphabet index, 255 for the other characters of
// '+'..'z', kPad for '=' (also in range) and kBad outside the range.
constexpr std::uint16_t kPad = 0x100;
constexpr std::uint16_t kBad = 0x200;

struct sDecodeTable {
    std::uint16_t mValue[128];
};

constexpr sDecodeTable MakeDecodeTable() {
    sDecodeTable t{};
    for (int c = 0; c < 128; ++c) {
        t.mValue[c] = (c >= '+' && c <= 'z') ? 255 : kBad;
    }
    for (int i = 0; i < 64; ++i) {
        t.mValue[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint16_t>(i);
    }
    t.mValue[static_cast<int>('=')] = kPad;
    return t;
}

constexpr sDecodeTable kDecode = MakeDecodeTable();

inline std::uint16_t Lookup(char16_t c) {
    return c < 128 ? kDecode.mValue[c] : kBad;
}

// Two alphabet characters per 12 bits of input, so an encoded group takes two lookups.
struct sPairTable {
    char16_t mPair[4096][2];
};

constexpr sPairTable MakePairTable() {
    sPairTable t{};
    for (int i = 0; i < 4096; ++i) {
        t.mPair[i][0] = static_cast<char16_t>(kAlphabet[i >> 6]);
        t.mPair[i][1] = static_cast<char16_t>(kAlphabet[i & 63]);
    }
    return t;
}

constexpr sPairTable kPairs = MakePairTable();

} // namespace

int cBase64::Encode(const unsigned char* pData, int pLength, char16_t* pOut) {
    if (pLength < 1) {
        return 0;
    }
    char16_t* out = pOut;
    int left = pLength;
    while (left >= 3) {
        const std::uint32_t v =
            (std::uint32_t(pData[0]) << 16) | (std::uint32_t(pData[1]) << 8) | pData[2];
        const char16_t* hi = kPairs.mPair[v >> 12];
        const char16_t* lo = kPairs.mPair[v & 0xFFF];
        out[0] = hi[0];
        out[1] = hi[1];
        out[2] = lo[0];
        out[3] = lo[1];
        out += 4;
        pData += 3;
        left -= 3;
    }
    if (left > 0) {
        const std::uint32_t v =
            (std::uint32_t(pData[0]) << 16) | (left == 2 ? std::uint32_t(pData[1]) << 8 : 0u);
        out[0] = static_cast<char16_t>(kAlphabet[v >> 18]);
        out[1] = static_cast<char16_t>(kAlphabet[(v >> 12) & 63]);
        out[2] = left == 2 ? static_cast<char16_t>(kAlphabet[(v >> 6) & 63]) : u'=';
        out[3] = u'=';
        out += 4;
    }
    return static_cast<int>(out - pOut);
}

namespace {

// Decode tables for the fast path, one per position in a group: the value already shifted to
// its place, with a flag bit for '=' and for characters outside '+'..'z'.
constexpr std::uint32_t kFastFlag = 0x80000000u;

struct sShiftedTables {
    std::uint32_t mValue[4][128];
};

constexpr sShiftedTables MakeShiftedTables() {
    sShiftedTables t{};
    for (int pos = 0; pos < 4; ++pos) {
        for (int c = 0; c < 128; ++c) {
            const std::uint16_t v = kDecode.mValue[c];
            t.mValue[pos][c] = (v & (kPad | kBad)) ? kFastFlag : std::uint32_t(v) << (18 - 6 * pos);
        }
    }
    return t;
}

constexpr sShiftedTables kShifted = MakeShiftedTables();

template <bool Write>
int DecodeGroups(const char16_t* pText, int pLength, unsigned char* pOut) {
    int total = 0;
    int pos = 0;
    // Full groups of four characters below 128, none of them '=' or out of range, two at a
    // time while there are two.
    const auto& t = kShifted.mValue;
    while (pLength - pos >= 8) {
        std::uint64_t w0, w1;
        std::memcpy(&w0, pText + pos, 8);
        std::memcpy(&w1, pText + pos + 4, 8);
        if (((w0 | w1) & 0xFF80FF80FF80FF80ull) != 0) {
            break; // the careful path below decides
        }
        const std::uint32_t v0 =
            t[0][pText[pos]] | t[1][pText[pos + 1]] | t[2][pText[pos + 2]] | t[3][pText[pos + 3]];
        const std::uint32_t v1 = t[0][pText[pos + 4]] | t[1][pText[pos + 5]] |
                                 t[2][pText[pos + 6]] | t[3][pText[pos + 7]];
        if ((v0 | v1) & kFastFlag) {
            break;
        }
        if constexpr (Write) {
            unsigned char* out = pOut + total;
            out[0] = static_cast<unsigned char>(v0 >> 16);
            out[1] = static_cast<unsigned char>(v0 >> 8);
            out[2] = static_cast<unsigned char>(v0);
            out[3] = static_cast<unsigned char>(v1 >> 16);
            out[4] = static_cast<unsigned char>(v1 >> 8);
            out[5] = static_cast<unsigned char>(v1);
        }
        total += 6;
        pos += 8;
    }
    // Remaining groups, with padding and a short last group completed with '='.
    while (pos < pLength) {
        std::uint32_t v = 0;
        int pads = 0;
        for (int i = 0; i < 4; ++i) {
            std::uint16_t value = kPad;
            if (pos + i < pLength) {
                value = Lookup(pText[pos + i]);
                if (value == kBad) {
                    return -1;
                }
            }
            if (value == kPad) {
                ++pads;
                value = 0;
            }
            v |= std::uint32_t(value) << (18 - 6 * i);
        }
        const int bytes = pads >= 3 ? 0 : 3 - pads;
        if constexpr (Write) {
            for (int i = 0; i < bytes; ++i) {
                pOut[total + i] = static_cast<unsigned char>(v >> (16 - 8 * i));
            }
        }
        total += bytes;
        pos += 4;
    }
    return total;
}

} // namespace

int cBase64::Decode(const char16_t* pText, int pLength, unsigned char* pOut) {
    if (pText == nullptr || pLength < 1) {
        return 0;
    }
    return pOut != nullptr ? DecodeGroups<true>(pText, pLength, pOut)
                           : DecodeGroups<false>(pText, pLength, nullptr);
}

cString cBase64::EncodeS(const unsigned char* pData, int pLength) {
    const int total = EncodedLength(pLength);
    if (total == 0) {
        return cString();
    }
    cString result(total + 1 < 8 ? 8 : total + 1);
    // Chunks of a multiple of 3 bytes join without padding.
    constexpr int kChunk = 2046;
    char16_t buffer[kChunk / 3 * 4];
    for (int done = 0; done < pLength; done += kChunk) {
        const int n = pLength - done < kChunk ? pLength - done : kChunk;
        result.Append(buffer, Encode(pData + done, n, buffer));
    }
    return result;
}

int cBase64::DecodeS(const cString& pText, unsigned char* pOut) {
    return Decode(pText.Text(), pText.Length(), pOut);
}

bool cBase64::DecodeS(const cString& pText, tArray<unsigned char>& pOut) {
    const int count = Decode(pText.Text(), pText.Length(), nullptr);
    if (count < 0) {
        return false;
    }
    pOut.SetCount(count);
    Decode(pText.Text(), pText.Length(), pOut.Data());
    return true;
}

} // namespace Quillanor::Common
