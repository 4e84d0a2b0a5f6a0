// Run-time class information: every framework class knows its class name and
// its base, so an object can be asked what it is (IsKindOf) and converted down
// with a check (DYNAMIC_DOWNCAST). Class names are shown to users in places
// (context-menu titles), so they are exact and stable.
#pragma once

#include <windows.h>

class CObject;

struct CRuntimeClass
{
    LPCSTR m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;
    CObject* (*m_pfnCreateObject)(); // NULL when the class cannot be created by class

    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
};

class CObject
{
public:
    virtual ~CObject() = default;
    virtual const CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;

    static const CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                   \
public:                                                               \
    static const CRuntimeClass class##class_name;                     \
    const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                 \
    DECLARE_DYNAMIC(class_name)                                       \
    static CObject* CreateObject();

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, pfnNew)   \
    const CRuntimeClass class_name::class##class_name = {             \
        #class_name, RUNTIME_CLASS(base_class_name), pfnNew};         \
    const CRuntimeClass* class_name::GetRuntimeClass() const          \
    {                                                                 \
        return RUNTIME_CLASS(class_name);                             \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)              \
    CObject* class_name::CreateObject() { return new class_name; }    \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, class_name::CreateObject)

// The object as the given class, or NULL when it is not one.
#define DYNAMIC_DOWNCAST(class_name, object) \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))

CObject* AfxDynamicDownCast(const CRuntimeClass* pClass, CObject* pObject);
