#include "CTabCtrlEx.h"

#include <string.h>

IMPLEMENT_DYNAMIC(CTabCtrlEx, CTabCtrl)

BEGIN_MESSAGE_MAP(CTabCtrlEx, CTabCtrl)
    ON_WM_CREATE()
    ON_NOTIFY_EX_RANGE(TTN_NEEDTEXTA, 0, 0xFFFF, OnToolTipNeedText)
    ON_WM_SIZE()
END_MESSAGE_MAP()

CTabCtrlEx::CTabCtrlEx() = default;

CTabCtrlEx::~CTabCtrlEx() = default;

void CTabCtrlEx::ApplyStyles()
{
    DWORD dwStyle = GetStyle();
    if (!(dwStyle & TCS_TOOLTIPS))
    {
        dwStyle |= TCS_TOOLTIPS;
        ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(dwStyle));
    }
    if (m_bTabsAtBottom)
        ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(dwStyle | TCS_BOTTOM));
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

void CTabCtrlEx::OnSize(UINT nType, int cx, int cy)
{
    CTabCtrl::OnSize(nType, cx, cy);
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

void CTabCtrlEx::AddToolTip(LPCSTR lpszText)
{
    m_strToolTips.push_back(CString(lpszText));
}

void CTabCtrlEx::AddToolTip(UINT nIDString)
{
    CString str;
    str.LoadString(nIDString);
    m_strToolTips.push_back(str);
}

BOOL CTabCtrlEx::OnToolTipNeedText(UINT /*nID*/, NMHDR* pNMHDR, LRESULT* /*pResult*/)
{
    // The tool id is the tab's index; a tool beyond the list gets no text
    // and the request goes on to the control's own handling.
    const UINT_PTR nTool = pNMHDR->idFrom;
    if (nTool >= m_strToolTips.size())
        return FALSE;
    TOOLTIPTEXTA* pTTT = reinterpret_cast<TOOLTIPTEXTA*>(pNMHDR);
    const int nBuffer = static_cast<int>(sizeof(pTTT->szText)); // 80, room for 79 and the end
    lstrcpynA(pTTT->szText, m_strToolTips[nTool], nBuffer);
    pTTT->lpszText = pTTT->szText;
    return TRUE;
}
