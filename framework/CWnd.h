// A C++ window object bound to a window handle.
//
// Binding: windows created through CreateEx are bound while they are being
// created (a thread-local creation hook catches HCBT_CREATEWND), so even
// WM_NCCREATE reaches the object; windows of other classes (dialog controls,
// windows of the system's classes) are bound by subclassing. The handle map is
// per thread and keyed by the handle, not GWLP_USERDATA, because a subclassed
// control of a foreign class owns its own user data. Binding ends at
// WM_NCDESTROY, after which PostNcDestroy runs; a self-deleting object
// deletes itself there and nowhere else.
//
// Windows of other processes (the host IDE's) are only handles: FromHandle
// wraps them in temporary objects that never destroy the window.
#pragma once

#include "CCmdTarget.h"
#include "CRect.h"

class CWnd : public CCmdTarget
{
    DECLARE_DYNAMIC(CWnd)
public:
    HWND m_hWnd = nullptr;

    CWnd() = default;
    ~CWnd() override;

    operator HWND() const { return m_hWnd; }
    HWND GetSafeHwnd() const { return m_hWnd; }

    // The bound object of a handle, else a temporary wrapper that lives until
    // the message loop next goes idle; NULL for a NULL handle.
    static CWnd* FromHandle(HWND hWnd);
    // The bound object of a handle, or NULL.
    static CWnd* FromHandlePermanent(HWND hWnd);
    // Frees the temporary wrappers (the message loop does this when idle).
    static void DeleteTempMap();

    BOOL Attach(HWND hWnd);
    HWND Detach();
    // Binds the object to an existing window and routes its messages through
    // the object's message map (the old procedure becomes the default one).
    BOOL SubclassWindow(HWND hWnd);
    virtual void PreSubclassWindow() {}

    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                  int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                  LPVOID lpParam = nullptr);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL DestroyWindow();
    virtual void PostNcDestroy() {}

    virtual LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    // Default processing of the message now being handled.
    LRESULT Default();

    LRESULT SendMessage(UINT nMessage, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::SendMessageA(m_hWnd, nMessage, wParam, lParam);
    }
    BOOL PostMessage(UINT nMessage, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return ::PostMessageA(m_hWnd, nMessage, wParam, lParam);
    }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    void GetWindowRect(LPRECT pRect) const { ::GetWindowRect(m_hWnd, pRect); }
    void GetClientRect(LPRECT pRect) const { ::GetClientRect(m_hWnd, pRect); }
    void MoveWindow(const RECT& rect, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, bRepaint);
    }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }

    // The thread's current message, for Default() and handlers that need it.
    static const MSG* GetCurrentMessage();

    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    const AFX_MSGMAP* GetMessageMap() const override;

    int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    void OnClose() { Default(); }
    void OnDestroy() { Default(); }
    void OnNcDestroy();

    WNDPROC m_pfnSuper = nullptr; // the procedure a subclassed window had before

    friend LRESULT CALLBACK AfxWndProc(HWND, UINT, WPARAM, LPARAM);
    friend LRESULT CALLBACK AfxCbtFilterHook(int, WPARAM, LPARAM);
    friend class CWinApp;
};

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);

// Around a CreateWindowEx of a framework window: the window created next on
// this thread is bound to pWnd. Unhook returns FALSE when that never happened.
void AfxHookWindowCreate(CWnd* pWnd);
BOOL AfxUnhookWindowCreate();
