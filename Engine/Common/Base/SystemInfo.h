// Facts about the running application that library code shows or consults.
//
// cSystemInfo is a lazy singleton; for now it holds the application title, the caption of the
// assertion box ("N/A" until the application sets one). Thread-safe.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Singleton.h"
#include "Engine/Common/Base/String.h"
#include "Engine/Common/Multithreading/CriticalSection.h"

namespace Quillanor::Common {

class QC_API cSystemInfo;
extern template class QC_INSTANCE_API tSingletonBase<cSystemInfo>;
extern template class QC_INSTANCE_API tSingleton<cSystemInfo>;

class QC_API cSystemInfo : public tSingleton<cSystemInfo>, public cThreadSafe {
public:
    cString GetApplicationTitle() const;
    void SetApplicationTitle(const cString& title);

private:
    friend class tSingletonBase<cSystemInfo>;
    cSystemInfo();
    ~cSystemInfo() override = default;

    cString mApplicationTitle;
};

} // namespace Quillanor::Common
