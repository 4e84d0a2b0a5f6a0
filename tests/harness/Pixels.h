// Pixels read back in the test's own memory: a canvas to draw on, and copies
// of what the screen shows. Reading many pixels then costs one copy instead
// of one trip to the display each, and a copy holds what was drawn outside
// WM_PAINT too (a hover border, a drag tracker).
#pragma once

#include <windows.h>

#include <string>

// A 32-bit top-down DIB section selected into a memory DC.
class Canvas
{
public:
    Canvas(int cx, int cy, COLORREF clrFill)
    {
        Make(cx, cy);
        HBRUSH hBrush = CreateSolidBrush(clrFill);
        RECT rc = {0, 0, cx, cy};
        FillRect(m_hDC, &rc, hBrush);
        DeleteObject(hBrush);
    }
    ~Canvas()
    {
        if (m_hDC)
        {
            SelectObject(m_hDC, m_hOld);
            DeleteDC(m_hDC);
        }
        if (m_hBitmap)
            DeleteObject(m_hBitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return m_hDC; }
    int Width() const { return m_cx; }
    int Height() const { return m_cy; }
    // CLR_INVALID outside the canvas.
    COLORREF Pixel(int x, int y) const
    {
        if (!m_pBits || x < 0 || y < 0 || x >= m_cx || y >= m_cy)
            return CLR_INVALID;
        GdiFlush();
        const DWORD dw = m_pBits[y * m_cx + x];
        return RGB((dw >> 16) & 0xFF, (dw >> 8) & 0xFF, dw & 0xFF);
    }

protected:
    Canvas() = default;
    void Make(int cx, int cy)
    {
        m_cx = cx > 0 ? cx : 0;
        m_cy = cy > 0 ? cy : 0;
        BITMAPINFO bmi = {};
        bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
        bmi.bmiHeader.biWidth = m_cx;
        bmi.bmiHeader.biHeight = -m_cy; // top-down rows
        bmi.bmiHeader.biPlanes = 1;
        bmi.bmiHeader.biBitCount = 32;
        bmi.bmiHeader.biCompression = BI_RGB;
        m_hDC = CreateCompatibleDC(nullptr);
        void* pBits = nullptr;
        m_hBitmap = CreateDIBSection(m_hDC, &bmi, DIB_RGB_COLORS, &pBits, nullptr, 0);
        m_pBits = static_cast<const DWORD*>(pBits);
        m_hOld = SelectObject(m_hDC, m_hBitmap);
    }

private:
    int m_cx = 0;
    int m_cy = 0;
    HDC m_hDC = nullptr;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hOld = nullptr;
    const DWORD* m_pBits = nullptr;
};

// What the screen shows of a window at one moment: its whole rectangle as the
// screen has it (overlapping windows included), or its client area as the
// window's own DC gives it.
class ScreenShot : public Canvas
{
public:
    enum Area
    {
        WINDOW_ON_SCREEN,
        CLIENT_AREA
    };

    explicit ScreenShot(HWND hWnd, Area area = WINDOW_ON_SCREEN)
    {
        RECT rc = {0, 0, 0, 0};
        HWND hWndSource = area == CLIENT_AREA ? hWnd : nullptr; // NULL: the screen's DC
        (area == CLIENT_AREA ? GetClientRect : GetWindowRect)(hWnd, &rc);
        Make(rc.right - rc.left, rc.bottom - rc.top);
        HDC hDC = GetDC(hWndSource);
        BitBlt(Dc(), 0, 0, Width(), Height(), hDC, rc.left, rc.top, SRCCOPY);
        GdiFlush();
        ReleaseDC(hWndSource, hDC);
    }
};

