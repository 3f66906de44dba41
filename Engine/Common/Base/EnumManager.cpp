#include "Engine/Common/Base/EnumManager.h"

namespace Quillanor::Common {

template class tSingletonBase<cEnumManager>;
template class tSingleton<cEnumManager>;

cEnumManager::cEnumManager() = default;

cEnumManager::~cEnumManager() = default;

void cEnumManager::AddEnum(const sEnumInfo& pInfo) {
    mEnums.Insert(pInfo.mName, pInfo);
}

void cEnumManager::AddEnumElement(const cString& pEnum, const sEnumElement& pElement) {
    sEnumInfo* info = mEnums.Find(pEnum);
    if (info == nullptr) {
        info = &mEnums.Insert(pEnum);
        info->mName = pEnum;
    }
    info->mElements.Delete(pElement.mName);
    info->mElements.Insert(pElement.mName, pElement);
}

const sEnumInfo* cEnumManager::FindEnum(const cString& pEnum) const {
    return mEnums.Find(pEnum);
}

const sEnumElement* cEnumManager::FindEnumElement(const cString& pEnum,
                                                  const cString& pName) const {
    const sEnumInfo* info = FindEnum(pEnum);
    QC_ASSERT(info);
    return info->mElements.Find(pName);
}

const sEnumElement* cEnumManager::FindEnumElement(const cString& pEnum, int pValue) const {
    const sEnumInfo* info = FindEnum(pEnum);
    QC_ASSERT(info);
    for (const auto& item : info->mElements) {
        if (item.mValue.mValue == pValue) {
            return &item.mValue;
        }
    }
    return nullptr;
}

int cEnumManager::GetEnumValue(const cString& pEnum, const cString& pName, int pDefault) const {
    const sEnumElement* element = FindEnumElement(pEnum, pName);
    return element != nullptr ? element->mValue : pDefault;
}

const cString& cEnumManager::GetEnumElementName(const cString& pEnum, int pValue) const {
    const sEnumElement* element = FindEnumElement(pEnum, pValue);
    return element != nullptr ? element->mName : cString::Empty();
}

const cString& cEnumManager::GetEnumDisplayName(const cString& pEnum, int pValue) const {
    const sEnumElement* element = FindEnumElement(pEnum, pValue);
    return element != nullptr ? element->mDisplayName : cString::Empty();
}

} // namespace Quillanor::Common
