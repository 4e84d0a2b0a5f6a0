#include "CButton.h"

IMPLEMENT_DYNAMIC(CButton, CWnd)

BOOL CButton::Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, "BUTTON", lpszCaption, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
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
