// tDictionary<K, V, Buckets, Allocator>: a hash map that keeps insertion order.
//
// Keys are bucketed by cHash::Get(key) % Buckets (255 for the library's own tables) and each
// bucket is a doubly linked chain; a new node goes to the head of its chain and to the end of
// the insertion-order list, and enumeration always follows that order. Deleting a key keeps
// the order of the others. cString keys compare ignoring case (the hash agrees), so "Name" and
// "NAME" are one key; int keys hash to value * 11.
//
// Nodes are fixed-size items taken from an Allocator (Allocate() / Free(void*)), by default
// the shared cAllocatorManager allocator of the node size; nodes never move, so references to
// values stay valid until their key is deleted. The bucket table is allocated on the first
// insertion, so an empty dictionary costs a few words. Inserting an existing key is a fatal
// assertion, as is using an iterator that holds no item or asking an empty dictionary for its
// first or last item. Not synchronised.
#pragma once

#include "Engine/Common/Base/Allocator.h"
#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/Hash.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace Quillanor::Common {

// Key equality of dictionaries: operator== except where a faster equivalent exists.
template <typename K>
struct tDictionaryKeyEquals {
    static bool Equal(const K& a, const K& b) { return a == b; }
};

// Case-insensitive equality with the rule of cString::Compare. The case rule maps code units
// one to one, so equal keys have equal lengths; identical units skip the case mapping.
template <>
struct tDictionaryKeyEquals<cString> {
    static bool Equal(const cString& a, const cString& b) {
        const int length = a.Length();
        if (length != b.Length()) {
            return false;
        }
        const char16_t* x = a.Text();
        const char16_t* y = b.Text();
        // Lookups mostly find keys spelt exactly as stored.
        if (std::memcmp(x, y, sizeof(char16_t) * static_cast<std::size_t>(length)) == 0) {
            return true;
        }
        for (int i = 0; i < length; ++i) {
            if (x[i] != y[i] && ToUpper(x[i]) != ToUpper(y[i])) {
                return false;
            }
        }
        return true;
    }
};

template <typename K, typename V, int Buckets = 255, typename Allocator = cAllocator>
class tDictionary {
    static_assert(Buckets >= 1, "a dictionary needs at least one bucket");

public:
    // What enumeration yields: the key (not to be changed) and the value.
    struct sItem {
        const K mKey;
        V mValue;
        const K& Key() const { return mKey; }
        V& Value() { return mValue; }
        const V& Value() const { return mValue; }
    };

private:
    struct sNode : sItem {
        template <typename KK, typename... A>
        sNode(KK&& pKey, unsigned int pHash, A&&... pValue)
            : sItem{K(std::forward<KK>(pKey)), V(std::forward<A>(pValue)...)}, mHash(pHash) {}
        sNode* mNext = nullptr; // bucket chain
        sNode* mPrev = nullptr;
        sNode* mOrdNext = nullptr; // insertion order
        sNode* mOrdPrev = nullptr;
        unsigned int mHash;
    };
    struct sBucket {
        sNode* mHead;
        sNode* mTail;
        int mCount;
    };

public:
    // Walks the items in insertion order. Dereferencing or stepping an iterator that holds no
    // item (end()) is a fatal assertion.
    template <typename I>
    class tIterator {
    public:
        tIterator() = default;
        I& operator*() const {
            QC_ASSERT(mItem);
            return *mItem;
        }
        I* operator->() const { return &**this; }
        tIterator& operator++() {
            QC_ASSERT(mItem);
            mItem = mItem->mOrdNext;
            return *this;
        }
        tIterator& operator--() {
            QC_ASSERT(mItem);
            mItem = mItem->mOrdPrev;
            return *this;
        }
        bool operator==(const tIterator& pOther) const { return mItem == pOther.mItem; }
        explicit operator bool() const { return mItem != nullptr; }
        const K& Key() const { return (**this).mKey; }
        auto& Value() const { return (**this).mValue; }

    private:
        friend class tDictionary;
        explicit tIterator(sNode* pItem) : mItem(pItem) {}
        sNode* mItem = nullptr;
    };
    using iterator = tIterator<sItem>;
    using const_iterator = tIterator<const sItem>;

