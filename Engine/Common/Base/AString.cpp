// cAString: the narrow string class.
#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/Detail/StringOps.h"
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Base/Utils.h"

#include <cstring>
#include <utility>

namespace Quillanor::Common {

namespace {

constinit char gEmptyText[1] = {0};
constinit cAStrBuff gEmptyBuff{gEmptyText, 2, 1};

} // namespace

template <>
const cCriticalSection& tStrOps<cAString>::Lock() {
    static const cCriticalSection* lock = new cCriticalSection;
    return *lock;
}

template <>
cAStrBuff* tStrOps<cAString>::EmptyBuff() {
    return &gEmptyBuff;
}

constinit const cAString cAString::sEmpty{sEmptyTag{}, &gEmptyBuff};

} // namespace Quillanor::Common

#define QC_STR cAString
#define QC_CH char
#include "Engine/Common/Base/Detail/StringImpl.inl"
#undef QC_STR
#undef QC_CH

namespace Quillanor::Common {

cAString::cAString(int pTag, const char16_t* pText, int pLength, unsigned int pCodePage)
    : cAString() {
    Set(pTag, pText, pLength, pCodePage);
}

cAString& cAString::Set(int /*pTag*/, const char16_t* pText, int pLength, unsigned int pCodePage) {
    if (pText == nullptr) {
        Ops::Assign(*this, nullptr, 0);
        return *this;
    }
    if (pLength < 0) {
        pLength = static_cast<int>(StrLen(pText));
    }
    const int needed = pLength > 0 ? cUtils::MultibyteLen(pCodePage, pText, pLength) : 0;
    if (needed <= 0) {
        Ops::Assign(*this, nullptr, 0);
        return *this;
    }
    cAStrBuff* fresh = Ops::NewBuff(needed + 1);
    const int written = cUtils::ToMultibyte(pCodePage, pText, pLength, fresh->mData, needed);
    fresh->mData[written] = 0;
    Ops::Switch(*this, fresh);
    mLength = written;
    return *this;
}

int cAString::Replace(const char* pFind, const char* pWith, int pStart, bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind, pWith, pStart, pCaseSensitive, false);
}

int cAString::Replace(const cAString& pFind, const cAString& pWith, int pStart,
                      bool pCaseSensitive) {
    return Ops::ReplaceAt(*this, pFind.Text(), pWith.Text(), pStart, pCaseSensitive, false);
}

int cAString::ReplaceAll(const char* pFind, const char* pWith, int pStart) {
    return Ops::ReplaceAt(*this, pFind, pWith, pStart, true, true);
}

int cAString::ReplaceAll(const cAString& pFind, const cAString& pWith, int pStart) {
    return Ops::ReplaceAt(*this, pFind.Text(), pWith.Text(), pStart, true, true);
}

int cAString::WideCharLength(unsigned int pCodePage) const {
    return (mLength > 0 ? cUtils::WideCharLen(pCodePage, mBuff->mData, mLength) : 0) + 1;
}

char16_t* cAString::AsWideChar(char16_t* pBuffer, int pSize, unsigned int pCodePage) const {
    if (pBuffer == nullptr || pSize == 0) {
        return pBuffer;
    }
    if (pSize < 0) {
        pSize = 0xFFFFFFF;
    }
    const int written =
        mLength > 0 ? cUtils::ToWideChar(pCodePage, mBuff->mData, mLength, pBuffer, pSize - 1) : 0;
    pBuffer[written] = 0;
    return pBuffer;
}

cString cAString::AsWideChar(unsigned int pCodePage) const {
    return cString(0, mBuff->mData, mLength, pCodePage);
}

} // namespace Quillanor::Common
