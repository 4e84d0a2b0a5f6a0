#include "HostWindow.h"

namespace hostide
{
bool HostWindow::RegisterWindowClass(const char* pszClass, UINT nStyle, HBRUSH hBackground, HCURSOR hCursor,
                                     HICON hIcon)
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    wc.style = nStyle;
    wc.lpfnWndProc = WindowProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.hCursor = hCursor;
    wc.hIcon = hIcon;
    wc.hbrBackground = hBackground;
    wc.lpszClassName = pszClass;
    return RegisterClassExA(&wc) != 0;
}

HostWindow* HostWindow::FromHandle(HWND hWnd)
{
    if (!hWnd || GetWindowThreadProcessId(hWnd, nullptr) != GetCurrentThreadId())
        return nullptr;
    // Only windows of the classes registered with WindowProc carry an object.
    // The class's procedure, not the window's: a window may be subclassed
    // (the tool's hook library does that) and is still ours.
    if (reinterpret_cast<WNDPROC>(GetClassLongPtrA(hWnd, GCLP_WNDPROC)) != WindowProc)
        return nullptr;
    return reinterpret_cast<HostWindow*>(GetWindowLongPtrA(hWnd, GWLP_USERDATA));
}

HWND HostWindow::Adopt(std::unique_ptr<HostWindow> pObject, HWND hWnd)
{
    if (hWnd)
    {
        // From here on the window deletes the object at WM_NCDESTROY.
        pObject->m_bOwnedByWindow = true;
        pObject.release();
    }
    return hWnd;
}

HWND HostWindow::Create(std::unique_ptr<HostWindow> pObject, DWORD dwExStyle, const char* pszClass,
                        const char* pszTitle, DWORD dwStyle, int x, int y, int cx, int cy, HWND hWndParent,
                        HMENU hMenu)
{
    HWND hWnd = CreateWindowExA(dwExStyle, pszClass, pszTitle, dwStyle, x, y, cx, cy, hWndParent, hMenu,
                                GetModuleHandleA(nullptr), pObject.get());
    return Adopt(std::move(pObject), hWnd);
}

HWND HostWindow::CreateMdiChild(std::unique_ptr<HostWindow> pObject, HWND hWndClient, const char* pszClass,
                                const char* pszTitle, DWORD dwStyle, int x, int y, int cx, int cy)
{
    MDICREATESTRUCTA mcs = {};
    mcs.szClass = pszClass;
    mcs.szTitle = pszTitle;
    mcs.hOwner = GetModuleHandleA(nullptr);
    mcs.x = x;
    mcs.y = y;
    mcs.cx = cx;
    mcs.cy = cy;
    mcs.style = dwStyle;
    mcs.lParam = reinterpret_cast<LPARAM>(pObject.get());
    HWND hWnd = reinterpret_cast<HWND>(SendMessageA(hWndClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&mcs)));
    return Adopt(std::move(pObject), hWnd);
}

LRESULT HostWindow::DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcA(m_hWnd, nMessage, wParam, lParam);
}

LRESULT CALLBACK HostWindow::WindowProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    HostWindow* pWindow = reinterpret_cast<HostWindow*>(GetWindowLongPtrA(hWnd, GWLP_USERDATA));
    if (nMessage == WM_NCCREATE)
    {
        const CREATESTRUCTA* pCreate = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        // An MDI child gets the MDICREATESTRUCT as its creation parameter;
        // the object travels in its lParam.
        if (pCreate->dwExStyle & WS_EX_MDICHILD)
            pWindow = reinterpret_cast<HostWindow*>(
                reinterpret_cast<const MDICREATESTRUCTA*>(pCreate->lpCreateParams)->lParam);
        else
            pWindow = static_cast<HostWindow*>(pCreate->lpCreateParams);
        if (pWindow)
        {
            pWindow->m_hWnd = hWnd;
            SetWindowLongPtrA(hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(pWindow));
        }
    }
    if (!pWindow)
        return DefWindowProcA(hWnd, nMessage, wParam, lParam);

    const LRESULT lResult = pWindow->HandleMessage(nMessage, wParam, lParam);
    if (nMessage == WM_NCDESTROY)
    {
        SetWindowLongPtrA(hWnd, GWLP_USERDATA, 0);
        pWindow->m_hWnd = nullptr;
        if (pWindow->m_bOwnedByWindow)
            delete pWindow;
    }
    return lResult;
}
} // namespace hostide
