// tArray<T>: the library's growable contiguous array.
//
// Storage is one heap block obtained with malloc/realloc. Appending n elements to a full array
// grows the capacity by the growth unit (default 64), or to exactly the needed count when one
// unit is not enough; removing elements never gives memory back (Clear keeps the block too).
//
// Element contract: T must be trivially relocatable. Elements are moved inside the block and
// across reallocations with a plain byte copy, without calling a move constructor or the
// destructor of the old place. The library's own element types (cString, cVariant, handles,
// plain records) keep no pointer into themselves and satisfy this. A type that does (for
// example libstdc++'s std::string with its short-string buffer) must specialize
// tIsTriviallyRelocatable to false, which turns its use into a compile error.
//
// Index errors and other misuse are fatal assertions. Not synchronised: an array shared
// between threads must be guarded by its users.
#pragma once

#include "Engine/Common/Base/Assert.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>
#include <type_traits>
#include <utility>

namespace Quillanor::Common {

// Opt-out trait for element types that must not be moved with a byte copy.
template <typename T>
struct tIsTriviallyRelocatable : std::true_type {};

template <typename T>
class tArray {
    static_assert(tIsTriviallyRelocatable<T>::value,
                  "tArray moves elements with a byte copy; this type does not allow it");
    static_assert(alignof(T) <= alignof(std::max_align_t), "over-aligned elements");

public:
    static constexpr int DefaultGrowthUnit = 64;

    // Forward iterator over a range of elements; stepping past the end is an assertion.
    template <typename E>
    class tIterator {
    public:
        using value_type = std::remove_const_t<E>;
        using difference_type = std::ptrdiff_t;
        using pointer = E*;
        using reference = E&;
        using iterator_category = std::forward_iterator_tag;

        tIterator() = default;
        tIterator(E* pPos, E* pEnd) : mPos(pPos), mEnd(pEnd) {}
        // A mutable iterator converts to a read-only one.
        template <typename U = E>
        requires(!std::is_const_v<U>) operator tIterator<const U>() const {
            return tIterator<const U>(mPos, mEnd);
        }

        E& operator*() const { return *mPos; }
        E* operator->() const { return mPos; }
        tIterator& operator++() {
            QC_ASSERT(mPos != mEnd);
            ++mPos;
            return *this;
        }
        tIterator operator++(int) {
            tIterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const tIterator& pOther) const { return mPos == pOther.mPos; }

    private:
        E* mPos = nullptr;
        E* mEnd = nullptr;
    };
    using iterator = tIterator<T>;
    using const_iterator = tIterator<const T>;

    explicit tArray(int pUnit = DefaultGrowthUnit) { SetGrowthUnit(pUnit); }

    tArray(const tArray& pOther) : mGrowthUnit(pOther.mGrowthUnit) {
        if (pOther.mCount > 0) {
            Reallocate(pOther.mCount);
            CopyConstruct(mData, pOther.mData, pOther.mCount);
            mCount = pOther.mCount;
        }
    }

    tArray(tArray&& pOther) noexcept
        : mData(pOther.mData), mCount(pOther.mCount), mCapacity(pOther.mCapacity),
          mGrowthUnit(pOther.mGrowthUnit) {
        pOther.mData = nullptr;
        pOther.mCount = 0;
        pOther.mCapacity = 0;
    }

    // Copies the elements; the growth unit of this array is kept.
    tArray& operator=(const tArray& pOther) {
        if (this != &pOther) {
            Clear();
            if (pOther.mCount > 0) {
                if (pOther.mCount > mCapacity) {
                    Reallocate(pOther.mCount);
                }
                CopyConstruct(mData, pOther.mData, pOther.mCount);
                mCount = pOther.mCount;
            }
        }
        return *this;
    }

    tArray& operator=(tArray&& pOther) noexcept {
        if (this != &pOther) {
            DestroyAll();
            mData = pOther.mData;
            mCount = pOther.mCount;
            mCapacity = pOther.mCapacity;
            mGrowthUnit = pOther.mGrowthUnit;
            pOther.mData = nullptr;
            pOther.mCount = 0;
            pOther.mCapacity = 0;
        }
        return *this;
    }

    ~tArray() { DestroyAll(); }

    int Count() const { return mCount; }
    bool IsEmpty() const { return mCount == 0; }
    int Capacity() const { return mCapacity; }
    int GrowthUnit() const { return mGrowthUnit; }
    T* Data() { return mData; }
    const T* Data() const { return mData; }

