#include "Engine/Common/Multithreading/CriticalSection.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace Quillanor::Common;

namespace {

// Whether another thread can take `lock` now; it gives the lock back at once.
bool OtherThreadCanEnter(cCriticalSection& lock) {
    bool entered = false;
    std::thread([&] {
        entered = lock.TryEnter();
        if (entered) {
            lock.Leave();
        }
    }).join();
    return entered;
}

} // namespace

TEST(CriticalSection, RecursionAndTryEnterFromOtherThread) {
    cCriticalSection lock;
    lock.Enter();
    EXPECT_TRUE(lock.TryEnter());
    lock.Enter();
    EXPECT_FALSE(OtherThreadCanEnter(lock));
    lock.Leave();
    lock.Leave();
    EXPECT_FALSE(OtherThreadCanEnter(lock)) << "still held once";
    lock.Leave();
    EXPECT_TRUE(OtherThreadCanEnter(lock));
}

TEST(CriticalSection, LeaveRecursiveReleasesEveryLevelAndIgnoresFreeLock) {
    cCriticalSection lock;
    lock.LeaveRecursive(); // free: nothing happens
    for (int i = 0; i < 5; ++i) {
        lock.Enter();
    }
    lock.LeaveRecursive();
    bool otherGotIt = false;
    std::thread([&] {
        otherGotIt = lock.TryEnter();
        if (otherGotIt) {
            lock.LeaveRecursive(); // also ends an ordinary single hold
        }
    }).join();
    EXPECT_TRUE(otherGotIt);
    EXPECT_TRUE(lock.TryEnter());
    lock.Leave();

    // Another thread's LeaveRecursive leaves a held lock alone.
    lock.Enter();
    lock.Enter();
    std::thread([&] {
        lock.LeaveRecursive();
        otherGotIt = lock.TryEnter();
    }).join();
    EXPECT_FALSE(otherGotIt);
    lock.Leave();
    lock.Leave();
    EXPECT_TRUE(OtherThreadCanEnter(lock)) << "the owner's two Leaves were both still needed";
}

TEST(CriticalSection, MutualExclusionUnderContention) {
    cCriticalSection lock;
    long long counter = 0; // guarded by lock; a lost update shows a broken lock
    constexpr int kThreads = 4;
    constexpr int kIterations = 50000;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < kIterations; ++i) {
                cBlockLocker outer(lock);
                cBlockLocker inner(lock); // recursion inside contention
                ++counter;
            }
        });
    }
    for (auto& t : threads) {
        t.join();
    }
    EXPECT_EQ(counter, static_cast<long long>(kThreads) * kIterations);
}

namespace {

struct sLockable : cThreadSafe {
    std::atomic<int>* destroyed;
    explicit sLockable(std::atomic<int>* d) : destroyed(d) {}
    ~sLockable() override { ++*destroyed; }
};

} // namespace

TEST(CriticalSection, ThreadSafeDestroyedWhileHeldThreeTimes) {
    std::atomic<int> destroyed{0};
    auto* object = new sLockable(&destroyed);
    object->Lock();
    object->Lock();
    EXPECT_TRUE(object->TryLock());
    delete object; // leaves three times, then deletes the lock
    EXPECT_EQ(destroyed.load(), 1);

    // A copy has a lock of its own: holding the original does not block the copy.
    sLockable original(&destroyed);
    original.Lock();
    sLockable copy(original);
    bool copyFree = false;
    std::thread([&] {
        copyFree = copy.TryLock();
        if (copyFree) {
            copy.Unlock();
        }
    }).join();
    EXPECT_TRUE(copyFree);
    original.Unlock();
}

TEST(CriticalSection, ConditionalLockerWithAndWithoutLock) {
    cCriticalSection lock;
    {
        cBlockLockerCond none(nullptr); // neither locks nor unlocks
        cBlockLockerCond held(&lock);
        EXPECT_FALSE(OtherThreadCanEnter(lock));
    }
    EXPECT_TRUE(OtherThreadCanEnter(lock));
}

TEST(CriticalSectionDeathTest, LeaveByNonOwnerIsFatal) {
    cCriticalSection lock;
    EXPECT_EXIT(lock.Leave(), testing::ExitedWithCode(0), "Leave of a lock");
}
