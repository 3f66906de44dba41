#include "Engine/Common/Base/Detail/SysCallsPosix.h"

#include <cerrno>
#include <fcntl.h>
#include <linux/futex.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Quillanor::Common::Detail {
namespace {

int FcntlLock(int fd, int cmd, struct flock* lock) { return ::fcntl(fd, cmd, lock); }

long FutexWaitv(struct futex_waitv* waiters, unsigned int count, unsigned int flags,
                const struct timespec* absTimeout, clockid_t clock) {
#ifdef SYS_futex_waitv
    return ::syscall(SYS_futex_waitv, waiters, count, flags, absTimeout, clock);
#else
    (void)waiters, (void)count, (void)flags, (void)absTimeout, (void)clock;
    errno = ENOSYS;
    return -1;
#endif
}

constexpr sPosixSysCalls kDefaults = {
    &::shm_open, &::shm_unlink, &::ftruncate, &::mmap, &::munmap, &::close, &FcntlLock, &FutexWaitv,
};

sPosixSysCalls gSys = kDefaults;

} // namespace

sPosixSysCalls& PosixSys() { return gSys; }
const sPosixSysCalls& PosixSysDefaults() { return kDefaults; }

} // namespace Quillanor::Common::Detail
