#include "CFrameWndItem.h"

#include "CApp.h"
#include "CDockBar.h"
#include "DockRect.h"
#include "HostIde.h"
#include "WindowText.h"
#include "resource.h"

namespace
{
const UINT kAssistWindowCommand = ID_VIEW_ASSISTWINDOW; // "&Assist Window" in menu 101
static_assert(ID_VIEW_ASSISTWINDOW >= kFirstPopupCommand && ID_VIEW_ASSISTWINDOW <= kLastPopupCommand,
              "the popup's commands are of the range the library lets through");

CRect WindowRectInClient(HWND hWnd, HWND hWndFrame)
{
    CRect rect;
    ::GetWindowRect(hWnd, &rect);
    ::MapWindowPoints(nullptr, hWndFrame, reinterpret_cast<LPPOINT>(&rect), 2);
    return rect;
}

BOOL CALLBACK RedrawFrame(HWND hWnd, LPARAM /*lParam*/)
{
    ::SetWindowPos(hWnd, nullptr, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | SWP_NOCOPYBITS);
    return TRUE; // all of them
}

int ProcessBitness(DWORD dwProcessId)
{
#if defined(_WIN64)
    HANDLE hProcess = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, dwProcessId);
    BOOL bWow64 = FALSE;
    if (hProcess)
    {
        IsWow64Process(hProcess, &bWow64);
        CloseHandle(hProcess);
    }
    return bWow64 ? 32 : 64;
#else
    (void)dwProcessId;
    return 32; // a 32-bit library enters 32-bit processes only
#endif
}
} // namespace

CFrameWndItem::CFrameWndItem(HWND hWnd, CItems* pItems) : CItem(hWnd, pItems)
{
    GetWindowThreadProcessId(m_hWnd, &m_dwHostProcessId);
    m_nHostBitness = ProcessBitness(m_dwHostProcessId);
    g_log.Write("host IDE entered: pid %lu, %d-bit", static_cast<unsigned long>(m_dwHostProcessId), m_nHostBitness);
    PostMessageA(m_hWnd, WM_CREATEDOCKBAR, 0, 0);
}

CFrameWndItem::~CFrameWndItem()
{
    const BOOL bFrame = ::IsWindow(m_hWnd);
    if (bFrame && m_bPopupAppended)
        RequestHostRemovePopup(m_hWnd);
    if (CDockBar* pDockBar = GetDockBar())
    {
        pDockBar->Close(IDOK);
        // A page that refuses to save must not leave a window behind in
        // someone else's frame.
        if (::IsWindow(m_hWndDockBar) && CWnd::FromHandlePermanent(m_hWndDockBar) == pDockBar)
            pDockBar->Close(IDCANCEL);
    }
    m_pDockBar = nullptr;
    g_log.Write("host IDE left: pid %lu", static_cast<unsigned long>(m_dwHostProcessId));
    // The host lays its MDI client over the whole free area again at once,
    // not at its next resize.
    if (bFrame && m_hWndDockBar)
        HostIde::RelayoutFrame(m_hWnd);
}

CDockBar* CFrameWndItem::GetDockBar()
{
    if (m_pDockBar &&
        !(::IsWindow(m_hWndDockBar) && CWnd::FromHandlePermanent(m_hWndDockBar) == m_pDockBar))
        m_pDockBar = nullptr; // deleted itself with its window: never touched again
    return m_pDockBar;
}

void CFrameWndItem::OnHookMessage(const HookRecord* pRecord)
{
    CDockBar* pDockBar = GetDockBar();
    if (pRecord->nMessage == WM_SIZE && pDockBar && pDockBar->IsShown())
    {
        // The host is about to put the MDI client over the whole area; it
        // must not paint there before ApplyLayout has narrowed it again.
        if (HWND hWndClient = HostIde::FindMdiClient(m_hWnd))
        {
            const CItemLife life(*this);
            ::SendMessageA(hWndClient, WM_SETREDRAW, FALSE, 0);
            if (!life.IsAlive())
                return;
            m_bRedrawSuspended = TRUE;
        }
    }
    if (GetDockBar())
        GetDockBar()->DispatchHostMessage(pRecord);
}

