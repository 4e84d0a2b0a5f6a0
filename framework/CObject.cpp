#include "CObject.h"

const CRuntimeClass CObject::classCObject = {"CObject", nullptr, nullptr};

const CRuntimeClass* CObject::GetRuntimeClass() const
{
    return &classCObject;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    for (const CRuntimeClass* pClass = this; pClass; pClass = pClass->m_pBaseClass)
    {
        if (pClass == pBaseClass)
            return TRUE;
    }
    return FALSE;
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

CObject* AfxDynamicDownCast(const CRuntimeClass* pClass, CObject* pObject)
{
    return pObject && pObject->IsKindOf(pClass) ? pObject : nullptr;
}
