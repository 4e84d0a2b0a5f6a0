#include "CDC.h"

#include <utility>

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    // Negative extents count from the far edge (Draw3dRect relies on it).
    CRect rect(x, y, x + cx, y + cy);
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
    FillSolidRect(&rect, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
               clrTopLeft, clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx, y, -1, cy, clrBottomRight);
    FillSolidRect(x, y + cy, cx, -1, clrBottomRight);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
{
    return ::DrawTextA(m_hDC, str, str.GetLength(), lpRect, nFormat);
}

BOOL CDC::DrawState(POINT pt, SIZE size, HICON hIcon, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawStateA(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(hIcon), 0, pt.x, pt.y, size.cx,
                        size.cy, nFlags | DST_ICON);
}

CPoint CDC::MoveTo(int x, int y)
{
    POINT pt = {0, 0};
    ::MoveToEx(m_hDC, x, y, &pt);
    return CPoint(pt.x, pt.y);
}