void CFrameWndItem::OnHookMessageDone(const HookRecord* pRecord)
{
    const UINT nMessage = pRecord->nMessage;
    if (nMessage == WM_CREATEDOCKBAR)
    {
        if (!m_pDockBar)
            CreateDockBar();
        return;
    }
    CDockBar* pDockBar = GetDockBar();
    switch (nMessage)
    {
    case WM_COMMAND:
        // Only a choice in our popup: the host's own commands may have the
        // same number.
        if ((pRecord->nFlags & HOOK_FLAG_POPUP) == 0)
            break;
        if (pRecord->wParam == kAssistWindowCommand && pDockBar)
            ToggleDockBar();
        else if (pRecord->wParam >= ID_TOOL_FIRST && pRecord->wParam <= ID_TOOL_LAST)
            RunTool(static_cast<UINT>(pRecord->wParam));
        break;
    case WM_INITMENUPOPUP:
        if (pDockBar)
        {
            // Requests to the popup of another menu fail in the library.
            HMENU hMenu = HandleFromWord<HMENU>(pRecord->wParam);
            const CItemLife life(*this);
            RequestHostCheckMenuItem(m_hWnd, hMenu, kAssistWindowCommand,
                                     pDockBar->IsShown() ? kCheckOn : kCheckOff);
            const CString strFileName = GetActiveFileName();
            for (int i = 0; i < CApp::kToolCount && life.IsAlive(); ++i)
            {
                if (GetApp()->m_tools[i].IsShown())
                    RequestHostCheckMenuItem(m_hWnd, hMenu, ID_TOOL_FIRST + i,
                                             GetApp()->CanRunTool(i, m_hWnd, strFileName) ? kCheckOff
                                                                                         : kCheckOff | kItemGrayed);
            }
        }
        break;
    case WM_SETTEXT:
        if (pDockBar)
            pDockBar->UpdateData(FALSE);
        break;
    case WM_SIZE:
        MeasureLayout();
        ApplyLayout();
        break;
    case WM_PAINT:
        if (ToolBarChanged())
            MeasureLayout();
        ApplyLayout();
        break;
    case WM_ACTIVATEAPP:
        if (ToolBarChanged())
            MeasureLayout();
        // The frame came to the front; the Assist Window goes along.
        if (pDockBar)
            pDockBar->FollowHost();
        break;
    case WM_MOVE:
    case WM_WINDOWPOSCHANGED:
    case WM_SHOWWINDOW:
        // The Assist Window follows the frame as its attachment needs.
        if (pDockBar)
            pDockBar->FollowHost();
        break;
    default:
        break;
    }
}

void CFrameWndItem::CreateDockBar()
{
    // Deletes itself after its window is destroyed.
    m_pDockBar = new CDockBar(m_hWnd);
    m_pDockBar->Create(TRUE);
    m_hWndDockBar = m_pDockBar->m_hWnd;
    if (!m_hWndDockBar)
        return; // a failed creation leaves an object that never deletes itself
    const CItemLife life(*this);
    AppendAssistPopup();
    if (!life.IsAlive())
        return;
    HostIde::RelayoutFrame(m_hWnd);
}

