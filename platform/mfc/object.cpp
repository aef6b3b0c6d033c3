// CObject, run-time class information, assertion and trace output.
#include <cstdio>

#include "mfc/format.h"
#include "zel/mfc/object.h"

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF, nullptr, nullptr};

CObject::CObject() = default;
CObject::~CObject() = default;

CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

BOOL CObject::IsKindOf(const CRuntimeClass* cls) const {
    const CRuntimeClass* mine = GetRuntimeClass();
    return mine && mine->IsDerivedFrom(cls);
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    if (!base) return FALSE;
    for (const CRuntimeClass* c = this; c; c = c->m_pBaseClass)
        if (c == base) return TRUE;
    return FALSE;
}

CObject* CRuntimeClass::CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }

void AfxAssertFailedLine(const char* file, int line, const char* expression) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file ? file : "?", line, expression ? expression : "");
}

void AfxTrace(LPCWSTR format, ...) {
    va_list args;
    va_start(args, format);
    std::wstring text = zel::mfc::FormatWide(format, args);
    va_end(args);
    OutputDebugStringW(text.c_str());
}

namespace zel::mfc {

void ReportBadIndex(const char* what, INT_PTR index, INT_PTR size) {
    std::fprintf(stderr, "%s: index %lld out of range (size %lld)\n", what, static_cast<long long>(index),
                 static_cast<long long>(size));
}

}  // namespace zel::mfc
