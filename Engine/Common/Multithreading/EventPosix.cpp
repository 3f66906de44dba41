// cEvent on futex words. The word is 0 (not signalled), 1 (signalled) or 2 (signalled and
// claimed for a moment by a wait-for-all that is checking its other events). Unnamed events
// keep the word on the heap; named ones in a POSIX shared-memory object, so that every process
// opening the name waits on the same word.
//
// Lifetime of a named object: each handle holds an open-file-description read lock on it. The
// opener that can take the write lock is alone and (re)initialises the object, so one left
// behind by a killed process is simply reset; the closer that can take the write lock is the
// last one and unlinks the name.
#include "Engine/Common/Multithreading/Event.h"

#include "Engine/Common/Base/Detail/SysCallsPosix.h"
#include "Engine/Common/Base/Detail/Utf.h"
#include "Engine/Common/Multithreading/Detail/FutexPosix.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <fcntl.h>
#include <new>
#include <sched.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quillanor::Common {
namespace {

using Detail::PosixSys;
using Detail::sDeadline;

constexpr std::uint32_t kUnset = 0;
constexpr std::uint32_t kSet = 1;
constexpr std::uint32_t kClaimed = 2;
constexpr std::uint32_t kMagic = 0x51455654; // "QEVT"

struct sEventState {
    std::atomic<std::uint32_t> word{kUnset};
    std::atomic<std::uint32_t> waiters{0};
    std::uint32_t manual = 0;
    std::uint32_t magic = kMagic;
};

struct sEventHandle {
    sEventState* state = nullptr;
    sEventState local;
    std::atomic<int> refs{1};
    bool shared = false;
    int fd = -1;
    std::string shmName;
};

sEventHandle* H(void* handle) { return static_cast<sEventHandle*>(handle); }

// Takes (or converts to) a lock on the first byte of the object's open file description.
bool OfdLock(int fd, short type, bool wait) {
    struct flock fl = {};
    fl.l_type = type;
    fl.l_whence = SEEK_SET;
    fl.l_start = 0;
    fl.l_len = 1;
    for (;;) {
        if (PosixSys().fcntlLock(fd, wait ? F_OFD_SETLKW : F_OFD_SETLK, &fl) == 0) {
            return true;
        }
        if (errno != EINTR) {
            return false;
        }
    }
}

std::string ShmName(const char16_t* name) {
    std::string mapped = "/qc.event.";
    for (char c : Detail::Utf16ToUtf8(name)) {
        mapped += (c == '/') ? '_' : c;
    }
    return mapped;
}

sEventHandle* OpenNamed(bool manualReset, bool initialState, const char16_t* name) {
    std::string shmName = ShmName(name);
    if (shmName.size() > NAME_MAX) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    auto& sys = PosixSys();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const int fd = sys.shmOpen(shmName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0) {
            return nullptr;
        }
        const bool alone = OfdLock(fd, F_WRLCK, false);
        if (!alone && (errno != EAGAIN && errno != EACCES)) {
            sys.close(fd);
            return nullptr;
        }
        if (!alone && !OfdLock(fd, F_RDLCK, true)) {
            sys.close(fd);
            return nullptr;
        }
        struct stat st = {};
        if (fstat(fd, &st) != 0) {
            sys.close(fd);
            return nullptr;
        }
        if (st.st_nlink == 0) {
            // The last holder unlinked this object while we were opening it: start again.
            sys.close(fd);
            continue;
        }
        if (alone && sys.ftruncate(fd, sizeof(sEventState)) != 0) {
            sys.close(fd);
            return nullptr;
        }
        if (!alone && st.st_size < static_cast<off_t>(sizeof(sEventState))) {
            sys.close(fd);
            errno = EINVAL;
            return nullptr;
        }
        void* mem = sys.mmap(nullptr, sizeof(sEventState), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (mem == MAP_FAILED) {
            sys.close(fd);
            return nullptr;
        }
        auto* state = static_cast<sEventState*>(mem);
        if (alone) {
            state = new (mem) sEventState();
            state->manual = manualReset ? 1 : 0;
            state->word.store(initialState ? kSet : kUnset, std::memory_order_release);
            OfdLock(fd, F_RDLCK, false); // atomic downgrade: others may now join
        } else if (state->magic != kMagic) {
            sys.munmap(mem, sizeof(sEventState));
            sys.close(fd);
            errno = EINVAL;
            return nullptr;
        }
        auto* h = new sEventHandle();
        h->state = state;
        h->shared = true;
        h->fd = fd;
        h->shmName = std::move(shmName);
        return h;
    }
    errno = EAGAIN;
    return nullptr;
}

void Destroy(sEventHandle* h) {
    if (h->shared) {
        auto& sys = PosixSys();
        sys.munmap(h->state, sizeof(sEventState));
        if (OfdLock(h->fd, F_WRLCK, false)) {
            sys.shmUnlink(h->shmName.c_str());
        }
        sys.close(h->fd);
    }
    delete h;
}

// Consumes (auto-reset) or observes (manual-reset) the signal. Waits out a claim in flight.
bool TryConsume(sEventState& s) {
    std::uint32_t v = s.word.load(std::memory_order_acquire);
    for (;;) {
        if (v == kUnset) {
            return false;
        }
        if (s.manual != 0) {
            return true;
        }
        if (v == kClaimed) {
            sched_yield();
            v = s.word.load(std::memory_order_acquire);
            continue;
        }
        if (s.word.compare_exchange_weak(v, kUnset, std::memory_order_acquire,
                                         std::memory_order_acquire)) {
            return true;
        }
    }
}

// Claims every event for a wait-for-all; on failure restores the claims made and returns the
// index of the event that was not signalled.
int TryClaimAll(sEventState* const* states, int n) {
    for (int i = 0; i < n; ++i) {
        std::uint32_t expected = kSet;
        if (!states[i]->word.compare_exchange_strong(expected, kClaimed, std::memory_order_acquire,
                                                     std::memory_order_relaxed)) {
            for (int j = 0; j < i; ++j) {
                states[j]->word.store(kSet, std::memory_order_release);
            }
            return i;
        }
    }
    for (int i = 0; i < n; ++i) {
        states[i]->word.store(states[i]->manual != 0 ? kSet : kUnset, std::memory_order_release);
    }
    return -1;
}

int WaitAll(sEventHandle* const* hs, int n, unsigned int timeoutMs) {
    sEventState* states[cEvent::MaxWaitObjects];
    for (int i = 0; i < n; ++i) {
        states[i] = hs[i]->state;
        for (int j = 0; j < i; ++j) {
            if (states[j] == states[i]) {
                return -2; // the same event twice cannot be waited for "all at once"
            }
        }
    }
    const sDeadline deadline = sDeadline::FromNowMs(timeoutMs);
    for (;;) {
        const int missing = TryClaimAll(states, n);
        if (missing < 0) {
            return 0;
        }
        if (states[missing]->word.load(std::memory_order_acquire) == kClaimed) {
            sched_yield(); // another wait-for-all is looking at it right now
            continue;
        }
        if (timeoutMs == 0 || deadline.Passed()) {
            return -1;
        }
        sEventState& s = *states[missing];
        s.waiters.fetch_add(1, std::memory_order_seq_cst);
        Detail::FutexWait(&s.word, kUnset, hs[missing]->shared, deadline);
        s.waiters.fetch_sub(1, std::memory_order_relaxed);
    }
}

int WaitAny(sEventHandle* const* hs, int n, unsigned int timeoutMs) {
    const sDeadline deadline = sDeadline::FromNowMs(timeoutMs);
    std::atomic<std::uint32_t>* words[cEvent::MaxWaitObjects];
    std::uint32_t expected[cEvent::MaxWaitObjects];
    bool shared[cEvent::MaxWaitObjects];
    for (int i = 0; i < n; ++i) {
        words[i] = &hs[i]->state->word;
        expected[i] = kUnset;
        shared[i] = hs[i]->shared;
    }
    for (;;) {
        for (int i = 0; i < n; ++i) {
            if (TryConsume(*hs[i]->state)) {
                return i;
            }
        }
        if (timeoutMs == 0 || deadline.Passed()) {
            return -1;
        }
        for (int i = 0; i < n; ++i) {
            hs[i]->state->waiters.fetch_add(1, std::memory_order_seq_cst);
        }
        Detail::FutexWaitAny(words, expected, shared, n, deadline);
        for (int i = 0; i < n; ++i) {
            hs[i]->state->waiters.fetch_sub(1, std::memory_order_relaxed);
        }
    }
}

} // namespace

