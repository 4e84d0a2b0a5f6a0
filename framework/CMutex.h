// A named mutex, created not owned. Lock with a time-out of 0 is a
// test-and-take: it succeeds for a mutex nobody holds and, again, for the
// thread that holds it already.
#pragma once

#include "CObject.h"

class CMutex : public CObject
{
public:
    CMutex(BOOL bInitiallyOwn, LPCSTR lpszName);
    ~CMutex() override;

    BOOL Lock(DWORD dwTimeout);
    BOOL Unlock();

private:
    HANDLE m_hObject;
};
