#include "CDockBar.h"

#include "CApp.h"
#include "CDataExchange.h"
#include "CDockPage.h"
#include "CPaintDC.h"
#include "CProjectDlg.h"
#include "HostIde.h"
#include "RunningOnWine.h"
#include "resource.h"

#include <commctrl.h>

#include <vector>

BEGIN_MESSAGE_MAP(CDockBar, CModelessDialogEx)
    ON_WM_DESTROY()
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_CAPTURECHANGED()
    ON_WM_SETCURSOR()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_TIMER()
    ON_BN_CLICKED(IDC_DOCK_HIDE, OnHide)
    ON_MESSAGE(WM_MOUSEACTIVATE, OnMouseActivate)
    ON_MESSAGE(WM_ACTIVATE, OnActivate)
END_MESSAGE_MAP()

namespace
{
const UINT_PTR kOwnerTimer = 1;
const UINT kOwnerCheckMs = 250;

// The 50% grey pattern the drag feedback is drawn with.
class CHalftoneBrush
{
public:
    CHalftoneBrush()
    {
        static const WORD kPattern[8] = {0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA};
        if (HBITMAP hBitmap = CreateBitmap(8, 8, 1, 1, kPattern))
        {
            m_hBrush = CreatePatternBrush(hBitmap);
            DeleteObject(hBitmap);
        }
    }
    ~CHalftoneBrush()
    {
        if (m_hBrush)
            DeleteObject(m_hBrush);
    }
    CHalftoneBrush(const CHalftoneBrush&) = delete;
    CHalftoneBrush& operator=(const CHalftoneBrush&) = delete;
    HBRUSH m_hBrush = nullptr;
};

// The whole screen with the halftone brush selected, for XOR feedback that
// never makes the host repaint; brush and context go back on every path.
class CScreenPatternDC
{
public:
    CScreenPatternDC()
    {
        m_hDC = GetDCEx(GetDesktopWindow(), nullptr, DCX_WINDOW | DCX_CACHE);
        if (m_hDC && m_brush.m_hBrush)
            m_hOldBrush = SelectObject(m_hDC, m_brush.m_hBrush);
    }
    ~CScreenPatternDC()
    {
        if (!m_hDC)
            return;
        if (m_hOldBrush)
            SelectObject(m_hDC, m_hOldBrush);
        ReleaseDC(GetDesktopWindow(), m_hDC);
    }
    CScreenPatternDC(const CScreenPatternDC&) = delete;
    CScreenPatternDC& operator=(const CScreenPatternDC&) = delete;
    void Invert(int l, int t, int r, int b) { PatBlt(m_hDC, l, t, r - l, b - t, PATINVERT); }

private:
    CHalftoneBrush m_brush;
    HDC m_hDC = nullptr;
    HGDIOBJ m_hOldBrush = nullptr;
};

// A solid one-pixel pen, freed with the object.
class CSolidPen
{
public:
    explicit CSolidPen(COLORREF clr) : m_hPen(CreatePen(PS_SOLID, 0, clr)) {}
    ~CSolidPen()
    {
        if (m_hPen)
            DeleteObject(m_hPen);
    }
    CSolidPen(const CSolidPen&) = delete;
    CSolidPen& operator=(const CSolidPen&) = delete;
    HPEN m_hPen;
};

BOOL IsDockLeft()
{
    CApp* pApp = GetApp();
    return pApp ? pApp->m_bDockLeft : TRUE;
}

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
// this: its top-level window is the host's. So while a pop-up dock bar
// lives, a hook on this thread refuses every focus change into a pop-up
// that is not active, and its activation, unless a click into the tree
// asked for it (the tree needs the keyboard). A CBT hook of one thread costs
// no server round trip per message.
class CDockBar::CPopupFocusGuard
{
public:
    explicit CPopupFocusGuard(CDockBar* pDockBar) : m_pDockBar(pDockBar)
    {
        if (Popups().empty())
            s_hHook = SetWindowsHookExA(WH_CBT, CbtProc, nullptr, GetCurrentThreadId());
        Popups().push_back(m_pDockBar);
    }
    ~CPopupFocusGuard()
    {
        std::vector<CDockBar*>& popups = Popups();
        for (size_t i = 0; i < popups.size(); ++i)
        {
            if (popups[i] == m_pDockBar)
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
    CPopupFocusGuard(const CPopupFocusGuard&) = delete;
    CPopupFocusGuard& operator=(const CPopupFocusGuard&) = delete;

private:
    static std::vector<CDockBar*>& Popups()
    {
        static std::vector<CDockBar*> s_popups;
        return s_popups;
    }
    static CDockBar* PopupOf(HWND hWndTop)
    {
        for (CDockBar* pDockBar : Popups())
        {
            if (hWndTop && pDockBar->m_hWnd == hWndTop)
                return pDockBar;
        }
        return nullptr;
    }
    static LRESULT CALLBACK CbtProc(int nCode, WPARAM wParam, LPARAM lParam)
    {
        if (nCode == HCBT_ACTIVATE || nCode == HCBT_SETFOCUS)
        {
            HWND hWnd = reinterpret_cast<HWND>(wParam);
            HWND hWndTop = hWnd ? ::GetAncestor(hWnd, GA_ROOT) : nullptr;
            CDockBar* pDockBar = PopupOf(hWndTop);
            const BOOL bActive = nCode == HCBT_SETFOCUS && ::GetActiveWindow() == hWndTop;
            if (pDockBar && !pDockBar->m_bTreeActivation && !bActive)
                return 1; // refused: the host keeps the activation
        }
        return CallNextHookEx(s_hHook, nCode, wParam, lParam);
    }

    static HHOOK s_hHook;
    CDockBar* m_pDockBar;
};

HHOOK CDockBar::CPopupFocusGuard::s_hHook = nullptr;

CDockBar::CDockBar(HWND hWndHost)
    : CModelessDialogEx(IDD_DOCKBAR, CWnd::FromHandle(hWndHost)), m_hWndHost(hWndHost), m_bPopup(IsRunningOnWine())
{
    m_tab.m_bTabsAtBottom = TRUE;
    m_tab.m_bResizePages = true;
    m_tab.m_bSwitchPages = false;
    ReadColors();
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    if (FindResourceA(hInstance, MAKEINTRESOURCEA(IDC_SPLIT), MAKEINTRESOURCEA(12) /* RT_GROUP_CURSOR */))
        m_hcurSplit = LoadCursorA(hInstance, MAKEINTRESOURCEA(IDC_SPLIT));
}

CDockBar::~CDockBar() = default;

void CDockBar::ReadColors()
{
    m_clr3DLight = GetSysColor(COLOR_3DLIGHT);
    m_clrHighlight = GetSysColor(COLOR_BTNHIGHLIGHT);
    m_clrShadow = GetSysColor(COLOR_BTNSHADOW);
    m_clr3DDkShadow = GetSysColor(COLOR_3DDKSHADOW);
}

void CDockBar::Create(BOOL bShow)
{
    m_bShown = bShow;
    if (!m_bPopup)
    {
        CModelessDialogEx::Create(bShow);
        return;
    }
    // Before the window exists: the page's tree takes the dialog's first
    // focus while it is created.
    m_pFocusGuard.reset(new CPopupFocusGuard(this));
    CreatePopup();
    // What the base's Create does after creating the window: the template
    // has neither OK nor Cancel nor a system menu, so there is nothing to
    // unhook or gray. Shown only once it has a place (SyncPopup).
    m_bModeless = TRUE;
    if (m_hWnd)
        SetTimer(kOwnerTimer, kOwnerCheckMs);
}

void CDockBar::CreatePopup()
{
    // Wine: the template's child window cannot paint inside the host frame
    // (see the header), so the same template is made a pop-up owned by the
    // frame. It must not take the foreground when it is created
    // (DS_SETFOREGROUND would activate it over the host), and a tool window
    // never shows in the task bar.
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    HRSRC hResource = FindResourceA(hInstance, MAKEINTRESOURCEA(IDD_DOCKBAR), MAKEINTRESOURCEA(5) /* RT_DIALOG */);
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

    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);
    m_bContinueModal = TRUE;
    AfxHookWindowCreate(this);
    HWND hWnd = CreateDialogIndirectParamA(hInstance, reinterpret_cast<LPCDLGTEMPLATEA>(copy.data()), m_hWndHost,
                                           AfxDlgProc, 0);
    if (!AfxUnhookWindowCreate())
        return; // never bound; like a failed create of the base, the object stays
    if (hWnd && !m_bContinueModal && ::IsWindow(hWnd))
        ::DestroyWindow(hWnd);
}

void CDockBar::DispatchHostMessage(const HookRecord* pRecord)
{
    for (int i = 0; i < m_tab.GetPageCount(); ++i)
    {
        // Every page of the dock bar is a dock page; a page whose window is
        // gone has deleted itself and is passed over.
        if (CModelessDialogEx* pPage = m_tab.GetPage(i))
            static_cast<CDockPage*>(pPage)->OnHostMessage(pRecord);
    }
}

BOOL CDockBar::IsShown() const
{
    return m_bPopup ? m_bShown : IsWindowVisible();
}

void CDockBar::Show(BOOL bShow)
{
    if (!m_bPopup)
    {
        ShowWindow(bShow ? SW_SHOW : SW_HIDE);
        return;
    }
    m_bShown = bShow;
    SyncPopup();
}

void CDockBar::Place(const CRect& rect)
{
    if (!m_bPopup)
    {
        MoveWindow(rect, TRUE);
        return;
    }
    m_rectPlaced = rect;
    m_bPlaced = TRUE;
    SyncPopup();
}

void CDockBar::FollowHost()
{
    if (!m_bPopup)
        return;
    SyncPopup();
    // Wine: while the tree has the keyboard, the host's deactivation may
    // reach it after the caption repaint that OnActivate asked for.
    if (m_hWnd && ::GetForegroundWindow() == m_hWnd && ::IsWindow(m_hWndHost))
        ::PostMessageA(m_hWndHost, WM_NCACTIVATE, TRUE, 0);
}

void CDockBar::SyncPopup()
{
    // Wine: a child goes wherever its parent goes and disappears with it; the
    // pop-up is put there by hand. Minimising the frame hides its owned
    // pop-ups, but Wine does not show one of another process again on
    // restore (seen: WM_SHOWWINDOW FALSE with SW_PARENTCLOSING, nothing on
    // restore), so the pop-up's visibility is always made here from the
    // user's choice and the frame's state.
    if (!m_hWnd)
        return;
    const BOOL bVisible = m_bShown && m_bPlaced && ::IsWindowVisible(m_hWndHost) && !::IsIconic(m_hWndHost);
    if (!bVisible)
    {
        if (IsWindowVisible())
            SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    CRect rect(m_rectPlaced);
    ::MapWindowPoints(m_hWndHost, nullptr, reinterpret_cast<LPPOINT>(&rect), 2);
    CRect rectNow;
    GetWindowRect(&rectNow);
    const BOOL bWasVisible = IsWindowVisible();
    if (!bWasVisible || rect != rectNow)
        SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                     SWP_NOZORDER | SWP_NOACTIVATE | (bWasVisible ? 0 : SWP_SHOWWINDOW));
    KeepAboveHost();
}

void CDockBar::KeepAboveHost()
{
    // Wine: an owned window of another process is not kept above its owner.
    // Seen after the frame was restored from the task bar: the frame came
    // back on top of the pop-up, WindowFromPoint over the gripper gave the
    // frame, and the X server sent the gripper drag to the frame too. The
    // pop-up is put back right above the frame, never above the windows that
    // cover the frame.
    if (!m_hWnd || !IsWindowVisible() || !::IsWindow(m_hWndHost))
        return;
    HWND hWndAbove = ::GetWindow(m_hWndHost, GW_HWNDPREV);
    for (HWND hWnd = hWndAbove; hWnd; hWnd = ::GetWindow(hWnd, GW_HWNDPREV))
    {
        if (hWnd == m_hWnd)
            return; // above the frame already
    }
    SetWindowPos(hWndAbove ? hWndAbove : HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void CDockBar::RaiseAboveActiveHost()
{
    // Wine: the X server stacks the windows of different processes as each
    // process asks, and a process raises its window to the very top when it
    // becomes the top of Wine's own order. The host coming to the front
    // raises its frame there, over the pop-up, while Wine's order still has
    // the owned pop-up right above the frame, so KeepAboveHost sees nothing
    // to mend (seen: the Assist Window's strip showing stale host pixels
    // after the host was activated at start). With the host in front, the
    // top of the screen is the pop-up's place: it steps to the bottom of
    // Wine's order (Wine never lowers an X window, so nothing moves on the
    // screen) and back to the top, which raises its X window.
    if (!m_hWnd || !IsWindowVisible() || ::GetForegroundWindow() != m_hWndHost)
        return;
    const UINT nFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
    SetWindowPos(HWND_BOTTOM, 0, 0, 0, 0, nFlags);
    SetWindowPos(HWND_TOP, 0, 0, 0, 0, nFlags);
}

void CDockBar::SetSize(int cx, int cy)
{
    SetWindowPos(nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CDockBar::DoDataExchange(CDataExchange* pDX)
{
    CModelessDialogEx::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_DOCK_HIDE, m_btnHide);
    DDX_Control(pDX, IDC_DOCK_TAB, m_tab);
    if (!m_tab.UpdateData(pDX->m_bSaveAndValidate))
        pDX->Fail();
}

BOOL CDockBar::OnInitDialog()
{
    CModelessDialogEx::OnInitDialog();

    // Only the stored width counts: the host frame item puts the dock bar in
    // its place afterwards.
    CApp* pApp = GetApp();
    if (pApp && !pApp->m_rectDock.IsRectEmpty())
    {
        CRect rectClient;
        GetClientRect(&rectClient);
        SetSize(pApp->m_rectDock.Width(), rectClient.Height());
    }

    m_btnHide.SetImage(&m_images, 3);
    m_tab.SetImageList(&m_images, TRUE);

    // The page deletes itself with its window, a child of the tab control.
    CProjectDlg* pPage = new CProjectDlg(&m_tab, m_hWndHost);
    m_tab.AddPage(pPage, 4);
    m_tab.UpdateData(FALSE);

    // Tabs 4 pixels taller than the control's own.
    CRect rectItem;
    if (m_tab.SendMessage(TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rectItem)))
    {
        InflateRect(&rectItem, 0, 2);
        m_tab.SendMessage(TCM_SETITEMSIZE, 0, MAKELPARAM(rectItem.Width(), rectItem.Height()));
    }

    // A click on the MDI client gives the host's own windows the focus back.
    if (HWND hWndClient = HostIde::FindMdiClient(m_hWndHost))
    {
        ::PostMessageA(hWndClient, WM_LBUTTONDOWN, 0, 0);
        ::PostMessageA(hWndClient, WM_LBUTTONUP, 0, 0);
    }
    return FALSE;
}

void CDockBar::OnDestroy()
{
    KillTimer(kOwnerTimer);
    m_pFocusGuard.reset();
    if (CApp* pApp = GetApp())
    {
        CRect rectClient;
        GetClientRect(&rectClient);
        pApp->m_rectDock = CRect(0, 0, rectClient.Width(), rectClient.Height());
    }
    CModelessDialogEx::OnDestroy();
}

void CDockBar::OnSize(UINT /*nType*/, int cx, int cy)
{
    if (m_tab.m_hWnd && ::IsWindow(m_tab.m_hWnd))
    {
        CRect rectTab(0, 16, cx, cy);
        if (IsDockLeft())
            rectTab = CRect(rectTab.left + 2, rectTab.top + 6, rectTab.right - 10, rectTab.bottom - 6);
        else
            rectTab = CRect(rectTab.left + 10, rectTab.top + 6, rectTab.right - 2, rectTab.bottom - 6);
        m_tab.MoveWindow(rectTab, TRUE);

        if (m_btnHide.m_hWnd)
        {
            CRect rectButton;
            m_btnHide.GetWindowRect(&rectButton);
            ScreenToClient(&rectButton);
            const int nWidth = rectButton.Width();
            rectButton.right = rectTab.right;
            rectButton.left = rectTab.right - nWidth;
            m_btnHide.MoveWindow(rectButton, TRUE);
        }
    }
    Default();
}

void CDockBar::OnPaint()
{
    CPaintDC dc(this);
    CSolidPen pen3DLight(m_clr3DLight);
    CSolidPen penHighlight(m_clrHighlight);
    CSolidPen penShadow(m_clrShadow);
    CSolidPen pen3DDkShadow(m_clr3DDkShadow);
    CRect rc;
    GetClientRect(&rc);

    auto vertical = [&](int x, const CSolidPen& pen) {
        dc.SelectObject(pen.m_hPen);
        dc.MoveTo(x, rc.top);
        dc.LineTo(x, rc.bottom);
    };
    if (IsDockLeft())
    {
        vertical(rc.right - 1, pen3DDkShadow);
        vertical(rc.right - 2, penShadow);
        vertical(rc.right - 6, penHighlight);
        dc.SelectObject(penHighlight.m_hPen);
        dc.MoveTo(rc.left, rc.top);
        dc.LineTo(rc.right - 2, rc.top);
    }
    else
    {
        vertical(rc.left, pen3DLight);
        vertical(rc.left + 1, penHighlight);
        vertical(rc.left + 5, penShadow);
        vertical(rc.left + 6, pen3DDkShadow);
        dc.SelectObject(penHighlight.m_hPen);
        dc.MoveTo(rc.left + 2, rc.top);
        dc.LineTo(rc.right, rc.top);
    }

    CRect g(rc.left, rc.top + 8, rc.right, rc.top + 11);
    if (m_tab.m_hWnd && ::IsWindow(m_tab.m_hWnd))
    {
        CRect rectTab;
        m_tab.GetWindowRect(&rectTab);
        ScreenToClient(&rectTab);
        g.left = rectTab.left;
        g.right = rectTab.right - 18;
    }
    else
    {
        g.left += 10;
        g.right -= 10;
    }
    m_rcGripper = g;
    dc.Draw3dRect(&g, m_clrHighlight, m_clrShadow);
    OffsetRect(&g, 0, 4);
    dc.Draw3dRect(&g, m_clrHighlight, m_clrShadow);
    m_rcGripper.bottom = g.bottom;
    InflateRect(&m_rcGripper, 2, 6);

    // The pens are freed after this, never while selected.
    dc.SelectStockObject(NULL_PEN);
}

BOOL CDockBar::HitSplitter(CPoint point) const
{
    CRect rc;
    GetClientRect(&rc);
    if (IsDockLeft())
    {
        rc.left = rc.right - 5;
        rc.right = rc.right - 1;
    }
    else
    {
        rc.right = rc.left + 5;
        rc.left = rc.left + 1;
    }
    return rc.PtInRect(point);
}

BOOL CDockBar::InFrameBand() const
{
    CRect rcBand;
    ::GetClientRect(m_hWndHost, &rcBand);
    InflateRect(&rcBand, -32, -32);
    POINT pt;
    GetCursorPos(&pt);
    ::ScreenToClient(m_hWndHost, &pt);
    return pt.x > rcBand.left && pt.x < rcBand.right;
}

void CDockBar::DrawResizeTracker()
{
    CRect rc;
    GetWindowRect(&rc);
    rc.left += m_ptDrag.x;
    rc.right = rc.left;
    InflateRect(&rc, 2, -2);
    CScreenPatternDC dc;
    dc.Invert(rc.left, rc.top, rc.right, rc.bottom);
}

void CDockBar::DrawMoveTracker(CPoint point)
{
    CRect f;
    ::GetWindowRect(m_hWndHost, &f);
    ClientToScreen(&point);
    CRect d;
    GetWindowRect(&d);
    const int w = d.Width();
    CRect rectLeft(f.left, f.top, f.left + w, f.bottom);
    CRect rectRight(f.right - w, f.top, f.right, f.bottom);
    const BOOL bDockLeft = IsDockLeft();
    if (!bDockLeft && rectLeft.PtInRect(point))
    {
        d.left = f.left;
        d.right = f.left + w;
        m_bDropLeft = TRUE;
    }
    else if (bDockLeft && rectRight.PtInRect(point))
    {
        d.right = f.right;
        d.left = f.right - w;
        m_bDropLeft = FALSE;
    }
    CScreenPatternDC dc;
    dc.Invert(d.left, d.top, d.right, d.top + 4);
    dc.Invert(d.left, d.bottom - 4, d.right, d.bottom);
    dc.Invert(d.left, d.top + 4, d.left + 4, d.bottom - 4);
    dc.Invert(d.right - 4, d.top + 4, d.right, d.bottom - 4);
}

void CDockBar::OnMouseMove(UINT /*nFlags*/, CPoint point)
{
    switch (m_nDragMode)
    {
    case 0:
    case 1:
        m_nDragMode = HitSplitter(point) ? 1 : 0;
        if (m_nDragMode == 1 && m_hcurSplit)
            SetCursor(m_hcurSplit);
        break;
    case 2:
        if (InFrameBand())
        {
            DrawResizeTracker();
            m_ptDrag = point;
            DrawResizeTracker();
        }
        break;
    case 3:
        // The side chosen is kept even when the pointer leaves the zone again.
        DrawMoveTracker(m_ptDrag);
        m_ptDrag = point;
        DrawMoveTracker(m_ptDrag);
        break;
    default:
        break;
    }
    Default();
}

void CDockBar::OnLButtonDown(UINT /*nFlags*/, CPoint point)
{
    if (HitSplitter(point))
    {
        SetCapture();
        m_nDragMode = 2;
        m_ptDrag = point;
        DrawResizeTracker();
    }
    else if (m_rcGripper.PtInRect(point))
    {
        SetCapture();
        m_nDragMode = 3;
        m_ptDrag = point;
        m_bDropLeft = IsDockLeft();
        DrawMoveTracker(m_ptDrag);
    }
    Default();
}

void CDockBar::OnLButtonUp(UINT /*nFlags*/, CPoint /*point*/)
{
    // Releasing the capture ends the drag in OnCaptureChanged, which also
    // catches a capture lost any other way.
    if (m_nDragMode == 2 || m_nDragMode == 3)
        ReleaseCapture();
    Default();
}

void CDockBar::OnCaptureChanged(CWnd* /*pWnd*/)
{
    if (m_nDragMode == 2)
    {
        DrawResizeTracker();
        m_nDragMode = 0;
        CRect rc;
        GetClientRect(&rc);
        if (IsDockLeft())
            rc.right = m_ptDrag.x;
        else
            rc.left = m_ptDrag.x;
        // Only the new width counts here: the host frame item moves the dock
        // bar to its edge on the WM_SIZE below.
        if (rc.Width() > 0)
            SetSize(rc.Width(), rc.Height());
        ::PostMessageA(m_hWndHost, WM_SIZE, 0, 0);
    }
    else if (m_nDragMode == 3)
    {
        DrawMoveTracker(m_ptDrag);
        m_nDragMode = 0;
        CApp* pApp = GetApp();
        if (pApp && m_bDropLeft != pApp->m_bDockLeft)
        {
            pApp->m_bDockLeft = m_bDropLeft;
            // The margins follow the new side at once.
            CRect rc;
            GetWindowRect(&rc);
            SendMessage(WM_SIZE, 0, MAKELPARAM(rc.Width(), rc.Height()));
            Invalidate(TRUE);
            ::PostMessageA(m_hWndHost, WM_SIZE, 0, 0);
        }
    }
    Default();
}

BOOL CDockBar::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT nMessage)
{
    if ((m_nDragMode == 1 || m_nDragMode == 2) && m_hcurSplit)
    {
        SetCursor(m_hcurSplit);
        return TRUE;
    }
    return CModelessDialogEx::OnSetCursor(pWnd, nHitTest, nMessage);
}

void CDockBar::OnSysColorChange()
{
    CModelessDialogEx::OnSysColorChange();
    ReadColors();
}

void CDockBar::OnTimer(UINT_PTR nIDEvent)
{
    // Wine: when the host frame is destroyed, an owned window of another
    // process is not destroyed with it (Wine only drops the owner), and a
    // killed host reports nothing. A child would have gone with the frame;
    // the pop-up goes when it finds the frame gone.
    if (nIDEvent == kOwnerTimer && !::IsWindow(m_hWndHost))
    {
        KillTimer(kOwnerTimer);
        DestroyWindow(); // the object is gone after this
        return;
    }
    // Wine: the frame's z-order changes are not reported (they come by the
    // dozen); one that put the frame over the pop-up is undone here.
    if (nIDEvent == kOwnerTimer)
    {
        KeepAboveHost();
        // The host coming to the front raised its X window over the pop-up.
        const HWND hWndForeground = ::GetForegroundWindow();
        if (hWndForeground != m_hWndForegroundSeen && hWndForeground == m_hWndHost)
            RaiseAboveActiveHost();
        m_hWndForegroundSeen = hWndForeground;
    }
    Default();
}

void CDockBar::OnHide()
{
    // The dock bar stays alive: its pages go on receiving host records.
    Show(FALSE);
    ::PostMessageA(m_hWndHost, WM_SIZE, 0, 0);
}

LRESULT CDockBar::OnMouseActivate(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    if (!m_bPopup)
        return Default();
    // Wine: a click on a child leaves the host frame active; a click on the
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

LRESULT CDockBar::OnActivate(WPARAM wParam, LPARAM /*lParam*/)
{
    const LRESULT lResult = Default();
    if (!m_bPopup || !::IsWindow(m_hWndHost))
        return lResult;
    if (LOWORD(wParam) == WA_INACTIVE)
        m_bTreeActivation = FALSE;
    else
    {
        // Wine: the only activation the focus guard lets through is a click
        // into the tree; while the tree has the keyboard the host's caption
        // is drawn active, as it stays beside a child on Windows.
        ::PostMessageA(m_hWndHost, WM_NCACTIVATE, TRUE, 0);
    }
    return lResult;
}
