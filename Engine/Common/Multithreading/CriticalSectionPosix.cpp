// The out-of-line halves of cCriticalSection on a futex word; the uncontended paths are inline
// in CriticalSectionInline.h.
#include "Engine/Common/Multithreading/CriticalSection.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Multithreading/Detail/FutexPosix.h"

namespace Quillanor::Common {
namespace {

constexpr int kSpinCount = 100;

} // namespace

cCriticalSection::cCriticalSection() {
    static_assert(sizeof(sFastRecord) <= sizeof(mRecord) && alignof(sFastRecord) <= 8);
    new (mRecord) sFastRecord();
}

cCriticalSection::cCriticalSection(const cCriticalSection&) : cCriticalSection() {}

cCriticalSection::~cCriticalSection() {
    sFastRecord::Of(mRecord).~sFastRecord();
}

void cCriticalSection::EnterContended() const {
    sFastRecord& r = sFastRecord::Of(mRecord);
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

void cCriticalSection::WakeWaiter() const {
    Detail::FutexWake(&sFastRecord::Of(mRecord).state, 1, false);
}

void cCriticalSection::LeaveByNonOwner() const {
    Detail::AssertFailed(u"mOwner == current thread", QC_WIDEN(__FILE__), __LINE__,
                         u"Leave of a lock that the calling thread does not hold.");
}

} // namespace Quillanor::Common
