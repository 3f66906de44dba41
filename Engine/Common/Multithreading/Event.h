// Kernel-style events with single and multiple waits.
//
// A cEvent is either auto-reset (a satisfied wait consumes the signal) or manual-reset (it
// stays signalled until Reset). A named event is one object system-wide: every process that
// constructs a cEvent with the same name shares it, and it lives while any handle is open.
// Set, Reset and the waits may be called from any thread; one cEvent object may be used by
// many threads at once.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

namespace Quillanor::Common {

class QC_API cEvent {
public:
    // Time-out value that waits without limit.
    static constexpr unsigned int Infinite = 0xFFFFFFFFu;
    // The most events one WaitForMultiple accepts.
    static constexpr int MaxWaitObjects = 64;

    // Creates an event. With a name, opens the existing system-wide event of that name if there
    // is one (its reset mode and state are kept), else creates it. Creation failure is a fatal
    // assertion ("hEvent").
    explicit cEvent(bool manualReset = false, bool initialState = false,
                    const char16_t* name = nullptr);
    // A copy refers to the same event; each copy releases its own reference.
    cEvent(const cEvent& other);
    cEvent& operator=(const cEvent& other);
    ~cEvent();

    void Set();
    void Reset();
    // True when the event was signalled within `timeoutMs` (Infinite: no limit).
    bool WaitFor(unsigned int timeoutMs) const;
    // True if signalled now; on an auto-reset event this consumes the signal.
    bool Peek() const { return WaitFor(0); }
    // The platform handle (a HANDLE on Windows), for waiting together with other objects.
    void* Handle() const { return mHandle; }

    // Waits for one (waitAll false) or all (waitAll true) of `count` events. Returns the index
    // of the signalled event (the lowest when several are; 0 when all were), -1 on time-out,
    // -2 on failure (a null or failed event in the list, count outside 1..64). A wait for all
    // consumes every auto-reset event at once, and none of them while any is unset.
    static int WaitForMultiple(cEvent** events, int count, bool waitAll, unsigned int timeoutMs);

private:
    // Backend entry points, defined by EventPosix.cpp / EventWin32.cpp.
    static void* CreateImpl(bool manualReset, bool initialState, const char16_t* name);
    static void* DuplicateImpl(void* handle);
    static void CloseImpl(void* handle);
    static bool SetImpl(void* handle);
    static bool ResetImpl(void* handle);
    static bool WaitImpl(void* handle, unsigned int timeoutMs);
    // Returns an index, -1 on time-out or -2 on failure, as WaitForMultiple.
    static int WaitMultipleImpl(void* const* handles, int count, bool waitAll,
                                unsigned int timeoutMs);

    void* mHandle = nullptr;
};

} // namespace Quillanor::Common
