// The last error on POSIX is errno.
#include "Engine/Common/Base/Exception.h"

#include <cerrno>

namespace Quillanor::Common {

int cLastErrorException::LastErrorImpl() {
    return errno;
}

} // namespace Quillanor::Common
