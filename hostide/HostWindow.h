// Base of every window object of the stand-in: the object is bound to its
// HWND at WM_NCCREATE and, once the window has been created, deletes itself
// at WM_NCDESTROY.
#pragma once

#include <windows.h>

#include <memory>

namespace hostide
{
class HostWindow
{
public:
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Handle() const { return m_hWnd; }

    static bool RegisterWindowClass(const char* pszClass, UINT nStyle, HBRUSH hBackground, HCURSOR hCursor,
                                    HICON hIcon = nullptr);
    // The object behind a window of the stand-in, or null.
    static HostWindow* FromHandle(HWND hWnd);

    // Makes a top-level or child window for the object, which is handed in as
    // the creation parameter. On success the window owns the object; on
    // failure the object is deleted here.
    static HWND Create(std::unique_ptr<HostWindow> pObject, DWORD dwExStyle, const char* pszClass,
                       const char* pszTitle, DWORD dwStyle, int x, int y, int cx, int cy, HWND hWndParent,
                       HMENU hMenu);
    // The same for an MDI child of hWndClient (WM_MDICREATE).
    static HWND CreateMdiChild(std::unique_ptr<HostWindow> pObject, HWND hWndClient, const char* pszClass,
                               const char* pszTitle, DWORD dwStyle, int x, int y, int cx, int cy);

    virtual ~HostWindow() = default;

protected:
    HostWindow() = default;

    virtual LRESULT HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) = 0;
    // What a message not handled goes to: DefWindowProc unless overridden.
    virtual LRESULT DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd = nullptr;

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);
    static HWND Adopt(std::unique_ptr<HostWindow> pObject, HWND hWnd);

    bool m_bOwnedByWindow = false;
};
} // namespace hostide
