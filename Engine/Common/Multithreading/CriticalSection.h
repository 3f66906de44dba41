// Recursive locks and the scoped lockers built on them.
//
// cCriticalSection is the library's mutual-exclusion primitive: recursive, owned by the
// thread that entered it, never allocating. cThreadSafe makes any object lockable and is the
// base of every manager and stream. cBlockLocker and cBlockLockerCond hold a lock for one
// block. All lock operations are const so that const objects can be locked.
#pragma once

#include "Engine/Common/Base/Api.h"

namespace Quillanor::Common {

// Recursive mutex owned by a thread. Every Enter (or successful TryEnter) needs one Leave by
// the same thread. Uncontended Enter/Leave never enter the kernel.
//
// Copying: a copy is a fresh, unlocked lock (the library never copies a held lock), and
// assignment leaves the target's lock untouched, so classes holding one stay copyable.
class QC_API cCriticalSection {
public:
    cCriticalSection();
    // Deletes the lock without leaving it; the caller must not hold it any more.
    ~cCriticalSection();
    cCriticalSection(const cCriticalSection&);
    cCriticalSection& operator=(const cCriticalSection&) { return *this; }

    // Blocks until the calling thread owns the lock; recursive.
    void Enter() const;
    // True if the lock was obtained (or already owned) without waiting.
    bool TryEnter() const;
    // Leaves once; must be called by the owner.
    void Leave() const;
    // Leaves as often as the current recursion count says; nothing when the lock is free.
    // Meant for the owner thread (destructors of objects that may be destroyed while held).
    void LeaveRecursive() const;

private:
    struct sFastRecord;
    // Out-of-line halves of the inline fast paths of the futex backend.
    void EnterContended() const;
    void WakeWaiter() const;
    [[noreturn]] void LeaveByNonOwner() const;

    // The platform's lock record: a futex word with owner and count on POSIX (layout in
    // CriticalSectionInline.h), a CRITICAL_SECTION on Windows.
    alignas(8) mutable unsigned char mRecord[40];
};

} // namespace Quillanor::Common

#if !defined(_WIN32)
// Uncontended Enter/Leave inline on the futex backend; Windows calls its CRITICAL_SECTION.
#include "Engine/Common/Multithreading/CriticalSectionInline.h"
#endif

namespace Quillanor::Common {

// Base class that gives an object its own recursive lock. Destroying an object while the
// destroying thread still holds its lock (any number of times) is allowed and releases it.
class QC_API cThreadSafe {
public:
    cThreadSafe() = default;
    cThreadSafe(const cThreadSafe&) = default;
    cThreadSafe& operator=(const cThreadSafe&) = default;
    virtual ~cThreadSafe() { mLock.LeaveRecursive(); }

    void Lock() const { mLock.Enter(); }
    bool TryLock() const { return mLock.TryEnter(); }
    void Unlock() const { mLock.Leave(); }

    // The lock itself, for cBlockLocker and lock hand-over between objects.
    const cCriticalSection& CriticalSection() const { return mLock; }

private:
    cCriticalSection mLock;
};

// Holds a lock for the lifetime of a block.
class cBlockLocker {
public:
    // `object` must not be null.
    explicit cBlockLocker(const cThreadSafe* object) : mLock(&object->CriticalSection()) {
        mLock->Enter();
    }
    explicit cBlockLocker(const cCriticalSection& lock) : mLock(&lock) { mLock->Enter(); }
    ~cBlockLocker() { mLock->Leave(); }
    cBlockLocker(const cBlockLocker&) = delete;
    cBlockLocker& operator=(const cBlockLocker&) = delete;

private:
    const cCriticalSection* mLock;
};

// Holds a lock for a block when one is given; a null lock means lock nothing.
class cBlockLockerCond {
public:
    explicit cBlockLockerCond(const cCriticalSection* lock) : mLock(lock) {
        if (mLock != nullptr) {
            mLock->Enter();
        }
    }
    ~cBlockLockerCond() {
        if (mLock != nullptr) {
            mLock->Leave();
        }
    }
    cBlockLockerCond(const cBlockLockerCond&) = delete;
    cBlockLockerCond& operator=(const cBlockLockerCond&) = delete;

private:
    const cCriticalSection* mLock;
};

} // namespace Quillanor::Common
