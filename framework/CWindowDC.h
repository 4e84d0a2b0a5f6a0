// The whole window's device context (frame included), released with the
// object. Drawing here goes straight to the screen, outside WM_PAINT.
#pragma once

#include "CDC.h"
#include "CWnd.h"

class CWindowDC : public CDC
{
public:
    explicit CWindowDC(CWnd* pWnd) : m_hWnd(pWnd ? pWnd->m_hWnd : nullptr) { m_hDC = ::GetWindowDC(m_hWnd); }
    ~CWindowDC() override
    {
        if (m_hDC)
            ::ReleaseDC(m_hWnd, m_hDC);
    }

    HWND m_hWnd;
};
