#include "tqplatform/framework/CObject.h"

constinit CRuntimeClass const CObject::classCObject{"CObject", sizeof(CObject), 0xFFFF, nullptr,
                                                    nullptr};

bool CRuntimeClass::IsDerivedFrom(CRuntimeClass const *base) const {
    for (CRuntimeClass const *record = this; record != nullptr;
         record = record->baseClass == nullptr ? nullptr : record->baseClass())
        if (record == base) return true;
    return false;
}

CObject::~CObject() = default;

CRuntimeClass const *CObject::GetRuntimeClass() const {
    return &classCObject;
}

void CObject::Serialize(CArchive & /*archive*/) {}

bool CObject::IsKindOf(CRuntimeClass const *runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
