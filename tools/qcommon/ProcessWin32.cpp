#include "Process.h"

#include <cstdint>
#include <iterator>
#include <string>
#include <windows.h>

namespace QcTool {
namespace {

// Appends one argument quoted so that the C runtime's command-line parser gives it back as is.
void AppendQuoted(std::wstring& line, const std::string& narrow) {
    const std::wstring arg(narrow.begin(), narrow.end()); // the demo's arguments are ASCII
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
        line.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        line += c;
    }
    line.append(backslashes * 2, L'\\');
    line += L'"';
}

} // namespace

long long StartSelf(const std::vector<std::string>& args) {
    wchar_t exe[MAX_PATH * 4];
    const DWORD len = GetModuleFileNameW(nullptr, exe, static_cast<DWORD>(std::size(exe)));
    if (len == 0 || len >= std::size(exe)) {
        return -1;
    }
    std::wstring line = L"\"" + std::wstring(exe) + L"\"";
    for (const auto& a : args) {
        AppendQuoted(line, a);
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

int WaitProcess(long long id) {
    const HANDLE process = reinterpret_cast<HANDLE>(static_cast<intptr_t>(id));
    DWORD code = 0;
    const bool ok = WaitForSingleObject(process, INFINITE) == WAIT_OBJECT_0 &&
                    GetExitCodeProcess(process, &code) != 0;
    CloseHandle(process);
    return ok ? static_cast<int>(code) : -1;
}

unsigned long CurrentProcessId() {
    return GetCurrentProcessId();
}

} // namespace QcTool
