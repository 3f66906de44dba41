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

struct cPoolableObject::sPoolNode {
    sPoolNode* Prev;
    sPoolNode* Next;
    cPoolableObject* Object;
};

cCriticalSection cPoolableObject::sGlobalLocker;

cPoolableObject::~cPoolableObject() {
    QC_ASSERT(!mObtained);
}

const cCriticalSection& cPoolableObject::LockCount() {
    for (;;) {
        cObjectPoolBase* pool = mPool.load(std::memory_order_acquire);
        const cCriticalSection& lock = pool != nullptr ? pool->CriticalSection() : sGlobalLocker;
        lock.Enter();
        // The pool may have let go of the object while this thread waited for its lock.
        if (mPool.load(std::memory_order_relaxed) == pool) {
            return lock;
        }
        lock.Leave();
    }
}

int cPoolableObject::AddRef() {
    const cCriticalSection& lock = LockCount();
    const int count = cReferencedObject::AddRef();
    lock.Leave();
    return count;
}

int cPoolableObject::Release() {
    const cCriticalSection& lock = LockCount();
    cObjectPoolBase* pool = mPool.load(std::memory_order_relaxed);
    const int count = cReferencedObject::Release();
    // At 0 the object is gone; at 1 only the pool's reference is left.
    if (count == 1 && pool != nullptr && mObtained) {
        pool->ReturnObjectLocked(this);
    }
    lock.Leave();
    return count;
}

cObjectPoolBase::cObjectPoolBase()
    : mNodeAllocator(cAllocatorManager::Instance()->GetAllocator(sizeof(sNode))) {}

cObjectPoolBase::~cObjectPoolBase() {
    DetachAllObtained();
    Purge();
}

void cObjectPoolBase::Append(sList& list, sNode* node) {
    node->Next = nullptr;
    node->Prev = list.Tail;
    if (list.Tail != nullptr) {
        list.Tail->Next = node;
    } else {
        list.Head = node;
    }
    list.Tail = node;
    ++list.Count;
}

void cObjectPoolBase::Unlink(sList& list, sNode* node) {
    (node->Prev != nullptr ? node->Prev->Next : list.Head) = node->Next;
    (node->Next != nullptr ? node->Next->Prev : list.Tail) = node->Prev;
    --list.Count;
}

cPoolableObject* cObjectPoolBase::ObtainObject() {
    cBlockLocker lock(this);
    sNode* node = mFree.Head;
    if (node != nullptr) {
        Unlink(mFree, node);
    } else {
        cPoolableObject* object = CreateObject();
        node = static_cast<sNode*>(mNodeAllocator->Allocate());
        node->Object = object;
        object->mNode = node;
        // The pool's own reference; taken before mPool is set, so under the global lock.
        object->AddRef();
        cBlockLocker global(cPoolableObject::sGlobalLocker);
        object->mPool.store(this, std::memory_order_release);
    }
    node->Object->mObtained = true;
    Append(mObtained, node);
    return node->Object;
}

void cObjectPoolBase::ReturnObject(cPoolableObject* pObject) {
    cBlockLocker lock(this);
    ReturnObjectLocked(pObject);
}

void cObjectPoolBase::ReturnObjectLocked(cPoolableObject* pObject) {
    // clang-format off
    QC_ASSERT(pObject->mPool == this);
    QC_ASSERT(pObject->mObtained);
    QC_ASSERT(pObject->RefCount() == 1);
    // clang-format on
    pObject->mObtained = false;
    Unlink(mObtained, pObject->mNode);
    Append(mFree, pObject->mNode);
}

void cObjectPoolBase::Purge() {
    cBlockLocker lock(this);
    while (mFree.Head != nullptr) {
        sNode* node = mFree.Head;
        Unlink(mFree, node);
        cPoolableObject* object = node->Object;
        mNodeAllocator->Free(node);
        object->mNode = nullptr;
        object->cReferencedObject::Release();
    }
}

void cObjectPoolBase::DetachAllObtained() {
    cBlockLocker lock(this);
    while (mObtained.Head != nullptr) {
        sNode* node = mObtained.Head;
        Unlink(mObtained, node);
        cPoolableObject* object = node->Object;
        mNodeAllocator->Free(node);
        object->mNode = nullptr;
        object->mObtained = false;
        // From here on the object is free-standing: its count is guarded by the global lock.
        cBlockLocker global(cPoolableObject::sGlobalLocker);
        object->mPool.store(nullptr, std::memory_order_release);
        object->cReferencedObject::Release();
    }
}

int cObjectPoolBase::FreeCount() const {
    cBlockLocker lock(this);
    return mFree.Count;
}

int cObjectPoolBase::ObtainedCount() const {
    cBlockLocker lock(this);
    return mObtained.Count;
}

} // namespace Quillanor::Common