    // Nodes from pAllocator, or from the shared allocator of the node size when null.
    explicit tDictionary(Allocator* pAllocator = nullptr)
        : mAllocator(pAllocator != nullptr ? pAllocator : DefaultAllocator()) {}
    tDictionary(const tDictionary& pOther) : mAllocator(pOther.mAllocator) { CopyFrom(pOther); }
    tDictionary(tDictionary&& pOther) noexcept
        : mAllocator(pOther.mAllocator), mBuckets(pOther.mBuckets), mOrdFirst(pOther.mOrdFirst),
          mOrdLast(pOther.mOrdLast), mCount(pOther.mCount) {
        pOther.mBuckets = nullptr;
        pOther.mOrdFirst = nullptr;
        pOther.mOrdLast = nullptr;
        pOther.mCount = 0;
    }
    tDictionary& operator=(const tDictionary& pOther) {
        if (this != &pOther) {
            Clear();
            CopyFrom(pOther);
        }
        return *this;
    }
    tDictionary& operator=(tDictionary&& pOther) noexcept {
        if (this != &pOther) {
            Clear();
            std::free(mBuckets);
            mAllocator = pOther.mAllocator;
            mBuckets = pOther.mBuckets;
            mOrdFirst = pOther.mOrdFirst;
            mOrdLast = pOther.mOrdLast;
            mCount = pOther.mCount;
            pOther.mBuckets = nullptr;
            pOther.mOrdFirst = nullptr;
            pOther.mOrdLast = nullptr;
            pOther.mCount = 0;
        }
        return *this;
    }
    ~tDictionary() {
        Clear();
        std::free(mBuckets);
    }

    int Count() const { return mCount; }
    bool IsEmpty() const { return mCount == 0; }

    // The value stored under pKey, or null.
    V* Find(const K& pKey) {
        sNode* node = FindNode(pKey, cHash::Get(pKey));
        return node != nullptr ? &node->mValue : nullptr;
    }
    const V* Find(const K& pKey) const { return const_cast<tDictionary*>(this)->Find(pKey); }
    bool ContainsKey(const K& pKey) const { return Find(pKey) != nullptr; }
    // The item of pKey, or end().
    iterator FindItem(const K& pKey) { return iterator(FindNode(pKey, cHash::Get(pKey))); }
    const_iterator FindItem(const K& pKey) const {
        return const_iterator(const_cast<tDictionary*>(this)->FindNode(pKey, cHash::Get(pKey)));
    }

    // Inserts a new key with a value built from pValue (value-initialised when none is given)
    // and returns the value. The key must not be present yet.
    template <typename... A>
    V& Insert(const K& pKey, A&&... pValue) {
        const unsigned int hash = cHash::Get(pKey);
        sBucket& bucket = BucketOf(hash);
        for (sNode* hi = bucket.mHead; hi != nullptr; hi = hi->mNext) {
            if (hi->mHash == hash) {
                QC_ASSERT(hi->mKey != pKey);
            }
        }
        return Link(bucket, NewNode(pKey, hash, std::forward<A>(pValue)...))->mValue;
    }

    // The value under pKey, inserted value-initialised when missing.
    V& operator[](const K& pKey) {
        const unsigned int hash = cHash::Get(pKey);
        if (sNode* node = FindNode(pKey, hash)) {
            return node->mValue;
        }
        return Link(BucketOf(hash), NewNode(pKey, hash))->mValue;
    }

    // Removes pKey; false when it was not present.
    bool Delete(const K& pKey) {
        sNode* node = FindNode(pKey, cHash::Get(pKey));
        if (node == nullptr) {
            return false;
        }
        Unlink(node);
        return true;
    }
    // Removes the item at pPos and returns the iterator of the next one in order.
    iterator Delete(iterator pPos) {
        sNode* node = pPos.mItem;
        QC_ASSERT(node);
        sNode* next = node->mOrdNext;
        Unlink(node);
        return iterator(next);
    }

    void Clear() {
        sNode* node = mOrdFirst;
        while (node != nullptr) {
            sNode* next = node->mOrdNext;
            DeleteNode(node);
            node = next;
        }
        if (mBuckets != nullptr) {
            for (int i = 0; i < Buckets; ++i) {
                mBuckets[i] = sBucket{nullptr, nullptr, 0};
            }
        }
        mOrdFirst = nullptr;
        mOrdLast = nullptr;
        mCount = 0;
    }

