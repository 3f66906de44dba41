// The library's string types: cString (UTF-16 code units, char16_t) and cAString (8-bit).
//
// Both are value types over a shared, reference-counted buffer (cStrBuff / cAStrBuff) with
// copy-on-write: a copy shares the buffer and only bumps its count; a writer whose buffer is
// shared first makes its own copy. Counts of wide buffers change only under one process-wide
// lock, those of narrow buffers under a second one. Default-constructed and Reset strings
// share one never-freed empty buffer per class.
//
// Capacity grows exactly: a text that outgrows its buffer is moved to a buffer of exactly
// length + 1 characters, never more. Build long texts after reserving with cString(int) or
// SetSize.
//
// Case rule: ==, !=, <, <=, >, >=, Compare, Find, Contains, StartsWith and EndsWith ignore
// case (Char16.h's ToUpper for wide, ASCII for narrow); Equals, CompareCS, FindCS and
// ContainsCS do not. Out-of-range positions are clamped as each member says; only the
// documented assertions are fatal.
//
// Thread-safety: one string object is not thread-safe, but strings sharing a buffer may be
// read, copied and destroyed on different threads.
//
// Code pages are Windows numbers: 0 (the ANSI code page, UTF-8 on POSIX), 65001 UTF-8,
// 1200 UTF-16LE, others as cUtils::ToWideChar / ToMultibyte support them.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Array.h"

#include <climits>

namespace Quillanor::Common {

class cString;
class cAString;
using cStringArray = tArray<cString>;
using cAStringArray = tArray<cAString>;

// Heap block shared between wide strings: count and capacity, text stored after the header.
struct cStrBuff {
    char16_t* mData; // always zero-terminated
    int mRefCount;   // number of cString objects pointing here
    int mSize;       // capacity in characters, terminator included; at least 1
};

// The narrow twin of cStrBuff.
struct cAStrBuff {
    char* mData;
    int mRefCount;
    int mSize;
};

// UTF-16 string with shared copy-on-write buffer (see the file comment).
class QC_API cString {
public:
    using Char = char16_t;

    cString();
    cString(char16_t pChar, int pCount);
    cString(const char16_t* pText);
    // Copies `pLength` characters (a null text gives an empty string; a negative length
    // counts as 0).
    cString(const char16_t* pText, int pLength);
    // Empty string with a buffer of `pSize` characters capacity; "pSize >= 8".
    explicit cString(int pSize);
    // Converts narrow text from `pCodePage`; `pTag` only selects this overload. A negative
    // length converts up to the terminator.
    cString(int pTag, const char* pText, int pLength, unsigned int pCodePage);
    cString(const cString& pOther);
    cString(cString&& pOther) noexcept;
    ~cString();

    cString& operator=(const cString& pOther);
    cString& operator=(cString&& pOther) noexcept;
    cString& operator=(char16_t pChar);
    cString& operator=(const char16_t* pText);
    cString& Set(char16_t pChar, int pCount);
    cString& Set(const char16_t* pText, int pLength);
    // The first `pLength` characters of `pSource` (all of it when longer or negative).
    cString& Set(const cString& pSource, int pLength);
    cString& Set(int pTag, const char* pText, int pLength, unsigned int pCodePage);

    // ---- size and access ----
    int Length() const { return mLength; }
    // Capacity in characters, terminator included.
    int Size() const { return mBuff->mSize; }
    bool operator!() const { return mLength == 0; }
    operator const char16_t*() const { return mBuff->mData; }
    // The text, never null.
    const char16_t* Text() const { return mBuff->mData; }
    char16_t operator[](int pIdx) const;
    void SetChar(int pIdx, char16_t pChar);
    // Unshares and returns the text for writing in place; keep the length with SetLength.
    char16_t* GetWritable();
    // Growing pads with spaces (not zeros); "pNewLength >= 0".
    void SetLength(int pNewLength);
    // Reallocates to exactly `pNewSize` characters, cutting the text if needed; "pNewSize > 0".
    void SetSize(int pNewSize);
    // Length 0, keeping the capacity.
    void Clear();
    // Back to the shared empty buffer.
    void Reset();
    static const cString& Empty();

