#include "CEdit.h"

IMPLEMENT_DYNAMIC(CEdit, CWnd)

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateControl("EDIT", 0, nullptr, dwStyle, rect, pParentWnd, nID);
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), static_cast<LPARAM>(nEndChar));
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD dwStart = 0;
    DWORD dwEnd = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&dwStart), reinterpret_cast<LPARAM>(&dwEnd));
    nStartChar = static_cast<int>(dwStart);
    nEndChar = static_cast<int>(dwEnd);
}
