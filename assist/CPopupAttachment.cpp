#include "CPopupAttachment.h"

#include "CModelessDialogEx.h"

#include <commctrl.h>

#include <vector>

namespace
{
const UINT_PTR kOwnerTimer = 1;
const UINT kOwnerCheckMs = 250;
} // namespace

// Wine: a window of this thread that takes the focus while its top-level
// window is not the active one activates that window first, and x11drv then
// gives the X input focus to it (an unmanaged window gets XSetInputFocus).
// The host sees its X window lose the focus to a window it does not know and
// sets its foreground window to the desktop: its caption turns inactive and
// Alt+A no longer reaches its menu. Seen in a trace (+win,+event): the hide
// button's press calls SetFocus on the button, the pop-up is activated, the
// dialog manager hands the focus back to the tree (which took the page's
// first focus at creation, an activation of its own), and the host logs
// "lost focus, setting fg to desktop". A child of the host frame never has
// this: its top-level window is the host's. So while a pop-up lives, a hook
// on this thread refuses every focus change into a pop-up that is not
// active, and its activation, unless a click into the tree asked for it
// (the tree needs the keyboard). A CBT hook of one thread costs no server
// round trip per message.
class CPopupAttachment::CFocusGuard
{
public:
    explicit CFocusGuard(CPopupAttachment* pPopup) : m_pPopup(pPopup)
    {
        if (Popups().empty())
            s_hHook = SetWindowsHookExA(WH_CBT, CbtProc, nullptr, GetCurrentThreadId());
        Popups().push_back(m_pPopup);
    }
    ~CFocusGuard()
    {
        std::vector<CPopupAttachment*>& popups = Popups();
        for (size_t i = 0; i < popups.size(); ++i)
        {
            if (popups[i] == m_pPopup)
            {
                popups.erase(popups.begin() + static_cast<std::ptrdiff_t>(i));
                break;
            }
        }
        if (popups.empty() && s_hHook)
        {
            UnhookWindowsHookEx(s_hHook);
            s_hHook = nullptr;
        }
    }
    CFocusGuard(const CFocusGuard&) = delete;
    CFocusGuard& operator=(const CFocusGuard&) = delete;

private:
    static std::vector<CPopupAttachment*>& Popups()
    {
        static std::vector<CPopupAttachment*> s_popups;
        return s_popups;
    }
    static CPopupAttachment* PopupOf(HWND hWndTop)
    {
        for (CPopupAttachment* pPopup : Popups())
        {
            if (hWndTop && pPopup->m_bar.m_hWnd == hWndTop)
                return pPopup;
        }
        return nullptr;
    }
    static LRESULT CALLBACK CbtProc(int nCode, WPARAM wParam, LPARAM lParam)
    {
        if (nCode == HCBT_ACTIVATE || nCode == HCBT_SETFOCUS)
        {
            HWND hWnd = reinterpret_cast<HWND>(wParam);
            HWND hWndTop = hWnd ? ::GetAncestor(hWnd, GA_ROOT) : nullptr;
            CPopupAttachment* pPopup = PopupOf(hWndTop);
            const BOOL bActive = nCode == HCBT_SETFOCUS && ::GetActiveWindow() == hWndTop;
            if (pPopup && !pPopup->m_bTreeActivation && !bActive)
                return 1; // refused: the host keeps the activation
        }
        return CallNextHookEx(s_hHook, nCode, wParam, lParam);
    }

    static HHOOK s_hHook;
    CPopupAttachment* m_pPopup;
};

HHOOK CPopupAttachment::CFocusGuard::s_hHook = nullptr;

CPopupAttachment::CPopupAttachment(CModelessDialogEx& bar, HWND hWndHost) : m_bar(bar), m_hWndHost(hWndHost) {}

CPopupAttachment::~CPopupAttachment() = default;

