#include "Engine/Common/Base/Version.h"

namespace Quillanor::Common {

const char* cVersion::Library() { return QC_VERSION_STRING; }
const char* cVersion::Configuration() { return QC_BUILD_CONFIG; }
const char* cVersion::Platform() { return QC_PLATFORM_NAME; }
const char* cVersion::Compiler() { return QC_COMPILER; }

bool cVersion::IsShared() {
#if defined(QC_STATIC)
    return false;
#else
    return true;
#endif
}

} // namespace Quillanor::Common
