#include "SelfProcess.h"

#include <cstdint>
#include <iterator>
#include <string>
#include <windows.h>

namespace QcProcess {
namespace {

std::wstring Widen(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    const int n =
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), n);
    return out;
}

// Appends one argument quoted so that the C runtime's command-line parser gives it back as is.
void AppendQuoted(std::wstring& line, const std::wstring& arg) {
    if (!line.empty()) {
        line += L' ';
    }
    if (!arg.empty() && arg.find_first_of(L" \t\n\v\"") == std::wstring::npos) {
        line += arg;
        return;
    }
    line += L'"';
    size_t backslashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        // Backslashes are literal unless they precede a quote.
        line.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        line += c;
    }
    line.append(backslashes * 2, L'\\');
    line += L'"';
}

HANDLE H(long long id) {
    return reinterpret_cast<HANDLE>(static_cast<intptr_t>(id));
}

} // namespace

long long StartSelf(const std::vector<std::string>& args) {
    wchar_t exe[MAX_PATH * 4];
    const DWORD len = GetModuleFileNameW(nullptr, exe, static_cast<DWORD>(std::size(exe)));
    if (len == 0 || len >= std::size(exe)) {
        return -1;
    }
    std::wstring line;
    AppendQuoted(line, exe);
    for (const auto& a : args) {
        AppendQuoted(line, Widen(a));
    }
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessW(exe, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) {
        return -1;
    }
    CloseHandle(pi.hThread);
    return static_cast<long long>(reinterpret_cast<intptr_t>(pi.hProcess));
}

bool WaitProcess(long long id, unsigned int timeoutMs, int& exitCode) {
    if (WaitForSingleObject(H(id), timeoutMs) != WAIT_OBJECT_0) {
        return false;
    }
    DWORD code = 0;
    exitCode = GetExitCodeProcess(H(id), &code) != 0 ? static_cast<int>(code) : -1;
    CloseHandle(H(id));
    return true;
}

void KillProcess(long long id) {
    TerminateProcess(H(id), 128 + 9); // the code a SIGKILL gives on POSIX
    WaitForSingleObject(H(id), INFINITE);
    CloseHandle(H(id));
}

unsigned long CurrentProcessId() {
    return GetCurrentProcessId();
}

} // namespace QcProcess
