#include "Tray.h"

#include "Fixture.h"
#include "HostInput.h"
#include "RealMouse.h"

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
    // Every popup menu window, not only the first: a hidden one of an
    // earlier menu may stand before the one on the screen.
    for (HWND hWnd = FindWindowExA(nullptr, nullptr, "#32768", nullptr); hWnd;
         hWnd = FindWindowExA(nullptr, hWnd, "#32768", nullptr))
    {
        if (IsWindowVisible(hWnd))
            return hWnd;
    }
    return nullptr;
}

bool ChooseFromTrayMenu(HWND hWndIcon, WORD wKey)
{
    // A menu chosen from a moment ago must be gone before the next click,
    // and a click soon after the last one on the icon is a double click.
    static DWORD s_dwLastClick = GetTickCount() - GetDoubleClickTime();
    WaitFor([] { return VisibleMenu() == nullptr; }, 3000);
    while (GetTickCount() - s_dwLastClick <= GetDoubleClickTime())
        Sleep(50);
    RealClick(Centre(hWndIcon));
    s_dwLastClick = GetTickCount();
    if (!WaitFor([] { return VisibleMenu() != nullptr; }, 5000))
        return false;
    SendKeys({wKey});
    return true; // what the item does is the caller's to wait for
}

bool ExitFromTrayMenu(HWND hWndIcon)
{
    return ChooseFromTrayMenu(hWndIcon, 'X');
}

void ClickMiddle(HWND hWnd)
{
    ClickAt(Centre(hWnd), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
}
} // namespace qt
