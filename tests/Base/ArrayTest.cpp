#include "Engine/Common/Base/Array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Quillanor::Common;

namespace {

// A non-trivial, relocatable element: owns a heap value and counts live instances, so leaks,
// double destruction and lost copies show up as a wrong count or a wrong value.
struct Tracked {
    static int sLive;
    int* mValue;

    Tracked() : mValue(new int(0)) { ++sLive; }
    explicit Tracked(int v) : mValue(new int(v)) { ++sLive; }
    Tracked(const Tracked& o) : mValue(new int(*o.mValue)) { ++sLive; }
    Tracked& operator=(const Tracked& o) {
        *mValue = *o.mValue;
        return *this;
    }
    ~Tracked() {
        delete mValue;
        --sLive;
    }
    bool operator==(int v) const { return *mValue == v; }
};
int Tracked::sLive = 0;

std::vector<int> Values(const tArray<Tracked>& a) {
    std::vector<int> out;
    for (const Tracked& t : a) {
        out.push_back(*t.mValue);
    }
    return out;
}

} // namespace

TEST(Array, GrowthPolicyAddsTheUnitOrExactlyWhatIsNeeded) {
    tArray<int> a(4);
    EXPECT_EQ(a.Capacity(), 0);
    a.Append(1);
    EXPECT_EQ(a.Capacity(), 4); // 0 + unit
    for (int i = 0; i < 4; ++i) {
        a.Append(i);
    }
    EXPECT_EQ(a.Capacity(), 8); // 4 + unit
    int block[20] = {};
    a.Append(block, 20);
    EXPECT_EQ(a.Count(), 25);
    EXPECT_EQ(a.Capacity(), 25); // 8 + 4 is short: exactly count + n

    tArray<int> d;
    EXPECT_EQ(d.GrowthUnit(), 64);
    d.Append(7);
    EXPECT_EQ(d.Capacity(), 64);

    // Removal never shrinks the block, neither does Clear.
    for (int i = 0; i < 24; ++i) {
        a.RemoveLast();
    }
    a.Remove(0);
    a.Clear();
    EXPECT_EQ(a.Count(), 0);
    EXPECT_EQ(a.Capacity(), 25);

    a.SetCount(30); // grows like an append of 30
    EXPECT_EQ(a.Capacity(), 30);
    EXPECT_EQ(a[29], 0); // value-initialised
    a.SetCount(3);
    EXPECT_EQ(a.Capacity(), 30);
}

TEST(Array, InsertRemoveMoveKeepOrder) {
    tArray<int> a(2);
    const int init[] = {0, 1, 2, 3, 4};
    a.Append(init, 5);
    const int mid[] = {10, 11};
    a.Insert(2, mid, 2);
    a.Insert(0, -1);
    a.Insert(a.Count(), 99);
    EXPECT_EQ(std::vector<int>(a.Data(), a.Data() + a.Count()),
              (std::vector<int>{-1, 0, 1, 10, 11, 2, 3, 4, 99}));
    a.Remove(3);
    a.Remove(0);
    EXPECT_EQ(std::vector<int>(a.begin(), a.end()), (std::vector<int>{0, 1, 11, 2, 3, 4, 99}));
    tArray<int>::Move(a, 0, 6);
    EXPECT_EQ(std::vector<int>(a.begin(), a.end()), (std::vector<int>{1, 11, 2, 3, 4, 99, 0}));
    a.Move(5, 1);
    EXPECT_EQ(std::vector<int>(a.begin(), a.end()), (std::vector<int>{1, 99, 11, 2, 3, 4, 0}));
    a.RemoveFast(1);
    EXPECT_EQ(std::vector<int>(a.begin(), a.end()), (std::vector<int>{1, 0, 11, 2, 3, 4}));
    EXPECT_EQ(a.First(), 1);
    EXPECT_EQ(a.Last(), 4);
    EXPECT_EQ(a.IndexOf(11), 2);
    EXPECT_EQ(a.IndexOf(42), -1);
    EXPECT_TRUE(a.Contains(3));
}

