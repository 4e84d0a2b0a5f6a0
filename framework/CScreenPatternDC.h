// The whole screen with the halftone brush selected, for XOR feedback drawn
// over any window without making it repaint; brush and context go back on
// every path. Inverting the same rectangle twice leaves the screen as it was.
#pragma once

#include "CHalftoneBrush.h"

class CScreenPatternDC
{
public:
    CScreenPatternDC()
    {
        m_hDC = ::GetDCEx(::GetDesktopWindow(), nullptr, DCX_WINDOW | DCX_CACHE);
        if (m_hDC && m_brush.m_hBrush)
            m_hOldBrush = ::SelectObject(m_hDC, m_brush.m_hBrush);
    }
    ~CScreenPatternDC()
    {
        if (!m_hDC)
            return;
        if (m_hOldBrush)
            ::SelectObject(m_hDC, m_hOldBrush);
        ::ReleaseDC(::GetDesktopWindow(), m_hDC);
    }
    CScreenPatternDC(const CScreenPatternDC&) = delete;
    CScreenPatternDC& operator=(const CScreenPatternDC&) = delete;

    void Invert(const RECT& rect)
    {
        ::PatBlt(m_hDC, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, PATINVERT);
    }

private:
    CHalftoneBrush m_brush;
    HDC m_hDC = nullptr;
    HGDIOBJ m_hOldBrush = nullptr;
};
