// Fixed-size allocators and object pools.
//
// cAllocator hands out items of one size carved from blocks of 64, with a free list and a
// guard mark in each item's header, so list and dictionary nodes stay off the general heap.
// Every call takes the allocator's lock; blocks go back to the system only when the allocator
// is destroyed. cAllocatorManager (a lazy singleton) owns one shared allocator per item size.
//
// cObjectPoolBase keeps reusable cPoolableObjects: an obtained object goes back to its pool
// by itself when its last outside reference is released. tObjectPool<T> is the pool of one
// concrete type.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Object.h"
#include "Engine/Common/Base/Singleton.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

#include <atomic>
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

class QC_API cAllocatorManager;
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

class cObjectPoolBase;

// An object that may live in a pool. A pooled object's count includes one reference held by
// the pool, so it returns to the pool when the count falls back to 1. AddRef and Release of a
// pooled object run under its pool's lock, those of a free-standing one under one global
// lock, so both may be shared between threads (unlike plain cReferenced objects).
class QC_API cPoolableObject : public cReferencedObject {
public:
    cPoolableObject() = default;
    int AddRef() override;
    int Release() override;

    // The pool it belongs to, null for a free-standing object.
    cObjectPoolBase* Pool() const { return mPool.load(std::memory_order_acquire); }
    // Currently handed out by its pool.
    bool IsObtained() const { return mObtained; }

protected:
    // An object still handed out by its pool must not die ("!mObtained").
    ~cPoolableObject() override;

private:
    friend class cObjectPoolBase;
    struct sPoolNode;
    // Enters the lock that guards the count now (the pool's or the global one).
    const cCriticalSection& LockCount();

    static cCriticalSection sGlobalLocker;
    // Set under the global lock, cleared under the pool's and the global lock.
    std::atomic<cObjectPoolBase*> mPool{nullptr};
    bool mObtained = false;
    sPoolNode* mNode = nullptr; // its entry in the pool's free or obtained list
};

// A pool of reusable objects; thread-safe. The pool does not own obtained objects beyond its
// own reference: destroying the pool (through its last Release) detaches them, and they live
// on as free-standing objects. The pool must outlive every AddRef/Release of its objects that
// may race with its destruction.
class QC_API cObjectPoolBase : public cReferenced, public cThreadSafe {
public:
    // A free object (or a new one from the factory), marked obtained. Its count is the pool's
    // reference plus whatever the object had; callers AddRef it and Release it when done.
    cPoolableObject* ObtainObject();
    // Moves an obtained object whose only remaining reference is the pool's back to the free
    // list; called by cPoolableObject::Release.
    void ReturnObject(cPoolableObject* pObject);
    // Destroys every free object.
    void Purge();
    // Lets go of every obtained object: each loses its pool and the pool's reference and lives
    // on free-standing (or dies when that was its last reference).
    void DetachAllObtained();

    int FreeCount() const;
    int ObtainedCount() const;

protected:
    cObjectPoolBase();
    ~cObjectPoolBase() override;
    // Creates a new object of the pool's concrete type.
    virtual cPoolableObject* CreateObject() = 0;

private:
    friend class cPoolableObject;
    using sNode = cPoolableObject::sPoolNode;
    struct sList {
        sNode* Head = nullptr;
        sNode* Tail = nullptr;
        int Count = 0;
    };
    // ReturnObject for a caller that holds the pool's lock.
    void ReturnObjectLocked(cPoolableObject* pObject);
    static void Append(sList& list, sNode* node);
    static void Unlink(sList& list, sNode* node);

    cAllocator* mNodeAllocator;
    sList mFree;
    sList mObtained;
};

// Pool of T (a default-constructible cPoolableObject). Create it with new, AddRef it, and
// Release it when done.
template <class T>
class tObjectPool : public cObjectPoolBase {
public:
    T* Obtain() { return static_cast<T*>(ObtainObject()); }

protected:
    ~tObjectPool() override = default;
    cPoolableObject* CreateObject() override { return new T(); }
};

} // namespace Quillanor::Common
