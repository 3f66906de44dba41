// cUtils, POSIX backend: errno texts (strerror_r) and code pages other than UTF-8 and
// UTF-16LE through iconv. The ANSI, OEM, Mac and thread code pages (0..3) are UTF-8.
#include "Engine/Common/Base/Utils.h"

#include "Engine/Common/Base/Detail/Unicode.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iconv.h>

namespace Quillanor::Common {

namespace {

bool IsUtf8CodePage(unsigned int pCodePage) {
    return pCodePage <= 3 || pCodePage == 65001;
}

// The iconv name of a Windows code page number.
void IconvName(unsigned int pCodePage, char* pName, std::size_t pSize) {
    struct sName {
        unsigned int codePage;
        const char* name;
    };
    static const sName kNames[] = {
        {1201, "UTF-16BE"},     {12000, "UTF-32LE"},    {12001, "UTF-32BE"},
        {20127, "ASCII"},       {20866, "KOI8-R"},      {21866, "KOI8-U"},
        {28591, "ISO-8859-1"},  {28592, "ISO-8859-2"},  {28593, "ISO-8859-3"},
        {28594, "ISO-8859-4"},  {28595, "ISO-8859-5"},  {28596, "ISO-8859-6"},
        {28597, "ISO-8859-7"},  {28598, "ISO-8859-8"},  {28599, "ISO-8859-9"},
        {28603, "ISO-8859-13"}, {28605, "ISO-8859-15"}, {50220, "ISO-2022-JP"},
        {51932, "EUC-JP"},      {51949, "EUC-KR"},      {54936, "GB18030"},
        {65000, "UTF-7"},
    };
    for (const sName& entry : kNames) {
        if (entry.codePage == pCodePage) {
            std::snprintf(pName, pSize, "%s", entry.name);
            return;
        }
    }
    std::snprintf(pName, pSize, "CP%u", pCodePage);
}

// An open iconv descriptor, closed on scope exit.
class cIconv {
public:
    cIconv(const char* pTo, const char* pFrom) : mHandle(iconv_open(pTo, pFrom)) {}
    ~cIconv() {
        if (Valid()) {
            iconv_close(mHandle);
        }
    }
    cIconv(const cIconv&) = delete;
    cIconv& operator=(const cIconv&) = delete;
    bool Valid() const { return mHandle != reinterpret_cast<iconv_t>(-1); }
    iconv_t Get() const { return mHandle; }

private:
    iconv_t mHandle;
};

// Runs `cd` over the input; on an invalid or unconvertible input unit writes `pSubstitute`
// (pSubstituteLength bytes) and skips `pSkip` bytes. Returns the output bytes (written or
// counted when pOut is null), or -1 when pOut is too small.
long long Convert(iconv_t cd, const char* pIn, std::size_t pInLength, char* pOut,
                  std::size_t pOutLength, const char* pSubstitute, std::size_t pSubstituteLength,
                  std::size_t pSkip) {
    char* in = const_cast<char*>(pIn);
    std::size_t inLeft = pInLength;
    char scratch[1024];
    long long total = 0;
    char* out = pOut;
    std::size_t outLeft = pOutLength;
    for (;;) {
        char* dst = pOut != nullptr ? out : scratch;
        std::size_t dstLeft = pOut != nullptr ? outLeft : sizeof(scratch);
        char* const dstStart = dst;
        const std::size_t r = inLeft == 0 ? iconv(cd, nullptr, nullptr, &dst, &dstLeft)
                                          : iconv(cd, &in, &inLeft, &dst, &dstLeft);
        const int error = errno;
        total += dst - dstStart;
        if (pOut != nullptr) {
            out = dst;
            outLeft = dstLeft;
        }
        if (r != static_cast<std::size_t>(-1)) {
            if (inLeft == 0) {
                // Flush any shift state, then done.
                dst = pOut != nullptr ? out : scratch;
                dstLeft = pOut != nullptr ? outLeft : sizeof(scratch);
                char* const flushStart = dst;
                if (iconv(cd, nullptr, nullptr, &dst, &dstLeft) == static_cast<std::size_t>(-1)) {
                    return -1;
                }
                total += dst - flushStart;
                return total;
            }
            continue;
        }
        if (error == E2BIG) {
            if (pOut != nullptr) {
                return -1;
            }
            continue;
        }
        if (error == EILSEQ || error == EINVAL) {
            if (pOut != nullptr) {
                if (outLeft < pSubstituteLength) {
                    return -1;
                }
                std::memcpy(out, pSubstitute, pSubstituteLength);
                out += pSubstituteLength;
                outLeft -= pSubstituteLength;
            }
            total += static_cast<long long>(pSubstituteLength);
            const std::size_t skip = pSkip < inLeft ? pSkip : inLeft;
            in += skip;
            inLeft -= skip;
            iconv(cd, nullptr, nullptr, nullptr, nullptr);
            continue;
        }
        return -1;
    }
}

} // namespace

int cUtils::LastErrorImpl() {
    return errno;
}

bool cUtils::LastErrorStrImpl(int pCode, const char16_t* pModule, char16_t* pOut, int pSize) {
    if (pModule != nullptr) {
        return false; // module message tables exist only on Windows
    }
#if defined(__GLIBC__)
    if (strerrordesc_np(pCode) == nullptr) {
        return false;
    }
    char buffer[512];
    const char* text = strerror_r(pCode, buffer, sizeof(buffer));
#else
    char buffer[512];
    if (strerror_r(pCode, buffer, sizeof(buffer)) != 0) {
        return false;
    }
    const char* text = buffer;
#endif
    const int length = static_cast<int>(std::strlen(text));
    const int n = Detail::Utf8ToUtf16(text, length, pOut, pSize - 1);
    if (n <= 0) {
        return false;
    }
    pOut[n] = 0;
    return true;
}

int cUtils::ToMultibyteImpl(unsigned int pCodePage, const char16_t* pText, int pLength, char* pOut,
                            int pOutLength) {
    if (IsUtf8CodePage(pCodePage)) {
        return Detail::Utf16ToUtf8(pText, pLength, pOut, pOutLength);
    }
    char name[32];
    IconvName(pCodePage, name, sizeof(name));
    cIconv cd(name, "UTF-16LE");
    if (!cd.Valid()) {
        return 0;
    }
    const long long n = Convert(cd.Get(), reinterpret_cast<const char*>(pText),
                                static_cast<std::size_t>(pLength) * 2, pOut,
                                static_cast<std::size_t>(pOutLength), "?", 1, 2);
    return n < 0 || n > 0x7FFFFFFF ? -1 : static_cast<int>(n);
}

int cUtils::ToWideCharImpl(unsigned int pCodePage, const char* pText, int pLength, char16_t* pOut,
                           int pOutLength) {
    if (IsUtf8CodePage(pCodePage)) {
        return Detail::Utf8ToUtf16(pText, pLength, pOut, pOutLength);
    }
    char name[32];
    IconvName(pCodePage, name, sizeof(name));
    cIconv cd("UTF-16LE", name);
    if (!cd.Valid()) {
        return 0;
    }
    static const char kReplacement[2] = {static_cast<char>(0xFD), static_cast<char>(0xFF)};
    const long long n =
        Convert(cd.Get(), pText, static_cast<std::size_t>(pLength), reinterpret_cast<char*>(pOut),
                static_cast<std::size_t>(pOutLength) * 2, kReplacement, 2, 1);
    return n < 0 || n / 2 > 0x7FFFFFFF ? -1 : static_cast<int>(n / 2);
}

} // namespace Quillanor::Common
