// POSIX half of cDebug.
#include "Engine/Common/Base/Debug.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace Quillanor::Common {

bool cDebug::IsDebuggerAttachedImpl() {
    // "TracerPid:\t<pid>" in /proc/self/status; async-signal-safe (no stdio, no allocation).
    const int fd = ::open("/proc/self/status", O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    char buffer[4096];
    ssize_t total = 0;
    for (;;) {
        const ssize_t n = ::read(fd, buffer + total, sizeof(buffer) - 1 - total);
        if (n <= 0) {
            break;
        }
        total += n;
        if (total == static_cast<ssize_t>(sizeof(buffer)) - 1) {
            break;
        }
    }
    ::close(fd);
    buffer[total] = 0;
    const char* field = std::strstr(buffer, "TracerPid:");
    if (field == nullptr) {
        return false;
    }
    field += 10;
    while (*field == ' ' || *field == '\t') {
        ++field;
    }
    return *field >= '1' && *field <= '9';
}

void cDebug::BreakImpl() {
    ::raise(SIGTRAP);
}

void cDebug::AbortImpl() {
    std::abort();
}

} // namespace Quillanor::Common
