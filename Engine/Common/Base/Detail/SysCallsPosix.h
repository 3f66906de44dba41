// The POSIX backend's seam for system calls that can fail in interesting ways.
//
// Backend code calls these through PosixSys() instead of calling libc directly, so a test can
// replace one entry (and restore it) to drive a failure path without a broken machine.
// Replacing entries is for single-threaded test set-up only.
#pragma once

#include "Engine/Common/Base/Api.h"

#include <sys/types.h>
#include <ctime>

struct futex_waitv;
struct flock;

namespace Quillanor::Common::Detail {

struct sPosixSysCalls {
    int (*shmOpen)(const char* name, int flags, mode_t mode);
    int (*shmUnlink)(const char* name);
    int (*ftruncate)(int fd, off_t length);
    void* (*mmap)(void* addr, size_t length, int prot, int flags, int fd, off_t offset);
    int (*munmap)(void* addr, size_t length);
    int (*close)(int fd);
    // fcntl with a struct flock argument (F_OFD_SETLK, F_OFD_SETLKW, ...).
    int (*fcntlLock)(int fd, int cmd, struct flock* lock);
    // futex_waitv(2); returns -1 with errno ENOSYS on kernels before 5.16.
    long (*futexWaitv)(struct futex_waitv* waiters, unsigned int count, unsigned int flags,
                       const struct timespec* absTimeout, clockid_t clock);
};

// The table in use; entries may be swapped by tests.
QC_API sPosixSysCalls& PosixSys();
// The table as the library set it up, to restore swapped entries.
QC_API const sPosixSysCalls& PosixSysDefaults();

} // namespace Quillanor::Common::Detail
