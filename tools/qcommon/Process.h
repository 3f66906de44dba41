// Starting a second copy of qcommon for the demos that involve two processes.
#pragma once

#include <string>
#include <vector>

namespace QcTool {

// Starts this program again with `args`; returns an opaque id, or -1.
long long StartSelf(const std::vector<std::string>& args);
// Waits for the process to end and returns its exit code (-1 on failure).
int WaitProcess(long long id);
// Process id of this process.
unsigned long CurrentProcessId();

} // namespace QcTool
