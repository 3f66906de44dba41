#include "Engine/Common/Base/Allocator.h"

#include "Engine/Common/Base/Assert.h"

#include <cstdlib>
#include <new>

namespace Quillanor::Common {

template class tSingletonBase<cAllocatorManager>;
template class tSingleton<cAllocatorManager>;

// Sits just before every item: the free-list link, then the mark.
struct cAllocator::sAllocItemHdr {
    sAllocItemHdr* Next;
    std::uint32_t Mark;
    std::uint32_t Reserved;
};

namespace {
constexpr int kBlockTableGrowth = 64;
} // namespace

cAllocator::cAllocator(unsigned int itemSize)
    : mItemSize(itemSize), mStride(((itemSize + 7u) & ~7u) + sizeof(sAllocItemHdr)) {}

cAllocator::~cAllocator() {
    for (int i = 0; i < mBlockCount; ++i) {
        std::free(mBlocks[i]);
    }
    std::free(mBlocks);
}

void cAllocator::NewBlock() {
    if (mBlockCount == mBlockCapacity) {
        const int capacity = mBlockCapacity + kBlockTableGrowth;
        void* table = std::realloc(mBlocks, sizeof(unsigned char*) * capacity);
        if (table == nullptr) {
            throw std::bad_alloc();
        }
        mBlocks = static_cast<unsigned char**>(table);
        mBlockCapacity = capacity;
    }
    auto* block = static_cast<unsigned char*>(std::malloc(std::size_t(mStride) * ItemsPerBlock));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    mBlocks[mBlockCount++] = block;
    // Pushed in order, so the block's last item is handed out first.
    for (int i = 0; i < ItemsPerBlock; ++i) {
        auto* header = reinterpret_cast<sAllocItemHdr*>(block + std::size_t(mStride) * i);
        header->Next = mFreeList;
        header->Mark = FreeMark;
        header->Reserved = 0;
        mFreeList = header;
    }
}

void* cAllocator::Allocate() {
    cBlockLocker lock(this);
    if (mFreeList == nullptr) [[unlikely]] {
        NewBlock();
    }
    sAllocItemHdr* header = mFreeList;
    mFreeList = header->Next;
    header->Mark = AllocatedMark;
    ++mAllocatedCount;
    return header + 1;
}

void cAllocator::Free(void* item) {
    cBlockLocker lock(this);
    item = static_cast<sAllocItemHdr*>(item) - 1;
    // clang-format off
    QC_ASSERT_MSG(((sAllocItemHdr*)item)->Mark == 0x42424242, u"Freeing a non-allocated item");
    // clang-format on
    auto* header = static_cast<sAllocItemHdr*>(item);
    header->Mark = FreeMark;
    header->Next = mFreeList;
    mFreeList = header;
    --mAllocatedCount;
}

int cAllocator::AllocatedCount() const {
    cBlockLocker lock(this);
    return mAllocatedCount;
}

int cAllocator::BlockCount() const {
    cBlockLocker lock(this);
    return mBlockCount;
}

cAllocatorManager::~cAllocatorManager() {
    for (int i = 0; i < mCount; ++i) {
        delete mAllocators[i];
    }
    std::free(mAllocators);
}

cAllocator* cAllocatorManager::GetAllocator(unsigned int itemSize) {
    cBlockLocker lock(this);
    for (int i = 0; i < mCount; ++i) {
        if (mAllocators[i]->ItemSize() == itemSize) {
            return mAllocators[i];
        }
    }
    if (mCount == mCapacity) {
        const int capacity = mCapacity + kBlockTableGrowth;
        void* table = std::realloc(mAllocators, sizeof(cAllocator*) * capacity);
        if (table == nullptr) {
            throw std::bad_alloc();
        }
        mAllocators = static_cast<cAllocator**>(table);
        mCapacity = capacity;
    }
    mAllocators[mCount] = new cAllocator(itemSize);
    return mAllocators[mCount++];
}

} // namespace Quillanor::Common
