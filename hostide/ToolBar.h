// The host's tool bar (class "PFE_TBar"): a strip of square buttons along one
// edge of the frame (the top unless moved). At the left or right edge it
// stands upright.
#pragma once

#include "HostWindow.h"

namespace hostide
{
class ToolBar : public HostWindow
{
public:
    static const char kClass[];
    static int Height(); // 28, or the variant's
    static bool Register();
    static HWND Create(HWND hWndFrame);
    static ToolBar* From(HWND hWnd);

    enum class Side
    {
        Top,
        Left,
        Bottom,
        Right
    };
    static const char* SideName(Side side);
    // Which edge it stands at: the frame lays it out, the bar draws itself to fit.
    void SetSide(Side side);

private:
    ToolBar() = default;
    bool IsVertical() const { return m_side == Side::Left || m_side == Side::Right; }
    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void OnPaint();

    Side m_side = Side::Top;
};
} // namespace hostide
