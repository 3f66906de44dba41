// Fatal assertions, message display and the crash-dump observer.
//
// cDebug is all static and thread-safe; one display lock serialises every message. A fatal
// message (Assert, AssertHR, AssertMessage) is shown, logged when a logger exists, breaks into
// an attached debugger, and then either hands the process to the crash-dump observer (when the
// dump dialog is enabled and the user agrees; on POSIX, where standard error is the dialog,
// whenever an observer was set up) or terminates it with exit code 0. None of them returns.
//
// On POSIX the whole message goes to standard error. The platform half (debugger, message
// box, crash handlers, termination) lives in DebugPosix.cpp / DebugWin32.cpp behind the
// private ...Impl functions.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Assert.h"

#include <atomic>
#include <cstddef>

namespace Quillanor::Common {

class cEvent;

namespace Detail {
struct sHardAssert;
} // namespace Detail

class QC_API cDebug {
public:
    // Whether a fatal message offers to create a dump (and so may hand over to the observer).
    static bool sAssertDialogEnabled;

    // "<message or Assertion failed.>\n\nFile: <name><ext>\nLine: <line>\n\nExpression: <expr>"
    // (the directory of `file` is dropped); fatal.
    [[noreturn]] static void Assert(const char16_t* expression, const char16_t* file,
                                    unsigned int line, const char16_t* message);
    // Fatal when `hr` is negative (a failed result code), with the system's text for it;
    // a non-negative `hr` does nothing. On POSIX a failed result is -errno.
    static void AssertHR(long hr, const char16_t* expression, const char16_t* file,
                         unsigned int line);
    // Fatal, with a free text.
    [[noreturn]] static void AssertMessage(const char16_t* message);
    // Shows a text without ending the process.
    static void DisplayMessage(const char16_t* message);
    // True once any fatal message has been shown.
    static bool IsAssertFailed();

    // Creates the observer events "<prefix>_CreateDumpWithoutPromptingUserTerminateQuillanor"
    // (0) and "<prefix>_PromptUserToCreateDumpTerminateQuillanor" (1) and installs the crash
    // handler (fatal signals on POSIX, the unhandled-exception filter on Windows), which
    // signals event 1 and sleeps until the observer ends the process. A second call creates
    // new events and leaks the old ones.
    static void SetupObserver(const char16_t* prefix);
    // Signals event 1 (`prompt`) or 0 and sleeps forever: the observer ends the process.
    [[noreturn]] static void NotifyObserver(bool prompt);
    // Terminates the process at once with `exitCode`; never returns.
    [[noreturn]] static void TerminateApp(int exitCode);

    // Hooks of later subsystems into the display routine. Each is a plain function pointer,
    // null while its subsystem does not exist; setting them is thread-safe.
    //
    // The logger: logs `text` at level 6 (errors) on channel 0 without thread-name override.
    using LogHook = void (*)(const char16_t* text);
    // The threading manager: `suspend` true suspends every other managed thread and returns
    // the calling thread's name (null when it has no thread object); false resumes them.
    using ThreadHook = const char16_t* (*)(bool suspend);
    static void SetLogHook(LogHook hook);
    static void SetThreadHook(ThreadHook hook);

private:
    // Gives Detail::HardAssertFailed the platform half. (A friend function would redeclare
    // that exported function without its DLL attribute on Windows.)
    friend struct Detail::sHardAssert;

    // Shows `text` (a buffer of `capacity` characters that the routine appends to in place),
    // then returns (not fatal) or ends the process (fatal).
    static void DisplayMessage(char16_t* text, int capacity, bool fatal);
    [[noreturn]] static void SleepForever();
    // Writes `text` to the standard error stream in UTF-8 (at most 4096 UTF-16 units of it).
    static void WriteError(const char16_t* text);

    // ---- platform half ----
    // True while a debugger is attached to the process.
    static bool IsDebuggerAttachedImpl();
    // A breakpoint trap; returns when the debugger resumes.
    static void BreakImpl();
    // Ends the process at once (no destructors, no handlers), as abort() does.
    [[noreturn]] static void AbortImpl();
    // Exits with `exitCode` at once, skipping destructors and atexit handlers.
    [[noreturn]] static void TerminateImpl(int exitCode);
    static void SleepImpl(unsigned int milliseconds);
    // Writes `size` bytes of UTF-8 to the standard error stream.
    static void WriteErrorImpl(const char* utf8, std::size_t size);
    // Shows the message box with the error icon; `yesNo` asks Yes/No (returns true on Yes),
    // otherwise OK. `caption` may be null. POSIX has no box (the text is already on standard
    // error): the answer is Yes exactly when an observer is set up.
    static bool ShowMessageImpl(const char16_t* text, const char16_t* caption, bool yesNo);
    // The system's text for a failed result code, or an empty text.
    static const char16_t* ResultTextImpl(long hr);
    // Routes the process's crashes to observer event 1.
    static void InstallCrashHandlerImpl();

    static std::atomic<bool> sAssertFailed;
    static std::atomic<cEvent*> sObserverEvents[2];
    static std::atomic<LogHook> sLogHook;
    static std::atomic<ThreadHook> sThreadHook;
};

} // namespace Quillanor::Common
