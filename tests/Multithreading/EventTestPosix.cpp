// POSIX backend paths that a normal machine never takes, driven through the system-call seam.
#include "Engine/Common/Base/Detail/SysCallsPosix.h"
#include "Engine/Common/Multithreading/Event.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

using namespace Quillanor::Common;
using Detail::PosixSys;
using Detail::PosixSysDefaults;

namespace {

struct sRestoreSys {
    ~sRestoreSys() { PosixSys() = PosixSysDefaults(); }
};

long NoFutexWaitv(struct futex_waitv*, unsigned int, unsigned int, const struct timespec*,
                  clockid_t) {
    errno = ENOSYS;
    return -1;
}

int FailShmOpen(const char*, int, mode_t) {
    errno = EACCES;
    return -1;
}

} // namespace

TEST(EventPosix, WaitAnyWorksWithoutFutexWaitv) {
    sRestoreSys restore;
    PosixSys().futexWaitv = &NoFutexWaitv;
    cEvent e0, e1, e2;
    cEvent* list[] = {&e0, &e1, &e2};
    EXPECT_EQ(cEvent::WaitForMultiple(list, 3, false, 15), -1);
    std::thread setter([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        e2.Set();
    });
    EXPECT_EQ(cEvent::WaitForMultiple(list, 3, false, 20000), 2);
    setter.join();
}

TEST(EventPosixDeathTest, CreationFailureIsTheHEventAssertion) {
    EXPECT_EXIT(
        {
            PosixSys().shmOpen = &FailShmOpen;
            cEvent named(false, false, u"qctest.denied");
        },
        testing::ExitedWithCode(0), "Expression: hEvent");
}
