#include "CTreeCtrl.h"

IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)

BOOL CTreeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateControl(WC_TREEVIEWA, ICC_TREEVIEW_CLASSES, nullptr, dwStyle, rect, pParentWnd, nID);
}

HTREEITEM CTreeCtrl::InsertItem(UINT nMask, LPCSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                                UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    TVINSERTSTRUCTA tvis = {};
    tvis.hParent = hParent;
    tvis.hInsertAfter = hInsertAfter;
    tvis.item.mask = nMask;
    tvis.item.pszText = const_cast<LPSTR>(lpszItem);
    tvis.item.iImage = nImage;
    tvis.item.iSelectedImage = nSelectedImage;
    tvis.item.state = nState;
    tvis.item.stateMask = nStateMask;
    tvis.item.lParam = lParam;
    return InsertItem(&tvis);
}

HTREEITEM CTreeCtrl::InsertItem(LPCSTR lpszItem, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0, hParent, hInsertAfter);
}

HTREEITEM CTreeCtrl::InsertItem(LPCSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent,
                                HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, lpszItem, nImage, nSelectedImage, 0, 0, 0,
                      hParent, hInsertAfter);
}

TVITEMA CTreeCtrl::ItemFields(HTREEITEM hItem, UINT nMask)
{
    TVITEMA item = {};
    item.mask = nMask;
    item.hItem = hItem;
    return item;
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const
{
    char szText[1024] = {};
    TVITEMA item = ItemFields(hItem, TVIF_TEXT);
    item.pszText = szText;
    item.cchTextMax = sizeof(szText);
    GetItem(&item);
    return CString(item.pszText);
}

BOOL CTreeCtrl::SetItemText(HTREEITEM hItem, LPCSTR lpszItem)
{
    TVITEMA item = ItemFields(hItem, TVIF_TEXT);
    item.pszText = const_cast<LPSTR>(lpszItem);
    return SetItem(&item);
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const
{
    TVITEMA item = ItemFields(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE);
    const BOOL bResult = GetItem(&item);
    nImage = item.iImage;
    nSelectedImage = item.iSelectedImage;
    return bResult;
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage)
{
    TVITEMA item = ItemFields(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE);
    item.iImage = nImage;
    item.iSelectedImage = nSelectedImage;
    return SetItem(&item);
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM hItem) const
{
    TVITEMA item = ItemFields(hItem, TVIF_PARAM);
    GetItem(&item);
    return static_cast<DWORD_PTR>(item.lParam);
}

BOOL CTreeCtrl::SetItemData(HTREEITEM hItem, DWORD_PTR dwData)
{
    TVITEMA item = ItemFields(hItem, TVIF_PARAM);
    item.lParam = static_cast<LPARAM>(dwData);
    return SetItem(&item);
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const
{
    // The item goes in as the rectangle's first bytes (TreeView_GetItemRect).
    *reinterpret_cast<HTREEITEM*>(lpRect) = hItem;
    return static_cast<BOOL>(SendMessage(TVM_GETITEMRECT, static_cast<WPARAM>(bTextOnly),
                                         reinterpret_cast<LPARAM>(lpRect)));
}

HTREEITEM CTreeCtrl::HitTest(POINT pt, UINT* pFlags) const
{
    TVHITTESTINFO info = {};
    info.pt = pt;
    HTREEITEM hItem = reinterpret_cast<HTREEITEM>(SendMessage(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (pFlags)
        *pFlags = info.flags;
    return hItem;
}

CImageList* CTreeCtrl::GetImageList(int nImageList) const
{
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(SendMessage(TVM_GETIMAGELIST, static_cast<WPARAM>(nImageList))));
}

CImageList* CTreeCtrl::SetImageList(CImageList* pImageList, int nImageList)
{
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(
        SendMessage(TVM_SETIMAGELIST, static_cast<WPARAM>(nImageList),
                    reinterpret_cast<LPARAM>(pImageList ? pImageList->m_hImageList : nullptr))));
}
