// cEvent on Windows kernel events: the handle is the event's HANDLE itself.
#include "Engine/Common/Multithreading/Event.h"

#include "Engine/Common/Base/Detail/Win32.h"

#include <windows.h>

namespace Quillanor::Common {

using Detail::WinText;

static_assert(cEvent::Infinite == INFINITE);
static_assert(cEvent::MaxWaitObjects == MAXIMUM_WAIT_OBJECTS);

void* cEvent::CreateImpl(bool manualReset, bool initialState, const char16_t* name) {
    return CreateEventW(nullptr, manualReset ? TRUE : FALSE, initialState ? TRUE : FALSE,
                        WinText(name));
}

void* cEvent::DuplicateImpl(void* handle) {
    HANDLE copy = nullptr;
    const HANDLE self = GetCurrentProcess();
    if (!DuplicateHandle(self, handle, self, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        return nullptr;
    }
    return copy;
}

void cEvent::CloseImpl(void* handle) {
    CloseHandle(handle);
}

bool cEvent::SetImpl(void* handle) {
    return SetEvent(handle) != 0;
}

bool cEvent::ResetImpl(void* handle) {
    return ResetEvent(handle) != 0;
}

bool cEvent::WaitImpl(void* handle, unsigned int timeoutMs) {
    return WaitForSingleObject(handle, timeoutMs) == WAIT_OBJECT_0;
}

int cEvent::WaitMultipleImpl(void* const* handles, int count, bool waitAll,
                             unsigned int timeoutMs) {
    const DWORD r = WaitForMultipleObjects(static_cast<DWORD>(count), handles,
                                           waitAll ? TRUE : FALSE, timeoutMs);
    if (r == WAIT_FAILED) {
        return -2;
    }
    if (r == WAIT_TIMEOUT) {
        return -1;
    }
    return static_cast<int>(r); // an index, or WAIT_ABANDONED_0 + index as it is
}

} // namespace Quillanor::Common
