// Exceptions of the library, thrown and caught by value.
//
// cException is the root of every exception the library throws for bad input and failed I/O
// (programming errors are cDebug assertions instead). Message() gives the text to show or log.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/String.h"

namespace Quillanor::Common {

class QC_API cException {
public:
    cException() = default;
    cException(const cException&) = default;
    cException& operator=(const cException&) = default;
    virtual ~cException() = default;

    // The root's text is the shared empty string.
    virtual cString Message() const;
};

// An exception with a text given by the thrower.
class QC_API cMessageException : public cException {
public:
    explicit cMessageException(const cString& message);
    cString Message() const override;

private:
    cString mMessage;
};

// A system failure: the error code (the last error, errno on POSIX) and optionally the module
// whose message table explains it (Windows only).
class QC_API cLastErrorException : public cException {
public:
    // Takes the calling thread's last error now.
    cLastErrorException();
    // A negative `errorCode` takes the calling thread's last error at construction time.
    // `module` may be null (system codes).
    cLastErrorException(int errorCode, const char16_t* module);

    // The system's text for the code (cUtils::LastErrorStr), empty for an unknown code.
    cString Message() const override;
    int ErrorCode() const { return mErrorCode; }
    const cString& Module() const { return mModule; }

private:
    // The calling thread's last error (ExceptionPosix.cpp / ExceptionWin32.cpp).
    static int LastErrorImpl();

    int mErrorCode;
    cString mModule;
};

} // namespace Quillanor::Common
