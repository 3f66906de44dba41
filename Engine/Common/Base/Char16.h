// UTF-16 code-unit functions: the library's replacements for the C runtime's wide-character
// functions, and its one case rule.
//
// The case rule is the Unicode simple case mapping of a single UTF-16 code unit (BMP only;
// surrogates map to themselves), independent of any locale, with an ASCII fast path. Every
// case-insensitive operation of the library (string comparison, search, hashing, dictionary
// lookup, wildcard matching) must use ToUpper / StrICmp from here so that they all agree.
// All functions are pure and thread-safe. Pointers must not be null unless stated.
#pragma once

#include "Engine/Common/Base/Api.h"

#include <cstddef>

namespace Quillanor::Common {

namespace Detail {
QC_API char16_t ToUpperTable(char16_t c);
QC_API char16_t ToLowerTable(char16_t c);

// Value of `c` as a digit of a base up to 36 (0-9, then a-z or A-Z); 99 for anything else.
inline int DigitValue(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'a' && c <= u'z') {
        return c - u'a' + 10;
    }
    if (c >= u'A' && c <= u'Z') {
        return c - u'A' + 10;
    }
    return 99;
}
} // namespace Detail

// Simple upper-case mapping of one code unit (the rule of every case-insensitive comparison).
inline char16_t ToUpper(char16_t c) {
    if (c < 0x80) {
        return static_cast<char16_t>(static_cast<unsigned>(c - u'a') < 26u ? c - 32 : c);
    }
    return Detail::ToUpperTable(c);
}

// Simple lower-case mapping of one code unit.
inline char16_t ToLower(char16_t c) {
    if (c < 0x80) {
        return static_cast<char16_t>(static_cast<unsigned>(c - u'A') < 26u ? c + 32 : c);
    }
    return Detail::ToLowerTable(c);
}

// ASCII-only case mapping of a narrow character (the narrow strings' case rule).
inline char ToUpperA(char c) {
    return static_cast<char>(static_cast<unsigned>(c - 'a') < 26u ? c - 32 : c);
}
inline char ToLowerA(char c) {
    return static_cast<char>(static_cast<unsigned>(c - 'A') < 26u ? c + 32 : c);
}

// iswspace: the Unicode White_Space code units (tab..carriage return, space, U+0085, U+00A0,
// U+1680, U+2000..U+200A, U+2028, U+2029, U+202F, U+205F, U+3000).
QC_API bool IsSpace(char16_t c);

// wcslen.
QC_API std::size_t StrLen(const char16_t* text);
// wcscmp / wcsncmp: ordinal, result <0, 0 or >0.
QC_API int StrCmp(const char16_t* a, const char16_t* b);
QC_API int StrNCmp(const char16_t* a, const char16_t* b, std::size_t count);
// _wcsicmp / _wcsnicmp: compares ToUpper of each code unit; result <0, 0 or >0.
QC_API int StrICmp(const char16_t* a, const char16_t* b);
QC_API int StrNICmp(const char16_t* a, const char16_t* b, std::size_t count);
// Narrow case-insensitive compares (ASCII rule), _stricmp / _strnicmp.
QC_API int StrICmpA(const char* a, const char* b);
QC_API int StrNICmpA(const char* a, const char* b, std::size_t count);
// wcschr / wcsrchr (searching for 0 finds the terminator, as the C functions do).
QC_API const char16_t* StrChr(const char16_t* text, char16_t c);
QC_API const char16_t* StrRChr(const char16_t* text, char16_t c);
// wcsstr: first occurrence of `pattern`; an empty pattern matches at `text`; null if none.
QC_API const char16_t* StrStr(const char16_t* text, const char16_t* pattern);
// wcsstr with the case rule.
QC_API const char16_t* StrIStr(const char16_t* text, const char16_t* pattern);
// wcscspn: length of the leading run of `text` containing none of the units of `reject`.
QC_API std::size_t StrCSpn(const char16_t* text, const char16_t* reject);

// wcstol with the Windows 32-bit long: skips leading IsSpace, optional sign, base 0 (auto:
// 0x.. hex, 0.. octal, else decimal) or 2..36 (16 accepts a 0x prefix); clamps on overflow.
// `end` (may be null) receives the first unused unit, or `text` when nothing was converted.
QC_API int StrToL(const char16_t* text, const char16_t** end, int base);
// _wcstoi64: as StrToL with 64-bit range.
QC_API long long StrToLL(const char16_t* text, const char16_t** end, int base);
// wcstoul / _wcstoui64 (a leading '-' negates modulo 2^32 / 2^64, as the C functions do).
QC_API unsigned int StrToUL(const char16_t* text, const char16_t** end, int base);
QC_API unsigned long long StrToULL(const char16_t* text, const char16_t** end, int base);
// wcstod, locale-independent ('.' is the decimal point): leading IsSpace, sign, decimal or
// 0x hexadecimal digits with optional exponent, "inf", "infinity", "nan", "nan(...)".
// Overflow gives +-HUGE_VAL, underflow 0.
QC_API double StrToD(const char16_t* text, const char16_t** end);
// _wtoi and _wtof.
inline int StrToI(const char16_t* text) {
    return StrToL(text, nullptr, 10);
}
inline double StrToF(const char16_t* text) {
    return StrToD(text, nullptr);
}

} // namespace Quillanor::Common
