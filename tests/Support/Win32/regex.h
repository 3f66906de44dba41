// POSIX <regex.h> for GoogleTest on Windows, on top of std::regex (POSIX extended grammar).
//
// GoogleTest's own Windows regex engine understands only a small subset (no brackets, no
// groups, '.' never matches a line break), so death-test patterns written for Linux would not
// match there. Building GoogleTest with GTEST_HAS_POSIX_RE=1 and this header on its include
// path gives the Windows test programs the same POSIX extended regular expressions as Linux.
// Only what GoogleTest uses is provided: regcomp, regexec (match or no match), regfree.
#pragma once

#include <cstddef>
#include <regex>

#define REG_EXTENDED 1
#define REG_NOSUB 2
#define REG_NOMATCH 1
#define REG_BADPAT 2

typedef std::ptrdiff_t regoff_t;

struct regmatch_t {
    regoff_t rm_so;
    regoff_t rm_eo;
};

struct regex_t {
    std::size_t re_nsub;
    std::regex* impl;
};

inline int regcomp(regex_t* preg, const char* pattern, int /*cflags*/) {
    preg->re_nsub = 0;
    preg->impl = nullptr;
    try {
        preg->impl = new std::regex(pattern, std::regex::extended);
        preg->re_nsub = preg->impl->mark_count();
        return 0;
    } catch (const std::exception&) {
        return REG_BADPAT;
    }
}

inline int regexec(const regex_t* preg, const char* string, std::size_t nmatch, regmatch_t* pmatch,
                   int /*eflags*/) {
    std::cmatch m;
    if (preg->impl == nullptr || !std::regex_search(string, m, *preg->impl)) {
        return REG_NOMATCH;
    }
    if (nmatch > 0 && pmatch != nullptr) {
        pmatch[0].rm_so = m.position(0);
        pmatch[0].rm_eo = m.position(0) + m.length(0);
        for (std::size_t i = 1; i < nmatch; ++i) {
            pmatch[i].rm_so = pmatch[i].rm_eo = -1;
        }
    }
    return 0;
}

inline void regfree(regex_t* preg) {
    delete preg->impl;
    preg->impl = nullptr;
}
