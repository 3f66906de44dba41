// A program outside the library's tree, built against the installed package.
#include <Engine/Common/Base/Version.h>
#include <Engine/Common/Multithreading/Event.h>

#include <cstdio>

int main() {
    using namespace Quillanor::Common;
    cCriticalSection lock;
    lock.Enter();
    const bool recursive = lock.TryEnter();
    lock.Leave();
    lock.Leave();
    cEvent event(true, false);
    event.Set();
    const bool signalled = event.WaitFor(0);
    std::printf("consumer: Quillanor Common %s (%s, %s)\n", cVersion::Library(),
                cVersion::Platform(), cVersion::Configuration());
    return recursive && signalled ? 0 : 1;
}
