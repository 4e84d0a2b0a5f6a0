#include "CTabbedPageEx.h"

#include "CDataExchange.h"

IMPLEMENT_DYNAMIC(CTabbedPageEx, CTabCtrlEx)

BEGIN_MESSAGE_MAP(CTabbedPageEx, CTabCtrlEx)
    ON_WM_SIZE()
END_MESSAGE_MAP()

CModelessDialogEx* CTabbedPageEx::GetPage(int i) const
{
    const PAGE& page = m_pages[static_cast<size_t>(i)];
    // A page whose window went away deleted itself: its pointer is stale.
    if (!page.hWnd || CWnd::FromHandlePermanent(page.hWnd) != page.pPage)
        return nullptr;
    return page.pPage;
}

CRect CTabbedPageEx::GetDisplayRect() const
{
    CRect rect;
    GetClientRect(&rect);
    SendMessage(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&rect));
    return rect;
}

void CTabbedPageEx::AddPage(CModelessDialogEx* pPage, int nImage)
{
    // Creating the page runs its OnInitDialog and, for a dock page, its
    // one-time initialisation.
    pPage->Create(FALSE);
    const int nItem = GetItemCount();
    m_pages.push_back(PAGE{nItem, pPage, pPage->m_hWnd});

    CString strCaption;
    pPage->GetWindowText(strCaption);
    InsertItem(nItem, strCaption, nImage);

    // The caption has become the tab; the page keeps its style otherwise, and
    // the frame is not recalculated (the page is moved right after).
    pPage->ModifyStyle(WS_CAPTION, 0);
    pPage->MoveWindow(GetDisplayRect(), TRUE);

    if (nItem == 0)
    {
        pPage->ShowWindow(SW_SHOW);
        SetCurSel(nItem);
    }
}

void CTabbedPageEx::OnSize(UINT nType, int cx, int cy)
{
    CTabCtrlEx::OnSize(nType, cx, cy);
    if (!m_bResizePages)
        return;
    const CRect rect = GetDisplayRect();
    for (int i = 0; i < GetPageCount(); i++)
    {
        if (CModelessDialogEx* pPage = GetPage(i))
            pPage->MoveWindow(rect, TRUE);
    }
}

void CTabbedPageEx::DoDataExchange(CDataExchange* pDX)
{
    CTabCtrlEx::DoDataExchange(pDX);
    const int nCurrent = GetCurSel();
    for (int i = 0; i < GetPageCount(); i++)
    {
        CModelessDialogEx* pPage = GetPage(i);
        if (!pPage)
            continue;
        SetCurSel(i);
        if (!pPage->UpdateData(pDX->m_bSaveAndValidate))
            pDX->Fail(); // the failing page's tab stays selected
    }
    SetCurSel(nCurrent);
}
