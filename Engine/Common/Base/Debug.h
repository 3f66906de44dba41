// Fatal assertions, message display and the crash-dump observer.
//
// cDebug is all static. Its platform half (debugger detection and break, message box, crash
// handlers, process termination) lives in DebugPosix.cpp / DebugWin32.cpp behind the private
// ...Impl functions.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Assert.h"

namespace Quillanor::Common {

class QC_API cDebug {
private:
    friend void Detail::HardAssertFailed(const char16_t*, const char16_t*, unsigned int);

    // True while a debugger is attached to the process.
    static bool IsDebuggerAttachedImpl();
    // A breakpoint trap; returns when the debugger resumes.
    static void BreakImpl();
    // Ends the process at once (no destructors, no handlers).
    [[noreturn]] static void AbortImpl();
};

} // namespace Quillanor::Common
