#include "CDockBar.h"

#include "CApp.h"
#include "CDataExchange.h"
#include "CDockPage.h"
#include "CPaintDC.h"
#include "CPen.h"
#include "CProjectDlg.h"
#include "HostIde.h"
#include "resource.h"

#include <commctrl.h>

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
// The tab control's margins: the splitter's side is wider, the gripper and
// the hide button sit above it.
const int kTabTop = 22;
const int kTabInnerMargin = 10;
const int kTabOuterMargin = 2;
const int kTabBottomMargin = 6;
} // namespace

CDockBar::CDockBar(HWND hWndHost)
    : CModelessDialogEx(IDD_DOCKBAR, CWnd::FromHandle(hWndHost)), m_hWndHost(hWndHost),
      m_splitter(*this, *this, hWndHost), m_pAttachment(CDockAttachment::For(*this, hWndHost))
{
    m_tab.m_bTabsAtBottom = TRUE;
    m_tab.m_bResizePages = true;
    ReadColors();
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
    m_pAttachment->Create(bShow);
}

void CDockBar::DispatchHostMessage(const HookRecord* pRecord)
{
    for (int i = 0; i < m_tab.GetPageCount(); ++i)
    {
        // A page whose window is gone has deleted itself and is passed over;
        // a page of another kind has no use for host records.
        if (CDockPage* pPage = dynamic_cast<CDockPage*>(m_tab.GetPage(i)))
            pPage->OnHostMessage(pRecord);
    }
}

BOOL CDockBar::IsDockedLeft() const
{
    return GetApp()->m_bDockLeft;
}

void CDockBar::SetSize(int cx, int cy)
{
    SetWindowPos(nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CDockBar::ApplySettingsWidth()
{
    // The bar keeps its own width while it lives and puts it into the
    // settings only when it goes: a width that differs from the one applied
    // last came from the file.
    const int cx = GetApp()->m_rectDock.Width();
    if (cx <= 0 || cx == m_nSettingsWidth)
        return FALSE;
    m_nSettingsWidth = cx;
    CRect rectClient;
    GetClientRect(&rectClient);
    SetSize(cx, rectClient.Height());
    return TRUE;
}

void CDockBar::RelayoutHost()
{
    // The frame's item lays out on WM_SIZE.
    HostIde::RelayoutFrame(m_hWndHost);
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
    m_nSettingsWidth = pApp->m_rectDock.Width();
    if (!pApp->m_rectDock.IsRectEmpty())
    {
        CRect rectClient;
        GetClientRect(&rectClient);
        SetSize(pApp->m_rectDock.Width(), rectClient.Height());
    }

    m_btnHide.SetImage(&m_images, CImages::kSmallCross);
    m_tab.SetImageList(&m_images, TRUE);

    // The page deletes itself with its window, a child of the tab control.
    CProjectDlg* pPage = new CProjectDlg(&m_tab, m_hWndHost);
    m_tab.AddPage(pPage, CImages::kWindowDoc);
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
    m_pAttachment->OnDestroy();
    CRect rectClient;
    GetClientRect(&rectClient);
    GetApp()->m_rectDock = CRect(0, 0, rectClient.Width(), rectClient.Height());
    CModelessDialogEx::OnDestroy();
}

void CDockBar::OnSize(UINT /*nType*/, int cx, int cy)
{
    if (m_tab.m_hWnd && ::IsWindow(m_tab.m_hWnd))
    {
        const int nLeft = IsDockedLeft() ? kTabOuterMargin : kTabInnerMargin;
        const int nRight = IsDockedLeft() ? kTabInnerMargin : kTabOuterMargin;
        const CRect rectTab(nLeft, kTabTop, cx - nRight, cy - kTabBottomMargin);
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
    CPen pen3DLight(m_clr3DLight);
    CPen penHighlight(m_clrHighlight);
    CPen penShadow(m_clrShadow);
    CPen pen3DDkShadow(m_clr3DDkShadow);
    CRect rc;
    GetClientRect(&rc);

    auto vertical = [&](int x, const CPen& pen) {
        dc.SelectObject(pen.m_hPen);
        dc.MoveTo(x, rc.top);
        dc.LineTo(x, rc.bottom);
    };
    if (IsDockedLeft())
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

    // Two raised lines above the tabs, short of the hide button.
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
    CRect rcGripper = g;
    dc.Draw3dRect(&g, m_clrHighlight, m_clrShadow);
    OffsetRect(&g, 0, 4);
    dc.Draw3dRect(&g, m_clrHighlight, m_clrShadow);
    rcGripper.bottom = g.bottom;
    InflateRect(&rcGripper, 2, 6);
    m_splitter.SetGripper(rcGripper);

    // The pens are freed after this, never while selected.
    dc.SelectStockObject(NULL_PEN);
}

BOOL CDockBar::PreTranslateMessage(MSG* pMsg)
{
    // The pointer over a page or the tabs is off the splitter edge too; the
    // framework offers every message of the pages here first.
    if (pMsg->message == WM_MOUSEMOVE && pMsg->hwnd != m_hWnd)
    {
        CPoint point;
        ::GetCursorPos(&point);
        ScreenToClient(&point);
        m_splitter.OnMouseMove(point);
    }
    return CModelessDialogEx::PreTranslateMessage(pMsg);
}

void CDockBar::OnMouseMove(UINT /*nFlags*/, CPoint point)
{
    m_splitter.OnMouseMove(point);
    Default();
}

void CDockBar::OnLButtonDown(UINT /*nFlags*/, CPoint point)
{
    m_splitter.OnLButtonDown(point);
    Default();
}

void CDockBar::OnLButtonUp(UINT /*nFlags*/, CPoint point)
{
    m_splitter.OnLButtonUp(point);
    Default();
}

void CDockBar::OnCaptureChanged(CWnd* /*pWnd*/)
{
    m_splitter.OnCaptureChanged();
    Default();
}

void CDockBar::OnSplitterResized(int cx)
{
    // Only the new width counts here: the host frame item moves the dock bar
    // to its edge on the WM_SIZE that follows.
    CRect rc;
    GetClientRect(&rc);
    SetSize(cx, rc.Height());
    RelayoutHost();
}

void CDockBar::OnGripperSideChosen(BOOL bLeft)
{
    GetApp()->m_bDockLeft = bLeft;
    // The margins follow the new side at once.
    CRect rc;
    GetWindowRect(&rc);
    SendMessage(WM_SIZE, 0, MAKELPARAM(rc.Width(), rc.Height()));
    Invalidate(TRUE);
    RelayoutHost();
}

BOOL CDockBar::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT nMessage)
{
    if (m_splitter.OnSetCursor())
        return TRUE;
    return CModelessDialogEx::OnSetCursor(pWnd, nHitTest, nMessage);
}

void CDockBar::OnSysColorChange()
{
    CModelessDialogEx::OnSysColorChange();
    ReadColors();
}

void CDockBar::OnTimer(UINT_PTR nIDEvent)
{
    if (m_pAttachment->OnTimer(nIDEvent))
        return; // the window and this object are gone
    Default();
}

void CDockBar::OnHide()
{
    // The dock bar stays alive: its pages go on receiving host records.
    Show(FALSE);
    RelayoutHost();
}

LRESULT CDockBar::OnMouseActivate(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    const LRESULT lResult = m_pAttachment->OnMouseActivate();
    return lResult == -1 ? Default() : lResult;
}

LRESULT CDockBar::OnActivate(WPARAM wParam, LPARAM /*lParam*/)
{
    const LRESULT lResult = Default();
    m_pAttachment->OnActivate(wParam);
    return lResult;
}