    // ---- appending and editing ----
    cString& operator<<(const char16_t* pText);
    cString& operator<<(const cString& pText);
    cString& Append(const cString& pText);
    cString& Append(const char16_t* pText, int pLength);
    // Appends one character; a zero character appends nothing.
    cString& operator+=(char16_t pChar);
    cString& operator+=(const char16_t* pText) { return *this << pText; }
    cString& operator+=(const cString& pText) { return Append(pText); }
    // Prepend: -= inserts at position 0.
    cString& operator-=(char16_t pChar);
    cString& operator-=(const char16_t* pText);
    cString& operator-=(const cString& pText);
    // A position at or past the end appends; a negative one counts as 0.
    cString& Insert(const char16_t* pText, int pLength, int pPosition);
    cString& Insert(const char16_t* pText, int pPosition);
    cString& Insert(const cString& pText, int pPosition);
    // Removes up to `pCount` characters from `pStart` (clamped).
    cString& Remove(int pStart, int pCount);
    // Removes the last `pCount` characters; at or above the length clears.
    cString& RemoveFromEnd(int pCount);
    cString& Fill(char16_t pChar);
    cString& TrimLeft();
    cString& TrimRight();
    cString& Trim();
    cString& ToLower();
    cString& ToUpper();
    // Replaces the first occurrence at or after `pStart`; returns its index or -1.
    // A null `pWith` counts as empty.
    int Replace(const char16_t* pFind, const char16_t* pWith, int pStart = 0,
                bool pCaseSensitive = true);
    int Replace(const cString& pFind, const cString& pWith, int pStart = 0,
                bool pCaseSensitive = true);
    // Replaces every occurrence from `pStart` on, never inside an inserted replacement;
    // returns the count.
    int ReplaceAll(const char16_t* pFind, const char16_t* pWith, int pStart = 0,
                   bool pCaseSensitive = true);
    int ReplaceAll(const cString& pFind, const cString& pWith, int pStart = 0,
                   bool pCaseSensitive = true);

    // ---- comparison ----
    // Case-insensitive; a null text counts as empty: 1 if this is non-empty, else 0.
    int Compare(const char16_t* pText) const;
    int Compare(const cString& pText) const;
    // Case-sensitive equality (a null text equals the empty string).
    bool Equals(const char16_t* pText) const;
    bool Equals(const cString& pText) const;
    // Case-sensitive ordinal comparison: -1, 0 or 1.
    int CompareCS(const char16_t* pText) const;
    int CompareCS(const cString& pText) const;
    // Null or empty texts always match; a text longer than this string never does.
    bool CheckPrefix(const char16_t* pText, bool pCaseSensitive = true) const;
    bool CheckPostfix(const char16_t* pText, bool pCaseSensitive = true) const;
    // Case-insensitive prefix and suffix tests.
    bool StartsWith(const char16_t* pText) const;
    bool EndsWith(const char16_t* pText) const;
    // Index of the first occurrence at or after `pStart` (negative counts as 0), or -1 for a
    // null or empty needle, a start past the end or no match. Find ignores case.
    int Find(const char16_t* pText, int pStart = 0) const;
    int Find(const cString& pText, int pStart = 0) const;
    int FindCS(const char16_t* pText, int pStart = 0) const;
    int FindCS(const cString& pText, int pStart = 0) const;
    bool Contains(const char16_t* pText) const { return Find(pText) >= 0; }
    bool Contains(const cString& pText) const { return Find(pText) >= 0; }
    bool ContainsCS(const char16_t* pText) const { return FindCS(pText) >= 0; }
    bool ContainsCS(const cString& pText) const { return FindCS(pText) >= 0; }
    // Case-sensitive character search; a zero character gives -1.
    int CharIdx(char16_t pChar, int pStart = 0) const;
    int CharLastIdx(char16_t pChar) const;