BOOL CFrameWndItem::AppendAssistPopup()
{
    CMenu menu;
    if (!menu.LoadMenu(IDR_ASSISTMENU))
        return FALSE;
    HMENU hPopup = menu.GetSubMenu(0);
    CString strCaptions;
    for (int i = 0; i < CApp::kToolCount; ++i)
    {
        const CTool& tool = GetApp()->m_tools[i];
        if (!tool.IsShown())
            continue;
        if (strCaptions.IsEmpty())
            AppendMenuA(hPopup, MF_SEPARATOR, 0, nullptr);
        AppendMenuA(hPopup, MF_STRING, ID_TOOL_FIRST + i, tool.m_strCaption);
        strCaptions += tool.m_strCaption + "\n";
    }
    CString strText;
    menu.GetMenuString(0, strText, MF_BYPOSITION);
    // The host's thread edits its own menu bar (see the hook contract).
    const CItemLife life(*this);
    const BOOL bAppended = RequestHostAppendPopup(m_hWnd, hPopup, strText);
    if (!life.IsAlive())
        return FALSE;
    if (bAppended)
    {
        m_bPopupAppended = TRUE;
        m_strToolCaptions = strCaptions;
    }
    else if (!m_bPopupRefused)
    {
        g_log.Write("request refused: the \"&Assist\" popup of pid %lu (asked again later)",
                    static_cast<unsigned long>(m_dwHostProcessId));
    }
    m_bPopupRefused = !bAppended;
    return bAppended;
}

void CFrameWndItem::ApplySettings()
{
    CDockBar* pDockBar = GetDockBar();
    if (!pDockBar)
        return; // the popup comes with the Assist Window
    if (pDockBar->ApplySettingsWidth())
        HostIde::RelayoutFrame(m_hWnd);
    CString strCaptions;
    for (const CTool& tool : GetApp()->m_tools)
    {
        if (tool.IsShown())
            strCaptions += tool.m_strCaption + "\n";
    }
    if (m_bPopupAppended && strCaptions == m_strToolCaptions)
        return;
    // The old popup goes first. The library refuses while the host has a
    // menu open; then the old one stays until a later look. A popup the
    // host dropped with its menu bar is gone already: the new one goes up.
    const CItemLife life(*this);
    if (m_bPopupAppended && !RequestHostRemovePopup(m_hWnd))
    {
        if (life.IsAlive())
            AppendAssistPopup();
        return;
    }
    if (!life.IsAlive())
        return;
    m_bPopupAppended = FALSE;
    AppendAssistPopup();
}

CString CFrameWndItem::GetActiveFileName() const
{
    // The active MDI child stands first among its siblings.
    HWND hWndClient = HostIde::FindMdiClient(m_hWnd);
    HWND hWndActive = hWndClient ? ::GetWindow(hWndClient, GW_CHILD) : nullptr;
    return hWndActive ? GetApp()->GetEditorFileName(hWndActive) : CString();
}

void CFrameWndItem::RunTool(UINT nCommand)
{
    const int nTool = static_cast<int>(nCommand - ID_TOOL_FIRST);
    const CString strFileName = GetActiveFileName();
    CApp* pApp = GetApp();
    if (pApp->CanRunTool(nTool, m_hWnd, strFileName))
        pApp->RunCommand(m_hWnd, pApp->m_tools[nTool].m_strCommand, strFileName);
}

void CFrameWndItem::ToggleDockBar()
{
    m_pDockBar->Show(!m_pDockBar->IsShown());
    HostIde::RelayoutFrame(m_hWnd);
}

