// Shared helpers of the Win32 backend: the char16_t/wchar_t boundary and an owning HANDLE.
#pragma once

#include <windows.h>

namespace Quillanor::Common::Detail {

// The library's char16_t text is UTF-16, as Windows' wchar_t: the cast happens only here, at
// the API boundary.
static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wchar_t is a UTF-16 code unit");

inline const wchar_t* WinText(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}
inline wchar_t* WinText(char16_t* text) {
    return reinterpret_cast<wchar_t*>(text);
}
inline const char16_t* LibText(const wchar_t* text) {
    return reinterpret_cast<const char16_t*>(text);
}
inline char16_t* LibText(wchar_t* text) {
    return reinterpret_cast<char16_t*>(text);
}

// Owns a kernel handle and closes it; null and INVALID_HANDLE_VALUE both mean none.
class cWinHandle {
public:
    cWinHandle() = default;
    explicit cWinHandle(HANDLE handle) : mHandle(handle) {}
    ~cWinHandle() { Reset(); }
    cWinHandle(cWinHandle&& other) noexcept : mHandle(other.Release()) {}
    cWinHandle& operator=(cWinHandle&& other) noexcept {
        if (this != &other) {
            Reset(other.Release());
        }
        return *this;
    }
    cWinHandle(const cWinHandle&) = delete;
    cWinHandle& operator=(const cWinHandle&) = delete;

    bool Valid() const { return mHandle != nullptr && mHandle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return mHandle; }
    HANDLE Release() {
        HANDLE h = mHandle;
        mHandle = nullptr;
        return h;
    }
    void Reset(HANDLE handle = nullptr) {
        if (Valid()) {
            CloseHandle(mHandle);
        }
        mHandle = handle;
    }

private:
    HANDLE mHandle = nullptr;
};

} // namespace Quillanor::Common::Detail
