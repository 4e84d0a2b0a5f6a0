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
};
