// cString: the wide string class.
#include "Engine/Common/Base/String.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/Detail/StringOps.h"
#include "Engine/Common/Base/Utils.h"

#include <cstring>
#include <utility>

namespace Quillanor::Common {

namespace {

// The shared empty buffer: static storage, never freed. Its count starts at 2: one permanent
// reference of its own, one for cString::sEmpty.
constinit char16_t gEmptyText[1] = {0};
constinit cStrBuff gEmptyBuff{gEmptyText, 2, 1};

} // namespace

template <>
const cCriticalSection& tStrOps<cString>::Lock() {
    // Never destroyed: strings may be released during static destruction.
    static const cCriticalSection* lock = new cCriticalSection;
    return *lock;
}

template <>
cStrBuff* tStrOps<cString>::EmptyBuff() {
    return &gEmptyBuff;
}

constinit const cString cString::sEmpty{sEmptyTag{}, &gEmptyBuff};

} // namespace Quillanor::Common

#define QC_STR cString
#define QC_CH char16_t
#include "Engine/Common/Base/Detail/StringImpl.inl"
#undef QC_STR
#undef QC_CH

namespace Quillanor::Common {

cString::cString(int pTag, const char* pText, int pLength, unsigned int pCodePage) : cString() {
    Set(pTag, pText, pLength, pCodePage);
}

cString& cString::Set(int /*pTag*/, const char* pText, int pLength, unsigned int pCodePage) {
    if (pText == nullptr) {
        Ops::Assign(*this, nullptr, 0);
        return *this;
    }
    if (pLength < 0) {
        pLength = static_cast<int>(std::strlen(pText));
    }
    const int needed = pLength > 0 ? cUtils::WideCharLen(pCodePage, pText, pLength) : 0;
    if (needed <= 0) {
        Ops::Assign(*this, nullptr, 0);
        return *this;
    }
    cStrBuff* fresh = Ops::NewBuff(needed + 1);
    const int written = cUtils::ToWideChar(pCodePage, pText, pLength, fresh->mData, needed);
    fresh->mData[written] = 0;
    Ops::Switch(*this, fresh);
    mLength = written;
    return *this;
}

int cString::Replace(const char16_t* pFind, const char16_t* pWith, int pStart,
                     bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind, pWith, pStart, pCaseSensitive, false);
}

int cString::Replace(const cString& pFind, const cString& pWith, int pStart, bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind.Text(), pWith.Text(), pStart, pCaseSensitive, false);
}

int cString::ReplaceAll(const char16_t* pFind, const char16_t* pWith, int pStart,
                        bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind, pWith, pStart, pCaseSensitive, true);
}

int cString::ReplaceAll(const cString& pFind, const cString& pWith, int pStart,
                        bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind.Text(), pWith.Text(), pStart, pCaseSensitive, true);
}

int cString::AnsiLength(unsigned int pCodePage) const {
    return (mLength > 0 ? cUtils::MultibyteLen(pCodePage, mBuff->mData, mLength) : 0) + 1;
}

char* cString::AsAnsi(char* pBuffer, int pSize, unsigned int pCodePage) const {
    if (pBuffer == nullptr || pSize == 0) {
        return pBuffer;
    }
    if (pSize < 0) {
        pSize = 0xFFFFFFF;
    }
    const int written =
        mLength > 0 ? cUtils::ToMultibyte(pCodePage, mBuff->mData, mLength, pBuffer, pSize - 1) : 0;
    pBuffer[written] = 0;
    return pBuffer;
}

cAString cString::AsAnsi(unsigned int pCodePage) const {
    return cAString(0, mBuff->mData, mLength, pCodePage);
}

} // namespace Quillanor::Common
