// tPriorityQueue<T, Less>: a binary heap over a tArray (so T follows tArray's element
// contract). Top is the greatest element by Less; equal elements come out in no fixed order.
// Top or Pop of an empty queue is a fatal assertion. Not synchronised.
#pragma once

#include "Engine/Common/Base/Array.h"

#include <functional>
#include <utility>

namespace Quillanor::Common {

template <typename T, typename Less = std::less<T>>
class tPriorityQueue {
public:
    explicit tPriorityQueue(Less pLess = Less()) : mLess(std::move(pLess)) {}

    int Count() const { return mHeap.Count(); }
    bool IsEmpty() const { return mHeap.Count() == 0; }
    void Clear() { mHeap.Clear(); }

    const T& Top() const { return mHeap.First(); }

    void Push(const T& pValue) {
        mHeap.Append(pValue);
        SiftUp(mHeap.Count() - 1);
    }

    // Removes the top element and returns it.
    T Pop() {
        T top = std::move(mHeap.First());
        const int last = mHeap.Count() - 1;
        if (last > 0) {
            mHeap[0] = std::move(mHeap[last]);
        }
        mHeap.RemoveLast();
        if (last > 1) {
            SiftDown(0);
        }
        return top;
    }

private:
    void SiftUp(int pIdx) {
        T* h = mHeap.Data();
        while (pIdx > 0) {
            const int parent = (pIdx - 1) / 2;
            if (!mLess(h[parent], h[pIdx])) {
                break;
            }
            std::swap(h[parent], h[pIdx]);
            pIdx = parent;
        }
    }

    void SiftDown(int pIdx) {
        T* h = mHeap.Data();
        const int count = mHeap.Count();
        for (;;) {
            int best = pIdx;
            const int left = 2 * pIdx + 1;
            if (left < count && mLess(h[best], h[left])) {
                best = left;
            }
            if (left + 1 < count && mLess(h[best], h[left + 1])) {
                best = left + 1;
            }
            if (best == pIdx) {
                return;
            }
            std::swap(h[best], h[pIdx]);
            pIdx = best;
        }
    }

    tArray<T> mHeap;
    [[no_unique_address]] Less mLess;
};

} // namespace Quillanor::Common
