#include "CButton.h"

IMPLEMENT_DYNAMIC(CButton, CWnd)

BOOL CButton::Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateControl("BUTTON", 0, lpszCaption, dwStyle, rect, pParentWnd, nID);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/)
{
}

BOOL CButton::OnChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (nMessage != WM_DRAWITEM)
        return CWnd::OnChildNotify(nMessage, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    if (pResult)
        *pResult = TRUE;
    return TRUE;
}
