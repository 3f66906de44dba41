#include "Engine/Common/Base/Buffer.h"
#include "Engine/Common/Base/ClassArray.h"
#include "Engine/Common/Base/List.h"
#include "Engine/Common/Base/PriorityQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

using namespace Quillanor::Common;

namespace {

template <typename L>
std::vector<int> Values(const L& list) {
    std::vector<int> out;
    for (const auto& v : list) {
        out.push_back(v);
    }
    return out;
}

// Not relocatable by a byte copy: holds a pointer to itself.
struct SelfRef {
    int mValue;
    SelfRef* mSelf;
    explicit SelfRef(int v) : mValue(v), mSelf(this) {}
    SelfRef(const SelfRef& o) : mValue(o.mValue), mSelf(this) {}
    bool Intact() const { return mSelf == this; }
};

} // namespace

TEST(List, AddInsertRemoveAndWalk) {
    tList<int> l;
    l.AddLast(2);
    l.AddLast(3);
    l.AddFirst(1);
    l.InsertBefore(l.Find(3), 25);
    l.InsertBefore(l.end(), 4);
    EXPECT_EQ(Values(l), (std::vector<int>{1, 2, 25, 3, 4}));
    EXPECT_EQ(l.Count(), 5);
    auto it = l.Remove(l.Find(25));
    EXPECT_EQ(*it, 3);
    l.Remove(l.begin());
    l.Remove(l.Last());
    EXPECT_EQ(Values(l), (std::vector<int>{2, 3}));
    EXPECT_FALSE(l.Find(99));
    // Backwards from the last node.
    std::vector<int> back;
    for (auto r = l.Last(); r; --r) {
        back.push_back(*r);
    }
    EXPECT_EQ(back, (std::vector<int>{3, 2}));
    tList<int> copy(l);
    l.Clear();
    EXPECT_TRUE(l.IsEmpty());
    EXPECT_EQ(Values(copy), (std::vector<int>{2, 3}));
    l = copy;
    EXPECT_EQ(Values(l), (std::vector<int>{2, 3}));
}

TEST(List, NodesGoBackToTheSharedAllocator) {
    struct Node {
        std::shared_ptr<int> mValue;
        bool operator==(int v) const { return *mValue == v; }
    };
    auto value = std::make_shared<int>(5);
    {
        tList<Node> l;
        for (int i = 0; i < 100; ++i) {
            l.AddLast(Node{value});
        }
        EXPECT_EQ(value.use_count(), 101);
        for (auto it = l.begin(); it != l.end();) {
            it = l.Remove(it);
        }
        EXPECT_EQ(value.use_count(), 1);
        for (int i = 0; i < 10; ++i) {
            l.AddFirst(Node{value});
        }
    }
    EXPECT_EQ(value.use_count(), 1);
}

TEST(ListDeathTest, IteratorWithoutNode) {
    tList<int> l;
    EXPECT_EXIT(*l.end(), testing::ExitedWithCode(0), "Expression: mPos");
    l.AddLast(1);
    auto it = l.end();
    EXPECT_EXIT(++it, testing::ExitedWithCode(0), "Expression: mPos");
}

TEST(ClassArray, ElementsNeverMoveAndAreOwned) {
    tClassArray<SelfRef> a;
    std::vector<const SelfRef*> addresses;
    for (int i = 0; i < 200; ++i) {
        addresses.push_back(&a.Append(i));
    }
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(&a[i], addresses[std::size_t(i)]);
        EXPECT_TRUE(a[i].Intact());
    }
    a.Remove(0);
    EXPECT_EQ(a[0].mValue, 1);
    tClassArray<SelfRef> copy(a);
    EXPECT_EQ(copy.Count(), 199);
    EXPECT_TRUE(copy[5].Intact());
    EXPECT_NE(&copy[5], &a[5]);
    std::unique_ptr<SelfRef> released(a.Release(0));
    EXPECT_EQ(released->mValue, 1);
    a.Clear();
    EXPECT_EQ(a.Count(), 0);
}

TEST(Buffer, ResizeKeepsOrDiscards) {
    cByteBuffer b(4);
    for (int i = 0; i < 4; ++i) {
        b[i] = static_cast<unsigned char>(i + 1);
    }
    b.SetSize(8, true);
    EXPECT_EQ(b.Size(), 8);
    EXPECT_EQ(b[3], 4);
    b.EnsureSize(6); // already large enough
    EXPECT_EQ(b.Size(), 8);
    cByteBuffer copy(b);
    b.Zero();
    EXPECT_EQ(b[0], 0);
    EXPECT_EQ(copy[0], 1);
    cByteBuffer moved(std::move(copy));
    EXPECT_EQ(copy.Size(), 0);
    EXPECT_EQ(moved[1], 2);
    moved.SetSize(0, false);
    EXPECT_EQ(moved.Data(), nullptr);
}

TEST(PriorityQueue, PopsInPriorityOrder) {
    tPriorityQueue<int> q;
    std::vector<int> values;
    std::mt19937 rng(3);
    for (int i = 0; i < 500; ++i) {
        values.push_back(int(rng() % 1000));
        q.Push(values.back());
    }
    std::sort(values.rbegin(), values.rend());
    EXPECT_EQ(q.Top(), values[0]);
    for (int v : values) {
        ASSERT_EQ(q.Pop(), v);
    }
    EXPECT_TRUE(q.IsEmpty());
    tPriorityQueue<int, std::greater<int>> minFirst;
    minFirst.Push(5);
    minFirst.Push(1);
    minFirst.Push(3);
    EXPECT_EQ(minFirst.Pop(), 1);
    EXPECT_EQ(minFirst.Pop(), 3);
}

TEST(ContainerDeathTest, BufferIndexAndEmptyQueue) {
    cByteBuffer b(8);
    EXPECT_EXIT(b[8], testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < mSize");
    tPriorityQueue<int> q;
    EXPECT_EXIT(q.Top(), testing::ExitedWithCode(0), "Expression: mCount");
    EXPECT_EXIT(q.Pop(), testing::ExitedWithCode(0), "Expression: mCount");
}
