#include "CTabCtrl.h"

IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)

BOOL CTabCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateControl(WC_TABCONTROLA, ICC_TAB_CLASSES, nullptr, dwStyle, rect, pParentWnd, nID);
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
