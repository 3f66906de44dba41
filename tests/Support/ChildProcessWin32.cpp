#include "ChildProcess.h"

#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <string>
#include <windows.h>

namespace QcTest {
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

cChildProcess::cChildProcess(const std::string& name, const std::vector<std::string>& args) {
    wchar_t exe[MAX_PATH * 4];
    const DWORD len = GetModuleFileNameW(nullptr, exe, static_cast<DWORD>(std::size(exe)));
    if (len == 0 || len >= std::size(exe)) {
        return;
    }
    std::wstring line;
    AppendQuoted(line, exe);
    AppendQuoted(line, L"--qc-child");
    AppendQuoted(line, Widen(name));
    for (const auto& a : args) {
        AppendQuoted(line, Widen(a));
    }
    STARTUPINFOW si = {};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi = {};
    if (!CreateProcessW(exe, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) {
        return;
    }
    CloseHandle(pi.hThread);
    mId = static_cast<long long>(reinterpret_cast<intptr_t>(pi.hProcess));
}

cChildProcess::~cChildProcess() {
    if (Started() && !mReaped) {
        Kill();
    }
}

bool cChildProcess::Started() const {
    return mId > 0;
}

int cChildProcess::Wait(unsigned int timeoutMs) {
    if (!Started() || mReaped) {
        return -1;
    }
    if (WaitForSingleObject(H(mId), timeoutMs) != WAIT_OBJECT_0) {
        return -1;
    }
    DWORD code = 0;
    const bool ok = GetExitCodeProcess(H(mId), &code) != 0;
    CloseHandle(H(mId));
    mReaped = true;
    return ok ? static_cast<int>(code) : -1;
}

void cChildProcess::Kill() {
    if (!Started() || mReaped) {
        return;
    }
    TerminateProcess(H(mId), 128 + 9); // the code a SIGKILL gives on POSIX
    WaitForSingleObject(H(mId), INFINITE);
    CloseHandle(H(mId));
    mReaped = true;
}

void InitTestProcess() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

std::string UniqueName(const char* stem) {
    static int counter = 0;
    return std::string("qctest.") + stem + "." + std::to_string(GetCurrentProcessId()) + "." +
           std::to_string(++counter);
}

} // namespace QcTest
