// Buffer management and character helpers shared by the wide and the narrow string class.
// Only String.cpp and AString.cpp include this.
#pragma once

#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/Detail/TextSearch.h"
#include "Engine/Common/Base/Detail/TextSimd.h"
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace Quillanor::Common {

// Character functions by character type.
template <class C>
struct tChr;

template <>
struct tChr<char16_t> {
    static std::size_t Len(const char16_t* p) { return StrLen(p); }
    static const char16_t* Str(const char16_t* t, const char16_t* p) { return StrStr(t, p); }
    static const char16_t* IStr(const char16_t* t, const char16_t* p) { return StrIStr(t, p); }
    static int NCmp(const char16_t* a, const char16_t* b, std::size_t n) {
        return StrNCmp(a, b, n);
    }
    static int NICmp(const char16_t* a, const char16_t* b, std::size_t n) {
        return StrNICmp(a, b, n);
    }
    static char16_t Upper(char16_t c) { return ToUpper(c); }
    static char16_t Lower(char16_t c) { return ToLower(c); }
    static bool Space(char16_t c) { return IsSpace(c); }
    using Unit = unsigned short;
};

template <>
struct tChr<char> {
    static std::size_t Len(const char* p) { return std::strlen(p); }
    static const char* Str(const char* t, const char* p) { return std::strstr(t, p); }
    static const char* IStr(const char* t, const char* p) {
        return Detail::FindText(t, p, [](char c) { return ToUpperA(c); });
    }
    static int NCmp(const char* a, const char* b, std::size_t n) { return std::strncmp(a, b, n); }
    static int NICmp(const char* a, const char* b, std::size_t n) { return StrNICmpA(a, b, n); }
    static char Upper(char c) { return ToUpperA(c); }
    static char Lower(char c) { return ToLowerA(c); }
    static bool Space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
    using Unit = unsigned char;
};

// Case-insensitive comparison of `n` units at most, with the C semantics (stops at the first
// zero); both texts must be readable for `n` units.
template <class C>
int ICmpUnits(const C* a, const C* b, std::size_t n) {
    using U = typename tChr<C>::Unit;
    for (std::size_t i = 0; i < n; ++i) {
        U x = static_cast<U>(a[i]);
        U y = static_cast<U>(b[i]);
        if (x != y) {
            x = static_cast<U>(tChr<C>::Upper(static_cast<C>(x)));
            y = static_cast<U>(tChr<C>::Upper(static_cast<C>(y)));
            if (x != y) {
                return static_cast<int>(x) - static_cast<int>(y);
            }
        }
        if (x == 0) {
            return 0;
        }
    }
    return 1 << 30; // no decision within n units
}

// ICmpBounded of wide texts from `m`, the first unit that differs other than by ASCII case.
[[gnu::noinline]] inline int ICmpFromMismatch(const char16_t* a, const char16_t* b, std::size_t n,
                                              std::size_t m) {
    std::size_t i = 0;
    for (;;) {
        // A zero before the difference ends both texts there.
        if (m == n || Detail::HasZeroUnit(a + i, m - i)) {
            return 0;
        }
        const char16_t x = ToUpper(a[m]);
        const char16_t y = ToUpper(b[m]);
        if (x != y) {
            return static_cast<int>(x) - static_cast<int>(y);
        }
        if (x == 0) {
            return 0;
        }
        i = m + 1;
        m = i + Detail::AsciiFoldMismatch(a + i, b + i, n - i);
    }
}

// Case-insensitive comparison of two terminated texts with the C semantics, given that both
// are readable for `n` units. Wide texts are scanned by the vector kernel for the first unit
// that differs other than by ASCII case; only there (and only if no zero ended the texts
// before it) the full case rule decides.
template <class C>
int ICmpBounded(const C* a, const C* b, std::size_t n) {
    if constexpr (sizeof(C) == 2) {
        const std::size_t m = Detail::AsciiFoldMismatch(a, b, n);
        return m == n ? 0 : ICmpFromMismatch(a, b, n, m);
    } else {
        const int r = ICmpUnits(a, b, n);
        return r == (1 << 30) ? 0 : r;
    }
}

// Ordinal comparison with the C semantics for texts readable for `n` units.
template <class C>
int CmpBounded(const C* a, const C* b, std::size_t n) {
    using U = typename tChr<C>::Unit;
    for (std::size_t i = 0; i < n; ++i) {
        const U x = static_cast<U>(a[i]);
        const U y = static_cast<U>(b[i]);
        if (x != y) {
            return x < y ? -1 : 1;
        }
        if (x == 0) {
            return 0;
        }
    }
    return 0;
}

// Reference counting, unsharing and growth of one string class's buffers. The lock and the
// empty buffer are defined by each class's source file.
template <class S>
struct tStrOps {
    using C = typename S::Char;
    using B = std::remove_pointer_t<decltype(S::mBuff)>;

    static const cCriticalSection& Lock();
    static B* EmptyBuff();

    static B* NewBuff(int pSize) {
        void* memory = ::operator new(sizeof(B) + sizeof(C) * static_cast<std::size_t>(pSize));
        B* buff = static_cast<B*>(memory);
        buff->mData = reinterpret_cast<C*>(buff + 1);
        buff->mRefCount = 1;
        buff->mSize = pSize;
        buff->mData[0] = 0;
        return buff;
    }

    static void AddRef(B* pBuff) {
        cBlockLocker lock(Lock());
        ++pBuff->mRefCount;
    }

    static void Release(B* pBuff) {
        bool last;
        {
            cBlockLocker lock(Lock());
            last = --pBuff->mRefCount == 0;
        }
        // The empty buffer holds a permanent reference of its own; the test keeps the
        // compiler from seeing a path that frees static storage.
        if (last && pBuff != EmptyBuff()) {
            ::operator delete(pBuff);
        }
    }

    // Points `s` to `pBuff` (already counted for `s`) and drops the old buffer.
    static void Switch(S& s, B* pBuff) {
        B* old = s.mBuff;
        s.mBuff = pBuff;
        Release(old);
    }

    // Shares `pBuff` (counting it) instead of the current buffer, under one lock hold.
    static void Share(S& s, B* pBuff) {
        B* old = s.mBuff;
        bool last;
        {
            cBlockLocker lock(Lock());
            ++pBuff->mRefCount;
            last = --old->mRefCount == 0;
        }
        s.mBuff = pBuff;
        if (last && old != EmptyBuff()) {
            ::operator delete(old);
        }
    }

    static bool IsShared(const S& s) {
        cBlockLocker lock(Lock());
        return s.mBuff->mRefCount != 1;
    }

    // Makes the buffer exclusively owned (same capacity) and returns its text.
    static C* Unshare(S& s) {
        if (!IsShared(s)) {
            return s.mBuff->mData;
        }
        B* fresh = NewBuff(s.mBuff->mSize);
        std::memcpy(fresh->mData, s.mBuff->mData,
                    sizeof(C) * (static_cast<std::size_t>(s.mLength) + 1));
        Switch(s, fresh);
        return fresh->mData;
    }

    // Exclusive buffer able to hold `pLength` characters; grows to exactly pLength + 1.
    static C* Reserve(S& s, int pLength) {
        if (pLength < s.mBuff->mSize) {
            return Unshare(s);
        }
        B* fresh = NewBuff(pLength + 1);
        std::memcpy(fresh->mData, s.mBuff->mData,
                    sizeof(C) * (static_cast<std::size_t>(s.mLength) + 1));
        Switch(s, fresh);
        return fresh->mData;
    }

    // Replaces the characters [pPos, pPos + pRemove) by `pText` (pLength characters).
    // Arguments are within range; `pText` may point into this string's own buffer.
    static void Splice(S& s, int pPos, int pRemove, const C* pText, int pLength) {
        const int length = s.mLength;
        const int newLength = length - pRemove + pLength;
        const int tail = length - pPos - pRemove;
        B* buff = s.mBuff;
        if (newLength >= buff->mSize) {
            B* fresh = NewBuff(newLength + 1);
            C* d = fresh->mData;
            std::memcpy(d, buff->mData, sizeof(C) * static_cast<std::size_t>(pPos));
            std::memcpy(d + pPos, pText, sizeof(C) * static_cast<std::size_t>(pLength));
            std::memcpy(d + pPos + pLength, buff->mData + pPos + pRemove,
                        sizeof(C) * (static_cast<std::size_t>(tail) + 1));
            Switch(s, fresh);
            s.mLength = newLength;
            return;
        }
        std::unique_ptr<C[]> copy;
        if (pLength > 0 && pText >= buff->mData && pText < buff->mData + buff->mSize) {
            copy.reset(new C[static_cast<std::size_t>(pLength)]);
            std::memcpy(copy.get(), pText, sizeof(C) * static_cast<std::size_t>(pLength));
            pText = copy.get();
        }
        C* d = Unshare(s);
        if (pLength != pRemove) {
            std::memmove(d + pPos + pLength, d + pPos + pRemove,
                         sizeof(C) * (static_cast<std::size_t>(tail) + 1));
        }
        std::memcpy(d + pPos, pText, sizeof(C) * static_cast<std::size_t>(pLength));
        s.mLength = newLength;
    }

    // Replaces the content by `pText` (pLength characters, may alias the current buffer).
    static void Assign(S& s, const C* pText, int pLength) {
        if (pLength <= 0 || pText == nullptr) {
            if (s.mLength != 0) {
                C* d = Unshare(s);
                d[0] = 0;
                s.mLength = 0;
            }
            return;
        }
        Splice(s, 0, s.mLength, pText, pLength);
    }

    static int Find(const S& s, const C* pText, int pStart, bool pCaseSensitive) {
        if (pText == nullptr || *pText == 0) {
            return -1;
        }
        if (pStart < 0) {
            pStart = 0;
        }
        if (pStart >= s.mLength) {
            return -1;
        }
        const C* data = s.mBuff->mData;
        const C* hit = pCaseSensitive ? tChr<C>::Str(data + pStart, pText)
                                      : tChr<C>::IStr(data + pStart, pText);
        return hit == nullptr ? -1 : static_cast<int>(hit - data);
    }

    static int ReplaceAt(S& s, const C* pFind, const C* pWith, int pStart, bool pCaseSensitive,
                         bool pAll) {
        if (pStart < 0) {
            pStart = 0;
        }
        if (pFind == nullptr || *pFind == 0 || pStart > s.mLength) {
            return pAll ? 0 : -1;
        }
        if (pWith == nullptr) {
            pWith = s.mBuff->mData + s.mLength; // an empty text
        }
        const int findLength = static_cast<int>(tChr<C>::Len(pFind));
        const int withLength = static_cast<int>(tChr<C>::Len(pWith));
        // The arguments may point into this string; keep them stable while it changes.
        std::unique_ptr<C[]> copy;
        const C* data = s.mBuff->mData;
        const auto inside = [&](const C* p) { return p >= data && p < data + s.mBuff->mSize; };
        if (inside(pFind) || inside(pWith)) {
            copy.reset(new C[static_cast<std::size_t>(findLength + withLength + 2)]);
            std::memcpy(copy.get(), pFind, sizeof(C) * (static_cast<std::size_t>(findLength) + 1));
            std::memcpy(copy.get() + findLength + 1, pWith,
                        sizeof(C) * (static_cast<std::size_t>(withLength) + 1));
            pFind = copy.get();
            pWith = copy.get() + findLength + 1;
        }
        int count = 0;
        int position = pStart;
        while (s.mLength - position >= findLength) {
            const int hit = Find(s, pFind, position, pCaseSensitive);
            if (hit < 0) {
                break;
            }
            Splice(s, hit, findLength, pWith, withLength);
            if (!pAll) {
                return hit;
            }
            ++count;
            position = hit + withLength;
        }
        return pAll ? count : -1;
    }

    // The text between the first `pDelimiter` at or after `pStart` and the next one.
    static S SubStrDelimited(const S& s, const C* pDelimiter, int pStart, int* pEnd) {
        if (pEnd != nullptr) {
            *pEnd = s.mLength;
        }
        const int first = Find(s, pDelimiter, pStart, false);
        if (first < 0) {
            return S();
        }
        const int delimiterLength = static_cast<int>(tChr<C>::Len(pDelimiter));
        const int begin = first + delimiterLength;
        const int second = Find(s, pDelimiter, begin, false);
        if (second < 0) {
            return S(s.mBuff->mData + begin, s.mLength - begin);
        }
        if (pEnd != nullptr) {
            *pEnd = second + delimiterLength;
        }
        return S(s.mBuff->mData + begin, second - begin);
    }

    static S Concat(const C* a, int aLength, const C* b, int bLength) {
        const int length = aLength + bLength;
        S result;
        if (length == 0) {
            return result;
        }
        B* buff = NewBuff(length + 1);
        std::memcpy(buff->mData, a, sizeof(C) * static_cast<std::size_t>(aLength));
        std::memcpy(buff->mData + aLength, b, sizeof(C) * static_cast<std::size_t>(bLength));
        buff->mData[length] = 0;
        Switch(result, buff);
        result.mLength = length;
        return result;
    }
};

} // namespace Quillanor::Common
