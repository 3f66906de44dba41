// cCriticalSection on the Windows CRITICAL_SECTION, which lives in the lock's 40-byte record.
// The owner checks of Leave and LeaveRecursive read the record's OwningThread (the owner's
// thread id) and RecursionCount, which only the owner changes while it holds the lock.
#include "Engine/Common/Multithreading/CriticalSection.h"

#include "Engine/Common/Base/Assert.h"

#include <new>
#include <windows.h>

namespace Quillanor::Common {
namespace {

static_assert(sizeof(CRITICAL_SECTION) == 40 && alignof(CRITICAL_SECTION) <= 8,
              "the lock record of CriticalSection.h must hold a CRITICAL_SECTION exactly");

// Spins before sleeping, as the POSIX lock does; no debug record, so initialising allocates
// nothing.
constexpr DWORD kSpinCount = 100;

CRITICAL_SECTION* Record(unsigned char* storage) {
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

bool OwnedByCaller(const CRITICAL_SECTION* cs) {
    const HANDLE owner = *static_cast<const volatile HANDLE*>(&cs->OwningThread);
    return owner == reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(GetCurrentThreadId()));
}

} // namespace

cCriticalSection::cCriticalSection() {
    CRITICAL_SECTION* cs = new (mRecord) CRITICAL_SECTION;
    InitializeCriticalSectionEx(cs, kSpinCount, CRITICAL_SECTION_NO_DEBUG_INFO);
}

cCriticalSection::cCriticalSection(const cCriticalSection&) : cCriticalSection() {}

cCriticalSection::~cCriticalSection() {
    DeleteCriticalSection(Record(mRecord));
}

void cCriticalSection::Enter() const {
    EnterCriticalSection(Record(mRecord));
}

bool cCriticalSection::TryEnter() const {
    return TryEnterCriticalSection(Record(mRecord)) != 0;
}

void cCriticalSection::Leave() const {
    CRITICAL_SECTION* cs = Record(mRecord);
    QC_ASSERT_MSG(OwnedByCaller(cs), u"Leave of a lock that the calling thread does not hold.");
    LeaveCriticalSection(cs);
}

void cCriticalSection::LeaveRecursive() const {
    CRITICAL_SECTION* cs = Record(mRecord);
    // Only the owner may release; for any other thread the count is not its to read.
    if (!OwnedByCaller(cs)) {
        return;
    }
    for (LONG count = cs->RecursionCount; count > 0; --count) {
        LeaveCriticalSection(cs);
    }
}

} // namespace Quillanor::Common
