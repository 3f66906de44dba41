#include "Engine/Common/Base/Object.h"

namespace Quillanor::Common {

int cReferenced::AddRef() {
    return ++mRefCount;
}

int cReferenced::Release() {
    const int count = --mRefCount;
    if (count > 0) {
        return count;
    }
    for (sReleaseNotification* node = mListeners; node != nullptr;) {
        sReleaseNotification* next = node->Next;
        node->Callback(node->Target, this, 0, node);
        node = next;
    }
    delete this;
    return count;
}

sReleaseNotification* cReferenced::AddReleaseNotification(void* target,
                                                          sReleaseNotification::Function callback) {
    mListeners = new sReleaseNotification{target, callback, mListeners};
    return mListeners;
}

void cReferenced::RemoveReleaseNotification(sReleaseNotification* node) {
    for (sReleaseNotification** link = &mListeners; *link != nullptr; link = &(*link)->Next) {
        if (*link == node) {
            *link = node->Next;
            delete node;
            return;
        }
    }
}

cReferenced::~cReferenced() {
    while (mListeners != nullptr) {
        sReleaseNotification* node = mListeners;
        mListeners = node->Next;
        delete node;
    }
}

} // namespace Quillanor::Common