    void SetGrowthUnit(int pUnit) {
        QC_ASSERT(pUnit >= 1);
        mGrowthUnit = pUnit;
    }

    T& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < mCount);
        return mData[pIdx];
    }
    const T& operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < mCount);
        return mData[pIdx];
    }

    T& First() {
        QC_ASSERT(mCount);
        return mData[0];
    }
    const T& First() const {
        QC_ASSERT(mCount);
        return mData[0];
    }
    T& Last() {
        QC_ASSERT(mCount);
        return mData[mCount - 1];
    }
    const T& Last() const {
        QC_ASSERT(mCount);
        return mData[mCount - 1];
    }

    // Appends a value-initialised element and returns it.
    T& Append() {
        Grow(1);
        T* slot = ::new (static_cast<void*>(mData + mCount)) T();
        ++mCount;
        return *slot;
    }

    // Appends a copy of pItem (which may be an element of this array).
    T& Append(const T& pItem) {
        if (mCount == mCapacity) {
            // Taken before the block moves: pItem may live in it.
            T held(pItem);
            Grow(1);
            return AppendConstructed(std::move(held));
        }
        return AppendConstructed(pItem);
    }

    T& Append(T&& pItem) {
        if (mCount == mCapacity) {
            T held(std::move(pItem));
            Grow(1);
            return AppendConstructed(std::move(held));
        }
        return AppendConstructed(std::move(pItem));
    }

    // Appends copies of pCount elements; the range must not lie inside this array.
    void Append(const T* pData, int pCount) {
        QC_ASSERT(pData && pCount > 0);
        Grow(pCount);
        CopyConstruct(mData + mCount, pData, pCount);
        mCount += pCount;
    }

    void Append(const tArray& pOther) {
        if (pOther.mCount > 0) {
            if (&pOther == this) {
                tArray copy(pOther);
                Append(copy.mData, copy.mCount);
            } else {
                Append(pOther.mData, pOther.mCount);
            }
        }
    }

    // Inserts a copy of pItem (which may be an element of this array) before position pIdx
    // (0..Count()).
    T& Insert(int pIdx, const T& pItem) {
        if (mCount == mCapacity || IsInside(&pItem)) {
            const T held(pItem);
            Insert(pIdx, &held, 1);
        } else {
            Insert(pIdx, &pItem, 1);
        }
        return mData[pIdx];
    }

    // Inserts copies of pCount elements before position pIdx; the range must not lie inside
    // this array.
    void Insert(int pIdx, const T* pData, int pCount) {
        QC_ASSERT(pIdx >= 0 && pIdx <= mCount && pData && pCount > 0);
        Grow(pCount);
        T* at = mData + pIdx;
        std::memmove(static_cast<void*>(at + pCount), static_cast<const void*>(at),
                     static_cast<std::size_t>(mCount - pIdx) * sizeof(T));
        CopyConstruct(at, pData, pCount);
        mCount += pCount;
    }

    // Removes the element at pIdx; the following ones move down by one.
    void Remove(int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < mCount);
        mData[pIdx].~T();
        T* at = mData + pIdx;
        std::memmove(static_cast<void*>(at), static_cast<const void*>(at + 1),
                     static_cast<std::size_t>(mCount - pIdx - 1) * sizeof(T));
        --mCount;
    }

    // Removes the element at pIdx by moving the last element into its place (order not kept).
    void RemoveFast(int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < mCount);
        mData[pIdx].~T();
        --mCount;
        if (pIdx != mCount) {
            std::memcpy(static_cast<void*>(mData + pIdx), static_cast<const void*>(mData + mCount),
                        sizeof(T));
        }
    }

    void RemoveLast() {
        QC_ASSERT(mCount);
        --mCount;
        mData[mCount].~T();
    }

    // Destroys every element; the block is kept.
    void Clear() {
        DestroyRange(0, mCount);
        mCount = 0;
    }

    // Sets the element count: new elements are value-initialised, surplus ones destroyed.
    void SetCount(int pCount) {
        QC_ASSERT(pCount >= 0);
        if (pCount < mCount) {
            DestroyRange(pCount, mCount);
        } else if (pCount > mCount) {
            Grow(pCount - mCount);
            for (int i = mCount; i < pCount; ++i) {
                ::new (static_cast<void*>(mData + i)) T();
            }
        }
        mCount = pCount;
    }

    // Makes room for at least pCapacity elements without changing the count.
    void Reserve(int pCapacity) {
        if (pCapacity > mCapacity) {
            Reallocate(pCapacity);
        }
    }

    // Moves the element at pFrom to position pTo; the elements between shift by one.
    static void Move(tArray& pArray, int pFrom, int pTo) {
        // clang-format off
        QC_ASSERT(0 <= pFrom && pFrom < pArray.mCount && 0 <= pTo && pTo < pArray.mCount);
        // clang-format on
        if (pFrom == pTo) {
            return;
        }
        alignas(T) unsigned char held[sizeof(T)];
        T* data = pArray.mData;
        std::memcpy(held, static_cast<const void*>(data + pFrom), sizeof(T));
        if (pFrom < pTo) {
            std::memmove(static_cast<void*>(data + pFrom),
                         static_cast<const void*>(data + pFrom + 1),
                         static_cast<std::size_t>(pTo - pFrom) * sizeof(T));
        } else {
            std::memmove(static_cast<void*>(data + pTo + 1), static_cast<const void*>(data + pTo),
                         static_cast<std::size_t>(pFrom - pTo) * sizeof(T));
        }
        std::memcpy(static_cast<void*>(data + pTo), held, sizeof(T));
    }
    void Move(int pFrom, int pTo) { Move(*this, pFrom, pTo); }

    // Index of the first element equal to pItem (operator==), or -1.
    template <typename U>
    int IndexOf(const U& pItem) const {
        for (int i = 0; i < mCount; ++i) {
            if (mData[i] == pItem) {
                return i;
            }
        }
        return -1;
    }
    template <typename U>
    bool Contains(const U& pItem) const {
        return IndexOf(pItem) >= 0;
    }

    iterator begin() { return iterator(mData, mData + mCount); }
    iterator end() { return iterator(mData + mCount, mData + mCount); }
    const_iterator begin() const { return const_iterator(mData, mData + mCount); }
    const_iterator end() const { return const_iterator(mData + mCount, mData + mCount); }

