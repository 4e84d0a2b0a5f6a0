// The device context of WM_PAINT: BeginPaint at construction, EndPaint with
// the object, so the update region is validated on every path.
#pragma once

#include "CDC.h"
#include "CWnd.h"

class CPaintDC : public CDC
{
public:
    explicit CPaintDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd) { m_hDC = ::BeginPaint(m_hWnd, &m_ps); }
    ~CPaintDC() override { ::EndPaint(m_hWnd, &m_ps); }

    HWND m_hWnd;
    PAINTSTRUCT m_ps = {};
};
