#include "Engine/Common/Base/TextManager.h"

namespace Quillanor::Common {

template class tSingletonBase<cTextManager>;
template class tSingleton<cTextManager>;

bool cTextManager::sExists = false;

cTextManager::cTextManager() {
    sExists = true;
}

cTextManager::~cTextManager() {
    sExists = false;
}

void cTextManager::AddText(const cString& pKey, const cString& pText) {
    mTexts.Delete(pKey);
    mTexts.Insert(pKey, pText);
}

const cString& cTextManager::GetText(const cString& pKey) const {
    const cString* text = mTexts.Find(pKey);
    return text != nullptr ? *text : pKey;
}

} // namespace Quillanor::Common
