#include "CTabbedPageEx.h"

#include "CDataExchange.h"

IMPLEMENT_DYNAMIC(CTabbedPageEx, CTabCtrlEx)

BEGIN_MESSAGE_MAP(CTabbedPageEx, CTabCtrlEx)
    ON_NOTIFY_REFLECT(TCN_SELCHANGING, OnSelChanging)
    ON_NOTIFY_REFLECT_EX(TCN_SELCHANGE, OnSelChange)
    ON_WM_SIZE()
END_MESSAGE_MAP()

CTabbedPageEx::CTabbedPageEx() = default;

CTabbedPageEx::~CTabbedPageEx() = default;

CModelessDialogEx* CTabbedPageEx::GetPage(int i) const
{
    const PAGE& page = m_pages[static_cast<size_t>(i)];
    // A page whose window went away deleted itself: its pointer is stale.
    if (!page.hWnd || CWnd::FromHandlePermanent(page.hWnd) != page.pPage)
        return nullptr;
    return page.pPage;
}

CModelessDialogEx* CTabbedPageEx::GetPageOfTab(int nItem) const
{
    for (int i = 0; i < GetPageCount(); i++)
    {
        if (m_pages[static_cast<size_t>(i)].nItem == nItem)
            return GetPage(i);
    }
    return nullptr;
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

    if (nItem == m_nFirstPage)
    {
        pPage->ShowWindow(SW_SHOW);
        SelectPage(nItem);
    }
}

int CTabbedPageEx::SelectPage(int nItem)
{
    const int nPrevious = SetCurSel(nItem);
    if (nPrevious != -1)
    {
        LRESULT lResult = 0;
        OnSelChange(nullptr, &lResult);
    }
    return nPrevious;
}

void CTabbedPageEx::OnSelChanging(NMHDR* /*pNMHDR*/, LRESULT* pResult)
{
    *pResult = 0;
    if (!m_bValidatePage)
        return;
    if (CModelessDialogEx* pPage = GetPageOfTab(GetCurSel()))
        *pResult = pPage->UpdateData(TRUE) ? 0 : -1; // -1 keeps the tab
}

BOOL CTabbedPageEx::OnSelChange(NMHDR* /*pNMHDR*/, LRESULT* pResult)
{
    if (!m_bSwitchPages)
        return FALSE;
    const int nCurrent = GetCurSel();
    if (nCurrent != -1)
    {
        for (int i = 0; i < GetPageCount(); i++)
        {
            if (CModelessDialogEx* pPage = GetPage(i))
                pPage->ShowWindow(m_pages[static_cast<size_t>(i)].nItem == nCurrent ? SW_SHOW : SW_HIDE);
        }
        CModelessDialogEx* pPage = nCurrent < GetPageCount() ? GetPage(nCurrent) : nullptr;
        if (HWND hWndFirst = pPage ? ::GetWindow(pPage->m_hWnd, GW_CHILD) : nullptr)
        {
            if (HWND hWndControl = ::GetNextDlgTabItem(m_hWnd, hWndFirst, FALSE))
                ::SetFocus(hWndControl);
        }
    }
    *pResult = 0;
    return FALSE; // the parent hears of the change as well
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
        SelectPage(i);
        if (!pPage->UpdateData(pDX->m_bSaveAndValidate))
            pDX->Fail(); // the failing page's tab stays selected
    }
    SelectPage(nCurrent);
}
