// The last error on Windows is GetLastError().
#include "Engine/Common/Base/Exception.h"

#include <windows.h>

namespace Quillanor::Common {

int cLastErrorException::LastErrorImpl() {
    return static_cast<int>(GetLastError());
}

} // namespace Quillanor::Common
