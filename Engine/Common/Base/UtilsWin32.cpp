// cUtils, Windows backend: system and module error texts through FormatMessageW, code pages
// through WideCharToMultiByte / MultiByteToWideChar.
#include "Engine/Common/Base/Utils.h"

#include "Engine/Common/Base/Detail/Win32.h"

#include <windows.h>

namespace Quillanor::Common {

using Detail::WinText;

bool cUtils::LastErrorStrImpl(int pCode, const char16_t* pModule, char16_t* pOut, int pSize) {
    const DWORD code = pCode < 0 ? GetLastError() : static_cast<DWORD>(pCode);
    DWORD flags = FORMAT_MESSAGE_IGNORE_INSERTS;
    HMODULE module = nullptr;
    if (pModule != nullptr) {
        module = GetModuleHandleW(WinText(pModule));
        if (module == nullptr) {
            return false;
        }
        flags |= FORMAT_MESSAGE_FROM_HMODULE;
    } else {
        flags |= FORMAT_MESSAGE_FROM_SYSTEM;
    }
    const DWORD n = FormatMessageW(flags, module, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                                   WinText(pOut), static_cast<DWORD>(pSize), nullptr);
    return n > 0;
}

int cUtils::ToMultibyteImpl(unsigned int pCodePage, const char16_t* pText, int pLength, char* pOut,
                            int pOutLength) {
    const int n = WideCharToMultiByte(pCodePage, 0, WinText(pText), pLength, pOut,
                                      pOut != nullptr ? pOutLength : 0, nullptr, nullptr);
    if (n == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        return -1;
    }
    return n;
}

int cUtils::ToWideCharImpl(unsigned int pCodePage, const char* pText, int pLength, char16_t* pOut,
                           int pOutLength) {
    const int n = MultiByteToWideChar(pCodePage, 0, pText, pLength, Detail::WinText(pOut),
                                      pOut != nullptr ? pOutLength : 0);
    if (n == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        return -1;
    }
    return n;
}

} // namespace Quillanor::Common
