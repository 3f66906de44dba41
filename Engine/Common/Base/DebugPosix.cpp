// POSIX half of cDebug: standard error is the message box, TracerPid tells whether a debugger
// is attached, fatal signals go to the crash-dump observer.
#include "Engine/Common/Base/Debug.h"

#include "Engine/Common/Base/Utils.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace Quillanor::Common {
namespace {

void WriteAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return;
        }
        data += n;
        size -= static_cast<std::size_t>(n);
    }
}

// Runs on the crashing thread: hands the process to the observer (never returns).
void CrashHandler(int) {
    cDebug::NotifyObserver(true);
}

// Room for the crash handler when the stack itself overflowed (for the installing thread).
alignas(16) unsigned char gAltStack[64 * 1024];

} // namespace

bool cDebug::IsDebuggerAttachedImpl() {
    // "TracerPid:\t<pid>" in /proc/self/status; no stdio, no allocation.
    const int fd = ::open("/proc/self/status", O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    char buffer[4096];
    std::size_t total = 0;
    for (;;) {
        const ssize_t n = ::read(fd, buffer + total, sizeof(buffer) - 1 - total);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            break;
        }
        total += static_cast<std::size_t>(n);
        if (total == sizeof(buffer) - 1) {
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

void cDebug::TerminateImpl(int exitCode) {
    ::_exit(exitCode);
}

void cDebug::SleepImpl(unsigned int milliseconds) {
    timespec delay{static_cast<time_t>(milliseconds / 1000),
                   static_cast<long>(milliseconds % 1000) * 1000000L};
    while (::nanosleep(&delay, &delay) != 0 && errno == EINTR) {
    }
}

void cDebug::WriteErrorImpl(const char* utf8, std::size_t size) {
    WriteAll(STDERR_FILENO, utf8, size);
}

bool cDebug::ShowMessageImpl(const char16_t*, const char16_t*, bool yesNo) {
    return yesNo && sObserverEvents[0].load(std::memory_order_acquire) != nullptr;
}

const char16_t* cDebug::ResultTextImpl(long hr) {
    // POSIX failures are reported as -errno.
    if (hr < 0 && hr >= -4095) {
        return cUtils::LastErrorStr(static_cast<int>(-hr));
    }
    return u"";
}

void cDebug::InstallCrashHandlerImpl() {
    stack_t stack{};
    stack.ss_sp = gAltStack;
    stack.ss_size = sizeof(gAltStack);
    ::sigaltstack(&stack, nullptr);

    struct sigaction action {};
    action.sa_handler = &CrashHandler;
    action.sa_flags = SA_ONSTACK;
    sigfillset(&action.sa_mask);
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) {
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace Quillanor::Common
