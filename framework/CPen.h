// A solid pen of one pixel, deleted with the object. Select it into a DC
// only for as long as the object lives, and select something else back
// before it goes.
#pragma once

#include <windows.h>

class CPen
{
public:
    explicit CPen(COLORREF clr) : m_hPen(::CreatePen(PS_SOLID, 0, clr)) {}
    ~CPen()
    {
        if (m_hPen)
            ::DeleteObject(m_hPen);
    }
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;

    HPEN m_hPen;
};
