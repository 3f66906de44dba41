#include "Engine/Common/Base/CircularBuffer.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <vector>

using namespace Quillanor::Common;

namespace {

using Bytes = std::vector<unsigned char>;

Bytes ReadAll(cCircularBuffer& b, int n) {
    Bytes out(static_cast<std::size_t>(n) + 4, 0xEE);
    const int got = b.Read(out.data(), n);
    out.resize(static_cast<std::size_t>(got));
    return out;
}

} // namespace

TEST(CircularBuffer, FifoWithoutGrowthTruncates) {
    cCircularBuffer b(4, false, false);
    const unsigned char six[] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(b.Write(six, 6), 4);
    EXPECT_EQ(b.UsedSize(), 4);
    EXPECT_EQ(b.Write(six, 1), 0); // full
    EXPECT_EQ(ReadAll(b, 10), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(b.UsedSize(), 0);
    EXPECT_EQ(b.Read(nullptr, 0), 0);
    // Wrapping writes and reads keep the order.
    EXPECT_EQ(b.Write(six, 3), 3);
    EXPECT_EQ(ReadAll(b, 2), (Bytes{1, 2}));
    EXPECT_EQ(b.Write(six + 3, 3), 3); // wraps past the end
    EXPECT_EQ(ReadAll(b, 4), (Bytes{3, 4, 5, 6}));
    EXPECT_EQ(b.Size(), 4);
}

TEST(CircularBuffer, AutoGrowKeepsWrappedDataInOrder) {
    cCircularBuffer b(4, true, false);
    const unsigned char data[] = {1, 2, 3, 4, 5, 6};
    b.Write(data, 2);
    ReadAll(b, 2);                  // read and write positions at 2
    EXPECT_EQ(b.Write(data, 3), 3); // holds 1,2,3 at 2,3,0: wraps
    EXPECT_EQ(b.Write(data + 3, 3), 3);
    EXPECT_EQ(b.Size(), 6); // grew by exactly the missing 2 bytes
    EXPECT_EQ(ReadAll(b, 10), (Bytes{1, 2, 3, 4, 5, 6}));

    // A full buffer whose positions coincide grows correctly too.
    cCircularBuffer c(3, true, false);
    c.Write(data, 3);
    EXPECT_EQ(c.Write(data + 3, 2), 2);
    EXPECT_EQ(c.Size(), 5);
    EXPECT_EQ(ReadAll(c, 5), (Bytes{1, 2, 3, 4, 5}));

    // Against a model queue with random operations.
    cCircularBuffer r;
    std::deque<unsigned char> model;
    std::mt19937 rng(11);
    unsigned char next = 0;
    for (int i = 0; i < 2000; ++i) {
        if (rng() % 2) {
            Bytes chunk(rng() % 40);
            for (auto& x : chunk) {
                x = next++;
                model.push_back(x);
            }
            ASSERT_EQ(r.Write(chunk.data(), int(chunk.size())), int(chunk.size()));
        } else {
            const Bytes got = ReadAll(r, int(rng() % 40));
            for (unsigned char x : got) {
                ASSERT_EQ(x, model.front());
                model.pop_front();
            }
        }
        ASSERT_EQ(r.UsedSize(), int(model.size()));
    }
}

TEST(CircularBuffer, TailModeReturnsTheLatestBytes) {
    cCircularBuffer b(4, false, true);
    const unsigned char data[] = {1, 2, 3, 4, 5};
    for (const unsigned char& x : data) {
        b.Write(&x, 1);
    }
    EXPECT_EQ(ReadAll(b, 2), (Bytes{4, 5}));
    EXPECT_EQ(ReadAll(b, 2), (Bytes{4, 5})); // nothing consumed
    EXPECT_EQ(ReadAll(b, 4), (Bytes{2, 3, 4, 5}));
    EXPECT_EQ(b.UsedSize(), 0); // not maintained in tail mode
    b.Write(data, 3);
    EXPECT_EQ(ReadAll(b, 4), (Bytes{5, 1, 2, 3}));
}

TEST(CircularBuffer, SizeModeClearZeroAndCopies) {
    cCircularBuffer b(4, false, false);
    const unsigned char data[] = {9, 8, 7};
    b.Write(data, 3);
    b.SetSize(4); // same size: nothing changes
    EXPECT_EQ(b.UsedSize(), 3);
    cCircularBuffer copy(b);
    EXPECT_EQ(ReadAll(b, 3), (Bytes{9, 8, 7}));
    EXPECT_EQ(ReadAll(copy, 3), (Bytes{9, 8, 7}));

    b.Write(data, 2);
    b.SetSize(8);
    EXPECT_EQ(b.Size(), 8);
    EXPECT_EQ(b.UsedSize(), 0);

    b.Write(data, 3);
    b.Clear();
    EXPECT_EQ(b.UsedSize(), 0);
    b.Zero();
    b.SetTailMode(true);
    EXPECT_TRUE(b.TailMode());
    EXPECT_EQ(ReadAll(b, 3), (Bytes{0, 0, 0}));
    b.Write(data, 1);
    b.SetTailMode(false);
    EXPECT_EQ(b.UsedSize(), 0);
    EXPECT_FALSE(b.AutoGrow());
    b.SetAutoGrow(true);
    EXPECT_TRUE(b.AutoGrow());
}

TEST(CircularBufferDeathTest, MisuseNamesTheExpression) {
    cCircularBuffer b(4, false, true);
    unsigned char out[8] = {};
    EXPECT_EXIT(b.Write(out, 5), testing::ExitedWithCode(0), "Expression: pSize <= Size\\(\\)");
    EXPECT_EXIT(b.Read(out, 5), testing::ExitedWithCode(0), "Expression: pSize <= Size\\(\\)");
    EXPECT_EXIT(b.SetSize(0), testing::ExitedWithCode(0), "Expression: pSize > 0");
    cCircularBuffer f(4, false, false);
    EXPECT_EXIT(f.Write(out, -1), testing::ExitedWithCode(0), "Expression: pSize >= 0");
    EXPECT_EXIT(f.Read(out, -1), testing::ExitedWithCode(0),
                "File: CircularBuffer.cpp.*Expression: pSize >= 0");
}
