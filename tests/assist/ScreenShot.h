// What a window's client area shows on the screen at one moment, copied into
// memory: it includes what was drawn outside WM_PAINT (a hover border), and
// reading many pixels costs one copy instead of one trip to the display each.
#pragma once

#include <windows.h>

class ScreenShot
{
public:
    explicit ScreenShot(HWND hWnd)
    {
        RECT rc = {0, 0, 0, 0};
        GetClientRect(hWnd, &rc);
        m_cx = rc.right;
        m_cy = rc.bottom;
        BITMAPINFO bmi = {};
        bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
        bmi.bmiHeader.biWidth = m_cx;
        bmi.bmiHeader.biHeight = -m_cy; // top-down rows
        bmi.bmiHeader.biPlanes = 1;
        bmi.bmiHeader.biBitCount = 32;
        bmi.bmiHeader.biCompression = BI_RGB;
        HDC hDC = GetDC(hWnd);
        m_hDCMem = CreateCompatibleDC(hDC);
        void* pBits = nullptr;
        m_hBitmap = CreateDIBSection(hDC, &bmi, DIB_RGB_COLORS, &pBits, nullptr, 0);
        m_pBits = static_cast<const DWORD*>(pBits);
        m_hOld = SelectObject(m_hDCMem, m_hBitmap);
        BitBlt(m_hDCMem, 0, 0, m_cx, m_cy, hDC, 0, 0, SRCCOPY);
        GdiFlush();
        ReleaseDC(hWnd, hDC);
    }
    ~ScreenShot()
    {
        SelectObject(m_hDCMem, m_hOld);
        DeleteObject(m_hBitmap);
        DeleteDC(m_hDCMem);
    }
    ScreenShot(const ScreenShot&) = delete;
    ScreenShot& operator=(const ScreenShot&) = delete;

    int Width() const { return m_cx; }
    int Height() const { return m_cy; }
    // CLR_INVALID outside the window.
    COLORREF Pixel(int x, int y) const
    {
        if (!m_pBits || x < 0 || y < 0 || x >= m_cx || y >= m_cy)
            return CLR_INVALID;
        const DWORD dw = m_pBits[y * m_cx + x];
        return RGB((dw >> 16) & 0xFF, (dw >> 8) & 0xFF, dw & 0xFF);
    }

private:
    int m_cx = 0;
    int m_cy = 0;
    HDC m_hDCMem = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hOld = nullptr;
    const DWORD* m_pBits = nullptr;
};
