#include "Engine/Common/Base/Debug.h"

#include "ChildProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <string>

using namespace Quillanor::Common;

namespace {

std::u16string Wide(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

} // namespace

QC_CHILD_MAIN(ObserverCrash) {
    cDebug::SetupObserver(Wide(args.at(0)).c_str());
    std::raise(SIGSEGV);
    return 3; // not reached: the crash handler sleeps
}

QC_CHILD_MAIN(ObserverAssert) {
    cDebug::SetupObserver(Wide(args.at(0)).c_str());
    cDebug::Assert(u"false", u"Child.cpp", 1, nullptr);
}

TEST(DebugDeathTest, AssertHRShowsTheSystemTextOfAFailure) {
    // On POSIX a failed result is -errno.
    EXPECT_EXIT(cDebug::AssertHR(-ENOENT, u"Open(pPath)", u"/x/y/File.cpp", 99),
                testing::ExitedWithCode(0),
                std::string("^Fatal failure\\.\n\nFile: File\\.cpp\nLine: 99\n\nExpression: "
                            "Open\\(pPath\\)\n\n\n0xFFFFFFFE: ") +
                    std::strerror(ENOENT) + "\n\n\nThis is a fatal error\\.\n");
    EXPECT_EXIT(cDebug::AssertHR(-2147467259L, u"hr", u"File.cpp", 5), testing::ExitedWithCode(0),
                "\n\n\n0x80004005: \n\n\nThis is a fatal error\\.");
}
