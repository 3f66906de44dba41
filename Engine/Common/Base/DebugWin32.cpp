// Windows half of cDebug.
#include "Engine/Common/Base/Debug.h"

#include <cstdlib>
#include <windows.h>

namespace Quillanor::Common {

bool cDebug::IsDebuggerAttachedImpl() {
    return IsDebuggerPresent() != 0;
}

void cDebug::BreakImpl() {
    DebugBreak();
}

void cDebug::AbortImpl() {
    std::abort();
}

} // namespace Quillanor::Common
