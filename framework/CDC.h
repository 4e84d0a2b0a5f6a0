// A device context as drawing code sees it. A CDC itself never releases its
// handle: it wraps one that someone else owns (the DC of WM_DRAWITEM or
// WM_ERASEBKGND). CClientDC, CWindowDC and CPaintDC get and release theirs.
#pragma once

#include "CObject.h"
#include "CRect.h"
#include "CString.h"

class CDC : public CObject
{
public:
    explicit CDC(HDC hDC = nullptr) : m_hDC(hDC) {}

    HDC m_hDC;

    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }

    int SetBkMode(int nMode) { return ::SetBkMode(m_hDC, nMode); }
    COLORREF SetBkColor(COLORREF clr) { return ::SetBkColor(m_hDC, clr); }
    COLORREF SetTextColor(COLORREF clr) { return ::SetTextColor(m_hDC, clr); }
    HGDIOBJ SelectObject(HGDIOBJ hObject) { return ::SelectObject(m_hDC, hObject); }
    HGDIOBJ SelectStockObject(int nIndex) { return ::SelectObject(m_hDC, ::GetStockObject(nIndex)); }

    // Fills with a solid colour; leaves that colour as the background colour.
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    // A one-pixel frame: top and left in one colour, bottom and right in the other.
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void DrawFocusRect(LPCRECT lpRect) { ::DrawFocusRect(m_hDC, lpRect); }
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat);
    // An icon in one of the system's renderings (DSS_DISABLED: embossed).
    BOOL DrawState(POINT pt, SIZE size, HICON hIcon, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop)
    {
        return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
    }
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
    {
        return ::BitBlt(m_hDC, x, y, nWidth, nHeight, pSrcDC ? pSrcDC->m_hDC : nullptr, xSrc, ySrc, dwRop);
    }
    CPoint MoveTo(int x, int y);
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
};
