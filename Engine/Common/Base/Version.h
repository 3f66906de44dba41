// Facts about the library build that is actually loaded, for diagnostics and the demo tool.
// All functions return static text and are safe to call from any thread at any time.
#pragma once

#include "Engine/Common/Base/Api.h"

namespace Quillanor::Common {

struct QC_API cVersion {
    // "major.minor.patch" of the loaded library.
    static const char* Library();
    // Build type and sanitizers, e.g. "RelWithDebInfo" or "Debug+address,undefined".
    static const char* Configuration();
    // The platform backend compiled in: "Posix" or "Win32".
    static const char* Platform();
    // Compiler identification and version.
    static const char* Compiler();
    // True when the library was built as a shared library (DLL / .so).
    static bool IsShared();
};

} // namespace Quillanor::Common
