// UTF-8 and UTF-16LE codecs with ASCII fast paths.
#include "Engine/Common/Base/Detail/Unicode.h"

#include "Engine/Common/Base/Detail/TextSimd.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Quillanor::Common::Detail {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

// Output cursor that either writes (bounded) or only counts.
template <class T>
struct tSink {
    T* out;
    T* end;
    long long count = 0;
    bool full = false;

    bool Room(int n) {
        if (out == nullptr) {
            return true;
        }
        if (end - out < n) {
            full = true;
            return false;
        }
        return true;
    }
    void Put(T c) {
        if (out != nullptr) {
            *out++ = c;
        }
        ++count;
    }
};

bool IsCont(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

} // namespace

namespace {

// The decoder; `Write` false only counts (pOut is then unused). `Checked` false when the
// output is known to be large enough (never more units than input bytes).
template <bool Write, bool Checked>
int DecodeUtf8(const char* pText, int pLength, char16_t* pOut, int pOutLength) {
    const auto* in = reinterpret_cast<const unsigned char*>(pText);
    const auto* const inEnd = in + pLength;
    char16_t* out = pOut;
    char16_t* const outEnd = Write ? pOut + pOutLength : nullptr;
    long long count = 0;
    const auto room = [&](int n) { return !Write || !Checked || outEnd - out >= n; };
    const auto put = [&](char16_t c) {
        if constexpr (Write) {
            *out++ = c;
        } else {
            ++count;
        }
    };
    while (in < inEnd) {
        unsigned char b = *in;
        if (b < 0x80) {
#if defined(__SSE2__)
            while (inEnd - in >= 16 && room(16)) {
                const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
                if (_mm_movemask_epi8(bytes) != 0) {
                    break;
                }
                if constexpr (Write) {
                    const __m128i zero = _mm_setzero_si128();
                    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                                     _mm_unpacklo_epi8(bytes, zero));
                    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8),
                                     _mm_unpackhi_epi8(bytes, zero));
                    out += 16;
                } else {
                    count += 16;
                }
                in += 16;
            }
            if (in == inEnd) {
                break;
            }
            b = *in;
            if (b >= 0x80) {
                continue;
            }
#endif
            if (!room(1)) {
                return -1;
            }
            put(b);
            ++in;
            continue;
        }
        // Fast path of the common well-formed two- and three-byte sequences.
        if (b >= 0xC2 && b <= 0xDF && inEnd - in >= 2 && IsCont(in[1])) {
            if (!room(1)) {
                return -1;
            }
            put(static_cast<char16_t>(((b & 0x1F) << 6) | (in[1] & 0x3F)));
            in += 2;
            continue;
        }
        if constexpr (Write && !Checked) {
            // A run of well-formed three-byte sequences (CJK text): the vector kernel takes
            // the bulk, this loop whatever it leaves.
            while (inEnd - in >= 3 && (in[0] & 0xF0) == 0xE0) {
                if (inEnd - in >= 16) {
                    const std::size_t units =
                        DecodeThreeByteRun(in, static_cast<std::size_t>(inEnd - in), out);
                    in += 3 * units;
                    out += units;
                    if (inEnd - in < 3 || (in[0] & 0xF0) != 0xE0) {
                        break;
                    }
                }
                const unsigned c1 = in[1];
                const unsigned c2 = in[2];
                if (((c1 & 0xC0) ^ 0x80) | ((c2 & 0xC0) ^ 0x80)) {
                    break;
                }
                const unsigned c = ((in[0] & 0x0Fu) << 12) | ((c1 & 0x3Fu) << 6) | (c2 & 0x3Fu);
                if (c < 0x800 || c - 0xD800 < 0x800) {
                    break;
                }
                *out++ = static_cast<char16_t>(c);
                in += 3;
            }
            if (in == inEnd) {
                break;
            }
            b = *in;
            if (b < 0x80) {
                continue;
            }
        }
        if ((b & 0xF0) == 0xE0 && inEnd - in >= 3 && IsCont(in[1]) && IsCont(in[2])) {
            const char32_t c = ((b & 0x0F) << 12) | ((in[1] & 0x3F) << 6) | (in[2] & 0x3F);
            if (c >= 0x800 && (c < 0xD800 || c > 0xDFFF)) {
                if (!room(1)) {
                    return -1;
                }
                put(static_cast<char16_t>(c));
                in += 3;
                continue;
            }
        }
        // General case: find the sequence length and the valid range of the second byte.
        int need;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        char32_t cp;
        if (b >= 0xC2 && b <= 0xDF) {
            need = 1;
            cp = b & 0x1F;
        } else if (b >= 0xE0 && b <= 0xEF) {
            need = 2;
            cp = b & 0x0F;
            if (b == 0xE0) {
                low = 0xA0;
            } else if (b == 0xED) {
                high = 0x9F;
            }
        } else if (b >= 0xF0 && b <= 0xF4) {
            need = 3;
            cp = b & 0x07;
            if (b == 0xF0) {
                low = 0x90;
            } else if (b == 0xF4) {
                high = 0x8F;
            }
        } else {
            if (!room(1)) {
                return -1;
            }
            put(kReplacement);
            ++in;
            continue;
        }
        const unsigned char* p = in + 1;
        bool ok = true;
        for (int k = 0; k < need; ++k, ++p) {
            if (p == inEnd) {
                ok = false;
                break;
            }
            const unsigned char c = *p;
            if (k == 0 ? (c < low || c > high) : !IsCont(c)) {
                ok = false;
                break;
            }
            cp = (cp << 6) | (c & 0x3F);
        }
        if (!ok) {
            // The maximal subpart [in, p) becomes one replacement character.
            if (!room(1)) {
                return -1;
            }
            put(kReplacement);
            in = p;
            continue;
        }
        in = p;
        if (cp >= 0x10000) {
            if (!room(2)) {
                return -1;
            }
            cp -= 0x10000;
            put(static_cast<char16_t>(0xD800 + (cp >> 10)));
            put(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            if (!room(1)) {
                return -1;
            }
            put(static_cast<char16_t>(cp));
        }
    }
    return static_cast<int>(Write ? out - pOut : count);
}

} // namespace

