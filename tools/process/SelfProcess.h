// Starting this program again as a second process, for the demo tool and the tests that need
// two processes. Not part of the library.
#pragma once

#include <string>
#include <vector>

namespace QcProcess {

// Starts this program again with `args` (UTF-8); returns an opaque id, or -1.
long long StartSelf(const std::vector<std::string>& args);
// Waits up to `timeoutMs` (0xFFFFFFFF: no limit) for the process to end. Returns true with its
// exit code once it has ended (and releases the id); a process ended by a signal gives 128 +
// the signal number. Returns false on time-out, when the process keeps running.
bool WaitProcess(long long id, unsigned int timeoutMs, int& exitCode);
// Ends the process at once, as SIGKILL / TerminateProcess does, and releases the id.
void KillProcess(long long id);
// Id of the calling process.
unsigned long CurrentProcessId();

} // namespace QcProcess
