// The client area's device context of a window, released with the object.
#pragma once

#include "CDC.h"
#include "CWnd.h"

class CClientDC : public CDC
{
public:
    explicit CClientDC(CWnd* pWnd) : m_hWnd(pWnd ? pWnd->m_hWnd : nullptr) { m_hDC = ::GetDC(m_hWnd); }
    ~CClientDC() override
    {
        if (m_hDC)
            ::ReleaseDC(m_hWnd, m_hDC);
    }

    HWND m_hWnd;
};
