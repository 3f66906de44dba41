#include "Process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace QcTool {

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

int WaitProcess(long long id) {
    int status = 0;
    if (waitpid(static_cast<pid_t>(id), &status, 0) != static_cast<pid_t>(id)) {
        return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

unsigned long CurrentProcessId() { return static_cast<unsigned long>(getpid()); }

} // namespace QcTool
