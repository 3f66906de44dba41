#include "Engine/Common/Base/Debug.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/SystemInfo.h"
#include "Engine/Common/Base/Utils.h"
#include "Engine/Common/Multithreading/Event.h"

#include "ChildProcess.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace Quillanor::Common;

namespace {

const std::string kFatalTail =
    "\n\n\nThis is a fatal error.\nThe application will close. Sorry for the inconvenience.\n"
    "We would appreciate if you could help us investigate the problem by creating and sending "
    "a dump file.\nDo you want to create a dump file now?\n";
const std::string kNonFatalTail = "\n\n\nClick OK to continue\n";

// The whole of `text`, literally, as a death-test pattern.
std::string Exactly(const std::string& text) {
    std::string pattern = "^";
    for (const char c : text) {
        if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) {
            pattern += '\\';
        }
        pattern += c;
    }
    return pattern + "$";
}

std::string Utf8(const char16_t* text) {
    char buffer[4096];
    const int n = cUtils::ToMultibyte(65001, text, -1, buffer, sizeof(buffer));
    return n > 0 ? std::string(buffer, n - 1) : std::string();
}

std::vector<std::string> gHookCalls;

void RecordLog(const char16_t* text) {
    gHookCalls.push_back("log:" + Utf8(text));
}

const char16_t* NamedThread(bool suspend) {
    gHookCalls.push_back(suspend ? "suspend" : "resume");
    return u"Worker";
}

const char16_t* UnmanagedThread(bool suspend) {
    gHookCalls.push_back(suspend ? "suspend" : "resume");
    return nullptr;
}

cEvent OpenObserverEvent(const std::string& prefix, int index) {
    const char* suffix = index == 0 ? "_CreateDumpWithoutPromptingUserTerminateQuillanor"
                                    : "_PromptUserToCreateDumpTerminateQuillanor";
    const std::string name = prefix + suffix;
    return cEvent(false, false, std::u16string(name.begin(), name.end()).c_str());
}

// Runs the child `name` with fresh observer events: it must signal event `signalled` only and
// then sleep until the observer ends it.
void ExpectHandOverToObserver(const char* name, int signalled) {
    const std::string prefix = QcTest::UniqueName("observer");
    cEvent events[2] = {OpenObserverEvent(prefix, 0), OpenObserverEvent(prefix, 1)};
    QcTest::cChildProcess child(name, {prefix});
    ASSERT_TRUE(child.Started());
    EXPECT_TRUE(events[signalled].WaitFor(20000));
    EXPECT_FALSE(events[1 - signalled].Peek());
    EXPECT_EQ(child.Wait(300), -1) << "the child sleeps until the observer ends it";
    child.Kill();
}

} // namespace

TEST(DebugDeathTest, AssertShowsMessageFileNameLineAndExpression) {
    EXPECT_EXIT(cDebug::Assert(u"pIdx>=0 && pIdx<mLength",
                               u"/home/build/Engine/Common/Base/String.cpp", 412,
                               u"Index out of range"),
                testing::ExitedWithCode(0),
                Exactly("Index out of range\n\nFile: String.cpp\nLine: 412\n\nExpression: "
                        "pIdx>=0 && pIdx<mLength" +
                        kFatalTail));
}

TEST(DebugDeathTest, AssertWithoutMessageSaysAssertionFailed) {
    EXPECT_EXIT(cDebug::Assert(u"!mReadOnly", u"C:\\src\\Engine\\Stream.h", 7, nullptr),
                testing::ExitedWithCode(0),
                Exactly("Assertion failed.\n\nFile: Stream.h\nLine: 7\n\nExpression: !mReadOnly" +
                        kFatalTail));
}

TEST(DebugDeathTest, AssertWithTheDialogDisabledHasNoTail) {
    EXPECT_EXIT(
        {
            cDebug::sAssertDialogEnabled = false;
            cDebug::Assert(u"x", u"a/b.c/Name", 1, nullptr);
        },
        testing::ExitedWithCode(0),
        Exactly("Assertion failed.\n\nFile: Name\nLine: 1\n\nExpression: x"));
}

