// Locks and events against the standard library's equivalents.
#include "Engine/Common/Multithreading/Event.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace Quillanor::Common;

static void BM_CriticalSection_EnterLeave(benchmark::State& state) {
    cCriticalSection lock;
    for (auto _ : state) {
        lock.Enter();
        lock.Leave();
    }
}
BENCHMARK(BM_CriticalSection_EnterLeave);

static void BM_StdRecursiveMutex_LockUnlock(benchmark::State& state) {
    std::recursive_mutex lock;
    for (auto _ : state) {
        lock.lock();
        lock.unlock();
    }
}
BENCHMARK(BM_StdRecursiveMutex_LockUnlock);

static void BM_CriticalSection_Recursive(benchmark::State& state) {
    cCriticalSection lock;
    lock.Enter();
    for (auto _ : state) {
        lock.Enter();
        lock.Leave();
    }
    lock.Leave();
}
BENCHMARK(BM_CriticalSection_Recursive);

static void BM_StdRecursiveMutex_Recursive(benchmark::State& state) {
    std::recursive_mutex lock;
    lock.lock();
    for (auto _ : state) {
        lock.lock();
        lock.unlock();
    }
    lock.unlock();
}
BENCHMARK(BM_StdRecursiveMutex_Recursive);

// Ping-pong between two threads: each iteration is two Set-to-wake-up handovers.
static void BM_Event_PingPong(benchmark::State& state) {
    cEvent ping, pong;
    std::atomic<bool> stop{false};
    std::thread partner([&] {
        for (;;) {
            ping.WaitFor(cEvent::Infinite);
            if (stop.load(std::memory_order_relaxed)) {
                break;
            }
            pong.Set();
        }
    });
    for (auto _ : state) {
        ping.Set();
        pong.WaitFor(cEvent::Infinite);
    }
    stop = true;
    ping.Set();
    partner.join();
}
BENCHMARK(BM_Event_PingPong)->UseRealTime();

namespace {

// The usual auto-reset event built from a mutex and a condition variable.
struct sCvEvent {
    std::mutex m;
    std::condition_variable cv;
    bool signalled = false;
    void Set() {
        {
            std::lock_guard<std::mutex> lock(m);
            signalled = true;
        }
        cv.notify_one();
    }
    void Wait() {
        std::unique_lock<std::mutex> lock(m);
        cv.wait(lock, [&] { return signalled; });
        signalled = false;
    }
};

} // namespace

static void BM_CondVar_PingPong(benchmark::State& state) {
    sCvEvent ping, pong;
    std::atomic<bool> stop{false};
    std::thread partner([&] {
        for (;;) {
            ping.Wait();
            if (stop.load(std::memory_order_relaxed)) {
                break;
            }
            pong.Set();
        }
    });
    for (auto _ : state) {
        ping.Set();
        pong.Wait();
    }
    stop = true;
    ping.Set();
    partner.join();
}
BENCHMARK(BM_CondVar_PingPong)->UseRealTime();

// The partner sets one of four events in turn; the main thread waits for any of them.
static void BM_Event_WaitForMultiple4(benchmark::State& state) {
    cEvent events[4];
    cEvent* list[] = {&events[0], &events[1], &events[2], &events[3]};
    cEvent ack;
    std::atomic<bool> stop{false};
    std::thread partner([&] {
        for (int i = 0;; ++i) {
            events[i & 3].Set();
            ack.WaitFor(cEvent::Infinite);
            if (stop.load(std::memory_order_relaxed)) {
                break;
            }
        }
    });
    for (auto _ : state) {
        benchmark::DoNotOptimize(cEvent::WaitForMultiple(list, 4, false, cEvent::Infinite));
        ack.Set();
    }
    stop = true;
    cEvent::WaitForMultiple(list, 4, false, 1000);
    ack.Set();
    partner.join();
}
BENCHMARK(BM_Event_WaitForMultiple4)->UseRealTime();

// Uncontended wait-any on four events, one of them already signalled (no sleeping).
static void BM_Event_WaitForMultiple4_Ready(benchmark::State& state) {
    cEvent events[4];
    cEvent* list[] = {&events[0], &events[1], &events[2], &events[3]};
    for (auto _ : state) {
        events[3].Set();
        benchmark::DoNotOptimize(cEvent::WaitForMultiple(list, 4, false, 0));
    }
}
BENCHMARK(BM_Event_WaitForMultiple4_Ready);
