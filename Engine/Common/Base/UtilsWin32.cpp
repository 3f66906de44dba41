// cUtils, Win32 backend: GetLastError / FormatMessageW texts and the system code-page
// conversions (MultiByteToWideChar / WideCharToMultiByte with flags 0).
#include "Engine/Common/Base/Utils.h"

#include <windows.h>

namespace Quillanor::Common {

int cUtils::LastErrorImpl() {
    return static_cast<int>(GetLastError());
}

bool cUtils::LastErrorStrImpl(int pCode, const char16_t* pModule, char16_t* pOut, int pSize) {
    DWORD flags = FORMAT_MESSAGE_IGNORE_INSERTS;
    HMODULE module = nullptr;
    if (pModule != nullptr) {
        module = GetModuleHandleW(reinterpret_cast<const wchar_t*>(pModule));
        if (module == nullptr) {
            return false;
        }
        flags |= FORMAT_MESSAGE_FROM_HMODULE;
    } else {
        flags |= FORMAT_MESSAGE_FROM_SYSTEM;
    }
    const DWORD n = FormatMessageW(
        flags, module, static_cast<DWORD>(pCode), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
        reinterpret_cast<wchar_t*>(pOut), static_cast<DWORD>(pSize), nullptr);
    return n != 0;
}

int cUtils::ToMultibyteImpl(unsigned int pCodePage, const char16_t* pText, int pLength, char* pOut,
                            int pOutLength) {
    return WideCharToMultiByte(pCodePage, 0, reinterpret_cast<const wchar_t*>(pText), pLength, pOut,
                               pOut == nullptr ? 0 : pOutLength, nullptr, nullptr);
}

int cUtils::ToWideCharImpl(unsigned int pCodePage, const char* pText, int pLength, char16_t* pOut,
                           int pOutLength) {
    return MultiByteToWideChar(pCodePage, 0, pText, pLength, reinterpret_cast<wchar_t*>(pOut),
                               pOut == nullptr ? 0 : pOutLength);
}

} // namespace Quillanor::Common