void CPopupAttachment::Create(BOOL bShow)
{
    m_bShown = bShow;
    // Before the window exists: the page's tree takes the dialog's first
    // focus while it is created.
    m_pFocusGuard.reset(new CFocusGuard(this));

    // The same template as the child's, made a pop-up owned by the frame. It
    // must not take the foreground when it is created (DS_SETFOREGROUND
    // would activate it over the host), and a tool window never shows in
    // the task bar.
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    HRSRC hResource = FindResourceA(hInstance, MAKEINTRESOURCEA(m_bar.m_nIDTemplate), RT_DIALOG);
    HGLOBAL hTemplate = hResource ? LoadResource(hInstance, hResource) : nullptr;
    const BYTE* pTemplate = hTemplate ? static_cast<const BYTE*>(LockResource(hTemplate)) : nullptr;
    const DWORD cbTemplate = hResource ? SizeofResource(hInstance, hResource) : 0;
    if (!pTemplate || cbTemplate < 16)
        return;
    std::vector<BYTE> copy(pTemplate, pTemplate + cbTemplate);
    // DLGTEMPLATEEX: version, 0xFFFF, help id, extended style, style;
    // DLGTEMPLATE: style, extended style.
    const bool bEx = reinterpret_cast<const WORD*>(copy.data())[1] == 0xFFFF;
    DWORD* pStyle = reinterpret_cast<DWORD*>(copy.data() + (bEx ? 12 : 0));
    DWORD* pExStyle = reinterpret_cast<DWORD*>(copy.data() + (bEx ? 8 : 4));
    *pStyle = (*pStyle & ~(WS_CHILD | WS_VISIBLE | DS_SETFOREGROUND)) | WS_POPUP | WS_CLIPCHILDREN;
    *pExStyle |= WS_EX_TOOLWINDOW;
    if (!m_bar.CreateIndirect(reinterpret_cast<const DLGTEMPLATE*>(copy.data()), m_hWndHost))
        return;

    // What the base's Create does after creating the window: the template
    // has neither OK nor Cancel nor a system menu, so there is nothing to
    // unhook or gray. Shown only once it has a place (Sync).
    m_bar.m_bModeless = TRUE;
    m_bar.SetTimer(kOwnerTimer, kOwnerCheckMs);
}

void CPopupAttachment::Show(BOOL bShow)
{
    m_bShown = bShow;
    Sync();
}

void CPopupAttachment::Place(const CRect& rect)
{
    m_rectPlaced = rect;
    m_bPlaced = TRUE;
    Sync();
}

void CPopupAttachment::FollowHost()
{
    Sync();
    // A frame restored, moved or brought to the front raises its X window
    // over the pop-up (see RaiseAboveActiveHost): the pop-up goes back on
    // top at once, not at the next owner check.
    RaiseAboveActiveHost();
    // While the tree has the keyboard, the host's deactivation may reach it
    // after the caption repaint that OnActivate asked for.
    if (m_bar.m_hWnd && ::GetForegroundWindow() == m_bar.m_hWnd && ::IsWindow(m_hWndHost))
        ::PostMessageA(m_hWndHost, WM_NCACTIVATE, TRUE, 0);
}

