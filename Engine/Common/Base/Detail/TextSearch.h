// The plain substring search behind StrStr, StrIStr and the narrow case-insensitive search.
#pragma once

namespace Quillanor::Common::Detail {

// First place in `text` where `pattern` stands, comparing units after `fold` (the identity,
// or a case mapping); `text` itself for an empty pattern, null when there is none.
template <class C, class tFold>
const C* FindText(const C* text, const C* pattern, tFold fold) {
    if (*pattern == 0) {
        return text;
    }
    const C first = fold(*pattern);
    for (; *text != 0; ++text) {
        if (fold(*text) != first) {
            continue;
        }
        const C* t = text + 1;
        const C* p = pattern + 1;
        while (*p != 0 && (*t == *p || fold(*t) == fold(*p))) {
            ++t;
            ++p;
        }
        if (*p == 0) {
            return text;
        }
        if (*t == 0) {
            return nullptr; // the text ended inside a partial match: no later start fits
        }
    }
    return nullptr;
}

} // namespace Quillanor::Common::Detail
