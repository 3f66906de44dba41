// Strings and formatting against the standard library: copies, case-insensitive comparison
// and search, printf-style formatting.
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Base/Utils.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>

using namespace Quillanor::Common;

namespace {

// Pseudo-random lower-case letters (no short period, so a needle taken from the end is
// found only there).
std::u16string AsciiText(int length, unsigned seed) {
    std::u16string text;
    unsigned state = seed * 2654435761u + 1;
    for (int i = 0; i < length; ++i) {
        state = state * 1664525u + 1013904223u;
        text += static_cast<char16_t>(u'a' + (state >> 16) % 26);
    }
    return text;
}

} // namespace

static void BM_String_Copy(benchmark::State& state) {
    const std::u16string text = AsciiText(static_cast<int>(state.range(0)), 1);
    const cString source(text.c_str());
    for (auto _ : state) {
        cString copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_String_Copy)->Arg(16)->Arg(1000);

static void BM_StdU16String_Copy(benchmark::State& state) {
    const std::u16string source = AsciiText(static_cast<int>(state.range(0)), 1);
    for (auto _ : state) {
        std::u16string copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_StdU16String_Copy)->Arg(16)->Arg(1000);

// Equal texts in separate buffers, differing in case in the first character.
static void BM_String_EqualsIgnoringCase(benchmark::State& state) {
    std::u16string text = AsciiText(static_cast<int>(state.range(0)), 2);
    const cString a(text.c_str());
    text[0] = static_cast<char16_t>(text[0] - 32);
    const cString b(text.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
    }
}
BENCHMARK(BM_String_EqualsIgnoringCase)->Arg(16)->Arg(1000);

// Equal texts with the same case, in separate buffers.
static void BM_String_EqualsIgnoringCaseSameCase(benchmark::State& state) {
    const std::u16string text = AsciiText(static_cast<int>(state.range(0)), 2);
    const cString a(text.c_str());
    const cString b(text.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
    }
}
BENCHMARK(BM_String_EqualsIgnoringCaseSameCase)->Arg(16)->Arg(1000);

static void BM_Memcmp_Equals(benchmark::State& state) {
    const std::u16string a = AsciiText(static_cast<int>(state.range(0)), 2);
    const std::u16string b = a;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.size() == b.size() &&
                                 std::memcmp(a.data(), b.data(), a.size() * 2) == 0);
    }
}
BENCHMARK(BM_Memcmp_Equals)->Arg(16)->Arg(1000);

// A needle found at the end of a 1000-character text.
static void BM_String_FindIgnoringCase(benchmark::State& state) {
    std::u16string text = AsciiText(1000, 3);
    const std::u16string needle = text.substr(990);
    text[0] = u'Z';
    const cString haystack(text.c_str());
    std::u16string upperNeedle = needle;
    for (char16_t& c : upperNeedle) {
        c = static_cast<char16_t>(c - 32);
    }
    if (haystack.Find(upperNeedle.c_str()) != 990) {
        state.SkipWithError("needle not found at its place");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(haystack.Find(upperNeedle.c_str()));
    }
}
BENCHMARK(BM_String_FindIgnoringCase);

static void BM_String_FindCaseSensitive(benchmark::State& state) {
    const std::u16string text = AsciiText(1000, 3);
    const std::u16string needle = text.substr(990);
    const cString haystack(text.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(haystack.FindCS(needle.c_str()));
    }
}
BENCHMARK(BM_String_FindCaseSensitive);

static void BM_StdU16String_Find(benchmark::State& state) {
    const std::u16string text = AsciiText(1000, 3);
    const std::u16string needle = text.substr(990);
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.find(needle));
    }
}
BENCHMARK(BM_StdU16String_Find);

static void BM_Utils_FmtStr(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(cUtils::FmtStr(u"%s %d %g", u"value", 12345, 3.25));
    }
}
BENCHMARK(BM_Utils_FmtStr);

static void BM_Utils_FmtStrA(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(cUtils::FmtStrA("%s %d %g", "value", 12345, 3.25));
    }
}
BENCHMARK(BM_Utils_FmtStrA);

static void BM_Snprintf(benchmark::State& state) {
    char buffer[1024];
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            std::snprintf(buffer, sizeof(buffer), "%s %d %g", "value", 12345, 3.25));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Snprintf);