void CPopupAttachment::Sync()
{
    // A child goes wherever its parent goes and disappears with it; the
    // pop-up is put there by hand. Minimising the frame hides its owned
    // pop-ups, but Wine does not show one of another process again on
    // restore (seen: WM_SHOWWINDOW FALSE with SW_PARENTCLOSING, nothing on
    // restore), so the pop-up's visibility is always made here from the
    // user's choice and the frame's state.
    if (!m_bar.m_hWnd)
        return;
    const BOOL bVisible = m_bShown && m_bPlaced && ::IsWindowVisible(m_hWndHost) && !::IsIconic(m_hWndHost);
    if (!bVisible)
    {
        if (m_bar.IsWindowVisible())
            m_bar.SetWindowPos(nullptr, 0, 0, 0, 0,
                               SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    CRect rect(m_rectPlaced);
    ::MapWindowPoints(m_hWndHost, nullptr, reinterpret_cast<LPPOINT>(&rect), 2);
    CRect rectNow;
    m_bar.GetWindowRect(&rectNow);
    const BOOL bWasVisible = m_bar.IsWindowVisible();
    if (!bWasVisible || rect != rectNow)
        m_bar.SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                           SWP_NOZORDER | SWP_NOACTIVATE | (bWasVisible ? 0 : SWP_SHOWWINDOW));
    KeepAboveHost();
}

void CPopupAttachment::KeepAboveHost()
{
    // An owned window of another process is not kept above its owner. Seen
    // after the frame was restored from the task bar: the frame came back on
    // top of the pop-up, WindowFromPoint over the gripper gave the frame,
    // and the X server sent the gripper drag to the frame too. The pop-up is
    // put back right above the frame, never above the windows that cover
    // the frame.
    if (!m_bar.m_hWnd || !m_bar.IsWindowVisible() || !::IsWindow(m_hWndHost))
        return;
    HWND hWndAbove = ::GetWindow(m_hWndHost, GW_HWNDPREV);
    for (HWND hWnd = hWndAbove; hWnd; hWnd = ::GetWindow(hWnd, GW_HWNDPREV))
    {
        if (hWnd == m_bar.m_hWnd)
            return; // above the frame already
    }
    m_bar.SetWindowPos(hWndAbove ? hWndAbove : HWND_TOP, 0, 0, 0, 0,
                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void CPopupAttachment::RaiseAboveActiveHost()
{
    // The X server stacks the windows of different processes as each
    // process asks, and a process raises its window to the very top when it
    // becomes the top of Wine's own order. The host coming to the front
    // raises its frame there, over the pop-up, while Wine's order still has
    // the owned pop-up right above the frame, so KeepAboveHost sees nothing
    // to mend (seen: the Assist Window's strip showing stale host pixels
    // after the host was activated at start). With the host in front, the
    // top of the screen is the pop-up's place: it steps to the bottom of
    // Wine's order (Wine never lowers an X window, so nothing moves on the
    // screen) and back to the top, which raises its X window.
    if (!m_bar.m_hWnd || !m_bar.IsWindowVisible() || ::GetForegroundWindow() != m_hWndHost)
        return;
    const UINT nFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
    m_bar.SetWindowPos(HWND_BOTTOM, 0, 0, 0, 0, nFlags);
    m_bar.SetWindowPos(HWND_TOP, 0, 0, 0, 0, nFlags);
}

LRESULT CPopupAttachment::OnMouseActivate()
{
    // A click on a child leaves the host frame active; a click on the
    // pop-up would activate it and turn the host's caption inactive. Only
    // the tree needs the activation, for the keyboard focus (Enter on a
    // node); the splitter, the gripper, the tabs and the button work without.
    POINT pt;
    GetCursorPos(&pt);
    char szClass[32] = "";
    if (HWND hWndUnder = ::WindowFromPoint(pt))
        ::GetClassNameA(hWndUnder, szClass, sizeof(szClass));
    m_bTreeActivation = lstrcmpA(szClass, WC_TREEVIEWA) == 0;
    return m_bTreeActivation ? MA_ACTIVATE : MA_NOACTIVATE;
}

void CPopupAttachment::OnActivate(WPARAM wParam)
{
    if (!::IsWindow(m_hWndHost))
        return;
    if (LOWORD(wParam) == WA_INACTIVE)
        m_bTreeActivation = FALSE;
    else
    {
        // The only activation the focus guard lets through is a click into
        // the tree; while the tree has the keyboard the host's caption is
        // drawn active, as it stays beside a child on Windows.
        ::PostMessageA(m_hWndHost, WM_NCACTIVATE, TRUE, 0);
    }
}

BOOL CPopupAttachment::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kOwnerTimer)
        return FALSE;
    // When the host frame is destroyed, an owned window of another process
    // is not destroyed with it (Wine only drops the owner), and a killed
    // host reports nothing. A child would have gone with the frame; the
    // pop-up goes when it finds the frame gone.
    if (!::IsWindow(m_hWndHost))
    {
        m_bar.KillTimer(kOwnerTimer);
        m_bar.DestroyWindow(); // the Assist Window and this object are gone after this
        return TRUE;
    }
    // The frame's z-order changes are not reported (they come by the
    // dozen); one that put the frame over the pop-up is undone here.
    KeepAboveHost();
    // The host coming to the front raised its X window over the pop-up.
    const HWND hWndForeground = ::GetForegroundWindow();
    if (hWndForeground != m_hWndForegroundSeen && hWndForeground == m_hWndHost)
        RaiseAboveActiveHost();
    m_hWndForegroundSeen = hWndForeground;
    return FALSE;
}

void CPopupAttachment::OnDestroy()
{
    m_bar.KillTimer(kOwnerTimer);
    m_pFocusGuard.reset();
}
