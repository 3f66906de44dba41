#include "Engine/Common/Base/Exception.h"

#include "Engine/Common/Base/Utils.h"

namespace Quillanor::Common {

cString cException::Message() const {
    return cString::Empty();
}

cMessageException::cMessageException(const cString& message) : mMessage(message) {}

cString cMessageException::Message() const {
    return mMessage;
}

cLastErrorException::cLastErrorException() : mErrorCode(LastErrorImpl()) {}

// mErrorCode is initialised first, before anything else can change the last error.
cLastErrorException::cLastErrorException(int errorCode, const char16_t* module)
    : mErrorCode(errorCode < 0 ? LastErrorImpl() : errorCode),
      mModule(module != nullptr ? cString(module) : cString()) {}

cString cLastErrorException::Message() const {
    return cString(
        cUtils::LastErrorStr(mErrorCode, mModule.Length() != 0 ? mModule.Text() : nullptr));
}

} // namespace Quillanor::Common
