#include "Engine/Common/Multithreading/Detail/FutexPosix.h"

#include "Engine/Common/Base/Detail/SysCallsPosix.h"

#include <cerrno>
#include <climits>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Quillanor::Common::Detail {
namespace {

long Futex(std::atomic<std::uint32_t>* word, int op, std::uint32_t value, const timespec* timeout,
           std::uint32_t bitset) {
    return ::syscall(SYS_futex, reinterpret_cast<std::uint32_t*>(word), op, value, timeout, nullptr,
                     bitset);
}

constexpr long kPollSliceNs = 1'000'000;

} // namespace

constinit thread_local std::uint32_t tThreadId = 0;

std::uint32_t FetchThreadId() {
    const auto id = static_cast<std::uint32_t>(::syscall(SYS_gettid));
    tThreadId = id;
    return id;
}

sDeadline sDeadline::FromNowMs(unsigned int timeoutMs) {
    sDeadline d;
    if (timeoutMs == 0xFFFFFFFFu) {
        return d;
    }
    d.infinite = false;
    clock_gettime(CLOCK_MONOTONIC, &d.at);
    d.at.tv_sec += timeoutMs / 1000;
    d.at.tv_nsec += static_cast<long>(timeoutMs % 1000) * 1'000'000;
    if (d.at.tv_nsec >= 1'000'000'000) {
        d.at.tv_nsec -= 1'000'000'000;
        ++d.at.tv_sec;
    }
    return d;
}

bool sDeadline::Passed() const {
    if (infinite) {
        return false;
    }
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec > at.tv_sec || (now.tv_sec == at.tv_sec && now.tv_nsec >= at.tv_nsec);
}

int FutexWait(std::atomic<std::uint32_t>* word, std::uint32_t expected, bool shared,
              const sDeadline& deadline) {
    // FUTEX_WAIT_BITSET takes an absolute CLOCK_MONOTONIC time-out.
    const int op = FUTEX_WAIT_BITSET | (shared ? 0 : FUTEX_PRIVATE_FLAG);
    if (Futex(word, op, expected, deadline.Get(), FUTEX_BITSET_MATCH_ANY) == 0) {
        return 0;
    }
    return errno == ETIMEDOUT ? ETIMEDOUT : 0;
}

void FutexWake(std::atomic<std::uint32_t>* word, int count, bool shared) {
    Futex(word, FUTEX_WAKE | (shared ? 0 : FUTEX_PRIVATE_FLAG), static_cast<std::uint32_t>(count),
          nullptr, 0);
}

int FutexWaitAny(std::atomic<std::uint32_t>* const* words, const std::uint32_t* expected,
                 const bool* shared, int n, const sDeadline& deadline) {
    if (n == 1) {
        return FutexWait(words[0], expected[0], shared[0], deadline);
    }
    futex_waitv waiters[64];
    for (int i = 0; i < n; ++i) {
        waiters[i] = {};
        waiters[i].val = expected[i];
        waiters[i].uaddr = reinterpret_cast<std::uintptr_t>(words[i]);
        waiters[i].flags = FUTEX_32 | (shared[i] ? 0 : FUTEX_PRIVATE_FLAG);
    }
    const long rc = PosixSys().futexWaitv(waiters, static_cast<unsigned int>(n), 0, deadline.Get(),
                                          CLOCK_MONOTONIC);
    if (rc >= 0) {
        return 0;
    }
    if (errno == ETIMEDOUT) {
        return ETIMEDOUT;
    }
    if (errno != ENOSYS) {
        return 0; // EAGAIN (a word already changed) or EINTR: the caller looks again
    }
    // Older kernel: sleep a short slice on the first word; the caller re-checks them all.
    sDeadline slice = sDeadline::FromNowMs(0);
    slice.at.tv_nsec += kPollSliceNs;
    if (slice.at.tv_nsec >= 1'000'000'000) {
        slice.at.tv_nsec -= 1'000'000'000;
        ++slice.at.tv_sec;
    }
    if (!deadline.infinite &&
        (deadline.at.tv_sec < slice.at.tv_sec ||
         (deadline.at.tv_sec == slice.at.tv_sec && deadline.at.tv_nsec < slice.at.tv_nsec))) {
        slice = deadline;
    }
    FutexWait(words[0], expected[0], shared[0], slice);
    return deadline.Passed() ? ETIMEDOUT : 0;
}

} // namespace Quillanor::Common::Detail
