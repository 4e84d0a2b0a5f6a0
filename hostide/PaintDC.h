// BeginPaint and EndPaint as one object, and a font selected for a scope.
#pragma once

#include <windows.h>

namespace hostide
{
class PaintDC
{
public:
    explicit PaintDC(HWND hWnd) : m_hWnd(hWnd) { m_hDC = BeginPaint(hWnd, &m_ps); }
    ~PaintDC() { EndPaint(m_hWnd, &m_ps); }
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;

    HDC Handle() const { return m_hDC; }

private:
    HWND m_hWnd;
    PAINTSTRUCT m_ps = {};
    HDC m_hDC;
};

class SelectedObject
{
public:
    SelectedObject(HDC hDC, HGDIOBJ hObject) : m_hDC(hDC), m_hOld(SelectObject(hDC, hObject)) {}
    ~SelectedObject() { SelectObject(m_hDC, m_hOld); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC m_hDC;
    HGDIOBJ m_hOld;
};
} // namespace hostide
