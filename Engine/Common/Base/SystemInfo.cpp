#include "Engine/Common/Base/SystemInfo.h"

namespace Quillanor::Common {

template class tSingletonBase<cSystemInfo>;
template class tSingleton<cSystemInfo>;

cSystemInfo::cSystemInfo() : mApplicationTitle(u"N/A") {}

cString cSystemInfo::GetApplicationTitle() const {
    cBlockLocker lock(this);
    return mApplicationTitle;
}

void cSystemInfo::SetApplicationTitle(const cString& title) {
    cBlockLocker lock(this);
    mApplicationTitle = title;
}

} // namespace Quillanor::Common
