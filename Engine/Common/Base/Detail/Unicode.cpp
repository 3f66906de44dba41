// UTF-8 and UTF-16LE codecs with ASCII fast paths.
#include "Engine/Common/Base/Detail/Unicode.h"

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

int Utf8ToUtf16(const char* pText, int pLength, char16_t* pOut, int pOutLength) {
    const auto* in = reinterpret_cast<const unsigned char*>(pText);
    const auto* const inEnd = in + pLength;
    tSink<char16_t> sink{pOut, pOut == nullptr ? nullptr : pOut + pOutLength};
    while (in < inEnd) {
        unsigned char b = *in;
        if (b < 0x80) {
#if defined(__SSE2__)
            if (pOut != nullptr) {
                const __m128i zero = _mm_setzero_si128();
                while (inEnd - in >= 16 && sink.end - sink.out >= 16) {
                    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
                    if (_mm_movemask_epi8(bytes) != 0) {
                        break;
                    }
                    _mm_storeu_si128(reinterpret_cast<__m128i*>(sink.out),
                                     _mm_unpacklo_epi8(bytes, zero));
                    _mm_storeu_si128(reinterpret_cast<__m128i*>(sink.out + 8),
                                     _mm_unpackhi_epi8(bytes, zero));
                    sink.out += 16;
                    sink.count += 16;
                    in += 16;
                }
            } else {
                while (inEnd - in >= 16) {
                    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
                    if (_mm_movemask_epi8(bytes) != 0) {
                        break;
                    }
                    sink.count += 16;
                    in += 16;
                }
            }
            if (in == inEnd) {
                break;
            }
            b = *in;
            if (b >= 0x80) {
                continue;
            }
#endif
            if (!sink.Room(1)) {
                return -1;
            }
            sink.Put(b);
            ++in;
            continue;
        }
        // Multi-byte sequence: find its length and the valid range of the second byte.
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
            if (!sink.Room(1)) {
                return -1;
            }
            sink.Put(kReplacement);
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
            if (!sink.Room(1)) {
                return -1;
            }
            sink.Put(kReplacement);
            in = p;
            continue;
        }
        in = p;
        if (cp >= 0x10000) {
            if (!sink.Room(2)) {
                return -1;
            }
            cp -= 0x10000;
            sink.Put(static_cast<char16_t>(0xD800 + (cp >> 10)));
            sink.Put(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            if (!sink.Room(1)) {
                return -1;
            }
            sink.Put(static_cast<char16_t>(cp));
        }
    }
    return static_cast<int>(sink.count);
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
