// tList<T>: a doubly linked list whose nodes come from the shared fixed-size allocators of
// cAllocatorManager, so frequent insertion and removal stay off the general heap.
//
// Iterators stay valid until their own node is removed. Dereferencing or stepping an iterator
// that holds no node (an end iterator) is a fatal assertion. Not synchronised.
#pragma once

#include "Engine/Common/Base/Allocator.h"
#include "Engine/Common/Base/Assert.h"

#include <new>
#include <utility>

namespace Quillanor::Common {

template <typename T>
class tList {
    struct sNode {
        T mValue;
        sNode* mNext;
        sNode* mPrev;
    };

public:
    template <typename E>
    class tIterator {
    public:
        tIterator() = default;
        E& operator*() const {
            QC_ASSERT(mPos);
            return mPos->mValue;
        }
        E* operator->() const { return &**this; }
        tIterator& operator++() {
            QC_ASSERT(mPos);
            mPos = mPos->mNext;
            return *this;
        }
        tIterator& operator--() {
            QC_ASSERT(mPos);
            mPos = mPos->mPrev;
            return *this;
        }
        bool operator==(const tIterator& pOther) const { return mPos == pOther.mPos; }
        // True while the iterator holds a node.
        explicit operator bool() const { return mPos != nullptr; }

    private:
        friend class tList;
        explicit tIterator(sNode* pPos) : mPos(pPos) {}
        sNode* mPos = nullptr;
    };
    using iterator = tIterator<T>;
    using const_iterator = tIterator<const T>;

    tList() : mAllocator(cAllocatorManager::Instance()->GetAllocator(sizeof(sNode))) {}
    tList(const tList& pOther) : tList() {
        for (const T& v : pOther) {
            AddLast(v);
        }
    }
    tList& operator=(const tList& pOther) {
        if (this != &pOther) {
            Clear();
            for (const T& v : pOther) {
                AddLast(v);
            }
        }
        return *this;
    }
    ~tList() { Clear(); }

    int Count() const { return mCount; }
    bool IsEmpty() const { return mCount == 0; }

    T& AddFirst(const T& pValue) { return Link(NewNode(pValue), nullptr, mFirst); }
    T& AddLast(const T& pValue) { return Link(NewNode(pValue), mLast, nullptr); }
    // Inserts before pPos; an end iterator appends.
    T& InsertBefore(iterator pPos, const T& pValue) {
        sNode* next = pPos.mPos;
        return Link(NewNode(pValue), next != nullptr ? next->mPrev : mLast, next);
    }

    // Removes the node at pPos and returns the iterator of the next one.
    iterator Remove(iterator pPos) {
        sNode* node = pPos.mPos;
        QC_ASSERT(node);
        sNode* next = node->mNext;
        (node->mPrev != nullptr ? node->mPrev->mNext : mFirst) = next;
        (next != nullptr ? next->mPrev : mLast) = node->mPrev;
        --mCount;
        node->mValue.~T();
        mAllocator->Free(node);
        return iterator(next);
    }

    void Clear() {
        while (mFirst != nullptr) {
            Remove(iterator(mFirst));
        }
    }

    // The first node whose value equals pValue, or end().
    template <typename U>
    iterator Find(const U& pValue) {
        for (sNode* n = mFirst; n != nullptr; n = n->mNext) {
            if (n->mValue == pValue) {
                return iterator(n);
            }
        }
        return end();
    }

    iterator begin() { return iterator(mFirst); }
    iterator end() { return iterator(nullptr); }
    const_iterator begin() const { return const_iterator(mFirst); }
    const_iterator end() const { return const_iterator(nullptr); }
    // The last node (an end iterator when empty), for walking backwards.
    iterator Last() { return iterator(mLast); }

private:
    sNode* NewNode(const T& pValue) {
        void* memory = mAllocator->Allocate();
        sNode* node = static_cast<sNode*>(memory);
        try {
            ::new (static_cast<void*>(&node->mValue)) T(pValue);
        } catch (...) {
            mAllocator->Free(memory);
            throw;
        }
        return node;
    }

    T& Link(sNode* pNode, sNode* pPrev, sNode* pNext) {
        pNode->mPrev = pPrev;
        pNode->mNext = pNext;
        (pPrev != nullptr ? pPrev->mNext : mFirst) = pNode;
        (pNext != nullptr ? pNext->mPrev : mLast) = pNode;
        ++mCount;
        return pNode->mValue;
    }

    cAllocator* mAllocator;
    sNode* mFirst = nullptr;
    sNode* mLast = nullptr;
    int mCount = 0;
};

} // namespace Quillanor::Common
