#include "CCmdUI.h"

#include "CCmdTarget.h"
#include "CWnd.h"

void CCmdUI::Enable(BOOL bOn)
{
    m_bEnabled = bOn;
    if (m_hMenu)
    {
        if (m_hSubMenu)
            return; // a popup is not enabled on behalf of its first item
        ::EnableMenuItem(m_hMenu, m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : (MF_DISABLED | MF_GRAYED)));
    }
    else if (m_pOther && m_pOther->m_hWnd)
    {
        // A disabled window must not keep the focus: hand it to the next control.
        HWND hWnd = m_pOther->m_hWnd;
        if (!bOn && ::GetFocus() == hWnd)
        {
            HWND hWndParent = ::GetParent(hWnd);
            if (HWND hWndNext = hWndParent ? ::GetNextDlgTabItem(hWndParent, hWnd, FALSE) : nullptr)
                ::SetFocus(hWndNext);
        }
        ::EnableWindow(hWnd, bOn);
    }
    m_bEnableChanged = TRUE;
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_hMenu)
    {
        if (m_hSubMenu)
            return;
        ::CheckMenuItem(m_hMenu, m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    }
    else if (m_pOther && m_pOther->m_hWnd)
    {
        if (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON)
            m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetText(LPCSTR lpszText)
{
    if (m_hMenu)
    {
        if (m_hSubMenu)
            return;
        // Keep the item's id and state; only the text changes.
        UINT nState = ::GetMenuState(m_hMenu, m_nIndex, MF_BYPOSITION);
        nState &= ~(MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR);
        ::ModifyMenuA(m_hMenu, m_nIndex, MF_BYPOSITION | MF_STRING | nState, m_nID, lpszText);
    }
    else if (m_pOther && m_pOther->m_hWnd)
    {
        ::SetWindowTextA(m_pOther->m_hWnd, lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF)
        return TRUE; // separators and invalid ids are left alone
    m_bEnableChanged = FALSE;
    const BOOL bResult = pTarget->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged)
    {
        AFX_CMDHANDLERINFO info = {nullptr, nullptr};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &info));
    }
    return bResult;
}
