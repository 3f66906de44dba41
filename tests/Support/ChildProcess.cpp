#include "ChildProcess.h"

#include <cstring>
#include <map>

namespace QcTest {
namespace {

std::map<std::string, ChildMain>& Registry() {
    static std::map<std::string, ChildMain> registry;
    return registry;
}

} // namespace

ChildRegistrar::ChildRegistrar(const char* name, ChildMain main) { Registry()[name] = main; }

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

} // namespace QcTest
