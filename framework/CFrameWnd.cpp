#include "CFrameWnd.h"

#include "CWinApp.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CLOSE()
    ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

namespace
{
const char kFrameClassName[] = "AfxFrameOrView";
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass)
    {
        WNDCLASSA wc = {};
        HINSTANCE hInstance = GetModuleHandleA(nullptr);
        if (!GetClassInfoA(hInstance, kFrameClassName, &wc))
        {
            wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
            wc.lpfnWndProc = AfxWndProc;
            wc.hInstance = hInstance;
            wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
            wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
            wc.lpszClassName = kFrameClassName;
            if (!RegisterClassA(&wc))
                return FALSE;
        }
        cs.lpszClass = kFrameClassName;
    }
    return TRUE;
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* pApp = AfxGetApp();
    return pApp && pApp->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CFrameWnd::OnClose()
{
    DestroyWindow();
}

void CFrameWnd::PostNcDestroy()
{
    delete this; // frames are created with new and own themselves
}

void CFrameWnd::OnInitMenuPopup(CMenu* pPopupMenu, UINT /*nIndex*/, BOOL bSysMenu)
{
    if (bSysMenu)
        return; // the system menu is the system's

    CCmdUI state;
    state.m_hMenu = pPopupMenu->m_hMenu;
    state.m_nIndexMax = static_cast<UINT>(pPopupMenu->GetMenuItemCount());
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; state.m_nIndex++)
    {
        state.m_nID = pPopupMenu->GetMenuItemID(static_cast<int>(state.m_nIndex));
        if (state.m_nID == 0)
            continue; // a separator
        if (state.m_nID == static_cast<UINT>(-1))
        {
            // A nested popup is updated through its first item, and never
            // disabled for want of a handler.
            state.m_hSubMenu = pPopupMenu->GetSubMenu(static_cast<int>(state.m_nIndex));
            if (!state.m_hSubMenu)
                continue;
            state.m_nID = ::GetMenuItemID(state.m_hSubMenu, 0);
            if (state.m_nID == 0 || state.m_nID == static_cast<UINT>(-1))
                continue;
            state.DoUpdate(this, FALSE);
        }
        else
        {
            state.m_hSubMenu = nullptr;
            state.DoUpdate(this, m_bAutoMenuEnable && state.m_nID < 0xF000);
        }

        // An update handler may have removed items: carry on after this one.
        const UINT nCount = static_cast<UINT>(pPopupMenu->GetMenuItemCount());
        if (nCount < state.m_nIndexMax)
        {
            state.m_nIndex -= (state.m_nIndexMax - nCount);
            while (state.m_nIndex < nCount &&
                   pPopupMenu->GetMenuItemID(static_cast<int>(state.m_nIndex)) == state.m_nID)
                state.m_nIndex++;
        }
        state.m_nIndexMax = nCount;
    }
}
