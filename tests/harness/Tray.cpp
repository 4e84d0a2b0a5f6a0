#include "Tray.h"

#include "Fixture.h"

namespace qt
{
std::vector<HWND> TrayIcons()
{
    std::vector<HWND> icons;
    HWND hWndTray = FindWindowA("__winex11_standalone_tray", nullptr);
    for (HWND hWnd = GetWindow(hWndTray, GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
        icons.push_back(hWnd);
    return icons;
}

void ClickAt(POINT pt, DWORD dwDown, DWORD dwUp)
{
    SetCursorPos(pt.x, pt.y);
    Sleep(50);
    INPUT inputs[2] = {};
    inputs[0].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = dwDown;
    inputs[1].type = INPUT_MOUSE;
    inputs[1].mi.dwFlags = dwUp;
    SendInput(2, inputs, sizeof(INPUT));
}

POINT Centre(HWND hWnd)
{
    RECT rc = {};
    GetWindowRect(hWnd, &rc);
    return POINT{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
}

HWND VisibleMenu()
{
    HWND hWnd = FindWindowA("#32768", nullptr);
    return hWnd && IsWindowVisible(hWnd) ? hWnd : nullptr;
}

bool ExitFromTrayMenu(HWND hWndIcon)
{
    ClickAt(Centre(hWndIcon), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    if (!WaitFor([] { return VisibleMenu() != nullptr; }, 5000))
        return false;
    RECT rcMenu = {};
    GetWindowRect(VisibleMenu(), &rcMenu);
    ClickAt(POINT{rcMenu.left + 20, rcMenu.top + 10}, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    return true;
}
} // namespace qt
