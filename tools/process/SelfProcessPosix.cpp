#include "SelfProcess.h"

#include <chrono>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace QcProcess {

long long StartSelf(const std::vector<std::string>& args) {
    std::vector<std::string> all = {"/proc/self/exe"};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : all) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);
    pid_t pid = -1;
    return posix_spawn(&pid, "/proc/self/exe", nullptr, nullptr, argv.data(), environ) == 0 ? pid
                                                                                            : -1;
}

bool WaitProcess(long long id, unsigned int timeoutMs, int& exitCode) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        int status = 0;
        const pid_t r =
            waitpid(static_cast<pid_t>(id), &status, timeoutMs == 0xFFFFFFFFu ? 0 : WNOHANG);
        if (r == static_cast<pid_t>(id)) {
            exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            return true;
        }
        if (r < 0 || (timeoutMs != 0xFFFFFFFFu && std::chrono::steady_clock::now() >= end)) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void KillProcess(long long id) {
    kill(static_cast<pid_t>(id), SIGKILL);
    int status = 0;
    waitpid(static_cast<pid_t>(id), &status, 0);
}

unsigned long CurrentProcessId() {
    return static_cast<unsigned long>(getpid());
}

} // namespace QcProcess
