#include "Engine/Common/Base/Debug.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/Detail/Utf.h"

#include <cstdio>
#include <string>

namespace Quillanor::Common {
namespace Detail {

void HardAssertFailed(const char16_t* expression, const char16_t* file, unsigned int line) {
    std::string text = "Hard assertion failed: ";
    text += Utf16ToUtf8(expression);
    text += "\nFile: ";
    text += Utf16ToUtf8(file);
    text += "\nLine: " + std::to_string(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
    if (cDebug::IsDebuggerAttachedImpl()) {
        cDebug::BreakImpl();
        return;
    }
    cDebug::AbortImpl();
}

} // namespace Detail
} // namespace Quillanor::Common
