// UTF-16 code-unit functions and the case rule.
#include "Engine/Common/Base/Char16.h"

#include "Engine/Common/Base/Detail/CaseTable.h"
#include "Engine/Common/Base/Detail/TextSearch.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string>

namespace Quillanor::Common {

namespace Detail {

char16_t ToUpperTable(char16_t c) {
    return static_cast<char16_t>(c + kUpperPages[kUpperIndex[c >> 8]][c & 0xFF]);
}

char16_t ToLowerTable(char16_t c) {
    return static_cast<char16_t>(c + kLowerPages[kLowerIndex[c >> 8]][c & 0xFF]);
}

} // namespace Detail

bool IsSpace(char16_t c) {
    if (c <= 0x20) {
        return c == 0x20 || (c >= 0x09 && c <= 0x0D);
    }
    if (c < 0x85) {
        return false;
    }
    switch (c) {
    case 0x85:
    case 0xA0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202F:
    case 0x205F:
    case 0x3000:
        return true;
    default:
        return c >= 0x2000 && c <= 0x200A;
    }
}

std::size_t StrLen(const char16_t* text) {
    const char16_t* p = text;
    while (*p != 0) {
        ++p;
    }
    return static_cast<std::size_t>(p - text);
}

int StrCmp(const char16_t* a, const char16_t* b) {
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<int>(*a) - static_cast<int>(*b);
}

int StrNCmp(const char16_t* a, const char16_t* b, std::size_t count) {
    for (; count != 0; --count, ++a, ++b) {
        if (*a != *b || *a == 0) {
            return static_cast<int>(*a) - static_cast<int>(*b);
        }
    }
    return 0;
}

int StrNICmp(const char16_t* a, const char16_t* b, std::size_t count) {
    for (; count != 0; --count, ++a, ++b) {
        char16_t x = *a;
        char16_t y = *b;
        if (x != y) {
            x = ToUpper(x);
            y = ToUpper(y);
            if (x != y) {
                return static_cast<int>(x) - static_cast<int>(y);
            }
        }
        if (x == 0) {
            return 0;
        }
    }
    return 0;
}

int StrNICmpA(const char* a, const char* b, std::size_t count) {
    for (; count != 0; --count, ++a, ++b) {
        unsigned char x = static_cast<unsigned char>(ToUpperA(*a));
        unsigned char y = static_cast<unsigned char>(ToUpperA(*b));
        if (x != y) {
            return static_cast<int>(x) - static_cast<int>(y);
        }
        if (x == 0) {
            return 0;
        }
    }
    return 0;
}

// No string is as long as SIZE_MAX: the bounded comparison never stops on the count.
int StrICmp(const char16_t* a, const char16_t* b) {
    return StrNICmp(a, b, SIZE_MAX);
}

int StrICmpA(const char* a, const char* b) {
    return StrNICmpA(a, b, SIZE_MAX);
}

const char16_t* StrChr(const char16_t* text, char16_t c) {
    for (;; ++text) {
        if (*text == c) {
            return text;
        }
        if (*text == 0) {
            return nullptr;
        }
    }
}

const char16_t* StrRChr(const char16_t* text, char16_t c) {
    const char16_t* found = nullptr;
    for (;; ++text) {
        if (*text == c) {
            found = text;
        }
        if (*text == 0) {
            return found;
        }
    }
}

const char16_t* StrStr(const char16_t* text, const char16_t* pattern) {
    return Detail::FindText(text, pattern, [](char16_t c) { return c; });
}

const char16_t* StrIStr(const char16_t* text, const char16_t* pattern) {
    return Detail::FindText(text, pattern, [](char16_t c) { return ToUpper(c); });
}

std::size_t StrCSpn(const char16_t* text, const char16_t* reject) {
    const char16_t* p = text;
    for (; *p != 0; ++p) {
        for (const char16_t* r = reject; *r != 0; ++r) {
            if (*r == *p) {
                return static_cast<std::size_t>(p - text);
            }
        }
    }
    return static_cast<std::size_t>(p - text);
}

namespace {

// The common scanner of the integer conversions: magnitude (saturated to ULLONG_MAX with
// `overflow` set), sign and end position.
struct sIntScan {
    unsigned long long magnitude = 0;
    bool negative = false;
    bool overflow = false;
    const char16_t* end = nullptr;
};

sIntScan ScanInt(const char16_t* text, int base) {
    sIntScan scan;
    scan.end = text;
    if (base != 0 && (base < 2 || base > 36)) {
        return scan;
    }
    const char16_t* p = text;
    while (IsSpace(*p)) {
        ++p;
    }
    if (*p == u'-' || *p == u'+') {
        scan.negative = *p == u'-';
        ++p;
    }
    if ((base == 0 || base == 16) && p[0] == u'0' && (p[1] == u'x' || p[1] == u'X') &&
        Detail::DigitValue(p[2]) < 16) {
        p += 2;
        base = 16;
    } else if (base == 0) {
        base = p[0] == u'0' ? 8 : 10;
    }
    const char16_t* digits = p;
    const unsigned long long limit = ULLONG_MAX / static_cast<unsigned>(base);
    for (;; ++p) {
        const int d = Detail::DigitValue(*p);
        if (d >= base) {
            break;
        }
        if (scan.magnitude > limit ||
            scan.magnitude * static_cast<unsigned>(base) > ULLONG_MAX - static_cast<unsigned>(d)) {
            scan.overflow = true;
            scan.magnitude = ULLONG_MAX;
        } else if (!scan.overflow) {
            scan.magnitude =
                scan.magnitude * static_cast<unsigned>(base) + static_cast<unsigned>(d);
        }
    }
    if (p != digits) {
        scan.end = p;
    }
    return scan;
}

template <class T>
T SignedResult(const sIntScan& scan, T minValue, T maxValue) {
    const unsigned long long maxMagnitude = static_cast<unsigned long long>(maxValue);
    if (scan.negative) {
        if (scan.overflow || scan.magnitude > maxMagnitude + 1) {
            return minValue;
        }
        return static_cast<T>(0 - scan.magnitude);
    }
    if (scan.overflow || scan.magnitude > maxMagnitude) {
        return maxValue;
    }
    return static_cast<T>(scan.magnitude);
}

} // namespace

int StrToL(const char16_t* text, const char16_t** end, int base) {
    const sIntScan scan = ScanInt(text, base);
    if (end != nullptr) {
        *end = scan.end;
    }
    return SignedResult<int>(scan, INT_MIN, INT_MAX);
}

long long StrToLL(const char16_t* text, const char16_t** end, int base) {
    const sIntScan scan = ScanInt(text, base);
    if (end != nullptr) {
        *end = scan.end;
    }
    return SignedResult<long long>(scan, LLONG_MIN, LLONG_MAX);
}

unsigned int StrToUL(const char16_t* text, const char16_t** end, int base) {
    const sIntScan scan = ScanInt(text, base);
    if (end != nullptr) {
        *end = scan.end;
    }
    if (scan.overflow || scan.magnitude > UINT_MAX) {
        return UINT_MAX;
    }
    const auto value = static_cast<unsigned int>(scan.magnitude);
    return scan.negative ? 0u - value : value;
}

unsigned long long StrToULL(const char16_t* text, const char16_t** end, int base) {
    const sIntScan scan = ScanInt(text, base);
    if (end != nullptr) {
        *end = scan.end;
    }
    if (scan.overflow) {
        return ULLONG_MAX;
    }
    return scan.negative ? 0ull - scan.magnitude : scan.magnitude;
}

namespace {

bool IsFloatChar(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
           c == u'.' || c == u'+' || c == u'-' || c == u'(' || c == u')' || c == u'_';
}

// Order of magnitude of the digits in [p, end) (decimal or hexadecimal mantissa with
// optional exponent): positive when the value is large, negative when it is tiny.
long long MagnitudeEstimate(const char* p, const char* end, bool hex) {
    long long position = 0; // digits before the point, minus leading fraction zeros
    bool seenNonZero = false;
    bool afterPoint = false;
    const char expChar = hex ? 'p' : 'e';
    for (; p != end; ++p) {
        const char c = *p;
        if (c == '.') {
            afterPoint = true;
            continue;
        }
        if ((c | 0x20) == expChar) {
            ++p;
            long long exponent = 0;
            bool negative = false;
            if (p != end && (*p == '+' || *p == '-')) {
                negative = *p == '-';
                ++p;
            }
            for (; p != end && *p >= '0' && *p <= '9'; ++p) {
                if (exponent < 100000000) {
                    exponent = exponent * 10 + (*p - '0');
                }
            }
            if (hex) {
                position *= 4;
            }
            return position + (negative ? -exponent : exponent);
        }
        if (c != '0') {
            seenNonZero = true;
        }
        if (!afterPoint && seenNonZero) {
            ++position;
        } else if (afterPoint && !seenNonZero) {
            --position;
        }
    }
    return hex ? position * 4 : position;
}

} // namespace

double StrToD(const char16_t* text, const char16_t** end) {
    if (end != nullptr) {
        *end = text;
    }
    const char16_t* p = text;
    while (IsSpace(*p)) {
        ++p;
    }
    bool negative = false;
    if (*p == u'-' || *p == u'+') {
        negative = *p == u'-';
        ++p;
    }
    // Copy the candidate characters to a narrow buffer for from_chars.
    const char16_t* q = p;
    while (IsFloatChar(*q)) {
        ++q;
    }
    const std::size_t count = static_cast<std::size_t>(q - p);
    char local[128];
    std::string large;
    char* narrow = local;
    if (count > sizeof(local)) {
        large.resize(count);
        narrow = large.data();
    }
    for (std::size_t i = 0; i < count; ++i) {
        narrow[i] = static_cast<char>(p[i]);
    }
    const char* first = narrow;
    const char* last = narrow + count;
    bool hex = false;
    if (count >= 2 && first[0] == '0' && (first[1] | 0x20) == 'x') {
        const char c = count > 2 ? first[2] : 0;
        const bool hexDigit = (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f');
        const char d = count > 3 ? first[3] : 0;
        const bool pointDigit =
            c == '.' && ((d >= '0' && d <= '9') || ((d | 0x20) >= 'a' && (d | 0x20) <= 'f'));
        if (hexDigit || pointDigit) {
            hex = true;
            first += 2;
        }
    }
    if (first != last && (*first == '+' || *first == '-')) {
        return 0.0; // a second sign: nothing converted
    }
    double value = 0.0;
    const std::from_chars_result r = std::from_chars(
        first, last, value, hex ? std::chars_format::hex : std::chars_format::general);
    if (r.ec == std::errc::invalid_argument) {
        return 0.0;
    }
    if (r.ec == std::errc::result_out_of_range) {
        value = MagnitudeEstimate(first, r.ptr, hex) > 0 ? HUGE_VAL : 0.0;
    }
    if (end != nullptr) {
        *end = p + (r.ptr - narrow);
    }
    return negative ? -value : value;
}

} // namespace Quillanor::Common