    // First and last item in insertion order.
    sItem& First() {
        QC_ASSERT(mOrdFirst);
        return *mOrdFirst;
    }
    const sItem& First() const {
        QC_ASSERT(mOrdFirst);
        return *mOrdFirst;
    }
    sItem& Last() {
        QC_ASSERT(mOrdLast);
        return *mOrdLast;
    }
    const sItem& Last() const {
        QC_ASSERT(mOrdLast);
        return *mOrdLast;
    }

    iterator begin() { return iterator(mOrdFirst); }
    iterator end() { return iterator(nullptr); }
    const_iterator begin() const { return const_iterator(mOrdFirst); }
    const_iterator end() const { return const_iterator(nullptr); }
    // The last item (end() when empty), for walking backwards with --.
    iterator LastItem() { return iterator(mOrdLast); }
    const_iterator LastItem() const { return const_iterator(mOrdLast); }

    // Number of keys in the bucket of pKey (for diagnostics and tests).
    int BucketCount(const K& pKey) const {
        return mBuckets != nullptr ? mBuckets[cHash::Get(pKey) % Buckets].mCount : 0;
    }

private:
    static Allocator* DefaultAllocator() {
        static_assert(std::is_same_v<Allocator, cAllocator>,
                      "pass the allocator of other allocator types explicitly");
        return cAllocatorManager::Instance()->GetAllocator(sizeof(sNode));
    }

    sBucket& BucketOf(unsigned int pHash) {
        if (mBuckets == nullptr) {
            mBuckets = static_cast<sBucket*>(std::calloc(Buckets, sizeof(sBucket)));
            if (mBuckets == nullptr) {
                throw std::bad_alloc();
            }
        }
        return mBuckets[pHash % Buckets];
    }

    sNode* FindNode(const K& pKey, unsigned int pHash) {
        if (mBuckets == nullptr) {
            return nullptr;
        }
        for (sNode* n = mBuckets[pHash % Buckets].mHead; n != nullptr; n = n->mNext) {
            if (n->mHash == pHash && tDictionaryKeyEquals<K>::Equal(n->mKey, pKey)) {
                return n;
            }
        }
        return nullptr;
    }

    template <typename... A>
    sNode* NewNode(const K& pKey, unsigned int pHash, A&&... pValue) {
        void* memory = mAllocator->Allocate();
        try {
            return ::new (memory) sNode(pKey, pHash, std::forward<A>(pValue)...);
        } catch (...) {
            mAllocator->Free(memory);
            throw;
        }
    }

    void DeleteNode(sNode* pNode) {
        pNode->~sNode();
        mAllocator->Free(pNode);
    }

    sNode* Link(sBucket& pBucket, sNode* pNode) {
        pNode->mNext = pBucket.mHead;
        if (pBucket.mHead != nullptr) {
            pBucket.mHead->mPrev = pNode;
        } else {
            pBucket.mTail = pNode;
        }
        pBucket.mHead = pNode;
        ++pBucket.mCount;
        pNode->mOrdPrev = mOrdLast;
        (mOrdLast != nullptr ? mOrdLast->mOrdNext : mOrdFirst) = pNode;
        mOrdLast = pNode;
        ++mCount;
        return pNode;
    }

    void Unlink(sNode* pNode) {
        sBucket& bucket = mBuckets[pNode->mHash % Buckets];
        (pNode->mPrev != nullptr ? pNode->mPrev->mNext : bucket.mHead) = pNode->mNext;
        (pNode->mNext != nullptr ? pNode->mNext->mPrev : bucket.mTail) = pNode->mPrev;
        --bucket.mCount;
        (pNode->mOrdPrev != nullptr ? pNode->mOrdPrev->mOrdNext : mOrdFirst) = pNode->mOrdNext;
        (pNode->mOrdNext != nullptr ? pNode->mOrdNext->mOrdPrev : mOrdLast) = pNode->mOrdPrev;
        --mCount;
        DeleteNode(pNode);
    }

    void CopyFrom(const tDictionary& pOther) {
        for (const sNode* n = pOther.mOrdFirst; n != nullptr; n = n->mOrdNext) {
            Link(BucketOf(n->mHash), NewNode(n->mKey, n->mHash, n->mValue));
        }
    }

    Allocator* mAllocator;
    sBucket* mBuckets = nullptr; // Buckets entries once the first key is inserted
    sNode* mOrdFirst = nullptr;
    sNode* mOrdLast = nullptr;
    int mCount = 0;
};

} // namespace Quillanor::Common
