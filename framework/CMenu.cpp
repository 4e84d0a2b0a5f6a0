#include "CMenu.h"

BOOL CMenu::LoadMenu(UINT nIDResource)
{
    DestroyMenu();
    m_hMenu = ::LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(nIDResource));
    return m_hMenu != nullptr;
}

BOOL CMenu::DestroyMenu()
{
    if (!m_hMenu)
        return FALSE;
    const BOOL bResult = ::DestroyMenu(m_hMenu);
    m_hMenu = nullptr;
    return bResult;
}

BOOL CMenu::Attach(HMENU hMenu)
{
    DestroyMenu();
    m_hMenu = hMenu;
    return hMenu != nullptr;
}

HMENU CMenu::Detach()
{
    HMENU hMenu = m_hMenu;
    m_hMenu = nullptr;
    return hMenu;
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    char szText[256] = {};
    const int nLength = ::GetMenuStringA(m_hMenu, nIDItem, szText, sizeof(szText), nFlags);
    rString = szText;
    return nLength;
}