    // ---- substrings ----
    // Characters from `pStart`, at most `pCount`; a negative start shortens the count.
    cString SubStr(int pStart, int pCount) const;
    cString operator()(int pStart, int pCount) const { return SubStr(pStart, pCount); }
    cString Left(int pCount) const;
    cString Right(int pCount) const;
    // Assign a piece of `pSource` to this string.
    cString& SubStr(const cString& pSource, int pStart, int pCount);
    cString& Left(const cString& pSource, int pCount);
    cString& Right(const cString& pSource, int pCount);
    // The text between the first `pDelimiter` (case-insensitive) at or after `pStart` and
    // the next one (or the end); `*pEnd` gets the index after the second delimiter, or the
    // length. Empty with `*pEnd` = length when the delimiter is not found.
    cString SubStr(const char16_t* pDelimiter, int pStart, int* pEnd = nullptr) const;

    // ---- splitting and joining ----
    // Splits at any character of `pSeparators` into `pOut` (cleared first); the piece number
    // `pMaxCount` takes the whole rest. Empty pieces are skipped with `pSkipEmpty`; pieces are
    // trimmed with `pTrim` (one that trims to empty is kept). Returns the piece count; 0 for
    // null or empty separators or pMaxCount < 1. An empty string gives one empty piece.
    int Split(cStringArray& pOut, const char16_t* pSeparators, bool pSkipEmpty = false,
              bool pTrim = false, int pMaxCount = INT_MAX) const;
    // Clears, then appends the items with `pSeparator` (may be null) between them.
    void Join(const cStringArray& pItems, const char16_t* pSeparator);

    // ---- code pages ----
    // Bytes needed for the text in `pCodePage`, terminator included.
    int AnsiLength(unsigned int pCodePage = 0) const;
    // Converts into `pBuffer` (terminated); a negative size means unbounded.
    char* AsAnsi(char* pBuffer, int pSize, unsigned int pCodePage = 0) const;
    cAString AsAnsi(unsigned int pCodePage = 0) const;

private:
    struct sEmptyTag {};
    constexpr explicit cString(sEmptyTag, cStrBuff* pBuff) : mBuff(pBuff), mLength(0) {}
    template <class S>
    friend struct tStrOps;

    cStrBuff* mBuff;
    int mLength;

    static const cString sEmpty;
};

QC_API cString operator+(const cString& pLeft, const cString& pRight);
QC_API cString operator+(const cString& pLeft, const char16_t* pRight);
QC_API cString operator+(const char16_t* pLeft, const cString& pRight);

// Case-insensitive comparisons; a null text counts as empty.
inline bool operator==(const cString& a, const cString& b) {
    return a.Compare(b) == 0;
}
inline bool operator==(const cString& a, const char16_t* b) {
    return a.Compare(b) == 0;
}
inline bool operator!=(const cString& a, const cString& b) {
    return a.Compare(b) != 0;
}
inline bool operator!=(const cString& a, const char16_t* b) {
    return a.Compare(b) != 0;
}
inline bool operator<(const cString& a, const cString& b) {
    return a.Compare(b) < 0;
}
inline bool operator<(const cString& a, const char16_t* b) {
    return a.Compare(b) < 0;
}
inline bool operator<=(const cString& a, const cString& b) {
    return a.Compare(b) <= 0;
}
inline bool operator<=(const cString& a, const char16_t* b) {
    return a.Compare(b) <= 0;
}
inline bool operator>(const cString& a, const cString& b) {
    return a.Compare(b) > 0;
}
inline bool operator>(const cString& a, const char16_t* b) {
    return a.Compare(b) > 0;
}
inline bool operator>=(const cString& a, const cString& b) {
    return a.Compare(b) >= 0;
}
inline bool operator>=(const cString& a, const char16_t* b) {
    return a.Compare(b) >= 0;
}
inline bool operator<(const char16_t* a, const cString& b) {
    return b.Compare(a) > 0;
}
inline bool operator<=(const char16_t* a, const cString& b) {
    return b.Compare(a) >= 0;
}
inline bool operator>(const char16_t* a, const cString& b) {
    return b.Compare(a) < 0;
}
inline bool operator>=(const char16_t* a, const cString& b) {
    return b.Compare(a) <= 0;
}

// 8-bit string with shared copy-on-write buffer: cString's twin with char. Its case rule is
// ASCII-only, and its ReplaceAll is always case-sensitive.
class QC_API cAString {
public:
    using Char = char;

