// A menu handle owned by this object (destroyed with it) unless detached.
#pragma once

#include "CObject.h"
#include "CString.h"

class CMenu : public CObject
{
public:
    CMenu() = default;
    ~CMenu() override { DestroyMenu(); }

    HMENU m_hMenu = nullptr;

    HMENU GetSafeHmenu() const { return m_hMenu; }
    BOOL LoadMenu(UINT nIDResource);
    BOOL DestroyMenu();
    BOOL Attach(HMENU hMenu);
    HMENU Detach();

    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
    // The popup at a position, still owned by this menu; NULL when none.
    HMENU GetSubMenu(int nPos) const { return ::GetSubMenu(m_hMenu, nPos); }
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    // The command id at a position; 0 for a separator, -1 for a popup.
    UINT GetMenuItemID(int nPos) const { return ::GetMenuItemID(m_hMenu, nPos); }
    UINT GetMenuState(UINT nID, UINT nFlags) const { return ::GetMenuState(m_hMenu, nID, nFlags); }
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable) { return ::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable); }
    DWORD CheckMenuItem(UINT nIDCheckItem, UINT nCheck) { return ::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck); }
};
