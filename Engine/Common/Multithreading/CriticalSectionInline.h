// Inline fast paths of cCriticalSection on the futex backend (included by CriticalSection.h on
// every platform but Windows; not for direct inclusion). The record is a futex word
// (0 free, 1 held, 2 held with sleepers), the recursion count and the owner, identified by
// its thread pointer (unique among running threads and read without a call). Only the
// contended Enter and the wake-up of a sleeper leave the inline code.
#pragma once

#include <atomic>
#include <cstdint>
#include <new>

namespace Quillanor::Common {

struct cCriticalSection::sFastRecord {
    std::atomic<std::uint32_t> state{0};
    std::uint32_t count = 0;
    std::atomic<std::uintptr_t> owner{0};

    static sFastRecord& Of(unsigned char* storage) {
        return *std::launder(reinterpret_cast<sFastRecord*>(storage));
    }
    static std::uintptr_t Self() {
        return reinterpret_cast<std::uintptr_t>(__builtin_thread_pointer());
    }
};

inline void cCriticalSection::Enter() const {
    sFastRecord& r = sFastRecord::Of(mRecord);
    const std::uintptr_t self = sFastRecord::Self();
    if (r.owner.load(std::memory_order_relaxed) == self) {
        ++r.count;
        return;
    }
    std::uint32_t expected = 0;
    if (!r.state.compare_exchange_strong(expected, 1, std::memory_order_acquire,
                                         std::memory_order_relaxed)) [[unlikely]] {
        EnterContended();
    }
    r.owner.store(self, std::memory_order_relaxed);
    r.count = 1;
}

inline bool cCriticalSection::TryEnter() const {
    sFastRecord& r = sFastRecord::Of(mRecord);
    const std::uintptr_t self = sFastRecord::Self();
    if (r.owner.load(std::memory_order_relaxed) == self) {
        ++r.count;
        return true;
    }
    std::uint32_t expected = 0;
    if (!r.state.compare_exchange_strong(expected, 1, std::memory_order_acquire,
                                         std::memory_order_relaxed)) {
        return false;
    }
    r.owner.store(self, std::memory_order_relaxed);
    r.count = 1;
    return true;
}

inline void cCriticalSection::Leave() const {
    sFastRecord& r = sFastRecord::Of(mRecord);
    if (r.owner.load(std::memory_order_relaxed) != sFastRecord::Self()) [[unlikely]] {
        LeaveByNonOwner();
    }
    if (--r.count != 0) {
        return;
    }
    r.owner.store(0, std::memory_order_relaxed);
    if (r.state.exchange(0, std::memory_order_release) == 2) [[unlikely]] {
        WakeWaiter();
    }
}

inline void cCriticalSection::LeaveRecursive() const {
    sFastRecord& r = sFastRecord::Of(mRecord);
    // Only the owner may release; for any other thread the count is not its to read.
    if (r.owner.load(std::memory_order_relaxed) != sFastRecord::Self() || r.count == 0) {
        return;
    }
    r.count = 1;
    Leave();
}

} // namespace Quillanor::Common
