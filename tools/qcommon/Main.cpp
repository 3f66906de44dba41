// qcommon: a small tour of Quillanor Common. Each command shows one capability working.
#include "SelfProcess.h"

#include "Engine/Common/Base/Version.h"
#include "Engine/Common/Multithreading/Event.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace Quillanor::Common;

namespace {

std::u16string Wide(const std::string& s) {
    return std::u16string(s.begin(), s.end());
}

int Info() {
    std::printf("Quillanor Common %s\n", cVersion::Library());
    std::printf("  configuration: %s\n", cVersion::Configuration());
    std::printf("  backend:       %s\n", cVersion::Platform());
    std::printf("  compiler:      %s\n", cVersion::Compiler());
    std::printf("  linkage:       %s\n", cVersion::IsShared() ? "shared" : "static");
    return 0;
}

// The second process of "ping": answers every ping with a pong until told to stop.
int Pong(const std::string& base, int rounds) {
    cEvent ping(false, false, Wide(base + ".ping").c_str());
    cEvent pong(false, false, Wide(base + ".pong").c_str());
    for (int i = 0; i < rounds; ++i) {
        if (!ping.WaitFor(10000)) {
            std::fprintf(stderr, "pong: no ping within 10 s\n");
            return 1;
        }
        pong.Set();
    }
    return 0;
}

int Ping(int rounds) {
    const std::string base = "qcommon." + std::to_string(QcProcess::CurrentProcessId());
    cEvent ping(false, false, Wide(base + ".ping").c_str());
    cEvent pong(false, false, Wide(base + ".pong").c_str());
    const long long child = QcProcess::StartSelf({"pong", base, std::to_string(rounds)});
    if (child < 0) {
        std::fprintf(stderr, "ping: could not start the second process\n");
        return 1;
    }
    double best = 1e9, total = 0;
    for (int i = 0; i < rounds; ++i) {
        const auto start = std::chrono::steady_clock::now();
        ping.Set();
        if (!pong.WaitFor(10000)) {
            std::fprintf(stderr, "ping: no pong within 10 s\n");
            return 1;
        }
        const double us =
            std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
                .count();
        best = us < best ? us : best;
        total += us;
    }
    int rc = -1;
    QcProcess::WaitProcess(child, 0xFFFFFFFFu, rc);
    std::printf("ping: %d round trips between two processes over named events\n", rounds);
    std::printf("  mean %.1f us, best %.1f us; second process exited with %d\n", total / rounds,
                best, rc);
    return rc == 0 ? 0 : 1;
}

int Usage() {
    std::printf("usage: qcommon <command>\n"
                "  info            library version, build configuration and backend\n"
                "  ping [rounds]   named-event ping-pong with a second process\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return Usage();
    }
    const std::string command = argv[1];
    if (command == "info") {
        return Info();
    }
    if (command == "ping") {
        const int rounds = argc > 2 ? std::atoi(argv[2]) : 1000;
        return Ping(rounds > 0 ? rounds : 1000);
    }
    if (command == "pong" && argc > 3) {
        return Pong(argv[2], std::atoi(argv[3]));
    }
    return Usage();
}