    cAString();
    cAString(char pChar, int pCount);
    cAString(const char* pText);
    cAString(const char* pText, int pLength);
    // "pSize >= 8".
    explicit cAString(int pSize);
    // Converts wide text to `pCodePage`; a negative length converts up to the terminator.
    cAString(int pTag, const char16_t* pText, int pLength, unsigned int pCodePage);
    cAString(const cAString& pOther);
    cAString(cAString&& pOther) noexcept;
    ~cAString();

    cAString& operator=(const cAString& pOther);
    cAString& operator=(cAString&& pOther) noexcept;
    cAString& operator=(char pChar);
    cAString& operator=(const char* pText);
    cAString& Set(char pChar, int pCount);
    cAString& Set(const char* pText, int pLength);
    cAString& Set(const cAString& pSource, int pLength);
    cAString& Set(int pTag, const char16_t* pText, int pLength, unsigned int pCodePage);

    int Length() const { return mLength; }
    int Size() const { return mBuff->mSize; }
    bool operator!() const { return mLength == 0; }
    operator const char*() const { return mBuff->mData; }
    const char* Text() const { return mBuff->mData; }
    char operator[](int pIdx) const;
    void SetChar(int pIdx, char pChar);
    char* GetWritable();
    void SetLength(int pNewLength);
    void SetSize(int pNewSize);
    void Clear();
    void Reset();
    static const cAString& Empty();

    cAString& operator<<(const char* pText);
    cAString& operator<<(const cAString& pText);
    cAString& Append(const cAString& pText);
    cAString& Append(const char* pText, int pLength);
    cAString& operator+=(char pChar);
    cAString& operator+=(const char* pText) { return *this << pText; }
    cAString& operator+=(const cAString& pText) { return Append(pText); }
    cAString& operator-=(char pChar);
    cAString& operator-=(const char* pText);
    cAString& operator-=(const cAString& pText);
    cAString& Insert(const char* pText, int pLength, int pPosition);
    cAString& Insert(const char* pText, int pPosition);
    cAString& Insert(const cAString& pText, int pPosition);
    cAString& Remove(int pStart, int pCount);
    cAString& RemoveFromEnd(int pCount);
    cAString& Fill(char pChar);
    cAString& TrimLeft();
    cAString& TrimRight();
    cAString& Trim();
    cAString& ToLower();
    cAString& ToUpper();
    int Replace(const char* pFind, const char* pWith, int pStart = 0, bool pCaseSensitive = true);
    int Replace(const cAString& pFind, const cAString& pWith, int pStart = 0,
                bool pCaseSensitive = true);
    // Always case-sensitive.
    int ReplaceAll(const char* pFind, const char* pWith, int pStart = 0);
    int ReplaceAll(const cAString& pFind, const cAString& pWith, int pStart = 0);

