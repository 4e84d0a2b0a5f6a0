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
//
// Notifications of child controls (WM_COMMAND from a control, WM_NOTIFY,
// WM_DRAWITEM and the scroll messages of a scroll bar control) are first
// offered back to the control's own object, if it has one (OnChildNotify);
// the control may take them away from the parent or let the parent see them
// as well.
#pragma once

#include "CCmdTarget.h"
#include "CDC.h"
#include "CMenu.h"
#include "CRect.h"
#include "CString.h"

class CDataExchange;

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
    // Binds the object to a child control of this window by its id.
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    virtual void PreSubclassWindow() {}

    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                  int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                  LPVOID lpParam = nullptr);
    // A child control of class lpszClassName in rect, with id nID; dwICC
    // names the common controls to register first (0 for a system class).
    BOOL CreateControl(LPCSTR lpszClassName, DWORD dwICC, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, UINT nID);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL DestroyWindow();
    virtual void PostNcDestroy() {}

    virtual LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual LRESULT DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL PreTranslateMessage(MSG* pMsg);

    // Offers pMsg to the objects of its window and of each parent, innermost
    // first, up to and including hWndStop (NULL: to the top). TRUE when one
    // of them consumed it. The message loops use this.
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);

    // Data exchange between the object and its window's controls: FALSE
    // loads the controls, TRUE saves and validates. FALSE when the exchange
    // failed (CDataExchange::Fail). Control notifications to this window are
    // not dispatched while it runs.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    virtual void DoDataExchange(CDataExchange* pDX);

    // A notification this control sent to its parent, offered back to it.
    // TRUE when the control took it away from the parent.
    virtual BOOL OnChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    BOOL ReflectChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // Offers the message now being handled to the object of hWndChild.
    static BOOL ReflectLastMsg(HWND hWndChild, LRESULT* pResult = nullptr);

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
    BOOL IsWindow() const { return m_hWnd && ::IsWindow(m_hWnd); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void GetWindowRect(LPRECT pRect) const { ::GetWindowRect(m_hWnd, pRect); }
    void GetClientRect(LPRECT pRect) const { ::GetClientRect(m_hWnd, pRect); }
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    }
    void MoveWindow(const RECT& rect, BOOL bRepaint = TRUE)
    {
        ::MoveWindow(m_hWnd, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, bRepaint);
    }
    BOOL SetWindowPos(HWND hWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
    {
        return ::SetWindowPos(m_hWnd, hWndInsertAfter, x, y, cx, cy, nFlags);
    }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const { ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2); }
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const { ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(lpRect), 2); }
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer = nullptr)
    {
        return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
    }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE)); }
    // Removes and adds style bits; with nFlags, SetWindowPos makes the frame
    // follow. FALSE when nothing changed.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);

    int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }
    void GetWindowText(CString& rString) const;
    void SetWindowText(LPCSTR lpszString) { ::SetWindowTextA(m_hWnd, lpszString); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }

    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const
    {
        return FromHandle(::GetNextDlgTabItem(m_hWnd, pWndCtl ? pWndCtl->m_hWnd : nullptr, bPrevious));
    }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }

    // The thread's current message, for Default() and handlers that need it.
    static const MSG* GetCurrentMessage();

    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    const AFX_MSGMAP* GetMessageMap() const override;

    // Default processing for the typed handlers of the message maps; a
    // derived handler calls its base's to get it.
    int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    void OnClose() { Default(); }
    void OnDestroy() { Default(); }
    void OnNcDestroy();
    void OnPaint() { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    LRESULT OnNcHitTest(CPoint) { return Default(); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnSysColorChange() { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnCaptureChanged(CWnd*) { Default(); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    void OnContextMenu(CWnd*, CPoint) { Default(); }
    void OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }

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
