#include "CTabCtrlEx.h"

#include <string.h>

IMPLEMENT_DYNAMIC(CTabCtrlEx, CTabCtrl)

BEGIN_MESSAGE_MAP(CTabCtrlEx, CTabCtrl)
    ON_WM_CREATE()
END_MESSAGE_MAP()

void CTabCtrlEx::ApplyStyles()
{
    if (m_bTabsAtBottom)
        ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(GetStyle() | TCS_BOTTOM));
}

void CTabCtrlEx::PreSubclassWindow()
{
    CTabCtrl::PreSubclassWindow();
    ApplyStyles();
}

int CTabCtrlEx::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CTabCtrl::OnCreate(lpCreateStruct) == -1)
        return -1;
    ApplyStyles();
    return 0;
}

LONG CTabCtrlEx::InsertItem(int nItem, LPCSTR lpszText, int nImage)
{
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    if (nImage != -1)
        item.mask |= TCIF_IMAGE;
    item.pszText = const_cast<LPSTR>(lpszText);
    item.cchTextMax = lpszText ? static_cast<int>(strlen(lpszText)) : 0;
    item.iImage = nImage;
    return CTabCtrl::InsertItem(nItem, &item);
}

CImageList* CTabCtrlEx::SetImageList(CImageList* pImageList, BOOL bAssignImages)
{
    CImageList* pPrevious = CTabCtrl::SetImageList(pImageList);
    if (bAssignImages)
    {
        const int nCount = GetItemCount();
        for (int i = 0; i < nCount; i++)
        {
            TCITEMA item = {};
            item.mask = TCIF_IMAGE;
            item.iImage = i;
            SetItem(i, &item);
        }
    }
    return pPrevious;
}
