// The state of one command's user interface, as an update handler sees it:
// a menu item (before its popup is shown) or a child window, or neither when
// a command is only being checked before it runs. Update handlers call
// Enable, SetCheck and SetText; what they say is applied to whichever of the
// two it is, and Enable is remembered in m_bEnabled in every case.
#pragma once

#include <windows.h>

class CCmdTarget;
class CWnd;

class CCmdUI
{
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;

    UINT m_nID = 0;
    UINT m_nIndex = 0;        // position of the item in m_hMenu
    UINT m_nIndexMax = 0;     // number of items in m_hMenu
    HMENU m_hMenu = nullptr;  // the popup holding the item, or NULL
    HMENU m_hSubMenu = nullptr; // set when the item is itself a popup
    CWnd* m_pOther = nullptr; // the child window, when not a menu item

    BOOL m_bEnableChanged = FALSE;  // an update handler called Enable
    BOOL m_bContinueRouting = FALSE; // the handler passes the request on
    BOOL m_bEnabled = TRUE;         // what the last Enable said

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1); // 0 clear, 1 checked, 2 indeterminate
    virtual void SetText(LPCSTR lpszText);
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    // Asks pTarget's routing for an update handler of m_nID. With none and
    // bDisableIfNoHndler, the item is enabled exactly when some target has a
    // command handler for it. TRUE when an update handler took the request.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
};
