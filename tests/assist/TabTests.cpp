// The Assist Window's tab control of pages, taken over from a dialog template
// as the Assist Window takes it: tabs at the bottom named after the pages,
// the first page shown, every page kept to the display area, and a page
// whose window went behind the control's back left alone.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CTabbedPageEx.h"
#include "InProcess.h"
#include "TestRunner.h"

#include <string>

namespace
{
class CTabHost : public CDialog
{
public:
    CTabHost() : CDialog(IDD_TABHOST, nullptr) {}
    CTabbedPageEx m_tab;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_TAB, m_tab);
    }
};

std::string TabText(CTabCtrl& tab, int nItem)
{
    char sz[64] = {};
    TCITEMA item = {TCIF_TEXT, 0, 0, sz, sizeof(sz), 0, 0};
    tab.GetItem(nItem, &item);
    return sz;
}
} // namespace

TEST_CASE(tabs_at_the_bottom_name_the_pages_which_fill_the_display_area_as_it_changes)
{
    CTabHost host;
    CTabbedPageEx& tab = host.m_tab;
    tab.m_bTabsAtBottom = TRUE;
    tab.m_bResizePages = true;
    REQUIRE(host.Create(IDD_TABHOST));
    host.ShowWindow(SW_SHOW);
    CModelessDialogEx* pages[] = {new CModelessDialogEx(IDD_PAGE_ALPHA, &tab), new CModelessDialogEx(IDD_PAGE_BETA, &tab)};
    for (CModelessDialogEx* pPage : pages)
        tab.AddPage(pPage, -1);
    REQUIRE(tab.GetItemCount() == 2);
    CHECK_EQ(TabText(tab, 0) + "," + TabText(tab, 1), std::string("Alpha,Beta"));
    CHECK(pages[0]->IsWindowVisible() && !pages[1]->IsWindowVisible());

    for (const CRect& rcControl : {CRect(), CRect(4, 4, 254, 184)})
    {
        if (!rcControl.IsRectEmpty())
            tab.MoveWindow(rcControl.left, rcControl.top, rcControl.Width(), rcControl.Height());
        CRect rcDisplay, rcTab;
        tab.GetClientRect(&rcDisplay);
        tab.AdjustRect(FALSE, &rcDisplay);
        tab.GetItemRect(0, &rcTab);
        CHECK(rcTab.top >= rcDisplay.bottom);
        for (CModelessDialogEx* pPage : pages)
        {
            CRect rcPage;
            pPage->GetWindowRect(&rcPage);
            MapWindowPoints(nullptr, tab.m_hWnd, reinterpret_cast<LPPOINT>(&rcPage), 2);
            CHECK(rcPage == rcDisplay && (pPage->GetStyle() & WS_CAPTION) == 0); // hidden or not
        }
    }

    ::DestroyWindow(pages[1]->m_hWnd); // the page deleted itself
    CHECK(tab.GetPage(1) == nullptr);
    tab.MoveWindow(0, 0, 220, 160);
    CHECK(tab.UpdateData(FALSE) && tab.UpdateData(TRUE));
    host.DestroyWindow();
    CHECK(tab.m_hWnd == nullptr);
}
