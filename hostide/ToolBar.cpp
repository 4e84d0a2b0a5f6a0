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

enum class Glyph
{
    Page,
    Folder,
    Disk,
    Clipboard,
    Build,
    BuildNode,
    Memory,
    Registers,
    Watch,
};

struct Button
{
    UINT nCommand; // 0: a gap between groups
    Glyph glyph;
};

const Button kButtons[] = {
    {1001, Glyph::Page},   {1002, Glyph::Folder},    {1006, Glyph::Disk},  {0, Glyph::Page},
    {1040, Glyph::Clipboard}, {0, Glyph::Page},      {1033, Glyph::Build}, {1035, Glyph::BuildNode},
    {0, Glyph::Page},      {1117, Glyph::Memory},    {1123, Glyph::Registers}, {1129, Glyph::Watch},
};

class SolidBrush
{
public:
    explicit SolidBrush(COLORREF color) : m_hBrush(CreateSolidBrush(color)) {}
    ~SolidBrush() { DeleteObject(m_hBrush); }
    SolidBrush(const SolidBrush&) = delete;
    SolidBrush& operator=(const SolidBrush&) = delete;
    HBRUSH Handle() const { return m_hBrush; }

private:
    HBRUSH m_hBrush;
};

void Box(HDC hDC, int x1, int y1, int x2, int y2, COLORREF fill)
{
    SolidBrush brush(fill);
    SelectedObject selBrush(hDC, brush.Handle());
    SelectedObject selPen(hDC, GetStockObject(BLACK_PEN));
    Rectangle(hDC, x1, y1, x2, y2);
}

void DrawGlyph(HDC hDC, Glyph glyph, int x, int y) // x, y: the button's top left
{
    const int cx = x + 4;
    const int cy = y + 4;
    switch (glyph)
    {
    case Glyph::Page:
        Box(hDC, cx + 2, cy, cx + 13, cy + 15, RGB(255, 255, 255));
        break;
    case Glyph::Folder:
        Box(hDC, cx, cy + 3, cx + 7, cy + 6, RGB(240, 200, 80));
        Box(hDC, cx, cy + 5, cx + 15, cy + 14, RGB(240, 200, 80));
        break;
    case Glyph::Disk:
        Box(hDC, cx, cy, cx + 15, cy + 15, RGB(40, 70, 160));
        Box(hDC, cx + 3, cy + 1, cx + 12, cy + 6, RGB(255, 255, 255));
        break;
    case Glyph::Clipboard:
        Box(hDC, cx + 1, cy + 1, cx + 14, cy + 15, RGB(180, 130, 70));
        Box(hDC, cx + 4, cy + 4, cx + 11, cy + 13, RGB(255, 255, 255));
        Box(hDC, cx + 5, cy, cx + 10, cy + 3, RGB(160, 160, 160));
        break;
    case Glyph::Build:
    case Glyph::BuildNode:
    {
        SolidBrush brush(RGB(40, 150, 40));
        SelectedObject selBrush(hDC, brush.Handle());
        SelectedObject selPen(hDC, GetStockObject(BLACK_PEN));
        const POINT triangle[] = {{cx + 3, cy}, {cx + 13, cy + 7}, {cx + 3, cy + 14}};
        Polygon(hDC, triangle, 3);
        if (glyph == Glyph::BuildNode)
            Box(hDC, cx, cy, cx + 3, cy + 15, RGB(40, 150, 40));
        break;
    }
    case Glyph::Memory:
        Box(hDC, cx, cy + 2, cx + 15, cy + 13, RGB(70, 70, 70));
        for (int i = 0; i < 4; ++i)
            Box(hDC, cx + 2 + i * 3, cy + 13, cx + 4 + i * 3, cy + 16, RGB(200, 200, 200));
        break;
    case Glyph::Registers:
        for (int i = 0; i < 3; ++i)
            Box(hDC, cx, cy + i * 5, cx + 15, cy + i * 5 + 5, i == 1 ? RGB(250, 220, 120) : RGB(255, 255, 255));
        break;
    case Glyph::Watch:
        Box(hDC, cx, cy + 3, cx + 15, cy + 12, RGB(255, 255, 255));
        Box(hDC, cx + 5, cy + 5, cx + 10, cy + 10, RGB(40, 70, 160));
        break;
    }
}

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
    switch (side)
    {
    case Side::Left:
        return "left";
    case Side::Bottom:
        return "bottom";
    case Side::Right:
        return "right";
    default:
        return "top";
    }
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
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    // The etched line faces the MDI client.
    RECT rcLine = rc;
    UINT nEdge = BF_TOP;
    switch (m_side)
    {
    case Side::Top:
        rcLine.top = rc.bottom - 2;
        break;
    case Side::Bottom:
        rcLine.bottom = rc.top + 2;
        break;
    case Side::Left:
        rcLine.left = rc.right - 2;
        nEdge = BF_LEFT;
        break;
    case Side::Right:
        rcLine.right = rc.left + 2;
        nEdge = BF_LEFT;
        break;
    }
    DrawEdge(dc.Handle(), &rcLine, EDGE_ETCHED, nEdge);
    const bool bVertical = IsVertical();
    WalkButtons([&](const Button& button, int nOffset) {
        const int x = bVertical ? 2 : nOffset;
        const int y = bVertical ? nOffset : 2;
        RECT rcButton = {x, y, x + kButton, y + kButton};
        DrawEdge(dc.Handle(), &rcButton, BDR_RAISEDINNER, BF_RECT);
        DrawGlyph(dc.Handle(), button.glyph, x, y);
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

namespace hostide
{
int ToolBar::Height()
{
    return HostVariant::Current().nToolBarHeight;
}
} // namespace hostide
