// cEnumManager: the process-wide registry of named enumerations, turning values into names
// (for files and user interfaces) and names back into values. Each enumeration holds its
// elements in registration order; names of enumerations and elements match ignoring case.
// Several elements may share a value (aliases): lookups by value give the first registered.
//
// A lazy singleton. It takes no lock: callers serialise registration and lookups.
#pragma once

#include "Engine/Common/Base/Api.h"
#include "Engine/Common/Base/Dictionary.h"
#include "Engine/Common/Base/Singleton.h"
#include "Engine/Common/Base/String.h"

namespace Quillanor::Common {

struct sEnumElement {
    cString mName;
    cString mDisplayName;
    int mValue = 0;
};

struct sEnumInfo {
    cString mName;
    // Keyed by element name, in registration order.
    tDictionary<cString, sEnumElement, 255, cAllocator> mElements;
};

class QC_API cEnumManager;
extern template class QC_INSTANCE_API tSingletonBase<cEnumManager>;
extern template class QC_INSTANCE_API tSingleton<cEnumManager>;

class QC_API cEnumManager : public tSingleton<cEnumManager> {
public:
    // Registers pInfo under its name (a copy); the name must not be registered yet.
    void AddEnum(const sEnumInfo& pInfo);
    // Adds pElement to pEnum (created empty when unknown); an element of the same name is
    // removed first, so re-adding replaces it and moves it to the end.
    void AddEnumElement(const cString& pEnum, const sEnumElement& pElement);

    // Null when the enumeration is unknown.
    const sEnumInfo* FindEnum(const cString& pEnum) const;
    // Both need a registered enumeration (fatal assertion otherwise); unknown elements give
    // null. By value: the first element in registration order with that value.
    const sEnumElement* FindEnumElement(const cString& pEnum, const cString& pName) const;
    const sEnumElement* FindEnumElement(const cString& pEnum, int pValue) const;

    int GetEnumValue(const cString& pEnum, const cString& pName, int pDefault) const;
    // The name / display name of the first element with pValue, or an empty string.
    const cString& GetEnumElementName(const cString& pEnum, int pValue) const;
    const cString& GetEnumDisplayName(const cString& pEnum, int pValue) const;

    virtual ~cEnumManager();

private:
    friend class tSingletonBase<cEnumManager>;
    cEnumManager();

    tDictionary<cString, sEnumInfo, 255, cAllocator> mEnums;
};

} // namespace Quillanor::Common
