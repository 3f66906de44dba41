// UTF-8 to UTF-16 conversion against iconv, 1 MB of mostly ASCII text and of CJK text.
#include "Engine/Common/Base/Utils.h"

#include <benchmark/benchmark.h>

#include <iconv.h>
#include <string>
#include <vector>

using namespace Quillanor::Common;

namespace {

// About 1 MB of UTF-8: `cjk` false gives ASCII prose with an accented letter every 100
// characters, true gives three-byte CJK characters.
std::string MakeText(bool cjk) {
    std::string text;
    int i = 0;
    while (text.size() < (1u << 20)) {
        if (cjk) {
            const char32_t c = 0x4E00 + static_cast<char32_t>((i * 37) % 20000);
            text += static_cast<char>(0xE0 | (c >> 12));
            text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            text += static_cast<char>(0x80 | (c & 0x3F));
        } else if (i % 100 == 99) {
            text += "\xC3\xA9";
        } else {
            text += static_cast<char>(i % 13 == 0 ? ' ' : 'a' + i % 26);
        }
        ++i;
    }
    return text;
}

} // namespace

static void BM_Utils_Utf8ToUtf16(benchmark::State& state) {
    const std::string text = MakeText(state.range(0) != 0);
    std::vector<char16_t> out(text.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(cUtils::ToWideChar(65001, text.data(),
                                                    static_cast<int>(text.size()), out.data(),
                                                    static_cast<int>(out.size())));
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations()) *
                            static_cast<long long>(text.size()));
}
BENCHMARK(BM_Utils_Utf8ToUtf16)->Arg(0)->Arg(1);

static void BM_Iconv_Utf8ToUtf16(benchmark::State& state) {
    const std::string text = MakeText(state.range(0) != 0);
    std::vector<char16_t> out(text.size());
    iconv_t cd = iconv_open("UTF-16LE", "UTF-8");
    for (auto _ : state) {
        char* in = const_cast<char*>(text.data());
        std::size_t inLeft = text.size();
        char* o = reinterpret_cast<char*>(out.data());
        std::size_t outLeft = out.size() * 2;
        benchmark::DoNotOptimize(iconv(cd, &in, &inLeft, &o, &outLeft));
    }
    iconv_close(cd);
    state.SetBytesProcessed(static_cast<long long>(state.iterations()) *
                            static_cast<long long>(text.size()));
}
BENCHMARK(BM_Iconv_Utf8ToUtf16)->Arg(0)->Arg(1);