TEST(DebugDeathTest, AssertMessageShowsTheFreeText) {
    EXPECT_EXIT(cDebug::AssertMessage(u"Out of video memory (\u00e9t\u00e9)"),
                testing::ExitedWithCode(0),
                Exactly("Out of video memory (\xc3\xa9t\xc3\xa9)" + kFatalTail));
}

TEST(DebugDeathTest, AssertionMacroGoesThroughTheDisplayRoutine) {
    EXPECT_EXIT(
        {
            cDebug::SetLogHook([](const char16_t* text) {
                std::fprintf(stderr, "logged: %s|", Utf8(text).c_str());
                std::fflush(stderr);
            });
            QC_ASSERT_MSG(1 + 1 == 3, u"Arithmetic");
        },
        testing::ExitedWithCode(0),
        "^logged: Arithmetic\n\nFile: DebugTest\\.cpp\nLine: [0-9]+\n\nExpression: 1 \\+ 1 == 3\\|"
        "Arithmetic\n\nFile: DebugTest\\.cpp\nLine: [0-9]+\n\nExpression: 1 \\+ 1 == 3\n\n\nThis "
        "is "
        "a fatal error\\.");
}

TEST(Debug, AssertHRWithASuccessCodeReturns) {
    testing::internal::CaptureStderr();
    cDebug::AssertHR(0, u"Init()", u"Init.cpp", 3);
    cDebug::AssertHR(1, u"Init()", u"Init.cpp", 4);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(cDebug::IsAssertFailed());
}

TEST(Debug, DisplayMessageShowsTheNonFatalTailAndReturns) {
    testing::internal::CaptureStderr();
    cDebug::DisplayMessage(u"Disk almost full");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Disk almost full" + kNonFatalTail);
    EXPECT_FALSE(cDebug::IsAssertFailed());
}

TEST(Debug, HooksLogAndSuspendAroundTheMessage) {
    gHookCalls.clear();
    cDebug::SetLogHook(&RecordLog);
    cDebug::SetThreadHook(&NamedThread);
    testing::internal::CaptureStderr();
    cDebug::DisplayMessage(u"Frame dropped");
    const std::string named = testing::internal::GetCapturedStderr();
    cDebug::SetThreadHook(&UnmanagedThread);
    testing::internal::CaptureStderr();
    cDebug::DisplayMessage(u"Frame dropped");
    const std::string unmanaged = testing::internal::GetCapturedStderr();
    cDebug::SetThreadHook(nullptr);
    cDebug::SetLogHook(nullptr);

    EXPECT_EQ(named, "Frame dropped\n\nThread: Worker" + kNonFatalTail);
    EXPECT_EQ(unmanaged, "Frame dropped\n\nThread: Sys" + kNonFatalTail);
    EXPECT_EQ(gHookCalls,
              (std::vector<std::string>{"suspend", "log:Frame dropped\n\nThread: Worker", "resume",
                                        "suspend", "log:Frame dropped\n\nThread: Sys", "resume"}));
}

// The children ObserverCrash and ObserverAssert live in the platform test files: how a process
// crashes, and how its standard error is kept off a dialog, differ by platform.
TEST(DebugObserver, CrashSignalsEventOneAndTheProcessWaits) {
    ExpectHandOverToObserver("ObserverCrash", 1);
}

TEST(DebugObserver, FatalAssertionWithTheDialogAsksForADumpWithoutPrompt) {
    ExpectHandOverToObserver("ObserverAssert", 0);
}

TEST(SystemInfo, ApplicationTitleIsNotAvailableUntilSet) {
    cSystemInfo::Done();
    EXPECT_EQ(cSystemInfo::Instance()->GetApplicationTitle(), cString(u"N/A"));
    cSystemInfo::Instance()->SetApplicationTitle(u"Quillanor Player");
    EXPECT_TRUE(cSystemInfo::Instance()->GetApplicationTitle().Equals(u"Quillanor Player"));
    cSystemInfo::Done();
    EXPECT_FALSE(cSystemInfo::HasInstance());
}
