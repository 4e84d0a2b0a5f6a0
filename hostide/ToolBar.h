// The host's tool bar (class "PFE_TBar"): a strip of square buttons along the
// top of the frame that post their commands to the frame.
#pragma once

#include "HostWindow.h"

namespace hostide
{
class ToolBar : public HostWindow
{
public:
    static const char kClass[];
    static const int kHeight = 28;
    static bool Register();
    static HWND Create(HWND hWndFrame);

private:
    ToolBar() = default;
    LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    void OnPaint();
    void OnLButtonDown(int x, int y);
};
} // namespace hostide
