// The Windows half of cDebug: the unhandled-exception filter and the dump dialog hand the
// process to the observer; AssertHR shows the system's text for the result code.
#include "Engine/Common/Base/Debug.h"

#include "ChildProcess.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

using namespace Quillanor::Common;

namespace {

std::u16string Wide(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

// Standard error into a pipe, as under a test harness: the text goes there and no box is
// shown, whatever the child inherited.
void RedirectStandardError() {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (CreatePipe(&read, &write, nullptr, 1 << 16)) {
        SetStdHandle(STD_ERROR_HANDLE, write);
    }
}

// The system's text for `code` up to its first line break, in a regular expression.
std::string SystemTextPattern(DWORD code) {
    wchar_t text[1000];
    const DWORD n =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                       MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text, 1000, nullptr);
    std::string pattern;
    for (DWORD i = 0; i < n && text[i] != L'\r' && text[i] != L'\n'; ++i) {
        if (text[i] > 0x7F) {
            pattern += '.'; // any one byte of a longer character suffices here
            continue;
        }
        const char c = static_cast<char>(text[i]);
        if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) {
            pattern += '\\';
        }
        pattern += c;
    }
    return pattern;
}

} // namespace

QC_CHILD_MAIN(ObserverCrash) {
    cDebug::SetupObserver(Wide(args.at(0)).c_str());
    *static_cast<volatile int*>(nullptr) = 1;
    return 3; // not reached: the filter sleeps
}

QC_CHILD_MAIN(ObserverAssert) {
    RedirectStandardError();
    cDebug::SetupObserver(Wide(args.at(0)).c_str());
    cDebug::Assert(u"false", u"Child.cpp", 1, nullptr);
}

TEST(DebugWin32DeathTest, AssertHRShowsTheSystemTextOfAFailure) {
    const long accessDenied = static_cast<long>(0x80070005); // HRESULT of ERROR_ACCESS_DENIED
    const std::string text = SystemTextPattern(0x80070005);
    EXPECT_EXIT(cDebug::AssertHR(accessDenied, u"Open(pPath)", u"C:\\x\\y\\File.cpp", 99),
                testing::ExitedWithCode(0),
                "^Fatal failure\\.\n\nFile: File\\.cpp\nLine: 99\n\nExpression: "
                "Open\\(pPath\\)\n\n\n0x80070005: " +
                    text);
}