TEST(Array, NonTrivialElementsSurviveGrowthAndRemoval) {
    Tracked::sLive = 0;
    {
        tArray<Tracked> a(3);
        for (int i = 0; i < 50; ++i) {
            a.Append(Tracked(i)); // many reallocations with a unit of 3
        }
        EXPECT_EQ(Tracked::sLive, 50);
        // Appending an element of the array itself while the block must grow.
        while (a.Count() != a.Capacity()) {
            a.Append(Tracked(-2));
        }
        a.Append(a[0]);
        EXPECT_EQ(a.Last(), 0);
        a.Insert(1, a[2]);
        EXPECT_EQ(a[1], 2);
        const int live = a.Count();
        EXPECT_EQ(Tracked::sLive, live);

        for (int i = 0; i < 10; ++i) {
            a.Remove(0);
        }
        a.RemoveLast();
        EXPECT_EQ(Tracked::sLive, live - 11);
        EXPECT_EQ(a[0], 9);

        tArray<Tracked> copy(a);
        EXPECT_EQ(Values(copy), Values(a));
        *copy[0].mValue = 1234; // deep copy: the source is unchanged
        EXPECT_EQ(a[0], 9);
        EXPECT_EQ(Tracked::sLive, 2 * (live - 11));

        tArray<Tracked> moved(std::move(copy));
        EXPECT_EQ(copy.Count(), 0);
        EXPECT_EQ(moved[0], 1234);
        copy = moved;
        moved = std::move(a);
        EXPECT_EQ(moved[0], 9);
        a.SetCount(5);
        EXPECT_EQ(Tracked::sLive, 2 * (live - 11) + 5);
        a.Append(a); // appending itself
        EXPECT_EQ(a.Count(), 10);
        a.Clear();
        EXPECT_EQ(Tracked::sLive, 2 * (live - 11));
    }
    EXPECT_EQ(Tracked::sLive, 0);
}

TEST(Array, IteratorsWalkEveryElement) {
    tArray<int> a;
    EXPECT_TRUE(a.begin() == a.end());
    for (int i = 1; i <= 100; ++i) {
        a.Append(i);
    }
    int sum = 0;
    for (int& v : a) {
        v *= 2;
    }
    const tArray<int>& c = a;
    for (const int& v : c) {
        sum += v;
    }
    EXPECT_EQ(sum, 10100);
    tArray<int>::const_iterator it = a.begin();
    EXPECT_EQ(*it++, 2);
    EXPECT_EQ(*it, 4);
    EXPECT_NE(std::find(c.begin(), c.end(), 200), c.end());
}

TEST(ArrayDeathTest, MisuseNamesTheExpression) {
    tArray<int> a;
    EXPECT_EXIT(a.First(), testing::ExitedWithCode(0), "Expression: mCount");
    EXPECT_EXIT(a.RemoveLast(), testing::ExitedWithCode(0), "Expression: mCount");
    a.Append(1);
    EXPECT_EXIT(a[1], testing::ExitedWithCode(0),
                "Assertion failed.*File: Array.h.*Expression: pIdx >= 0 && pIdx < mCount");
    EXPECT_EXIT(a[-1], testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < mCount");
    EXPECT_EXIT(a.Remove(1), testing::ExitedWithCode(0), "pIdx >= 0 && pIdx < mCount");
    EXPECT_EXIT(a.Append(nullptr, 3), testing::ExitedWithCode(0), "pData && pCount > 0");
    const int v[] = {1};
    EXPECT_EXIT(a.Append(v, 0), testing::ExitedWithCode(0), "pData && pCount > 0");
    EXPECT_EXIT(a.Insert(2, v, 1), testing::ExitedWithCode(0),
                "pIdx >= 0 && pIdx <= mCount && pData && pCount > 0");
    EXPECT_EXIT(a.SetCount(-1), testing::ExitedWithCode(0), "pCount >= 0");
    EXPECT_EXIT(a.SetGrowthUnit(0), testing::ExitedWithCode(0), "pUnit >= 1");
    EXPECT_EXIT(tArray<int>::Move(a, 0, 1), testing::ExitedWithCode(0),
                "0 <= pFrom && pFrom < pArray.mCount && 0 <= pTo && pTo < pArray.mCount");
    auto it = a.end();
    EXPECT_EXIT(++it, testing::ExitedWithCode(0), "mPos != mEnd");
}
