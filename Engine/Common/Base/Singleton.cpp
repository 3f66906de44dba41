#include "Engine/Common/Base/Singleton.h"

namespace Quillanor::Common {

cSingleton* cSingletonManager::sSingletons[cSingletonManager::MaxSingletons] = {};
int cSingletonManager::sSingletonCount = 0;
cCriticalSection cSingletonManager::sLocker;

void cSingletonManager::Lock() {
    sLocker.Enter();
}

void cSingletonManager::Unlock() {
    sLocker.Leave();
}

void cSingletonManager::AddSingleton(cSingleton* singleton) {
    // clang-format off
    QC_HARD_ASSERT(sSingletonCount<MaxSingletons);
    // clang-format on
    if (sSingletonCount < MaxSingletons) {
        sSingletons[sSingletonCount++] = singleton;
    }
}

void cSingletonManager::RemoveSingleton(cSingleton* singleton) {
    int index = 0;
    while (index < sSingletonCount && sSingletons[index] != singleton) {
        ++index;
    }
    // clang-format off
    QC_HARD_ASSERT(index<sSingletonCount);
    // clang-format on
    if (index == sSingletonCount) {
        return;
    }
    for (int i = index + 1; i < sSingletonCount; ++i) {
        sSingletons[i - 1] = sSingletons[i];
    }
    --sSingletonCount;
    sSingletons[sSingletonCount] = nullptr;
}

void cSingletonManager::DoneAll() {
    cBlockLocker lock(sLocker);
    while (sSingletonCount != 0) {
        const int index = --sSingletonCount;
        cSingleton* singleton = sSingletons[index];
        sSingletons[index] = nullptr;
        if (singleton != nullptr) {
            delete singleton;
            // clang-format off
            QC_HARD_ASSERT(sSingletonCount==index);
            // clang-format on
        }
    }
}

int cSingletonManager::Count() {
    cBlockLocker lock(sLocker);
    return sSingletonCount;
}

} // namespace Quillanor::Common
