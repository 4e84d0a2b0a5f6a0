// Points, sizes and rectangles with the framework's names.
#pragma once

#include <windows.h>

struct CPoint : POINT
{
    CPoint() : POINT{0, 0} {}
    CPoint(int nX, int nY) : POINT{nX, nY} {}
};

struct CSize : SIZE
{
    CSize() : SIZE{0, 0} {}
    CSize(int nCX, int nCY) : SIZE{nCX, nCY} {}
};

struct CRect : RECT
{
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    BOOL PtInRect(POINT pt) const { return ::PtInRect(this, pt); }
    void SetRectEmpty() { ::SetRectEmpty(this); }
    bool operator==(const RECT& r) const
    {
        return left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }
    bool operator!=(const RECT& r) const { return !(*this == r); }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
};