void CFrameWndItem::MeasureLayout()
{
    HWND hWndClient = HostIde::FindMdiClient(m_hWnd);
    if (!hWndClient)
        return;
    CRect rectHost = WindowRectInClient(hWndClient, m_hWnd);
    CRect rectFrame;
    ::GetClientRect(m_hWnd, &rectFrame);
    // The MDI client still stands where ApplyLayout narrowed it and the
    // frame kept its size: the host has not laid it out since, and cutting
    // the Assist Window's strip off again would narrow it twice. Seen once
    // in a run on a busy machine after a plain move of the frame (MDI client
    // left at twice the Assist Window's width): a WM_SIZE the host does not
    // lay out for (minimised), or a record the hook stopped waiting for and
    // the tool handled late, measures after the layout was applied.
    const BOOL bNarrowed = m_rectClient != m_rectHostLayout;
    const CSize sizeFrame(rectFrame.Width(), rectFrame.Height());
    if (bNarrowed && rectHost == m_rectClient && sizeFrame.cx == m_sizeFrameMeasured.cx &&
        sizeFrame.cy == m_sizeFrameMeasured.cy)
        rectHost = m_rectHostLayout;
    m_rectHostLayout = rectHost;
    m_sizeFrameMeasured = sizeFrame;
    m_rectClient = rectHost;
    CDockBar* pDockBar = GetDockBar();
    if (pDockBar && pDockBar->IsShown())
    {
        // However wide the settings made it, the MDI client stays in the frame.
        CRect rectDock;
        pDockBar->GetWindowRect(&rectDock);
        m_nDockWidth = DockRect::ClampWidth(rectDock.Width(), rectHost.Width());
        if (GetApp()->m_bDockLeft)
            m_rectClient.left += m_nDockWidth;
        else
            m_rectClient.right -= m_nDockWidth;
    }
    FindToolBarRect(m_rectToolBar);
}

void CFrameWndItem::ApplyLayout()
{
    HWND hWndClient = HostIde::FindMdiClient(m_hWnd);
    if (!hWndClient)
        return;
    const CItemLife life(*this);
    ::MoveWindow(hWndClient, m_rectClient.left, m_rectClient.top, m_rectClient.Width(), m_rectClient.Height(), TRUE);
    if (!life.IsAlive())
        return;
    CDockBar* pDockBar = GetDockBar();
    if (!pDockBar || !pDockBar->IsShown())
        return;
    CRect rectDock;
    const int w = m_nDockWidth;
    if (GetApp()->m_bDockLeft)
        rectDock = CRect(m_rectClient.left - w, m_rectClient.top, m_rectClient.left, m_rectClient.bottom);
    else
        rectDock = CRect(m_rectClient.right, m_rectClient.top, m_rectClient.right + w, m_rectClient.bottom);
    pDockBar->Place(rectDock);
    if (m_bRedrawSuspended)
    {
        pDockBar->Invalidate(TRUE);
        ::SendMessageA(hWndClient, WM_SETREDRAW, TRUE, 0);
        if (!life.IsAlive())
            return;
        // Its sunken edge too: moved while it could not draw, the edge stays
        // where the old rectangle had it (seen as a stale two-pixel line on
        // the screen after a splitter drag), which invalidating the client
        // area alone does not repaint.
        ::RedrawWindow(hWndClient, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
        // Each window below the MDI client recomputes and redraws its frame.
        ::EnumChildWindows(hWndClient, RedrawFrame, 0);
        if (life.IsAlive())
            m_bRedrawSuspended = FALSE;
    }
}

void CFrameWndItem::FindToolBarRect(CRect& rect) const
{
    for (HWND hWndChild = ::GetWindow(m_hWnd, GW_CHILD); hWndChild; hWndChild = ::GetWindow(hWndChild, GW_HWNDNEXT))
    {
        if (GetWindowClassName(hWndChild) == HostIde::kToolBarClass && ::IsWindowVisible(hWndChild))
        {
            rect = WindowRectInClient(hWndChild, m_hWnd);
            return;
        }
    }
    rect = CRect();
}

BOOL CFrameWndItem::ToolBarChanged()
{
    CRect cur;
    FindToolBarRect(cur);
    const CRect& last = m_rectToolBar;
    const BOOL bWidth = cur.Width() == last.Width();
    const BOOL bHeight = cur.Height() == last.Height();
    const BOOL bChanged = (!bWidth && !bHeight) || (bWidth && cur.top != last.top) || (bHeight && cur.left != last.left);
    if (!bChanged)
        return FALSE;
    m_rectToolBar = cur;
    CDockBar* pDockBar = GetDockBar();
    if (pDockBar && pDockBar->IsShown())
        pDockBar->Invalidate(TRUE);
    return TRUE;
}
