// tClassArray<T>: an array of heap objects owned by the array, for element types that may not
// be moved with a byte copy (objects with self-references, polymorphic objects, large
// records). The array holds pointers, so elements never move and references stay valid until
// the element is removed. Removing an element or destroying the array deletes the objects.
// Not synchronised.
#pragma once

#include "Engine/Common/Base/Array.h"

#include <utility>

namespace Quillanor::Common {

template <typename T>
class tClassArray {
public:
    tClassArray() = default;
    tClassArray(const tClassArray& pOther) { CopyFrom(pOther); }
    tClassArray& operator=(const tClassArray& pOther) {
        if (this != &pOther) {
            Clear();
            CopyFrom(pOther);
        }
        return *this;
    }
    tClassArray(tClassArray&& pOther) noexcept = default;
    tClassArray& operator=(tClassArray&& pOther) noexcept {
        if (this != &pOther) {
            Clear();
            mItems = std::move(pOther.mItems);
        }
        return *this;
    }
    ~tClassArray() { Clear(); }

    int Count() const { return mItems.Count(); }
    T& operator[](int pIdx) { return *mItems[pIdx]; }
    const T& operator[](int pIdx) const { return *mItems[pIdx]; }

    // Constructs a new element from the arguments at the end.
    template <typename... A>
    T& Append(A&&... pArgs) {
        T* item = new T(std::forward<A>(pArgs)...);
        return Adopt(item);
    }
    // Takes ownership of pItem (allocated with new), appended at the end.
    T& Adopt(T* pItem) {
        try {
            mItems.Append(pItem);
        } catch (...) {
            delete pItem;
            throw;
        }
        return *pItem;
    }
    // Removes and deletes the element at pIdx.
    void Remove(int pIdx) {
        T* item = mItems[pIdx];
        mItems.Remove(pIdx);
        delete item;
    }
    // Removes the element at pIdx and hands it to the caller.
    T* Release(int pIdx) {
        T* item = mItems[pIdx];
        mItems.Remove(pIdx);
        return item;
    }
    void Clear() {
        for (T* item : mItems) {
            delete item;
        }
        mItems.Clear();
    }

private:
    void CopyFrom(const tClassArray& pOther) {
        for (const T* item : pOther.mItems) {
            Append(*item);
        }
    }

    tArray<T*> mItems;
};

} // namespace Quillanor::Common
