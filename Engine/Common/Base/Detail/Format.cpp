// The printf-style formatter of cUtils (Windows wide-printf conventions, locale-free
// floating point, fixed output buffer, no allocation).
#include "Engine/Common/Base/Detail/Unicode.h"
#include "Engine/Common/Base/Utils.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Quillanor::Common {

namespace {

// va_list wrapped so that helpers can take it by reference on every ABI.
struct sArgs {
    va_list ap;
};

template <class Ch>
struct tOut {
    Ch* p;
    Ch* end; // last usable position is end - 1; end is kept for the terminator
    bool full = false;

    void Put(Ch c) {
        if (p == end) {
            full = true;
            return;
        }
        *p++ = c;
    }
    void Repeat(Ch c, int n) {
        if (n <= 0) {
            return;
        }
        if (end - p < n) {
            full = true;
            n = static_cast<int>(end - p);
        }
        for (int i = 0; i < n; ++i) {
            *p++ = c;
        }
    }
    // ASCII text (from number conversion) widened as needed.
    void Ascii(const char* s, int n) {
        if (end - p < n) {
            full = true;
            n = static_cast<int>(end - p);
        }
        for (int i = 0; i < n; ++i) {
            *p++ = static_cast<Ch>(static_cast<unsigned char>(s[i]));
        }
    }
};

struct sSpec {
    bool left = false;
    bool plus = false;
    bool space = false;
    bool alt = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
};

enum class eLen { None, HH, H, L, LL, Z, T, J, I32, Wide };

// Writes [prefix][zeros][body] padded to the width.
template <class Ch>
void Emit(tOut<Ch>& out, const sSpec& spec, const char* prefix, int prefixLength, int zeros,
          const char* body, int bodyLength, bool zeroPad) {
    const int total = prefixLength + zeros + bodyLength;
    int pad = spec.width > total ? spec.width - total : 0;
    if (!spec.left && !zeroPad) {
        out.Repeat(Ch(' '), pad);
    }
    out.Ascii(prefix, prefixLength);
    if (!spec.left && zeroPad) {
        out.Repeat(Ch('0'), pad);
    }
    out.Repeat(Ch('0'), zeros);
    out.Ascii(body, bodyLength);
    if (spec.left) {
        out.Repeat(Ch(' '), pad);
    }
}

template <class Ch>
bool FormatInteger(tOut<Ch>& out, const sSpec& spec, char conv, eLen len, sArgs& args) {
    unsigned long long value;
    bool negative = false;
    if (conv == 'd' || conv == 'i') {
        long long v;
        switch (len) {
        case eLen::HH:
            v = static_cast<signed char>(va_arg(args.ap, int));
            break;
        case eLen::H:
            v = static_cast<short>(va_arg(args.ap, int));
            break;
        case eLen::L:
            v = va_arg(args.ap, long);
            break;
        case eLen::LL:
        case eLen::J:
            v = va_arg(args.ap, long long);
            break;
        case eLen::Z:
        case eLen::T:
            v = va_arg(args.ap, std::ptrdiff_t);
            break;
        default:
            v = va_arg(args.ap, int);
            break;
        }
        negative = v < 0;
        value = negative ? 0ull - static_cast<unsigned long long>(v)
                         : static_cast<unsigned long long>(v);
    } else {
        switch (len) {
        case eLen::HH:
            value = static_cast<unsigned char>(va_arg(args.ap, unsigned int));
            break;
        case eLen::H:
            value = static_cast<unsigned short>(va_arg(args.ap, unsigned int));
            break;
        case eLen::L:
            value = va_arg(args.ap, unsigned long);
            break;
        case eLen::LL:
        case eLen::J:
            value = va_arg(args.ap, unsigned long long);
            break;
        case eLen::Z:
        case eLen::T:
            value = va_arg(args.ap, std::size_t);
            break;
        default:
            value = va_arg(args.ap, unsigned int);
            break;
        }
    }
    char digits[24];
    int n = 0;
    const bool upper = conv == 'X';
    const unsigned base = (conv == 'x' || conv == 'X') ? 16 : conv == 'o' ? 8 : 10;
    const char* alphabet = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    if (value != 0 || spec.precision != 0) {
        char reversed[24];
        int r = 0;
        do {
            reversed[r++] = alphabet[value % base];
            value /= base;
        } while (value != 0);
        while (r > 0) {
            digits[n++] = reversed[--r];
        }
    }
    const bool wasZero = n == 0 || (n == 1 && digits[0] == '0');
    char prefix[3];
    int prefixLength = 0;
    if (conv == 'd' || conv == 'i') {
        if (negative) {
            prefix[prefixLength++] = '-';
        } else if (spec.plus) {
            prefix[prefixLength++] = '+';
        } else if (spec.space) {
            prefix[prefixLength++] = ' ';
        }
    } else if (spec.alt && base == 16 && !wasZero) {
        prefix[prefixLength++] = '0';
        prefix[prefixLength++] = upper ? 'X' : 'x';
    }
    int zeros = spec.precision > n ? spec.precision - n : 0;
    if (spec.alt && base == 8 && zeros == 0 && (n == 0 || digits[0] != '0')) {
        zeros = 1;
    }
    Emit(out, spec, prefix, prefixLength, zeros, digits, n, spec.zero && spec.precision < 0);
    return true;
}

// Formats a finite or non-finite double into `body` (without sign); returns its length.
int FloatBody(char* body, int capacity, double magnitude, char conv, const sSpec& spec) {
    const bool upper = conv == 'E' || conv == 'F' || conv == 'G' || conv == 'A';
    char* const end = body + capacity;
    int n;
    if (std::isinf(magnitude) || std::isnan(magnitude)) {
        const char* text =
            std::isinf(magnitude) ? (upper ? "INF" : "inf") : (upper ? "NAN" : "nan");
        std::memcpy(body, text, 3);
        return 3;
    }
    const char lower = static_cast<char>(conv | 0x20);
    int precision = spec.precision;
    std::to_chars_result r{};
    if (lower == 'f') {
        r = std::to_chars(body, end, magnitude, std::chars_format::fixed,
                          precision < 0 ? 6 : precision);
    } else if (lower == 'e') {
        r = std::to_chars(body, end, magnitude, std::chars_format::scientific,
                          precision < 0 ? 6 : precision);
    } else if (lower == 'g') {
        const int p = precision < 0 ? 6 : precision == 0 ? 1 : precision;
        if (!spec.alt) {
            r = std::to_chars(body, end, magnitude, std::chars_format::general, p);
        } else {
            // %#g keeps trailing zeros: choose the style from the decimal exponent.
            r = std::to_chars(body, end, magnitude, std::chars_format::scientific, p - 1);
            if (r.ec != std::errc()) {
                return -1;
            }
            const char* e = r.ptr;
            while (e > body && *(e - 1) != 'e') {
                --e;
            }
            int exponent = 0;
            std::from_chars(*e == '+' ? e + 1 : e, r.ptr, exponent);
            if (p > exponent && exponent >= -4) {
                r = std::to_chars(body, end, magnitude, std::chars_format::fixed, p - 1 - exponent);
            }
        }
    } else { // 'a'
        r = precision < 0 ? std::to_chars(body, end, magnitude, std::chars_format::hex)
                          : std::to_chars(body, end, magnitude, std::chars_format::hex, precision);
    }
    if (r.ec != std::errc()) {
        return -1;
    }
    n = static_cast<int>(r.ptr - body);
    if (spec.alt && std::memchr(body, '.', static_cast<std::size_t>(n)) == nullptr) {
        // '#' always shows the decimal point: before the exponent, or at the end.
        int at = n;
        for (int i = 0; i < n; ++i) {
            if (body[i] == 'e' || body[i] == 'p') {
                at = i;
                break;
            }
        }
        if (n + 1 > capacity) {
            return -1;
        }
        std::memmove(body + at + 1, body + at, static_cast<std::size_t>(n - at));
        body[at] = '.';
        ++n;
    }
    if (upper) {
        for (int i = 0; i < n; ++i) {
            if (body[i] >= 'a' && body[i] <= 'z') {
                body[i] = static_cast<char>(body[i] - 32);
            }
        }
    }
    return n;
}

template <class Ch>
bool FormatFloat(tOut<Ch>& out, const sSpec& spec, char conv, sArgs& args) {
    const double value = va_arg(args.ap, double);
    // Room for the longest fixed output (309 integer digits) and a large precision.
    char body[1400];
    if (spec.precision > 1000) {
        return false;
    }
    const int n = FloatBody(body, sizeof(body), std::fabs(value), conv, spec);
    if (n < 0) {
        return false;
    }
    char prefix[4];
    int prefixLength = 0;
    if (std::signbit(value) && !std::isnan(value)) {
        prefix[prefixLength++] = '-';
    } else if (std::signbit(value)) {
        prefix[prefixLength++] = '-';
    } else if (spec.plus) {
        prefix[prefixLength++] = '+';
    } else if (spec.space) {
        prefix[prefixLength++] = ' ';
    }
    const bool finite = std::isfinite(value);
    if ((conv | 0x20) == 'a' && finite) {
        prefix[prefixLength++] = '0';
        prefix[prefixLength++] = conv == 'A' ? 'X' : 'x';
    }
    Emit(out, spec, prefix, prefixLength, 0, body, n, spec.zero && finite);
    return true;
}

// Text of the other width (UTF-8 <-> UTF-16), at most `limit` source units, padded.
template <class Ch>
void EmitText(tOut<Ch>& out, const sSpec& spec, const Ch* text, int length) {
    const int pad = spec.width > length ? spec.width - length : 0;
    if (!spec.left) {
        out.Repeat(spec.zero ? Ch('0') : Ch(' '), pad);
    }
    if (out.end - out.p < length) {
        out.full = true;
        return;
    }
    std::memcpy(out.p, text, sizeof(Ch) * static_cast<std::size_t>(length));
    out.p += length;
    if (spec.left) {
        out.Repeat(Ch(' '), pad);
    }
}

template <class S>
int LimitedLength(const S* text, int precision) {
    int n = 0;
    while ((precision < 0 || n < precision) && text[n] != 0) {
        ++n;
    }
    return n;
}

// Converted text written straight into the output after the padding.
template <class Ch, class S>
void EmitConverted(tOut<Ch>& out, const sSpec& spec, const S* text, int length) {
    int converted;
    if constexpr (sizeof(Ch) == 2) {
        converted = Detail::Utf8ToUtf16(text, length, nullptr, 0);
    } else {
        converted = Detail::Utf16ToUtf8(text, length, nullptr, 0);
    }
    const int pad = spec.width > converted ? spec.width - converted : 0;
    if (!spec.left) {
        out.Repeat(spec.zero ? Ch('0') : Ch(' '), pad);
    }
    int written;
    if constexpr (sizeof(Ch) == 2) {
        written = Detail::Utf8ToUtf16(text, length, out.p, static_cast<int>(out.end - out.p));
    } else {
        written = Detail::Utf16ToUtf8(text, length, out.p, static_cast<int>(out.end - out.p));
    }
    if (written < 0) {
        out.full = true;
        return;
    }
    out.p += written;
    if (spec.left) {
        out.Repeat(Ch(' '), pad);
    }
}

template <class Ch>
bool FormatString(tOut<Ch>& out, const sSpec& spec, bool wide, sArgs& args) {
    static constexpr Ch kNull[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
    if (wide == (sizeof(Ch) == 2)) {
        const Ch* text = va_arg(args.ap, const Ch*);
        if (text == nullptr) {
            text = kNull;
        }
        EmitText(out, spec, text, LimitedLength(text, spec.precision));
        return true;
    }
    if constexpr (sizeof(Ch) == 2) {
        const char* text = va_arg(args.ap, const char*);
        if (text == nullptr) {
            text = "(null)";
        }
        EmitConverted(out, spec, text, LimitedLength(text, spec.precision));
    } else {
        const char16_t* text = va_arg(args.ap, const char16_t*);
        if (text == nullptr) {
            text = u"(null)";
        }
        EmitConverted(out, spec, text, LimitedLength(text, spec.precision));
    }
    return true;
}

template <class Ch>
bool FormatChar(tOut<Ch>& out, const sSpec& spec, bool wide, sArgs& args) {
    const int value = va_arg(args.ap, int);
    if (wide == (sizeof(Ch) == 2)) {
        const Ch c = static_cast<Ch>(value);
        EmitText(out, spec, &c, 1);
        return true;
    }
    if constexpr (sizeof(Ch) == 2) {
        const char c = static_cast<char>(value);
        EmitConverted(out, spec, &c, 1);
    } else {
        const char16_t c = static_cast<char16_t>(value);
        EmitConverted(out, spec, &c, 1);
    }
    return true;
}

template <class Ch>
int FormatImpl(Ch* buffer, int size, const Ch* format, sArgs& args) {
    if (buffer == nullptr || size <= 0) {
        return -1;
    }
    if (format == nullptr) {
        buffer[0] = 0;
        return -1;
    }
    tOut<Ch> out{buffer, buffer + size - 1};
    const Ch* f = format;
    for (;;) {
        // Literal run.
        while (*f != 0 && *f != Ch('%')) {
            if (out.p == out.end) {
                out.full = true;
                break;
            }
            *out.p++ = *f++;
        }
        if (*f == 0 || out.full) {
            break;
        }
        ++f; // '%'
        sSpec spec;
        for (;; ++f) {
            const Ch c = *f;
            if (c == Ch('-')) {
                spec.left = true;
            } else if (c == Ch('+')) {
                spec.plus = true;
            } else if (c == Ch(' ')) {
                spec.space = true;
            } else if (c == Ch('#')) {
                spec.alt = true;
            } else if (c == Ch('0')) {
                spec.zero = true;
            } else {
                break;
            }
        }
        if (*f == Ch('*')) {
            int w = va_arg(args.ap, int);
            if (w < 0) {
                spec.left = true;
                w = w == INT32_MIN ? INT32_MAX : -w;
            }
            spec.width = w;
            ++f;
        } else {
            while (*f >= Ch('0') && *f <= Ch('9')) {
                if (spec.width > 100000) {
                    return buffer[0] = 0, -1;
                }
                spec.width = spec.width * 10 + (*f++ - Ch('0'));
            }
        }
        if (*f == Ch('.')) {
            ++f;
            spec.precision = 0;
            if (*f == Ch('*')) {
                const int p = va_arg(args.ap, int);
                spec.precision = p < 0 ? -1 : p;
                ++f;
            } else {
                while (*f >= Ch('0') && *f <= Ch('9')) {
                    if (spec.precision > 100000) {
                        return buffer[0] = 0, -1;
                    }
                    spec.precision = spec.precision * 10 + (*f++ - Ch('0'));
                }
            }
        }
        eLen len = eLen::None;
        switch (*f) {
        case Ch('h'):
            ++f;
            len = eLen::H;
            if (*f == Ch('h')) {
                ++f;
                len = eLen::HH;
            }
            break;
        case Ch('l'):
            ++f;
            len = eLen::L;
            if (*f == Ch('l')) {
                ++f;
                len = eLen::LL;
            }
            break;
        case Ch('w'):
            ++f;
            len = eLen::Wide;
            break;
        case Ch('z'):
            ++f;
            len = eLen::Z;
            break;
        case Ch('t'):
            ++f;
            len = eLen::T;
            break;
        case Ch('j'):
            ++f;
            len = eLen::J;
            break;
        case Ch('I'):
            if (f[1] == Ch('6') && f[2] == Ch('4')) {
                f += 3;
                len = eLen::LL;
            } else if (f[1] == Ch('3') && f[2] == Ch('2')) {
                f += 3;
                len = eLen::I32;
            } else {
                ++f;
                len = eLen::Z;
            }
            break;
        default:
            break;
        }
        const Ch conv = *f++;
        constexpr bool wideFormat = sizeof(Ch) == 2;
        bool ok;
        switch (conv) {
        case Ch('d'):
        case Ch('i'):
        case Ch('u'):
        case Ch('x'):
        case Ch('X'):
        case Ch('o'):
            ok = FormatInteger(out, spec, static_cast<char>(conv), len, args);
            break;
        case Ch('e'):
        case Ch('E'):
        case Ch('f'):
        case Ch('F'):
        case Ch('g'):
        case Ch('G'):
        case Ch('a'):
        case Ch('A'):
            ok = FormatFloat(out, spec, static_cast<char>(conv), args);
            break;
        case Ch('s'):
        case Ch('c'): {
            bool wide = wideFormat;
            if (len == eLen::H) {
                wide = false;
            } else if (len == eLen::L || len == eLen::Wide) {
                wide = true;
            }
            ok = conv == Ch('s') ? FormatString(out, spec, wide, args)
                                 : FormatChar(out, spec, wide, args);
            break;
        }
        case Ch('S'):
        case Ch('C'): {
            bool wide = !wideFormat;
            if (len == eLen::H) {
                wide = false;
            } else if (len == eLen::L || len == eLen::Wide) {
                wide = true;
            }
            ok = conv == Ch('S') ? FormatString(out, spec, wide, args)
                                 : FormatChar(out, spec, wide, args);
            break;
        }
        case Ch('p'): {
            const auto value = reinterpret_cast<std::uintptr_t>(va_arg(args.ap, void*));
            char digits[16];
            for (int i = 15; i >= 0; --i) {
                digits[15 - i] = "0123456789ABCDEF"[(value >> (4 * i)) & 0xF];
            }
            sSpec plain;
            plain.left = spec.left;
            plain.width = spec.width;
            Emit(out, plain, "", 0, 0, digits, 16, false);
            ok = true;
            break;
        }
        case Ch('%'):
            out.Put(Ch('%'));
            ok = true;
            break;
        default:
            ok = false; // unknown conversion, %n, or the end of the format
            break;
        }
        if (!ok) {
            buffer[0] = 0;
            return -1;
        }
    }
    if (out.full) {
        buffer[0] = 0;
        return -1;
    }
    *out.p = 0;
    return static_cast<int>(out.p - buffer);
}

} // namespace

int cUtils::Format(char16_t* pBuffer, int pSize, const char16_t* pFormat, va_list pArgs) {
    sArgs args;
    va_copy(args.ap, pArgs);
    const int n = FormatImpl(pBuffer, pSize, pFormat, args);
    va_end(args.ap);
    return n;
}

int cUtils::FormatA(char* pBuffer, int pSize, const char* pFormat, va_list pArgs) {
    sArgs args;
    va_copy(args.ap, pArgs);
    const int n = FormatImpl(pBuffer, pSize, pFormat, args);
    va_end(args.ap);
    return n;
}

} // namespace Quillanor::Common
