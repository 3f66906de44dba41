// cUtils: the formatting ring, string search, number parsing, code pages, byte order.
#include "Engine/Common/Base/Utils.h"

#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/Detail/TextSearch.h"
#include "Engine/Common/Base/Detail/Unicode.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace Quillanor::Common {

namespace {

// The ring of scratch buffers: static storage, nothing allocated per call.
alignas(16) char16_t gRing[cUtils::FmtBuffCount][cUtils::FmtBuffLength];
int gRingIndex = 0;

const cCriticalSection& RingLock() {
    // Never destroyed: formatting may happen during static destruction.
    static const cCriticalSection* lock = new cCriticalSection;
    return *lock;
}

char16_t* NextRingBuffer() {
    int index;
    {
        cBlockLocker locker(RingLock());
        index = gRingIndex = (gRingIndex + 1) % cUtils::FmtBuffCount;
    }
    return gRing[index];
}

std::size_t TextLength(const char16_t* pText) {
    return StrLen(pText);
}

std::size_t TextLength(const char* pText) {
    return std::strlen(pText);
}

// The frame of both code-page conversions: a negative `pLength` means up to and including the
// terminator, an empty output only measures, and a failure (-1) reads as 0.
// `pConvert(inputUnits, out)` runs the codec.
template <class tIn, class tOut, class tConvert>
int ConvertText(const tIn* pText, int pLength, tOut* pOut, int pOutLength, tConvert pConvert) {
    if (pText == nullptr || pOutLength < 0) {
        return 0;
    }
    if (pLength < 0) {
        pLength = static_cast<int>(TextLength(pText)) + 1;
    }
    if (pLength == 0) {
        return 0;
    }
    const int n = pConvert(pLength, pOutLength == 0 ? nullptr : pOut);
    return n < 0 ? 0 : n;
}

} // namespace

char16_t* cUtils::GetFmtStrBuff() {
    return NextRingBuffer();
}

const char16_t* cUtils::FmtStr(const char16_t* pFormat, ...) {
    va_list args;
    va_start(args, pFormat);
    const char16_t* result = FmtStrV(pFormat, args);
    va_end(args);
    return result;
}

const char16_t* cUtils::FmtStrV(const char16_t* pFormat, va_list pArgs) {
    char16_t* buffer = NextRingBuffer();
    Format(buffer, FmtBuffLength, pFormat, pArgs);
    return buffer;
}

const char* cUtils::FmtStrA(const char* pFormat, ...) {
    va_list args;
    va_start(args, pFormat);
    const char* result = FmtStrAV(pFormat, args);
    va_end(args);
    return result;
}

const char* cUtils::FmtStrAV(const char* pFormat, va_list pArgs) {
    char* buffer = reinterpret_cast<char*>(NextRingBuffer());
    FormatA(buffer, FmtBuffLength, pFormat, pArgs);
    return buffer;
}

const char16_t* cUtils::LastErrorStr(int pCode, const char16_t* pModule) {
    if (pCode < 0) {
        pCode = LastErrorImpl(); // before the ring lock can change it
    }
    char16_t* buffer = NextRingBuffer();
    if (!LastErrorStrImpl(pCode, pModule, buffer, FmtBuffLength)) {
        buffer[0] = 0;
        return buffer;
    }
    std::size_t length = StrLen(buffer);
    while (length > 0 && (buffer[length - 1] == u'\r' || buffer[length - 1] == u'\n')) {
        buffer[--length] = 0;
    }
    return buffer;
}

char16_t* cUtils::StrIStr(const char16_t* pText, const char16_t* pPattern) {
    return const_cast<char16_t*>(Common::StrIStr(pText, pPattern));
}

char* cUtils::AStrIStr(const char* pText, const char* pPattern) {
    return const_cast<char*>(Detail::FindText(pText, pPattern, [](char c) { return ToUpperA(c); }));
}

int cUtils::HexDigitToInt(char16_t pChar) {
    const int value = Detail::DigitValue(pChar);
    return value < 16 ? value : -1;
}

int cUtils::StrToIntW(const char16_t* pText, bool* pFail, int pBase, bool pStrict) {
    const char16_t* end = pText;
    const int value = StrToL(pText, &end, pBase);
    if (pFail != nullptr) {
        *pFail = end == pText || (pStrict && *end != 0);
    }
    return value;
}

double cUtils::StrToFloat(const char16_t* pText, bool* pFail, bool pStrict) {
    const char16_t* end = pText;
    const double value = StrToD(pText, &end);
    if (pFail != nullptr) {
        *pFail = end == pText || (pStrict && *end != 0);
    }
    return value;
}

int cUtils::MultibyteLen(unsigned int pCodePage, const char16_t* pText, int pLength) {
    return ToMultibyte(pCodePage, pText, pLength, nullptr, 0);
}

int cUtils::ToMultibyte(unsigned int pCodePage, const char16_t* pText, int pLength, char* pOut,
                        int pOutLength) {
    return ConvertText(pText, pLength, pOut, pOutLength, [&](int pInUnits, char* pTo) {
        switch (pCodePage) {
        case 65001:
            return Detail::Utf16ToUtf8(pText, pInUnits, pTo, pOutLength);
        case 1200:
            return Detail::Utf16ToUtf16Le(pText, pInUnits, pTo, pOutLength);
        default:
            return ToMultibyteImpl(pCodePage, pText, pInUnits, pTo, pOutLength);
        }
    });
}

int cUtils::WideCharLen(unsigned int pCodePage, const char* pText, int pLength) {
    return ToWideChar(pCodePage, pText, pLength, nullptr, 0);
}

int cUtils::ToWideChar(unsigned int pCodePage, const char* pText, int pLength, char16_t* pOut,
                       int pOutLength) {
    return ConvertText(pText, pLength, pOut, pOutLength, [&](int pInUnits, char16_t* pTo) {
        switch (pCodePage) {
        case 65001:
            return Detail::Utf8ToUtf16(pText, pInUnits, pTo, pOutLength);
        case 1200:
            return Detail::Utf16LeToUtf16(pText, pInUnits, pTo, pOutLength);
        default:
            return ToWideCharImpl(pCodePage, pText, pInUnits, pTo, pOutLength);
        }
    });
}

short cUtils::RevEndian(short pValue) {
    const auto v = static_cast<std::uint16_t>(pValue);
    return static_cast<short>(static_cast<std::uint16_t>((v >> 8) | (v << 8)));
}

int cUtils::RevEndian(int pValue) {
    std::uint32_t v = static_cast<std::uint32_t>(pValue);
    v = ((v & 0x00FF00FFu) << 8) | ((v >> 8) & 0x00FF00FFu);
    return static_cast<int>((v << 16) | (v >> 16));
}

long long cUtils::RevEndian(long long pValue) {
    const auto v = static_cast<std::uint64_t>(pValue);
    const auto low = static_cast<std::uint32_t>(RevEndian(static_cast<int>(v & 0xFFFFFFFFu)));
    const auto high = static_cast<std::uint32_t>(RevEndian(static_cast<int>(v >> 32)));
    return static_cast<long long>((static_cast<std::uint64_t>(low) << 32) | high);
}

float cUtils::RevEndian(float pValue) {
    int bits;
    std::memcpy(&bits, &pValue, 4);
    bits = RevEndian(bits);
    std::memcpy(&pValue, &bits, 4);
    return pValue;
}

double cUtils::RevEndian(double pValue) {
    long long bits;
    std::memcpy(&bits, &pValue, 8);
    bits = RevEndian(bits);
    std::memcpy(&pValue, &bits, 8);
    return pValue;
}

} // namespace Quillanor::Common
