#include "Engine/Common/Base/Allocator.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

using namespace Quillanor::Common;

namespace {

std::atomic<int> gLiveItems{0};

class cItem : public cPoolableObject {
public:
    cItem() { ++gLiveItems; }
    int mUsers = 0; // changed only while the item is obtained by one user

protected:
    ~cItem() override { --gLiveItems; }
};

using cItemPool = tObjectPool<cItem>;

// Holds one reference to a pool for the length of a test.
struct sPoolRef {
    sPoolRef() : pool(new cItemPool()) { pool->AddRef(); }
    ~sPoolRef() { pool->Release(); }
    cItemPool* pool;
};

} // namespace

TEST(ObjectPool, ObjectIsNeverHandedOutTwiceAndComesBackAfterLastRelease) {
    const int liveBefore = gLiveItems;
    {
        sPoolRef ref;
        cItemPool* pool = ref.pool;
        cItem* a = pool->Obtain();
        a->AddRef();
        EXPECT_EQ(a->RefCount(), 2) << "the pool's reference and ours";
        EXPECT_EQ(a->Pool(), pool);
        EXPECT_TRUE(a->IsObtained());
        cItem* b = pool->Obtain();
        b->AddRef();
        EXPECT_NE(a, b);
        EXPECT_EQ(pool->ObtainedCount(), 2);

        a->AddRef(); // a second outside reference
        EXPECT_EQ(a->Release(), 2);
        EXPECT_TRUE(a->IsObtained()) << "still referenced outside";
        EXPECT_NE(pool->Obtain(), a);
        EXPECT_EQ(a->Release(), 1);
        EXPECT_FALSE(a->IsObtained());
        EXPECT_EQ(pool->FreeCount(), 1);
        EXPECT_EQ(pool->Obtain(), a) << "the returned object is reused";
        EXPECT_EQ(gLiveItems - liveBefore, 3);
        b->Release();
    }
    // The obtained ones without outside references die with the pool, as do the free ones.
    EXPECT_EQ(gLiveItems, liveBefore);
}

TEST(ObjectPool, PurgeDestroysOnlyFreeObjects) {
    sPoolRef ref;
    cItem* kept = ref.pool->Obtain();
    kept->AddRef();
    cItem* returned = ref.pool->Obtain();
    returned->AddRef();
    returned->Release();
    const int live = gLiveItems;
    ref.pool->Purge();
    EXPECT_EQ(gLiveItems, live - 1);
    EXPECT_EQ(ref.pool->FreeCount(), 0);
    EXPECT_EQ(ref.pool->ObtainedCount(), 1);
    kept->Release();
    EXPECT_EQ(ref.pool->FreeCount(), 1);
}

TEST(ObjectPool, ObtainedObjectsOutliveTheirPoolFreeStanding) {
    const int liveBefore = gLiveItems;
    cItem* survivor = nullptr;
    {
        sPoolRef ref;
        survivor = ref.pool->Obtain();
        survivor->AddRef();
    }
    EXPECT_EQ(survivor->Pool(), nullptr);
    EXPECT_FALSE(survivor->IsObtained());
    EXPECT_EQ(survivor->RefCount(), 1) << "the pool's reference was dropped";
    EXPECT_EQ(gLiveItems, liveBefore + 1);
    EXPECT_EQ(survivor->AddRef(), 2);
    EXPECT_EQ(survivor->Release(), 1);
    EXPECT_EQ(survivor->Release(), 0);
    EXPECT_EQ(gLiveItems, liveBefore);
}

TEST(ObjectPool, TwoThreadsShareAPoolAndFreeStandingObjects) {
    sPoolRef ref;
    cItemPool* pool = ref.pool;
    auto* shared = new cItem(); // free-standing, referenced by both threads
    shared->AddRef();
    std::atomic<bool> ok{true};
    auto worker = [&] {
        for (int round = 0; round < 2000; ++round) {
            cItem* items[4];
            for (cItem*& item : items) {
                item = pool->Obtain();
                item->AddRef();
                // Exclusive while obtained: nobody else may see a user here.
                if (++item->mUsers != 1) {
                    ok = false;
                }
            }
            shared->AddRef();
            for (cItem* item : items) {
                --item->mUsers;
                item->Release();
            }
            shared->Release();
        }
    };
    std::thread t1(worker);
    std::thread t2(worker);
    t1.join();
    t2.join();
    EXPECT_TRUE(ok);
    EXPECT_EQ(pool->ObtainedCount(), 0);
    EXPECT_LE(pool->FreeCount(), 8) << "at most 8 were out at once";
    EXPECT_EQ(shared->RefCount(), 1);
    shared->Release();
}

TEST(ObjectPoolDeathTest, ReturningAnObjectThatIsStillReferencedIsFatal) {
    EXPECT_EXIT(
        {
            auto* pool = new cItemPool();
            pool->AddRef();
            cItem* item = pool->Obtain();
            item->AddRef();
            pool->ReturnObject(item);
        },
        testing::ExitedWithCode(0), "Expression: pObject->RefCount\\(\\) == 1\n");
}
