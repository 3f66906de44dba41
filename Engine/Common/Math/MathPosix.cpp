// The system random source on POSIX: getrandom(2), falling back to /dev/urandom on kernels
// without it.
#include "Engine/Common/Math/Math.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

namespace Quillanor::Common {

std::uint32_t cMath::SystemRandomImpl() {
    std::uint32_t value = 0;
    for (;;) {
        const ssize_t got = getrandom(&value, sizeof(value), 0);
        if (got == static_cast<ssize_t>(sizeof(value))) {
            return value;
        }
        if (got < 0 && errno != EINTR) {
            break;
        }
    }
    const int fd = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
    if (fd >= 0) {
        const ssize_t got = read(fd, &value, sizeof(value));
        close(fd);
        if (got == static_cast<ssize_t>(sizeof(value))) {
            return value;
        }
    }
    // No random source at all: the clock is the best that is left.
    return static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count() *
                                      2654435761u);
}

} // namespace Quillanor::Common
