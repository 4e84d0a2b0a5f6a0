#include "CEdit.h"

IMPLEMENT_DYNAMIC(CEdit, CWnd)

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, "EDIT", nullptr, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
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
