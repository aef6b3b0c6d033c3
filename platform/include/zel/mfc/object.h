// CObject, run-time class information and the diagnostic macros every framework source uses.
#pragma once

#include <windows.h>

#define afx_msg
#define AFXAPI
#define AFX_CDECL
#define PASCAL
#define AFX_INLINE inline
#define AFX_STATIC static
// Classes a shared library exports (the controls library builds with hidden visibility).
#define AFX_EXT_CLASS __attribute__((visibility("default")))
#define AFX_CLASS_EXPORT AFX_EXT_CLASS
#define AFX_EXT_API AFX_EXT_CLASS

// Failed assertions are reported on stderr and never stop the program: a skin or a host
// mistake must not take the device down.
ZEL_API void AfxAssertFailedLine(const char* file, int line, const char* expression);
// Debug trace with CString::Format rules, written through OutputDebugStringW.
ZEL_API void AfxTrace(LPCWSTR format, ...);

#ifdef _DEBUG
#define ASSERT(f) ((f) ? (void)0 : ::AfxAssertFailedLine(__FILE__, __LINE__, #f))
#define VERIFY(f) ASSERT(f)
#define TRACE ::AfxTrace
#else
#define ASSERT(f) ((void)0)
#define VERIFY(f) ((void)(f))
#define TRACE(...) ((void)0)
#endif
#define ASSERT_VALID(p) ((void)0)
#define ASSERT_POINTER(p, type) ASSERT((p) != NULL)
#define TRACE0(s) TRACE(s)
#define TRACE1(s, a) TRACE(s, a)
#define TRACE2(s, a, b) TRACE(s, a, b)
#define TRACE3(s, a, b, c) TRACE(s, a, b, c)
#define UNUSED(x) ((void)(x))
#define UNUSED_ALWAYS(x) ((void)(x))

class CObject;

struct ZEL_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;
    CObject* (*m_pfnCreateObject)();
    const CRuntimeClass* m_pBaseClass;

    BOOL IsDerivedFrom(const CRuntimeClass* base) const;
    CObject* CreateObject() const;  // NULL unless the class is DECLARE_DYNCREATE
};

class ZEL_API CObject {
public:
    virtual ~CObject();
    virtual CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* cls) const;

    static const CRuntimeClass classCObject;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject();
};

#define RUNTIME_CLASS(class_name) (const_cast<CRuntimeClass*>(&class_name::class##class_name))

#define DECLARE_DYNAMIC(class_name)                   \
public:                                               \
    static const CRuntimeClass class##class_name;     \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* CreateObject();

#define ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, schema, create)                          \
    const CRuntimeClass class_name::class##class_name = {#class_name, sizeof(class class_name), schema, \
                                                         create, RUNTIME_CLASS(base_class_name)};      \
    CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) \
    ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                 \
    CObject* class_name::CreateObject() { return new class_name; }       \
    ZEL_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, class_name::CreateObject)

// Downcast that checks the run-time class; NULL when the object is of another class.
#define DYNAMIC_DOWNCAST(class_name, object) \
    ((object) && (object)->IsKindOf(RUNTIME_CLASS(class_name)) ? static_cast<class_name*>(object) : nullptr)
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))
