// Windows half of cDebug: MessageBoxW for the box, IsDebuggerPresent/DebugBreak, and the
// unhandled-exception filter for the crash-dump observer.
#include "Engine/Common/Base/Debug.h"

#include <cstdlib>
#include <windows.h>

namespace Quillanor::Common {
namespace {

const wchar_t* WinText(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

LONG WINAPI CrashFilter(EXCEPTION_POINTERS*) {
    cDebug::NotifyObserver(true);
}

// Standard error redirected to a pipe or a file: a harness or a log reads the text, nobody
// sits in front of a box.
bool StandardErrorIsRedirected() {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    if (error == nullptr || error == INVALID_HANDLE_VALUE) {
        return false;
    }
    const DWORD type = GetFileType(error);
    return type == FILE_TYPE_PIPE || type == FILE_TYPE_DISK;
}

} // namespace

bool cDebug::IsDebuggerAttachedImpl() {
    return IsDebuggerPresent() != 0;
}

void cDebug::BreakImpl() {
    DebugBreak();
}

void cDebug::AbortImpl() {
    std::abort();
}

void cDebug::TerminateImpl(int exitCode) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    for (;;) {
        Sleep(INFINITE);
    }
}

void cDebug::SleepImpl(unsigned int milliseconds) {
    Sleep(milliseconds);
}

void cDebug::WriteErrorImpl(const char* utf8, std::size_t size) {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    if (error == nullptr || error == INVALID_HANDLE_VALUE) {
        return;
    }
    DWORD written = 0;
    WriteFile(error, utf8, static_cast<DWORD>(size), &written, nullptr);
}

bool cDebug::ShowMessageImpl(const char16_t* text, const char16_t* caption, bool yesNo) {
    if (StandardErrorIsRedirected()) {
        // The text is already on standard error, which stands in for the box.
        return yesNo && sObserverEvents[0].load(std::memory_order_acquire) != nullptr;
    }
    const UINT type = (yesNo ? MB_YESNO : MB_OK) | MB_ICONERROR;
    return MessageBoxW(nullptr, WinText(text), caption != nullptr ? WinText(caption) : nullptr,
                       type) == IDYES;
}

const char16_t* cDebug::ResultTextImpl(long hr) {
    thread_local wchar_t text[1000];
    const DWORD n = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                   nullptr, static_cast<DWORD>(hr),
                                   MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text, 1000, nullptr);
    if (n == 0) {
        text[0] = 0;
    }
    return reinterpret_cast<const char16_t*>(text);
}

void cDebug::InstallCrashHandlerImpl() {
    SetUnhandledExceptionFilter(&CrashFilter);
}

} // namespace Quillanor::Common
