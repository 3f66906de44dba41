#include "Engine/Common/Base/Allocator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

using namespace Quillanor::Common;

TEST(Allocator, ManagerSharesOneAllocatorPerSize) {
    cAllocatorManager* manager = cAllocatorManager::Instance();
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(manager, cAllocatorManager::Instance());
    EXPECT_TRUE(cAllocatorManager::HasInstance());
    cAllocator* a24 = manager->GetAllocator(24);
    EXPECT_EQ(a24, manager->GetAllocator(24));
    EXPECT_EQ(a24->ItemSize(), 24u);
    cAllocator* a22 = manager->GetAllocator(22);
    EXPECT_NE(a22, a24);
    EXPECT_EQ(a22->ItemSize(), 22u);
    EXPECT_EQ(a22->Stride(), a24->Stride());
    EXPECT_EQ(a24->Stride(), 24u + 16u);
}

TEST(Allocator, BlocksOf64HandOutTheLastItemFirst) {
    cAllocator allocator(24);
    EXPECT_EQ(allocator.BlockCount(), 0);
    std::vector<unsigned char*> items;
    for (int i = 0; i < 64; ++i) {
        items.push_back(static_cast<unsigned char*>(allocator.Allocate()));
    }
    EXPECT_EQ(allocator.BlockCount(), 1);
    EXPECT_EQ(allocator.AllocatedCount(), 64);
    // One block, walked backwards: each item one stride below the previous one.
    for (int i = 1; i < 64; ++i) {
        EXPECT_EQ(items[i - 1] - items[i], static_cast<std::ptrdiff_t>(allocator.Stride()));
    }
    for (unsigned char* item : items) {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(item) % 8, 0u);
        std::memset(item, 0xAB, 24); // the whole item is usable
    }
    void* item65 = allocator.Allocate();
    EXPECT_EQ(allocator.BlockCount(), 2);
    EXPECT_EQ(allocator.AllocatedCount(), 65);

    // The free list is last in, first out.
    allocator.Free(items[10]);
    EXPECT_EQ(allocator.Allocate(), items[10]);
    allocator.Free(item65);
    for (unsigned char* item : items) {
        allocator.Free(item);
    }
    EXPECT_EQ(allocator.AllocatedCount(), 0);
    EXPECT_EQ(allocator.BlockCount(), 2) << "blocks are kept until destruction";
}

TEST(Allocator, TwoThreadsNeverShareAnItem) {
    cAllocator allocator(64);
    constexpr int kRounds = 2000;
    constexpr int kBatch = 50;
    auto worker = [&](std::uint64_t tag, bool& ok) {
        std::vector<std::uint64_t*> mine;
        for (int round = 0; round < kRounds; ++round) {
            for (int i = 0; i < kBatch; ++i) {
                auto* item = static_cast<std::uint64_t*>(allocator.Allocate());
                for (int w = 0; w < 8; ++w) {
                    item[w] = tag;
                }
                mine.push_back(item);
            }
            for (std::uint64_t* item : mine) {
                for (int w = 0; w < 8; ++w) {
                    ok = ok && item[w] == tag;
                }
                allocator.Free(item);
            }
            mine.clear();
        }
    };
    bool ok1 = true;
    bool ok2 = true;
    std::thread t1(worker, 0x1111111111111111ull, std::ref(ok1));
    std::thread t2(worker, 0x2222222222222222ull, std::ref(ok2));
    t1.join();
    t2.join();
    EXPECT_TRUE(ok1);
    EXPECT_TRUE(ok2);
    EXPECT_EQ(allocator.AllocatedCount(), 0);
    EXPECT_LE(allocator.BlockCount(), 2) << "at most 100 items were out at once";
}

TEST(AllocatorDeathTest, DoubleFreeIsFatal) {
    EXPECT_EXIT(
        {
            cAllocator allocator(24);
            void* item = allocator.Allocate();
            allocator.Free(item);
            allocator.Free(item);
        },
        testing::ExitedWithCode(0),
        "^Freeing a non-allocated item\n\nFile: Allocator\\.cpp\nLine: [0-9]+\n\nExpression: "
        "\\(\\(sAllocItemHdr\\*\\)item\\)->Mark == 0x42424242\n");
}

TEST(AllocatorDeathTest, FreeingAForeignPointerIsFatal) {
    EXPECT_EXIT(
        {
            cAllocator allocator(24);
            alignas(16) unsigned char notAnItem[64] = {};
            allocator.Free(notAnItem + 16);
        },
        testing::ExitedWithCode(0), "^Freeing a non-allocated item\n");
}
