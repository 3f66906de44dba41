// tDictionary against std::unordered_map with a case-insensitive hash and equality, and
// tArray append against std::vector.
#include "Engine/Common/Base/Array.h"
#include "Engine/Common/Base/Char16.h"
#include "Engine/Common/Base/Dictionary.h"
#include "Engine/Common/Base/String.h"

#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace qc = Quillanor::Common;

namespace {

struct CaseInsensitiveHash {
    std::size_t operator()(const std::u16string& s) const {
        std::size_t h = 1469598103934665603ull;
        for (char16_t c : s) {
            h = (h ^ qc::ToUpper(c)) * 1099511628211ull;
        }
        return h;
    }
};

struct CaseInsensitiveEqual {
    bool operator()(const std::u16string& a, const std::u16string& b) const {
        if (a.size() != b.size()) {
            return false;
        }
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (a[i] != b[i] && qc::ToUpper(a[i]) != qc::ToUpper(b[i])) {
                return false;
            }
        }
        return true;
    }
};

using StdMap = std::unordered_map<std::u16string, int, CaseInsensitiveHash, CaseInsensitiveEqual>;
using Dict = qc::tDictionary<qc::cString, int, 255, qc::cAllocator>;

// Key names like those of a settings document.
std::vector<std::u16string> KeyTexts(int n) {
    static const char16_t* const stems[] = {u"width",    u"height",  u"frameRate", u"name",
                                            u"position", u"opacity", u"blendMode", u"source"};
    std::vector<std::u16string> keys;
    for (int i = 0; i < n; ++i) {
        std::u16string k = stems[i % 8];
        const std::string num = std::to_string(i / 8);
        k.append(num.begin(), num.end());
        keys.push_back(k);
    }
    return keys;
}

std::vector<qc::cString> ToStrings(const std::vector<std::u16string>& texts) {
    std::vector<qc::cString> out;
    for (const auto& t : texts) {
        out.emplace_back(t.c_str());
    }
    return out;
}

void DictInsert_Quillanor(benchmark::State& state) {
    const auto keys = ToStrings(KeyTexts(int(state.range(0))));
    for (auto _ : state) {
        Dict d;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            d.Insert(keys[i], int(i));
        }
        benchmark::DoNotOptimize(d.Count());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DictInsert_StdUnorderedMap(benchmark::State& state) {
    const auto keys = KeyTexts(int(state.range(0)));
    for (auto _ : state) {
        StdMap m;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            m.emplace(keys[i], int(i));
        }
        benchmark::DoNotOptimize(m.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DictLookup_Quillanor(benchmark::State& state) {
    const auto texts = KeyTexts(int(state.range(0)));
    const auto keys = ToStrings(texts);
    Dict d;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        d.Insert(keys[i], int(i));
    }
    const auto probes = ToStrings(texts); // separate buffers: no shared-buffer shortcut
    for (auto _ : state) {
        int sum = 0;
        for (const auto& k : probes) {
            sum += *d.Find(k);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void DictLookup_StdUnorderedMap(benchmark::State& state) {
    const auto keys = KeyTexts(int(state.range(0)));
    StdMap m;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        m.emplace(keys[i], int(i));
    }
    const auto probes = keys;
    for (auto _ : state) {
        int sum = 0;
        for (const auto& k : probes) {
            sum += m.find(k)->second;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ArrayAppend_Quillanor(benchmark::State& state) {
    const int n = int(state.range(0));
    for (auto _ : state) {
        qc::tArray<int> a;
        for (int i = 0; i < n; ++i) {
            a.Append(i);
        }
        benchmark::DoNotOptimize(a.Data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void ArrayAppend_StdVector(benchmark::State& state) {
    const int n = int(state.range(0));
    for (auto _ : state) {
        std::vector<int> v;
        for (int i = 0; i < n; ++i) {
            v.push_back(i);
        }
        benchmark::DoNotOptimize(v.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void ArrayAppendStrings_Quillanor(benchmark::State& state) {
    const int n = int(state.range(0));
    const qc::cString s(u"a shared string value");
    for (auto _ : state) {
        qc::tArray<qc::cString> a;
        for (int i = 0; i < n; ++i) {
            a.Append(s);
        }
        benchmark::DoNotOptimize(a.Data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void ArrayAppendStrings_StdVector(benchmark::State& state) {
    const int n = int(state.range(0));
    const qc::cString s(u"a shared string value");
    for (auto _ : state) {
        std::vector<qc::cString> v;
        for (int i = 0; i < n; ++i) {
            v.push_back(s);
        }
        benchmark::DoNotOptimize(v.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}

} // namespace

BENCHMARK(DictInsert_Quillanor)->Arg(8)->Arg(64)->Arg(1000);
BENCHMARK(DictInsert_StdUnorderedMap)->Arg(8)->Arg(64)->Arg(1000);
BENCHMARK(DictLookup_Quillanor)->Arg(8)->Arg(64)->Arg(1000);
BENCHMARK(DictLookup_StdUnorderedMap)->Arg(8)->Arg(64)->Arg(1000);
BENCHMARK(ArrayAppend_Quillanor)->Arg(100)->Arg(100000);
BENCHMARK(ArrayAppend_StdVector)->Arg(100)->Arg(100000);
BENCHMARK(ArrayAppendStrings_Quillanor)->Arg(1000);
BENCHMARK(ArrayAppendStrings_StdVector)->Arg(1000);
