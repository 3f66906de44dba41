// cHash: the library's 32-bit hashes, used to pick dictionary buckets; cHashable: the
// interface of objects that hash themselves.
//
// The text hash ignores case with the library's one case rule (Char16.h's ToUpper for wide
// text, ASCII for narrow), so it agrees with cString's case-insensitive equality: keys equal
// ignoring case hash alike. Long texts are sampled: texts below 64 characters use every
// character, longer ones every 3rd, 5th... (step (length | 32) >> 5). All static and
// thread-safe.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/String.h"

#include <cstring>

namespace Quillanor::Common {

class QC_API cHashable {
public:
    virtual unsigned int GetHash() const = 0;
    virtual ~cHashable();
};

class QC_API cHash {
public:
    // A null text hashes like the empty text, to 0.
    static unsigned int Get(const char16_t* pText) {
        return pText != nullptr ? Get(pText, static_cast<int>(StrLen(pText))) : 0u;
    }
    static unsigned int Get(const char* pText) {
        return pText != nullptr ? Get(pText, static_cast<int>(std::strlen(pText))) : 0u;
    }
    static unsigned int Get(const cString& pText) { return Get(pText.Text(), pText.Length()); }
    static unsigned int Get(const cAString& pText) { return Get(pText.Text(), pText.Length()); }
    static unsigned int Get(const char16_t* pText, int pLength) {
        return Sampled(pText, pLength, [](char16_t c) { return unsigned(ToUpper(c)); });
    }
    static unsigned int Get(const char* pText, int pLength) {
        return Sampled(pText, pLength,
                       [](char c) { return unsigned(static_cast<unsigned char>(ToUpperA(c))); });
    }
    // pValue * 11, wrapping.
    static unsigned int Get(int pValue) { return static_cast<unsigned int>(pValue) * 11u; }
    static unsigned int Get(const cHashable& pObject) { return pObject.GetHash(); }

private:
    template <typename C, typename Upper>
    static unsigned int Sampled(const C* pText, int pLength, Upper pUpper) {
        unsigned int h = static_cast<unsigned int>(pLength);
        const int step = (pLength | 32) >> 5;
        for (int remaining = pLength; remaining >= step; remaining -= step, pText += step) {
            h ^= (h << 5) + (h >> 2) + pUpper(*pText);
        }
        return h;
    }
};

} // namespace Quillanor::Common
