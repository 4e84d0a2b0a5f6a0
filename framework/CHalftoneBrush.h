// The 50% grey checker brush that drag feedback is drawn with, deleted with
// the object.
#pragma once

#include <windows.h>

class CHalftoneBrush
{
public:
    CHalftoneBrush()
    {
        static const WORD kPattern[8] = {0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA};
        if (HBITMAP hBitmap = ::CreateBitmap(8, 8, 1, 1, kPattern))
        {
            m_hBrush = ::CreatePatternBrush(hBitmap);
            ::DeleteObject(hBitmap); // the brush keeps its own copy
        }
    }
    ~CHalftoneBrush()
    {
        if (m_hBrush)
            ::DeleteObject(m_hBrush);
    }
    CHalftoneBrush(const CHalftoneBrush&) = delete;
    CHalftoneBrush& operator=(const CHalftoneBrush&) = delete;

    HBRUSH m_hBrush = nullptr;
};
