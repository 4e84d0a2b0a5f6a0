#include "CTabCtrl.h"

IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)

BOOL CTabCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_TAB_CLASSES};
    InitCommonControlsEx(&icc);
    return CreateEx(0, WC_TABCONTROLA, nullptr, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
}

LONG CTabCtrl::InsertItem(int nItem, LPCSTR lpszItem)
{
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<LPSTR>(lpszItem);
    return InsertItem(nItem, &item);
}

CSize CTabCtrl::SetItemSize(CSize size)
{
    const DWORD dwPrevious = static_cast<DWORD>(SendMessage(TCM_SETITEMSIZE, 0, MAKELPARAM(size.cx, size.cy)));
    return CSize(LOWORD(dwPrevious), HIWORD(dwPrevious));
}

CImageList* CTabCtrl::GetImageList() const
{
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(SendMessage(TCM_GETIMAGELIST)));
}

CImageList* CTabCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(
        SendMessage(TCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pImageList ? pImageList->m_hImageList : nullptr))));
}
