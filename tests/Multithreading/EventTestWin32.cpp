// Windows kernel-event behaviour that the POSIX backend has no counterpart for.
#include "Engine/Common/Multithreading/Event.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace Quillanor::Common;

TEST(EventWin32, HandleIsTheKernelEvent) {
    cEvent event(true);
    ASSERT_EQ(SetEvent(static_cast<HANDLE>(event.Handle())), TRUE);
    EXPECT_TRUE(event.Peek());
    cEvent copy(event);
    EXPECT_NE(copy.Handle(), event.Handle()) << "a copy holds a handle of its own";
    copy.Reset();
    EXPECT_EQ(WaitForSingleObject(static_cast<HANDLE>(event.Handle()), 0), WAIT_TIMEOUT);
}

TEST(EventWin32, AbandonedMutexPassesThroughAsIs) {
    // WaitForMultiple hands any other wait result back unchanged; an abandoned mutex is the
    // one kernel object that produces WAIT_ABANDONED_0 + index.
    HANDLE mutex = CreateMutexW(nullptr, FALSE, nullptr);
    ASSERT_NE(mutex, nullptr);
    HANDLE thread = CreateThread(
        nullptr, 0,
        [](void* m) -> DWORD { return WaitForSingleObject(static_cast<HANDLE>(m), INFINITE); },
        mutex, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    WaitForSingleObject(thread, INFINITE); // ends while owning the mutex
    CloseHandle(thread);

    cEvent e0;
    cEvent asMutex;
    // Borrow the event object's slot for the mutex handle, then put the event back.
    HANDLE own = static_cast<HANDLE>(asMutex.Handle());
    cEvent* list[] = {&e0, &asMutex};
    *reinterpret_cast<void**>(&asMutex) = mutex;
    const int r = cEvent::WaitForMultiple(list, 2, false, 0);
    *reinterpret_cast<void**>(&asMutex) = own;
    EXPECT_EQ(r, 128 + 1);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}

TEST(EventWin32DeathTest, CreationFailureIsTheHEventAssertion) {
    // A name below an object directory that does not exist cannot be created.
    EXPECT_EXIT(cEvent(false, false, u"qctest\\no-such-directory\\event"),
                testing::ExitedWithCode(0), "Expression: hEvent");
}
