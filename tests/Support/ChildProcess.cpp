#include "ChildProcess.h"

#include "SelfProcess.h"

#include <cstring>
#include <map>

namespace QcTest {
namespace {

std::map<std::string, ChildMain>& Registry() {
    static std::map<std::string, ChildMain> registry;
    return registry;
}

} // namespace

ChildRegistrar::ChildRegistrar(const char* name, ChildMain main) {
    Registry()[name] = main;
}

bool DispatchChild(int argc, char** argv, int& exitCode) {
    if (argc < 3 || std::strcmp(argv[1], "--qc-child") != 0) {
        return false;
    }
    auto it = Registry().find(argv[2]);
    if (it == Registry().end()) {
        exitCode = 127;
        return true;
    }
    exitCode = it->second(std::vector<std::string>(argv + 3, argv + argc));
    return true;
}

cChildProcess::cChildProcess(const std::string& name, const std::vector<std::string>& args) {
    std::vector<std::string> all = {"--qc-child", name};
    all.insert(all.end(), args.begin(), args.end());
    mId = QcProcess::StartSelf(all);
}

cChildProcess::~cChildProcess() {
    Kill();
}

bool cChildProcess::Started() const {
    return mId > 0;
}

int cChildProcess::Wait(unsigned int timeoutMs) {
    int exitCode = -1;
    if (!Started() || mReaped || !QcProcess::WaitProcess(mId, timeoutMs, exitCode)) {
        return -1;
    }
    mReaped = true;
    return exitCode;
}

void cChildProcess::Kill() {
    if (Started() && !mReaped) {
        QcProcess::KillProcess(mId);
        mReaped = true;
    }
}

std::string UniqueName(const char* stem) {
    static int counter = 0;
    return std::string("qctest.") + stem + "." + std::to_string(QcProcess::CurrentProcessId()) +
           "." + std::to_string(++counter);
}

} // namespace QcTest