void* cEvent::CreateImpl(bool manualReset, bool initialState, const char16_t* name) {
    if (name != nullptr) {
        return OpenNamed(manualReset, initialState, name);
    }
    auto* h = new sEventHandle();
    h->state = &h->local;
    h->local.manual = manualReset ? 1 : 0;
    h->local.word.store(initialState ? kSet : kUnset, std::memory_order_relaxed);
    return h;
}

void* cEvent::DuplicateImpl(void* handle) {
    H(handle)->refs.fetch_add(1, std::memory_order_relaxed);
    return handle;
}

void cEvent::CloseImpl(void* handle) {
    if (H(handle)->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        Destroy(H(handle));
    }
}

bool cEvent::SetImpl(void* handle) {
    sEventHandle* h = H(handle);
    sEventState& s = *h->state;
    std::uint32_t v = kUnset;
    if (s.word.compare_exchange_strong(v, kSet, std::memory_order_seq_cst)) {
        // Every sleeper looks again: one that cannot use the signal (a wait-for-all still
        // missing another event) must not swallow the wake-up of one that can.
        if (s.waiters.load(std::memory_order_seq_cst) != 0) {
            Detail::FutexWake(&s.word, INT_MAX, h->shared);
        }
    }
    return true;
}

bool cEvent::ResetImpl(void* handle) {
    sEventState& s = *H(handle)->state;
    std::uint32_t v = s.word.load(std::memory_order_relaxed);
    for (;;) {
        if (v == kUnset) {
            return true;
        }
        if (v == kClaimed) {
            sched_yield();
            v = s.word.load(std::memory_order_relaxed);
            continue;
        }
        if (s.word.compare_exchange_weak(v, kUnset, std::memory_order_release,
                                         std::memory_order_relaxed)) {
            return true;
        }
    }
}

bool cEvent::WaitImpl(void* handle, unsigned int timeoutMs) {
    sEventHandle* h = H(handle);
    return WaitAny(&h, 1, timeoutMs) == 0;
}

int cEvent::WaitMultipleImpl(void* const* handles, int count, bool waitAll,
                             unsigned int timeoutMs) {
    auto* const* hs = reinterpret_cast<sEventHandle* const*>(handles);
    return waitAll ? WaitAll(hs, count, timeoutMs) : WaitAny(hs, count, timeoutMs);
}

} // namespace Quillanor::Common
