// tBuffer<T>: an owned, fixed-size heap block of trivially copyable elements, for scratch and
// I/O memory (cByteBuffer for bytes). Unlike tArray it has no count apart from its size and
// never constructs elements: SetSize leaves new memory uninitialised unless asked to keep or
// clear it. Copying copies the contents. Not synchronised.
#pragma once

#include "Engine/Common/Base/Assert.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace Quillanor::Common {

template <typename T>
class tBuffer {
    static_assert(std::is_trivially_copyable_v<T>, "tBuffer holds plain data only");

public:
    tBuffer() = default;
    explicit tBuffer(int pSize) { SetSize(pSize, false); }
    tBuffer(const tBuffer& pOther) : tBuffer() { *this = pOther; }
    tBuffer(tBuffer&& pOther) noexcept : mData(pOther.mData), mSize(pOther.mSize) {
        pOther.mData = nullptr;
        pOther.mSize = 0;
    }
    tBuffer& operator=(const tBuffer& pOther) {
        if (this != &pOther) {
            SetSize(pOther.mSize, false);
            if (mSize > 0) {
                std::memcpy(mData, pOther.mData, Bytes());
            }
        }
        return *this;
    }
    tBuffer& operator=(tBuffer&& pOther) noexcept {
        if (this != &pOther) {
            std::free(mData);
            mData = pOther.mData;
            mSize = pOther.mSize;
            pOther.mData = nullptr;
            pOther.mSize = 0;
        }
        return *this;
    }
    ~tBuffer() { std::free(mData); }

    // Resizes the block; with pKeep the leading min(old, new) elements are preserved.
    void SetSize(int pSize, bool pKeep) {
        QC_ASSERT(pSize >= 0);
        if (pSize == mSize) {
            return;
        }
        if (pSize == 0) {
            std::free(mData);
            mData = nullptr;
        } else if (pKeep) {
            void* block = std::realloc(mData, static_cast<std::size_t>(pSize) * sizeof(T));
            if (block == nullptr) {
                throw std::bad_alloc();
            }
            mData = static_cast<T*>(block);
        } else {
            void* block = std::malloc(static_cast<std::size_t>(pSize) * sizeof(T));
            if (block == nullptr) {
                throw std::bad_alloc();
            }
            std::free(mData);
            mData = static_cast<T*>(block);
        }
        mSize = pSize;
    }
    // Makes the buffer at least pSize elements large, keeping the contents.
    void EnsureSize(int pSize) {
        if (pSize > mSize) {
            SetSize(pSize, true);
        }
    }
    void Zero() {
        if (mSize > 0) {
            std::memset(mData, 0, Bytes());
        }
    }

    int Size() const { return mSize; }
    std::size_t Bytes() const { return static_cast<std::size_t>(mSize) * sizeof(T); }
    T* Data() { return mData; }
    const T* Data() const { return mData; }
    T& operator[](int pIdx) {
        QC_ASSERT(pIdx >= 0 && pIdx < mSize);
        return mData[pIdx];
    }
    const T& operator[](int pIdx) const {
        QC_ASSERT(pIdx >= 0 && pIdx < mSize);
        return mData[pIdx];
    }

private:
    T* mData = nullptr;
    int mSize = 0;
};

using cByteBuffer = tBuffer<unsigned char>;

} // namespace Quillanor::Common
