#include "ToolBar.h"

#include "HostVariant.h"

#include "PaintDC.h"

#include <windowsx.h>

namespace hostide
{
namespace
{
const int kButton = 23;
const int kGap = 8; // between groups

struct Button
{
    UINT nCommand; // 0: a gap between groups
    COLORREF colour; // of the square that stands for its picture
};

const Button kButtons[] = {
    {1001, RGB(255, 255, 255)}, {1002, RGB(240, 200, 80)}, {1006, RGB(40, 70, 160)}, {0, 0},
    {1040, RGB(180, 130, 70)},  {0, 0},                    {1033, RGB(40, 150, 40)}, {1035, RGB(20, 110, 20)},
    {0, 0},                     {1117, RGB(70, 70, 70)},   {1123, RGB(250, 220, 120)}, {1129, RGB(120, 160, 220)},
};

// Calls fn(button, offset) for each button, the offset running along the
// bar (left to right, or top to bottom when upright); returns the first
// true result.
template <typename F> const Button* WalkButtons(F fn)
{
    int x = 4;
    for (const Button& button : kButtons)
    {
        if (button.nCommand == 0)
        {
            x += kGap;
            continue;
        }
        if (fn(button, x))
            return &button;
        x += kButton + 1;
    }
    return nullptr;
}
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
    case WM_LBUTTONDOWN:
        OnLButtonDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    default:
        return DefaultProc(nMessage, wParam, lParam);
    }
}

void ToolBar::OnPaint()
{
    PaintDC dc(m_hWnd);
    const bool bVertical = IsVertical();
    WalkButtons([&](const Button& button, int nOffset) {
        const int x = bVertical ? 2 : nOffset;
        const int y = bVertical ? nOffset : 2;
        RECT rcButton = {x, y, x + kButton, y + kButton};
        DrawEdge(dc.Handle(), &rcButton, BDR_RAISEDINNER, BF_RECT);
        SetBkColor(dc.Handle(), button.colour);
        const RECT rcPicture = {x + 5, y + 5, x + kButton - 5, y + kButton - 5};
        ExtTextOutA(dc.Handle(), 0, 0, ETO_OPAQUE, &rcPicture, nullptr, 0, nullptr);
        return false;
    });
}

void ToolBar::OnLButtonDown(int x, int y)
{
    // Along the bar and across it.
    const int nAlong = IsVertical() ? y : x;
    const int nAcross = IsVertical() ? x : y;
    const Button* pButton = WalkButtons([&](const Button&, int nOffset) {
        return nAlong >= nOffset && nAlong < nOffset + kButton && nAcross < 2 + kButton;
    });
    // Posted, as a menu command would arrive; the tool bar never takes the focus.
    if (pButton)
        PostMessageA(GetParent(m_hWnd), WM_COMMAND, pButton->nCommand, 0);
}
} // namespace hostide
