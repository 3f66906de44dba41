// Fixed-size allocator against the C and C++ heaps, one and two threads (the two threads share
// one cAllocator, as list nodes of a shared container do).
#include "Engine/Common/Base/Allocator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

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

namespace {

class cPooledFrame : public cPoolableObject {
public:
    unsigned char mPayload[64] = {};
};

struct sPlainFrame {
    unsigned char mPayload[64] = {};
};

} // namespace

// Obtain, take a reference, let it go (the object goes back to the pool), against a fresh
// shared object per iteration.
static void BM_ObjectPool_ObtainRelease(benchmark::State& state) {
    static tObjectPool<cPooledFrame>* pool = [] {
        auto* p = new tObjectPool<cPooledFrame>();
        p->AddRef();
        return p;
    }();
    for (auto _ : state) {
        cPooledFrame* frame = pool->Obtain();
        frame->AddRef();
        benchmark::DoNotOptimize(frame->mPayload);
        frame->Release();
    }
}

static void BM_MakeShared_CreateDestroy(benchmark::State& state) {
    for (auto _ : state) {
        auto frame = std::make_shared<sPlainFrame>();
        benchmark::DoNotOptimize(frame->mPayload);
    }
}

BENCHMARK(BM_ObjectPool_ObtainRelease)->Threads(1)->Threads(2);
BENCHMARK(BM_MakeShared_CreateDestroy)->Threads(1)->Threads(2);
