#include "ChildProcess.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace QcTest {

// The tests write LF line ends themselves; binary streams keep Windows from adding CRs.
void InitTestProcess() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

} // namespace QcTest
