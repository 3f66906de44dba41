// Fixed-size allocator against the C and C++ heaps, one and two threads (the two threads share
// one cAllocator, as list nodes of a shared container do).
#include "Engine/Common/Base/Allocator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

using namespace Quillanor::Common;

template <unsigned int Size>
static void BM_cAllocator_AllocFree(benchmark::State& state) {
    cAllocator* allocator = cAllocatorManager::Instance()->GetAllocator(Size);
    for (auto _ : state) {
        void* item = allocator->Allocate();
        benchmark::DoNotOptimize(item);
        allocator->Free(item);
    }
}

template <unsigned int Size>
static void BM_Malloc_AllocFree(benchmark::State& state) {
    for (auto _ : state) {
        void* item = std::malloc(Size);
        benchmark::DoNotOptimize(item);
        std::free(item);
    }
}

template <unsigned int Size>
static void BM_New_AllocFree(benchmark::State& state) {
    struct sItem {
        unsigned char bytes[Size];
    };
    for (auto _ : state) {
        sItem* item = new sItem;
        benchmark::DoNotOptimize(item);
        delete item;
    }
}

BENCHMARK(BM_cAllocator_AllocFree<24>)->Threads(1)->Threads(2);
BENCHMARK(BM_Malloc_AllocFree<24>)->Threads(1)->Threads(2);
BENCHMARK(BM_New_AllocFree<24>)->Threads(1)->Threads(2);
BENCHMARK(BM_cAllocator_AllocFree<64>)->Threads(1)->Threads(2);
BENCHMARK(BM_Malloc_AllocFree<64>)->Threads(1)->Threads(2);
BENCHMARK(BM_New_AllocFree<64>)->Threads(1)->Threads(2);
