// Process-wide singletons with ordered teardown.
//
// Every manager of the library is a cSingleton registered with cSingletonManager in order of
// creation; cSingletonManager::DoneAll destroys them in exact reverse order, so a manager that
// another one creates inside its constructor is registered first and outlives its creator.
// tSingleton<T> is created lazily by its first Instance(); tManualSingleton<T> only by an
// explicit T::Create(). Creation, Done, DoneAll and the registry share one process-wide
// recursive lock; Instance() reads the instance pointer without locking once it exists.
//
// A singleton class T derives from tSingleton<T> or tManualSingleton<T>, and its default
// constructor and destructor must be reachable by tSingletonBase<T> (public, or private with
// `friend class tSingletonBase<T>;`).
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

#include <atomic>

namespace Quillanor::Common {

// Root of every singleton, so the registry can destroy one without knowing its type.
class QC_API cSingleton {
protected:
    cSingleton() = default;
    virtual ~cSingleton() = default;

private:
    friend class cSingletonManager;
    template <class T>
    friend class tSingletonBase;
};

// The registry of live singletons (at most MaxSingletons), in order of registration.
class QC_API cSingletonManager {
public:
    static constexpr int MaxSingletons = 1000;

    // Hold the registry lock across several singleton operations.
    static void Lock();
    static void Unlock();
    // Registry edits without locking (callers hold the lock). Overflow and removing an
    // unregistered singleton are hard assertion failures.
    static void AddSingleton(cSingleton* singleton);
    static void RemoveSingleton(cSingleton* singleton);
    // Destroys every registered singleton, most recently registered first. A destructor that
    // registers or removes a singleton meanwhile is a hard assertion failure.
    static void DoneAll();

    // Number of registered singletons (for diagnostics and tests).
    static int Count();

private:
    static cSingleton* sSingletons[MaxSingletons];
    static int sSingletonCount;
    static cCriticalSection sLocker;
};

// Holds the registry lock for a block.
class cSingletonLock {
public:
    cSingletonLock() { cSingletonManager::Lock(); }
    ~cSingletonLock() { cSingletonManager::Unlock(); }
    cSingletonLock(const cSingletonLock&) = delete;
    cSingletonLock& operator=(const cSingletonLock&) = delete;
};

template <class T>
class QC_TEMPLATE_API tSingletonBase : public cSingleton {
public:
    // Destroys the instance, if any, and removes it from the registry.
    static void Done();
    // Takes no lock. (Defined below, not in the class: an in-class definition is inline and
    // would be missing from the DLL's exported instantiations on Windows.)
    static bool HasInstance();

protected:
    tSingletonBase() = default;
    // The only place where the instance pointer is cleared.
    ~tSingletonBase() override { sInstance.store(nullptr, std::memory_order_release); }

    // Creates and registers the instance; a second creation is a hard assertion failure. If
    // the constructor throws, the memory is freed and the exception passes on.
    static T* CreateInstance();

    QC_TEMPLATE_API static inline std::atomic<T*> sInstance{nullptr};
};

// Lazily created singleton: the first Instance() creates it (again after a Done).
template <class T>
class QC_TEMPLATE_API tSingleton : public tSingletonBase<T> {
public:
    static T* Instance();
};

// Singleton created only by T::Create(); Instance() without an instance is a hard assertion
// failure, never a lazy creation.
template <class T>
class QC_TEMPLATE_API tManualSingleton : public tSingletonBase<T> {
public:
    static T* Instance();
};

template <class T>
bool tSingletonBase<T>::HasInstance() {
    return sInstance.load(std::memory_order_acquire) != nullptr;
}

template <class T>
T* tSingletonBase<T>::CreateInstance() {
    cSingletonLock lock;
    // clang-format off
    QC_HARD_ASSERT(sInstance.load(std::memory_order_relaxed)==nullptr);
    // clang-format on
    T* instance = new T();
    sInstance.store(instance, std::memory_order_release);
    cSingletonManager::AddSingleton(instance);
    return instance;
}

template <class T>
void tSingletonBase<T>::Done() {
    cSingletonLock lock;
    T* instance = sInstance.load(std::memory_order_relaxed);
    if (instance != nullptr) {
        cSingletonManager::RemoveSingleton(instance);
        delete static_cast<cSingleton*>(instance);
    }
}

template <class T>
T* tSingleton<T>::Instance() {
    T* instance = tSingletonBase<T>::sInstance.load(std::memory_order_acquire);
    if (instance != nullptr) [[likely]] {
        return instance;
    }
    cSingletonLock lock;
    instance = tSingletonBase<T>::sInstance.load(std::memory_order_relaxed);
    if (instance == nullptr) {
        instance = tSingletonBase<T>::CreateInstance();
    }
    return instance;
}

template <class T>
T* tManualSingleton<T>::Instance() {
    T* instance = tSingletonBase<T>::sInstance.load(std::memory_order_acquire);
    QC_HARD_ASSERT(instance != nullptr);
    return instance;
}

} // namespace Quillanor::Common