private:
    bool IsInside(const T* p) const {
        // Compared as integers: the pointer may belong to another object.
        const auto addr = reinterpret_cast<std::uintptr_t>(p);
        return addr >= reinterpret_cast<std::uintptr_t>(mData) &&
               addr < reinterpret_cast<std::uintptr_t>(mData + mCount);
    }

    template <typename U>
    T& AppendConstructed(U&& pItem) {
        T* slot = ::new (static_cast<void*>(mData + mCount)) T(std::forward<U>(pItem));
        ++mCount;
        return *slot;
    }

    // Room for pExtra more elements: capacity + growth unit, or exactly what is needed.
    void Grow(int pExtra) {
        const long long need = static_cast<long long>(mCount) + pExtra;
        if (need <= mCapacity) {
            return;
        }
        long long capacity = static_cast<long long>(mCapacity) + mGrowthUnit;
        if (capacity < need) {
            capacity = need;
        }
        if (capacity > 0x7fffffff) {
            if (need > 0x7fffffff) {
                throw std::bad_alloc();
            }
            capacity = need;
        }
        Reallocate(static_cast<int>(capacity));
    }

    void Reallocate(int pCapacity) {
        void* block = std::realloc(static_cast<void*>(mData),
                                   static_cast<std::size_t>(pCapacity) * sizeof(T));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        mData = static_cast<T*>(block);
        mCapacity = pCapacity;
    }

    static void CopyConstruct(T* pTo, const T* pFrom, int pCount) {
        if constexpr (std::is_trivially_copy_constructible_v<T>) {
            std::memcpy(static_cast<void*>(pTo), static_cast<const void*>(pFrom),
                        static_cast<std::size_t>(pCount) * sizeof(T));
        } else {
            for (int i = 0; i < pCount; ++i) {
                ::new (static_cast<void*>(pTo + i)) T(pFrom[i]);
            }
        }
    }

    void DestroyRange(int pFrom, int pTo) {
        if constexpr (!std::is_trivially_destructible_v<T>) {
            for (int i = pFrom; i < pTo; ++i) {
                mData[i].~T();
            }
        }
    }

    void DestroyAll() {
        DestroyRange(0, mCount);
        std::free(static_cast<void*>(mData));
        mData = nullptr;
        mCount = 0;
        mCapacity = 0;
    }

    T* mData = nullptr;
    int mCount = 0;
    int mCapacity = 0;
    int mGrowthUnit = DefaultGrowthUnit;
};

} // namespace Quillanor::Common
