// The assertion macros report through cDebug.
#include "Engine/Common/Base/Assert.h"

#include "Engine/Common/Base/Debug.h"

namespace Quillanor::Common::Detail {

void AssertFailed(const char16_t* expression, const char16_t* file, unsigned int line,
                  const char16_t* message) {
    cDebug::Assert(expression, file, line, message);
}

} // namespace Quillanor::Common::Detail
