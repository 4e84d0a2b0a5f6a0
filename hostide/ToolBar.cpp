#include "ToolBar.h"

#include "HostVariant.h"

#include "PaintDC.h"

namespace hostide
{
namespace
{
const int kButton = 23;
const int kGap = 8; // between groups

// The buttons' pictures, plain squares of a colour each (New, Open, Save |
// Paste | Build, Build Node | memory, registers, watch); CLR_INVALID: a gap.
// The buttons only show: the tests use the menu commands.
const COLORREF kButtons[] = {
    RGB(255, 255, 255), RGB(240, 200, 80),  RGB(40, 70, 160),   CLR_INVALID,        RGB(180, 130, 70), CLR_INVALID,
    RGB(40, 150, 40),   RGB(20, 110, 20),   CLR_INVALID,        RGB(70, 70, 70),    RGB(250, 220, 120), RGB(120, 160, 220),
};
} // namespace

const char ToolBar::kClass[] = "PFE_TBar";

bool ToolBar::Register()
{
    return RegisterWindowClass(kClass, CS_HREDRAW | CS_VREDRAW, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1),
                               LoadCursor(nullptr, IDC_ARROW));
}

HWND ToolBar::Create(HWND hWndFrame)
{
    return HostWindow::Create(std::unique_ptr<HostWindow>(new ToolBar()), 0, kClass, "", WS_CHILD | WS_VISIBLE, 0, 0,
                              0, Height(), hWndFrame, nullptr);
}

ToolBar* ToolBar::From(HWND hWnd)
{
    return dynamic_cast<ToolBar*>(FromHandle(hWnd));
}

const char* ToolBar::SideName(Side side)
{
    const char* const kNames[] = {"top", "left", "bottom", "right"};
    return kNames[static_cast<int>(side)];
}

int ToolBar::Height()
{
    return HostVariant::Current().nToolBarHeight;
}

void ToolBar::SetSide(Side side)
{
    m_side = side;
    InvalidateRect(m_hWnd, nullptr, TRUE);
}

LRESULT ToolBar::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    switch (nMessage)
    {
    case WM_PAINT:
        OnPaint();
        return 0;
    default:
        return DefaultProc(nMessage, wParam, lParam);
    }
}

void ToolBar::OnPaint()
{
    PaintDC dc(m_hWnd);
    int nAlong = 4; // left to right, or top to bottom when upright
    for (COLORREF colour : kButtons)
    {
        if (colour == CLR_INVALID)
        {
            nAlong += kGap;
            continue;
        }
        const int x = IsVertical() ? 2 : nAlong;
        const int y = IsVertical() ? nAlong : 2;
        RECT rcButton = {x, y, x + kButton, y + kButton};
        DrawEdge(dc.Handle(), &rcButton, BDR_RAISEDINNER, BF_RECT);
        SetBkColor(dc.Handle(), colour);
        const RECT rcPicture = {x + 5, y + 5, x + kButton - 5, y + kButton - 5};
        ExtTextOutA(dc.Handle(), 0, 0, ETO_OPAQUE, &rcPicture, nullptr, 0, nullptr);
        nAlong += kButton + 1;
    }
}

} // namespace hostide
