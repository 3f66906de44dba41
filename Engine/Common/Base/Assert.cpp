// Interim failure routine for the assertion macros: prints the standard assertion text to
// standard error and ends the process. The debug facility replaces the body with its own
// display routine (logging, observer, debugger break) without changing the macros.
#include "Engine/Common/Base/Assert.h"

#include "Engine/Common/Base/Detail/Utf.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Quillanor::Common::Detail {

void AssertFailed(const char16_t* expression, const char16_t* file, unsigned int line,
                  const char16_t* message) {
    // Only the file name and extension are shown, never the directory.
    const char16_t* name = file;
    for (const char16_t* p = file; p != nullptr && *p != 0; ++p) {
        if (*p == u'/' || *p == u'\\' || *p == u':') {
            name = p + 1;
        }
    }
    std::string text;
    if (message != nullptr) {
        text += Utf16ToUtf8(message);
    } else {
        text += "Assertion failed.";
    }
    text += "\n\nFile: ";
    text += Utf16ToUtf8(name);
    text += "\nLine: " + std::to_string(line) + "\n\nExpression: ";
    text += Utf16ToUtf8(expression);
    text += "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
    std::_Exit(0);
}

} // namespace Quillanor::Common::Detail
