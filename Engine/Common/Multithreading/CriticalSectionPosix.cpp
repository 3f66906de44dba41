// cCriticalSection on a futex word: 0 free, 1 held, 2 held with sleepers; the owner's thread
// id and the recursion count sit beside it.
#include "Engine/Common/Multithreading/CriticalSection.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Multithreading/Detail/FutexPosix.h"

#include <atomic>
#include <cstdint>
#include <new>

namespace Quillanor::Common {
namespace {

using Detail::CurrentThreadId;

struct sLockRecord {
    std::atomic<std::uint32_t> state{0};
    std::atomic<std::uint32_t> owner{0};
    std::uint32_t count = 0;
};
static_assert(sizeof(sLockRecord) <= 40 && alignof(sLockRecord) <= 8);

sLockRecord& Record(unsigned char* storage) {
    return *std::launder(reinterpret_cast<sLockRecord*>(storage));
}

constexpr int kSpinCount = 100;

void LockSlow(sLockRecord& r) {
    for (int i = 0; i < kSpinCount; ++i) {
        Detail::CpuRelax();
        std::uint32_t expected = 0;
        if (r.state.load(std::memory_order_relaxed) == 0 &&
            r.state.compare_exchange_weak(expected, 1, std::memory_order_acquire,
                                          std::memory_order_relaxed)) {
            return;
        }
    }
    const Detail::sDeadline forever;
    while (r.state.exchange(2, std::memory_order_acquire) != 0) {
        Detail::FutexWait(&r.state, 2, false, forever);
    }
}

} // namespace

cCriticalSection::cCriticalSection() { new (mRecord) sLockRecord(); }

cCriticalSection::cCriticalSection(const cCriticalSection&) : cCriticalSection() {}

cCriticalSection::~cCriticalSection() { Record(mRecord).~sLockRecord(); }

void cCriticalSection::Enter() const {
    sLockRecord& r = Record(mRecord);
    const std::uint32_t self = CurrentThreadId();
    if (r.owner.load(std::memory_order_relaxed) == self) {
        ++r.count;
        return;
    }
    std::uint32_t expected = 0;
    if (!r.state.compare_exchange_strong(expected, 1, std::memory_order_acquire,
                                         std::memory_order_relaxed)) [[unlikely]] {
        LockSlow(r);
    }
    r.owner.store(self, std::memory_order_relaxed);
    r.count = 1;
}

bool cCriticalSection::TryEnter() const {
    sLockRecord& r = Record(mRecord);
    const std::uint32_t self = CurrentThreadId();
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

void cCriticalSection::Leave() const {
    sLockRecord& r = Record(mRecord);
    QC_ASSERT_MSG(r.owner.load(std::memory_order_relaxed) == CurrentThreadId(),
                  u"Leave of a lock that the calling thread does not hold.");
    if (--r.count != 0) {
        return;
    }
    r.owner.store(0, std::memory_order_relaxed);
    if (r.state.exchange(0, std::memory_order_release) == 2) {
        Detail::FutexWake(&r.state, 1, false);
    }
}

void cCriticalSection::LeaveRecursive() const {
    sLockRecord& r = Record(mRecord);
    // Only the owner may release; for any other thread the count is not its to read.
    if (r.owner.load(std::memory_order_relaxed) != CurrentThreadId() || r.count == 0) {
        return;
    }
    r.count = 0;
    r.owner.store(0, std::memory_order_relaxed);
    if (r.state.exchange(0, std::memory_order_release) == 2) {
        Detail::FutexWake(&r.state, 1, false);
    }
}

} // namespace Quillanor::Common
