// Test support: runs a registered function of the test program in a child process.
//
// A test binary started as "<exe> --qc-child <name> args..." runs the child main registered
// under <name> instead of the tests; cChildProcess starts such a child and waits for it.
#pragma once

#include <string>
#include <vector>

namespace QcTest {

using ChildMain = int (*)(const std::vector<std::string>& args);

struct ChildRegistrar {
    ChildRegistrar(const char* name, ChildMain main);
};

// Runs the child main named by argv when the program was started as a child; returns true and
// sets `exitCode` then.
bool DispatchChild(int argc, char** argv, int& exitCode);

class cChildProcess {
public:
    // Starts this program as the child `name` with `args`.
    cChildProcess(const std::string& name, const std::vector<std::string>& args);
    ~cChildProcess();
    cChildProcess(const cChildProcess&) = delete;
    cChildProcess& operator=(const cChildProcess&) = delete;

    bool Started() const;
    // Exit code of the child, or -1 when it did not end within `timeoutMs` (it keeps running).
    // A child ended by a signal gives 128 + the signal number.
    int Wait(unsigned int timeoutMs);
    // Ends the child at once, as SIGKILL / TerminateProcess does, and reaps it.
    void Kill();

private:
    long long mId = -1; // pid on POSIX, process handle on Windows
    bool mReaped = false;
};

// Platform set-up of a test program before anything else runs. On Windows the standard
// streams write plain LF line ends, as test discovery and ctest expect.
void InitTestProcess();

// A unique name for named kernel objects of one test run.
std::string UniqueName(const char* stem);

} // namespace QcTest

#define QC_CHILD_MAIN(name)                                                                        \
    static int name##_ChildMain(const std::vector<std::string>& args);                             \
    static const ::QcTest::ChildRegistrar name##_ChildRegistrar(#name, &name##_ChildMain);         \
    static int name##_ChildMain([[maybe_unused]] const std::vector<std::string>& args)
