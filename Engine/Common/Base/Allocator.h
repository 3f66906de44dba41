// Fixed-size allocators and object pools.
//
// cAllocator hands out items of one size carved from blocks of 64, with a free list and a
// guard mark in each item's header, so list and dictionary nodes stay off the general heap.
// Every call takes the allocator's lock; blocks go back to the system only when the allocator
// is destroyed. cAllocatorManager (a lazy singleton) owns one shared allocator per item size.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Singleton.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

#include <cstdint>

namespace Quillanor::Common {

// Thread-safe allocator of items of one size. Items are aligned to 8 bytes.
class QC_API cAllocator : public cThreadSafe {
public:
    static constexpr int ItemsPerBlock = 64;
    // Marks in an item's header while it is handed out / on the free list.
    static constexpr std::uint32_t AllocatedMark = 0x42424242;
    static constexpr std::uint32_t FreeMark = 0x19690212;

    explicit cAllocator(unsigned int itemSize);
    // Frees every block; items still allocated become invalid.
    ~cAllocator() override;
    cAllocator(const cAllocator&) = delete;
    cAllocator& operator=(const cAllocator&) = delete;

    void* Allocate();
    // Freeing anything but an allocated item of this allocator (a double free) is a fatal
    // assertion.
    void Free(void* item);

    unsigned int ItemSize() const { return mItemSize; }
    // Bytes per item: the size rounded up to 8 plus the 16-byte header.
    unsigned int Stride() const { return mStride; }
    int AllocatedCount() const;
    int BlockCount() const;

private:
    struct sAllocItemHdr;
    void NewBlock();

    unsigned int mItemSize;
    unsigned int mStride;
    unsigned char** mBlocks = nullptr;
    int mBlockCount = 0;
    int mBlockCapacity = 0;
    int mAllocatedCount = 0;
    sAllocItemHdr* mFreeList = nullptr;
};

class cAllocatorManager;
extern template class QC_INSTANCE_API tSingletonBase<cAllocatorManager>;
extern template class QC_INSTANCE_API tSingleton<cAllocatorManager>;

// Owns one shared allocator per item size; allocators live as long as the manager.
class QC_API cAllocatorManager : public tSingleton<cAllocatorManager>, public cThreadSafe {
public:
    // The allocator for `itemSize`-byte items, created on first request. Thread-safe.
    cAllocator* GetAllocator(unsigned int itemSize);

private:
    friend class tSingletonBase<cAllocatorManager>;
    cAllocatorManager() = default;
    ~cAllocatorManager() override;

    cAllocator** mAllocators = nullptr;
    int mCount = 0;
    int mCapacity = 0;
};

} // namespace Quillanor::Common
