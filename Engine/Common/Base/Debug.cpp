#include "Engine/Common/Base/Debug.h"

#include "Engine/Common/Base/Assert.h"
#include "Engine/Common/Base/Detail/Utf.h"
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Base/SystemInfo.h"
#include "Engine/Common/Base/Utils.h"
#include "Engine/Common/Multithreading/CriticalSection.h"
#include "Engine/Common/Multithreading/Event.h"

#include <cstdio>
#include <string>

namespace Quillanor::Common {

bool cDebug::sAssertDialogEnabled = true;
std::atomic<bool> cDebug::sAssertFailed{false};
std::atomic<cEvent*> cDebug::sObserverEvents[2] = {};
std::atomic<cDebug::LogHook> cDebug::sLogHook{nullptr};
std::atomic<cDebug::ThreadHook> cDebug::sThreadHook{nullptr};

namespace {

// Characters of the local message buffers; the last kTailRoom are kept for what the display
// routine appends (thread suffix, tails).
constexpr int kMessageCapacity = 4096;
constexpr int kTailRoom = 512;

const char16_t kFatalTail[] =
    u"\n\n\nThis is a fatal error.\nThe application will close. Sorry for the inconvenience.\n"
    u"We would appreciate if you could help us investigate the problem by creating and sending "
    u"a dump file.\nDo you want to create a dump file now?\n";
const char16_t kNonFatalTail[] = u"\n\n\nClick OK to continue\n";

// Appends to a fixed buffer, cutting what does not fit; never allocates.
class cTextBuilder {
public:
    cTextBuilder(char16_t* buffer, int capacity, int length = 0)
        : mBuffer(buffer), mCapacity(capacity), mLength(length) {
        mBuffer[mLength] = 0;
    }
    cTextBuilder& Add(const char16_t* text) {
        for (; text != nullptr && *text != 0 && mLength < mCapacity - 1; ++text) {
            mBuffer[mLength++] = *text;
        }
        mBuffer[mLength] = 0;
        return *this;
    }
    cTextBuilder& Add(const char16_t* text, const char16_t* end) {
        for (; text < end && mLength < mCapacity - 1; ++text) {
            mBuffer[mLength++] = *text;
        }
        mBuffer[mLength] = 0;
        return *this;
    }
    cTextBuilder& AddUnsigned(unsigned int value) {
        char16_t digits[10];
        int n = 0;
        do {
            digits[n++] = static_cast<char16_t>(u'0' + value % 10);
            value /= 10;
        } while (value != 0);
        while (n > 0 && mLength < mCapacity - 1) {
            mBuffer[mLength++] = digits[--n];
        }
        mBuffer[mLength] = 0;
        return *this;
    }
    // Eight upper-case hexadecimal digits ("%08X").
    cTextBuilder& AddHex8(unsigned int value) {
        for (int shift = 28; shift >= 0 && mLength < mCapacity - 1; shift -= 4) {
            mBuffer[mLength++] = u"0123456789ABCDEF"[(value >> shift) & 0xF];
        }
        mBuffer[mLength] = 0;
        return *this;
    }

private:
    char16_t* mBuffer;
    int mCapacity;
    int mLength;
};

int Length(const char16_t* text) {
    int n = 0;
    while (text[n] != 0) {
        ++n;
    }
    return n;
}

// "File: <name><ext>": the path is split into drive, directory, name and extension, and only
// name and extension are kept.
void AddFileNameAndExtension(cTextBuilder& text, const char16_t* path) {
    if (path == nullptr) {
        return;
    }
    const char16_t* name = path;
    const char16_t* end = path;
    for (; *end != 0; ++end) {
        if (*end == u'/' || *end == u'\\' || *end == u':') {
            name = end + 1;
        }
    }
    const char16_t* extension = end;
    for (const char16_t* p = name; p < end; ++p) {
        if (*p == u'.') {
            extension = p;
        }
    }
    text.Add(name, extension).Add(extension, end);
}

cCriticalSection& DisplayLock() {
    static cCriticalSection lock;
    return lock;
}

} // namespace

void cDebug::Assert(const char16_t* expression, const char16_t* file, unsigned int line,
                    const char16_t* message) {
    char16_t buffer[kMessageCapacity];
    cTextBuilder text(buffer, kMessageCapacity - kTailRoom);
    text.Add(message != nullptr ? message : u"Assertion failed.").Add(u"\n\nFile: ");
    AddFileNameAndExtension(text, file);
    text.Add(u"\nLine: ").AddUnsigned(line).Add(u"\n\nExpression: ").Add(expression);
    DisplayMessage(buffer, kMessageCapacity, true);
    SleepForever();
}

void cDebug::AssertHR(long hr, const char16_t* expression, const char16_t* file,
                      unsigned int line) {
    if (hr >= 0) {
        return;
    }
    char16_t buffer[kMessageCapacity];
    cTextBuilder text(buffer, kMessageCapacity - kTailRoom);
    text.Add(u"Fatal failure.\n\nFile: ");
    AddFileNameAndExtension(text, file);
    text.Add(u"\nLine: ").AddUnsigned(line).Add(u"\n\nExpression: ").Add(expression);
    text.Add(u"\n\n\n0x").AddHex8(static_cast<unsigned int>(hr)).Add(u": ");
    text.Add(ResultTextImpl(hr));
    DisplayMessage(buffer, kMessageCapacity, true);
    SleepForever();
}

void cDebug::AssertMessage(const char16_t* message) {
    char16_t buffer[kMessageCapacity];
    cTextBuilder(buffer, kMessageCapacity - kTailRoom).Add(message);
    DisplayMessage(buffer, kMessageCapacity, true);
    SleepForever();
}

void cDebug::DisplayMessage(const char16_t* message) {
    char16_t buffer[kMessageCapacity];
    cTextBuilder(buffer, kMessageCapacity - kTailRoom).Add(message);
    DisplayMessage(buffer, kMessageCapacity, false);
}

bool cDebug::IsAssertFailed() {
    return sAssertFailed.load(std::memory_order_acquire);
}

void cDebug::DisplayMessage(char16_t* buffer, int capacity, bool fatal) {
    cCriticalSection& lock = DisplayLock();
    lock.Enter();
    cTextBuilder text(buffer, capacity, Length(buffer));

    const ThreadHook threads = sThreadHook.load(std::memory_order_acquire);
    if (threads != nullptr) {
        const char16_t* name = threads(true);
        text.Add(u"\n\nThread: ").Add(name != nullptr ? name : u"Sys");
    }
    if (const LogHook log = sLogHook.load(std::memory_order_acquire); log != nullptr) {
        log(buffer);
    }
    cString caption;
    const bool hasCaption = cSystemInfo::HasInstance();
    if (hasCaption) {
        caption = cSystemInfo::Instance()->GetApplicationTitle();
    }

    if (fatal) {
        sAssertFailed.store(true, std::memory_order_release);
        if (IsDebuggerAttachedImpl()) {
            BreakImpl();
        }
        if (sAssertDialogEnabled) {
            text.Add(kFatalTail);
            WriteError(buffer);
            if (ShowMessageImpl(buffer, hasCaption ? caption.Text() : nullptr, true)) {
                if (cEvent* event = sObserverEvents[0].load(std::memory_order_acquire)) {
                    event->Set();
                }
                SleepForever();
            }
        } else {
            WriteError(buffer);
        }
        TerminateApp(0);
    }

    text.Add(kNonFatalTail);
    WriteError(buffer);
    ShowMessageImpl(buffer, hasCaption ? caption.Text() : nullptr, false);
    if (threads != nullptr) {
        threads(false);
    }
    lock.Leave();
}

void cDebug::SetupObserver(const char16_t* prefix) {
    const cString events[2] = {cString(prefix)
                                   << u"_CreateDumpWithoutPromptingUserTerminateQuillanor",
                               cString(prefix) << u"_PromptUserToCreateDumpTerminateQuillanor"};
    for (int i = 0; i < 2; ++i) {
        sObserverEvents[i].store(new cEvent(false, false, events[i].Text()),
                                 std::memory_order_release);
    }
    InstallCrashHandlerImpl();
}

void cDebug::NotifyObserver(bool prompt) {
    if (cEvent* event = sObserverEvents[prompt ? 1 : 0].load(std::memory_order_acquire)) {
        event->Set();
    }
    SleepForever();
}

void cDebug::TerminateApp(int exitCode) {
    TerminateImpl(exitCode);
    SleepForever();
}

void cDebug::WriteError(const char16_t* text) {
    // UTF-8 takes at most three bytes per UTF-16 unit.
    char utf8[3 * 4096 + 4];
    const int maxUnits = static_cast<int>(sizeof(utf8) / 3) - 1;
    const int length = Length(text);
    const int n = cUtils::ToMultibyte(65001, text, length < maxUnits ? length : maxUnits, utf8,
                                      static_cast<int>(sizeof(utf8)));
    if (n > 0) {
        WriteErrorImpl(utf8, static_cast<std::size_t>(n));
    }
}

void cDebug::SleepForever() {
    for (;;) {
        SleepImpl(1000000);
    }
}

void cDebug::SetLogHook(LogHook hook) {
    sLogHook.store(hook, std::memory_order_release);
}

void cDebug::SetThreadHook(ThreadHook hook) {
    sThreadHook.store(hook, std::memory_order_release);
}

namespace Detail {

struct sHardAssert {
    static bool DebuggerAttached() { return cDebug::IsDebuggerAttachedImpl(); }
    static void Break() { cDebug::BreakImpl(); }
    [[noreturn]] static void Abort() { cDebug::AbortImpl(); }
};

void HardAssertFailed(const char16_t* expression, const char16_t* file, unsigned int line) {
    std::string text = "Hard assertion failed: ";
    text += Utf16ToUtf8(expression);
    text += "\nFile: ";
    text += Utf16ToUtf8(file);
    text += "\nLine: " + std::to_string(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
    if (sHardAssert::DebuggerAttached()) {
        sHardAssert::Break();
        return;
    }
    sHardAssert::Abort();
}

} // namespace Detail
} // namespace Quillanor::Common
