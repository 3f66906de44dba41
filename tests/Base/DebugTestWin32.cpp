#include "Engine/Common/Base/Debug.h"

#include "Engine/Common/Multithreading/Event.h"

#include "ChildProcess.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

using namespace Quillanor::Common;

namespace {

std::u16string Wide(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

cEvent OpenObserverEvent(const std::string& prefix, int index) {
    const char* suffix = index == 0 ? "_CreateDumpWithoutPromptingUserTerminateQuillanor"
                                    : "_PromptUserToCreateDumpTerminateQuillanor";
    return cEvent(false, false, Wide(prefix + suffix).c_str());
}

} // namespace

QC_CHILD_MAIN(ObserverAccessViolation) {
    cDebug::SetupObserver(Wide(args.at(0)).c_str());
    RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
    return 3; // not reached: the exception filter sleeps
}

TEST(DebugObserver, UnhandledExceptionSignalsEventOneAndTheProcessWaits) {
    const std::string prefix = QcTest::UniqueName("observer");
    cEvent noPrompt = OpenObserverEvent(prefix, 0);
    cEvent prompt = OpenObserverEvent(prefix, 1);
    QcTest::cChildProcess child("ObserverAccessViolation", {prefix});
    ASSERT_TRUE(child.Started());
    EXPECT_TRUE(prompt.WaitFor(20000));
    EXPECT_FALSE(noPrompt.Peek());
    EXPECT_EQ(child.Wait(300), -1) << "the child sleeps until the observer ends it";
    child.Kill();
}

TEST(DebugDeathTest, AssertHRShowsTheSystemTextOfAFailure) {
    // E_FAIL: "Unspecified error" in the system table (followed by its line break).
    EXPECT_EXIT(
        cDebug::AssertHR(static_cast<long>(0x80004005L), u"Open(pPath)", u"C:\\x\\File.cpp", 99),
        testing::ExitedWithCode(0),
        "^Fatal failure\\.\n\nFile: File\\.cpp\nLine: 99\n\nExpression: Open\\(pPath\\)\n\n\n"
        "0x80004005: [^\n]+");
}
