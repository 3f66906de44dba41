// Futex primitives and thread identity for the POSIX lock and event implementations.
#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>

namespace Quillanor::Common::Detail {

// Tells the processor that the caller is spinning.
inline void CpuRelax() {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("yield");
#endif
}

// The calling thread's kernel id once CurrentThreadId has cached it, else 0. The library is
// linked at start-up, so its thread-locals can use the fast static TLS model.
extern constinit __attribute__((tls_model("initial-exec"))) thread_local std::uint32_t tThreadId;
// Asks the kernel and caches the answer in tThreadId.
std::uint32_t FetchThreadId();

// Kernel thread id of the calling thread (never 0), cached per thread; inline because every
// lock operation asks for it.
inline std::uint32_t CurrentThreadId() {
    const std::uint32_t id = tThreadId;
    return id != 0 ? id : FetchThreadId();
}

// An absolute CLOCK_MONOTONIC deadline; `infinite` means no limit.
struct sDeadline {
    timespec at{};
    bool infinite = true;

    static sDeadline FromNowMs(unsigned int timeoutMs);
    // Null when infinite, for passing to the futex calls.
    const timespec* Get() const { return infinite ? nullptr : &at; }
    bool Passed() const;
};

// Sleeps while *word == expected, until woken or the deadline passes. Returns 0 when woken (or
// the value differed), ETIMEDOUT on time-out. Spurious returns are possible.
int FutexWait(std::atomic<std::uint32_t>* word, std::uint32_t expected, bool shared,
              const sDeadline& deadline);

// Wakes up to `count` sleepers on `word`.
void FutexWake(std::atomic<std::uint32_t>* word, int count, bool shared);

// Sleeps while every words[i] == expected[i] (n <= 64), until one is woken or the deadline
// passes. Returns 0 or ETIMEDOUT; spurious returns are possible. Without futex_waitv (kernels
// before 5.16) it polls the words in short futex sleeps on the first one.
int FutexWaitAny(std::atomic<std::uint32_t>* const* words, const std::uint32_t* expected,
                 const bool* shared, int n, const sDeadline& deadline);

} // namespace Quillanor::Common::Detail