int Utf8ToUtf16(const char* pText, int pLength, char16_t* pOut, int pOutLength) {
    if (pOut == nullptr) {
        return DecodeUtf8<false, false>(pText, pLength, nullptr, 0);
    }
    return pOutLength >= pLength ? DecodeUtf8<true, false>(pText, pLength, pOut, pOutLength)
                                 : DecodeUtf8<true, true>(pText, pLength, pOut, pOutLength);
}

int Utf16ToUtf8(const char16_t* pText, int pLength, char* pOut, int pOutLength) {
    const char16_t* in = pText;
    const char16_t* const inEnd = pText + pLength;
    tSink<char> sink{pOut, pOut == nullptr ? nullptr : pOut + pOutLength};
    while (in < inEnd) {
        char32_t c = *in;
        if (c < 0x80) {
            // Four ASCII units at a time.
            while (inEnd - in >= 4 && (pOut == nullptr || sink.end - sink.out >= 4)) {
                std::uint64_t units;
                std::memcpy(&units, in, 8);
                if ((units & 0xFF80FF80FF80FF80ull) != 0) {
                    break;
                }
                if (pOut != nullptr) {
                    sink.out[0] = static_cast<char>(in[0]);
                    sink.out[1] = static_cast<char>(in[1]);
                    sink.out[2] = static_cast<char>(in[2]);
                    sink.out[3] = static_cast<char>(in[3]);
                    sink.out += 4;
                }
                sink.count += 4;
                in += 4;
            }
            if (in == inEnd) {
                break;
            }
            c = *in;
            if (c < 0x80) {
                if (!sink.Room(1)) {
                    return -1;
                }
                sink.Put(static_cast<char>(c));
                ++in;
                continue;
            }
        }
        ++in;
        if (c >= 0xD800 && c <= 0xDFFF) {
            if (c <= 0xDBFF && in < inEnd && *in >= 0xDC00 && *in <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (*in - 0xDC00);
                ++in;
            } else {
                c = kReplacement;
            }
        }
        if (c < 0x800) {
            if (!sink.Room(2)) {
                return -1;
            }
            sink.Put(static_cast<char>(0xC0 | (c >> 6)));
            sink.Put(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            if (!sink.Room(3)) {
                return -1;
            }
            sink.Put(static_cast<char>(0xE0 | (c >> 12)));
            sink.Put(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            sink.Put(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            if (!sink.Room(4)) {
                return -1;
            }
            sink.Put(static_cast<char>(0xF0 | (c >> 18)));
            sink.Put(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            sink.Put(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            sink.Put(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return static_cast<int>(sink.count);
}

int Utf16LeToUtf16(const char* pText, int pLength, char16_t* pOut, int pOutLength) {
    const auto* in = reinterpret_cast<const unsigned char*>(pText);
    const int units = pLength / 2;
    const int needed = units + (pLength % 2);
    if (pOut == nullptr) {
        return needed;
    }
    if (pOutLength < needed) {
        return -1;
    }
    for (int i = 0; i < units; ++i) {
        pOut[i] = static_cast<char16_t>(in[2 * i] | (in[2 * i + 1] << 8));
    }
    // Unpaired surrogates become replacement characters.
    for (int i = 0; i < units; ++i) {
        const char16_t c = pOut[i];
        if (c < 0xD800 || c > 0xDFFF) {
            continue;
        }
        if (c <= 0xDBFF && i + 1 < units && pOut[i + 1] >= 0xDC00 && pOut[i + 1] <= 0xDFFF) {
            ++i;
        } else {
            pOut[i] = kReplacement;
        }
    }
    if (pLength % 2 != 0) {
        pOut[units] = kReplacement;
    }
    return needed;
}

int Utf16ToUtf16Le(const char16_t* pText, int pLength, char* pOut, int pOutLength) {
    const int needed = pLength * 2;
    if (pOut == nullptr) {
        return needed;
    }
    if (pOutLength < needed) {
        return -1;
    }
    for (int i = 0; i < pLength; ++i) {
        char16_t c = pText[i];
        if (c >= 0xD800 && c <= 0xDFFF) {
            if (c <= 0xDBFF && i + 1 < pLength && pText[i + 1] >= 0xDC00 &&
                pText[i + 1] <= 0xDFFF) {
                pOut[2 * i] = static_cast<char>(c & 0xFF);
                pOut[2 * i + 1] = static_cast<char>(c >> 8);
                ++i;
                c = pText[i];
            } else {
                c = kReplacement;
            }
        }
        pOut[2 * i] = static_cast<char>(c & 0xFF);
        pOut[2 * i + 1] = static_cast<char>(c >> 8);
    }
    return needed;
}

} // namespace Quillanor::Common::Detail
