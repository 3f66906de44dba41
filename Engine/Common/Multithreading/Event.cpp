#include "Engine/Common/Multithreading/Event.h"

#include "Engine/Common/Base/Assert.h"

namespace Quillanor::Common {

cEvent::cEvent(bool manualReset, bool initialState, const char16_t* name)
    : mHandle(CreateImpl(manualReset, initialState, name)) {
    QC_ASSERT_TEXT(mHandle != nullptr, u"hEvent");
}

cEvent::cEvent(const cEvent& other)
    : mHandle(other.mHandle != nullptr ? DuplicateImpl(other.mHandle) : nullptr) {}

cEvent& cEvent::operator=(const cEvent& other) {
    if (mHandle != other.mHandle) {
        void* copy = other.mHandle != nullptr ? DuplicateImpl(other.mHandle) : nullptr;
        if (mHandle != nullptr) {
            CloseImpl(mHandle);
        }
        mHandle = copy;
    }
    return *this;
}

cEvent::~cEvent() {
    if (mHandle != nullptr) {
        CloseImpl(mHandle);
    }
}

void cEvent::Set() { QC_ASSERT_TEXT(mHandle != nullptr && SetImpl(mHandle), u"SetEvent(hEvent)"); }

void cEvent::Reset() {
    QC_ASSERT_TEXT(mHandle != nullptr && ResetImpl(mHandle), u"ResetEvent(hEvent)");
}

bool cEvent::WaitFor(unsigned int timeoutMs) const {
    return mHandle != nullptr && WaitImpl(mHandle, timeoutMs);
}

int cEvent::WaitForMultiple(cEvent** events, int count, bool waitAll, unsigned int timeoutMs) {
    if (events == nullptr || count <= 0 || count > MaxWaitObjects) {
        return -2;
    }
    void* handles[MaxWaitObjects];
    for (int i = 0; i < count; ++i) {
        if (events[i] == nullptr || events[i]->mHandle == nullptr) {
            return -2;
        }
        handles[i] = events[i]->mHandle;
    }
    return WaitMultipleImpl(handles, count, waitAll, timeoutMs);
}

} // namespace Quillanor::Common
