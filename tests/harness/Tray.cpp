#include "Tray.h"

#include "Fixture.h"
#include "HostInput.h"

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

bool ChooseFromTrayMenu(HWND hWndIcon, WORD wKey)
{
    // A menu chosen from a moment ago must be gone before the next click.
    WaitFor([] { return VisibleMenu() == nullptr; }, 3000);
    ClickAt(Centre(hWndIcon), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    if (!WaitFor([] { return VisibleMenu() != nullptr; }, 5000))
        return false;
    SendKeys({wKey});
    return true; // what the item does is the caller's to wait for
}

bool ExitFromTrayMenu(HWND hWndIcon)
{
    return ChooseFromTrayMenu(hWndIcon, 'E');
}
} // namespace qt
