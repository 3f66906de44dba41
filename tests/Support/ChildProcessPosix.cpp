#include "ChildProcess.h"

#include <chrono>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace QcTest {

cChildProcess::cChildProcess(const std::string& name, const std::vector<std::string>& args) {
    std::vector<std::string> all = {"/proc/self/exe", "--qc-child", name};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : all) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);
    pid_t pid = -1;
    if (posix_spawn(&pid, "/proc/self/exe", nullptr, nullptr, argv.data(), environ) == 0) {
        mId = pid;
    }
}

cChildProcess::~cChildProcess() {
    if (Started() && !mReaped) {
        Kill();
    }
}

bool cChildProcess::Started() const { return mId > 0; }

int cChildProcess::Wait(unsigned int timeoutMs) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        int status = 0;
        const pid_t r = waitpid(static_cast<pid_t>(mId), &status, WNOHANG);
        if (r == static_cast<pid_t>(mId)) {
            mReaped = true;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        if (r < 0 || std::chrono::steady_clock::now() >= end) {
            return -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void cChildProcess::Kill() {
    if (!Started() || mReaped) {
        return;
    }
    kill(static_cast<pid_t>(mId), SIGKILL);
    int status = 0;
    waitpid(static_cast<pid_t>(mId), &status, 0);
    mReaped = true;
}

void InitTestProcess() {}

std::string UniqueName(const char* stem) {
    static int counter = 0;
    return std::string("qctest.") + stem + "." + std::to_string(getpid()) + "." +
           std::to_string(++counter);
}

} // namespace QcTest