    int Compare(const char* pText) const;
    int Compare(const cAString& pText) const;
    bool Equals(const char* pText) const;
    bool Equals(const cAString& pText) const;
    int CompareCS(const char* pText) const;
    int CompareCS(const cAString& pText) const;
    bool CheckPrefix(const char* pText, bool pCaseSensitive = true) const;
    bool CheckPostfix(const char* pText, bool pCaseSensitive = true) const;
    bool StartsWith(const char* pText) const;
    bool EndsWith(const char* pText) const;
    int Find(const char* pText, int pStart = 0) const;
    int Find(const cAString& pText, int pStart = 0) const;
    int FindCS(const char* pText, int pStart = 0) const;
    int FindCS(const cAString& pText, int pStart = 0) const;
    bool Contains(const char* pText) const { return Find(pText) >= 0; }
    bool Contains(const cAString& pText) const { return Find(pText) >= 0; }
    bool ContainsCS(const char* pText) const { return FindCS(pText) >= 0; }
    bool ContainsCS(const cAString& pText) const { return FindCS(pText) >= 0; }
    int CharIdx(char pChar, int pStart = 0) const;
    int CharLastIdx(char pChar) const;

    cAString SubStr(int pStart, int pCount) const;
    cAString operator()(int pStart, int pCount) const { return SubStr(pStart, pCount); }
    cAString Left(int pCount) const;
    cAString Right(int pCount) const;
    cAString& SubStr(const cAString& pSource, int pStart, int pCount);
    cAString& Left(const cAString& pSource, int pCount);
    cAString& Right(const cAString& pSource, int pCount);
    cAString SubStr(const char* pDelimiter, int pStart, int* pEnd = nullptr) const;

    int Split(cAStringArray& pOut, const char* pSeparators, bool pSkipEmpty = false,
              bool pTrim = false, int pMaxCount = INT_MAX) const;
    void Join(const cAStringArray& pItems, const char* pSeparator);

    // UTF-16 code units needed for the text of `pCodePage`, terminator included.
    int WideCharLength(unsigned int pCodePage = 0) const;
    // Converts into `pBuffer` (terminated); a negative size means unbounded.
    char16_t* AsWideChar(char16_t* pBuffer, int pSize, unsigned int pCodePage = 0) const;
    cString AsWideChar(unsigned int pCodePage = 0) const;

private:
    struct sEmptyTag {};
    constexpr explicit cAString(sEmptyTag, cAStrBuff* pBuff) : mBuff(pBuff), mLength(0) {}
    template <class S>
    friend struct tStrOps;

    cAStrBuff* mBuff;
    int mLength;

    static const cAString sEmpty;
};

QC_API cAString operator+(const cAString& pLeft, const cAString& pRight);
QC_API cAString operator+(const cAString& pLeft, const char* pRight);
QC_API cAString operator+(const char* pLeft, const cAString& pRight);

inline bool operator==(const cAString& a, const cAString& b) {
    return a.Compare(b) == 0;
}
inline bool operator==(const cAString& a, const char* b) {
    return a.Compare(b) == 0;
}
inline bool operator!=(const cAString& a, const cAString& b) {
    return a.Compare(b) != 0;
}
inline bool operator!=(const cAString& a, const char* b) {
    return a.Compare(b) != 0;
}
inline bool operator<(const cAString& a, const cAString& b) {
    return a.Compare(b) < 0;
}
inline bool operator<(const cAString& a, const char* b) {
    return a.Compare(b) < 0;
}
inline bool operator<=(const cAString& a, const cAString& b) {
    return a.Compare(b) <= 0;
}
inline bool operator<=(const cAString& a, const char* b) {
    return a.Compare(b) <= 0;
}
inline bool operator>(const cAString& a, const cAString& b) {
    return a.Compare(b) > 0;
}
inline bool operator>(const cAString& a, const char* b) {
    return a.Compare(b) > 0;
}
inline bool operator>=(const cAString& a, const cAString& b) {
    return a.Compare(b) >= 0;
}
inline bool operator>=(const cAString& a, const char* b) {
    return a.Compare(b) >= 0;
}
inline bool operator<(const char* a, const cAString& b) {
    return b.Compare(a) > 0;
}
inline bool operator<=(const char* a, const cAString& b) {
    return b.Compare(a) >= 0;
}
inline bool operator>(const char* a, const cAString& b) {
    return b.Compare(a) < 0;
}
inline bool operator>=(const char* a, const cAString& b) {
    return b.Compare(a) <= 0;
}

} // namespace Quillanor::Common
