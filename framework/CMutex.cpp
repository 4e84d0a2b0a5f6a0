#include "CMutex.h"

CMutex::CMutex(BOOL bInitiallyOwn, LPCSTR lpszName)
    : m_hObject(CreateMutexA(nullptr, bInitiallyOwn, lpszName))
{
}

CMutex::~CMutex()
{
    if (m_hObject)
        CloseHandle(m_hObject);
}

BOOL CMutex::Lock(DWORD dwTimeout)
{
    if (!m_hObject)
        return FALSE;
    // An abandoned mutex (its last owner died holding it) is ours now.
    const DWORD dwResult = WaitForSingleObject(m_hObject, dwTimeout);
    return dwResult == WAIT_OBJECT_0 || dwResult == WAIT_ABANDONED;
}

BOOL CMutex::Unlock()
{
    return m_hObject && ReleaseMutex(m_hObject);
}
