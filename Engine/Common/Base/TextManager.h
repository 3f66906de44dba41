// cTextManager: the table of message texts, turning keys such as "cStream_FailedToRead" into
// the text that is shown or logged. The library registers no texts itself: until the
// application adds one, every key stands for itself.
//
// A lazy singleton. Keys compare ignoring case. It takes no lock: add texts during start-up,
// before other threads look them up; afterwards lookups only read.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Dictionary.h"
#include "Engine/Common/Base/Singleton.h"
#include "Engine/Common/Base/String.h"

namespace Quillanor::Common {

class QC_API cTextManager;
extern template class QC_INSTANCE_API tSingletonBase<cTextManager>;
extern template class QC_INSTANCE_API tSingleton<cTextManager>;

class QC_API cTextManager : public tSingleton<cTextManager> {
public:
    // Adds the text of pKey, replacing an earlier one.
    void AddText(const cString& pKey, const cString& pText);
    // The text of pKey; when there is none, a reference to pKey itself.
    const cString& GetText(const cString& pKey) const;
    int Count() const { return mTexts.Count(); }

    // True while the instance exists (a flag of its own, cleared by the destructor).
    static bool Exists() { return sExists; }

private:
    friend class tSingletonBase<cTextManager>;
    cTextManager();
    ~cTextManager() override;

    tDictionary<cString, cString, 255, cAllocator> mTexts;
    static bool sExists;
};

} // namespace Quillanor::Common
