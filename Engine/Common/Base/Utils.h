// cUtils: printf-style formatting into a ring of scratch buffers, the system error text, and
// small character, number and code-page helpers. All members are static and thread-safe.
//
// The ring: 100 static buffers of 2048 bytes (1024 wide or 1024 narrow characters) shared by
// FmtStr, FmtStrA, GetFmtStrBuff and LastErrorStr. Taking a buffer advances one index under
// one lock; formatting happens outside the lock. A result stays valid until 100 further ring
// calls have been made from any thread: copy it into a cString to keep it. Nothing is
// allocated per call.
//
// Formats follow the Windows wide-printf conventions on every platform: in a wide format %s
// and %c take char16_t text and %S, %hs, %hc narrow; in a narrow format %s is narrow and %S,
// %ls, %ws wide. Narrow text crossing to wide (and back) is UTF-8. Supported: flags "-+ #0",
// width and precision (also '*'), lengths h hh l ll I64 I32 I z j t w, conversions d i u x X
// o c C s S e E f F g G a A p %. Floating-point output is locale-independent. %p prints 16
// upper-case hexadecimal digits. Output that does not fit makes the result empty.
//
// Code pages are Windows numbers. 65001 (UTF-8) and 1200 (UTF-16LE bytes) are built in; 0
// (CP_ACP) is UTF-8 on POSIX; others go through the platform's converter ("CP<n>" in iconv
// on POSIX). Invalid input becomes U+FFFD (or '?' when a character has no narrow form); an
// unknown code page gives 0 (an empty result).
#pragma once

#include "Engine/Common/Base/Api.h"

#include <cstdarg>

namespace Quillanor::Common {

class QC_API cUtils {
public:
    static constexpr int FmtBuffCount = 100;
    // Characters per ring buffer, terminator included (wide or narrow).
    static constexpr int FmtBuffLength = 1024;

    // The next ring buffer (FmtBuffLength wide characters).
    static char16_t* GetFmtStrBuff();
    // Formats into the next ring buffer; empty when the result does not fit in 1024
    // characters (terminator included) or the format is invalid.
    static const char16_t* FmtStr(const char16_t* pFormat, ...);
    static const char16_t* FmtStrV(const char16_t* pFormat, va_list pArgs);
    // The same for narrow text, in the same ring.
    static const char* FmtStrA(const char* pFormat, ...);
    static const char* FmtStrAV(const char* pFormat, va_list pArgs);
    // The formatter itself, into a caller's buffer of `pSize` characters (terminator
    // included): returns the length, or -1 with an empty buffer when the output does not fit
    // or the format is invalid. Never allocates.
    static int Format(char16_t* pBuffer, int pSize, const char16_t* pFormat, va_list pArgs);
    static int FormatA(char* pBuffer, int pSize, const char* pFormat, va_list pArgs);

    // The system's text for error `pCode` (a negative code means the calling thread's last
    // error: errno on POSIX), in a ring buffer, trailing CR/LF stripped; empty for an unknown
    // code. `pModule` names a module message table, which exists only on Windows: on POSIX
    // a module gives an empty text.
    static const char16_t* LastErrorStr(int pCode, const char16_t* pModule = nullptr);

    // First position of `pPattern` in `pText`, comparing with the case rule (Char16.h); an
    // empty pattern gives `pText`; no match (or an empty text) gives null.
    static char16_t* StrIStr(const char16_t* pText, const char16_t* pPattern);
    // The same for narrow text (ASCII case rule).
    static char* AStrIStr(const char* pText, const char* pPattern);

    // '0'..'9', 'a'..'f', 'A'..'F' to 0..15; anything else -1.
    static int HexDigitToInt(char16_t pChar);
    // wcstol in `pBase`; `*pFail` (if given) is true when nothing was converted, or when
    // `pStrict` is set and characters follow the number.
    static int StrToIntW(const char16_t* pText, bool* pFail = nullptr, int pBase = 10,
                         bool pStrict = false);
    // wcstod with the same failure rule.
    static double StrToFloat(const char16_t* pText, bool* pFail = nullptr, bool pStrict = false);

    // WideCharToMultiByte / MultiByteToWideChar with flags 0. A negative length converts up
    // to and including the terminator. With a null output (or pOutLength 0) the needed count
    // is returned; otherwise the count written, or 0 when the output is too small, the code
    // page is unknown or there is nothing to convert.
    static int MultibyteLen(unsigned int pCodePage, const char16_t* pText, int pLength);
    static int ToMultibyte(unsigned int pCodePage, const char16_t* pText, int pLength, char* pOut,
                           int pOutLength);
    static int WideCharLen(unsigned int pCodePage, const char* pText, int pLength);
    static int ToWideChar(unsigned int pCodePage, const char* pText, int pLength, char16_t* pOut,
                          int pOutLength);

    // The value with its bytes reversed (floating values as bit patterns).
    static short RevEndian(short pValue);
    static int RevEndian(int pValue);
    static long long RevEndian(long long pValue);
    static float RevEndian(float pValue);
    static double RevEndian(double pValue);

private:
    // Platform parts (UtilsPosix.cpp / UtilsWin32.cpp). The code-page forms receive
    // pLength > 0 and code pages other than 65001 and 1200.
    // The calling thread's last error (errno / GetLastError), read before anything else runs.
    static int LastErrorImpl();
    static bool LastErrorStrImpl(int pCode, const char16_t* pModule, char16_t* pOut, int pSize);
    static int ToMultibyteImpl(unsigned int pCodePage, const char16_t* pText, int pLength,
                               char* pOut, int pOutLength);
    static int ToWideCharImpl(unsigned int pCodePage, const char* pText, int pLength,
                              char16_t* pOut, int pOutLength);
};

} // namespace Quillanor::Common
