#include "ReportRules.h"

#include "QuorvantHook.h"

namespace ReportRules
{
When WhenToReport(UINT uMsg, UINT nKind, LPARAM lParam)
{
    When w = {false, false};
    switch (uMsg)
    {
    case WM_MOVE:
    case WM_SHOWWINDOW:
        // The tool keeps a window of its own over the frame and follows it.
        w.bAfter = nKind == KIND_FRAME;
        return w;
    case WM_WINDOWPOSCHANGED:
        // Only when the frame moved, changed size, or was shown or hidden:
        // activation and z-order changes come by the dozen and nothing
        // follows them.
        if (nKind == KIND_FRAME && lParam)
        {
            const UINT uFlags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
            w.bAfter = (uFlags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE) ||
                       (uFlags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0;
        }
        return w;
    case WM_SIZE:
    case WM_ACTIVATEAPP:
        w.bBefore = w.bAfter = nKind == KIND_FRAME;
        return w;
    case WM_PAINT:
    case WM_SETTEXT:
    case WM_INITMENUPOPUP:
        w.bAfter = nKind == KIND_FRAME;
        return w;
    case WM_LBUTTONDOWN:
    case WM_MBUTTONDOWN:
        w.bAfter = nKind == KIND_CLIENT || nKind == KIND_TEXT || nKind == KIND_NUM;
        return w;
    case WM_RBUTTONDOWN:
        w.bAfter = nKind == KIND_CLIENT;
        return w;
    default:
        return w;
    }
}
bool IsControlDown()
{
    return (GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

UINT ControlFlag(UINT uMsg, WPARAM wParam)
{
    const bool bMouse =
        uMsg == WM_MOUSEWHEEL || uMsg == WM_LBUTTONDOWN || uMsg == WM_MBUTTONDOWN || uMsg == WM_RBUTTONDOWN;
    const bool bControl = bMouse ? (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0 : IsControlDown();
    return bControl ? HOOK_FLAG_CONTROL : 0;
}
} // namespace ReportRules
