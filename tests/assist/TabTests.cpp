// The Assist Window's tab control with its pages, on real windows: styles
// taken over from a template, tabs named after the pages, one page shown at
// a time, pages kept to the display area, validation on a tab change, data
// exchange through the control, and images.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CModelessDialogEx.h"
#include "CTabbedPageEx.h"
#include "TestRunner.h"
#include "WindowTestKit.h"

#include <string>
#include <vector>

namespace
{
std::vector<std::string> g_exchanges; // "<caption> load" / "<caption> save", in order

class CTestPage : public CModelessDialogEx
{
public:
    CTestPage(UINT nIDTemplate, CWnd* pParent, const char* pszName)
        : CModelessDialogEx(nIDTemplate, pParent), m_strName(pszName)
    {
    }

    std::string m_strName;
    BOOL m_bRefuse = FALSE; // saving fails
    CString m_strText;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CModelessDialogEx::DoDataExchange(pDX);
        g_exchanges.push_back(m_strName + (pDX->m_bSaveAndValidate ? " save" : " load"));
        DDX_Text(pDX, IDC_TEXT, m_strText);
        if (pDX->m_bSaveAndValidate && m_bRefuse)
            pDX->Fail();
    }
};

// The Assist Window's situation: the tab control comes from the template
// and is taken over by the data exchange.
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

struct Pages
{
    CTestPage* pAlpha = nullptr;
    CTestPage* pBeta = nullptr;
    CTestPage* pGamma = nullptr;
};

// The host shown with three pages. Set the switches in fnSetup before the
// control is taken over.
Pages MakeHost(CTabHost& host, const std::function<void(CTabbedPageEx&)>& fnSetup = nullptr)
{
    host.m_tab.m_bTabsAtBottom = TRUE;
    if (fnSetup)
        fnSetup(host.m_tab);
    Pages pages;
    if (!host.Create(IDD_TABHOST))
        return pages;
    host.SetWindowPos(nullptr, 50, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    host.ShowWindow(SW_SHOW);
    pages.pAlpha = new CTestPage(IDD_PAGE_ALPHA, &host.m_tab, "Alpha");
    host.m_tab.AddPage(pages.pAlpha, -1);
    pages.pBeta = new CTestPage(IDD_PAGE_BETA, &host.m_tab, "Beta");
    host.m_tab.AddPage(pages.pBeta, -1);
    pages.pGamma = new CTestPage(IDD_PAGE_GAMMA, &host.m_tab, "Gamma");
    host.m_tab.AddPage(pages.pGamma, -1);
    kit::PumpFor(50);
    return pages;
}

std::string TabText(CTabCtrl& tab, int nItem)
{
    char szText[64] = {};
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = szText;
    item.cchTextMax = sizeof(szText);
    tab.GetItem(nItem, &item);
    return szText;
}

CRect DisplayArea(CTabCtrl& tab)
{
    CRect rect;
    tab.GetClientRect(&rect);
    tab.AdjustRect(FALSE, &rect);
    return rect;
}

// A window's rectangle in the client coordinates of its parent.
CRect RectInParent(HWND hWnd)
{
    CRect rect;
    GetWindowRect(hWnd, &rect);
    MapWindowPoints(nullptr, GetParent(hWnd), reinterpret_cast<LPPOINT>(&rect), 2);
    return rect;
}

std::string Show(const RECT& r)
{
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

} // namespace

TEST_CASE(tabs_sit_at_the_bottom_named_after_the_pages_which_fill_the_display_area)
{
    CTabHost host;
    Pages pages = MakeHost(host);
    REQUIRE(pages.pGamma && pages.pGamma->m_hWnd);
    CTabbedPageEx& tab = host.m_tab;

    // The template had neither style: the takeover added both.
    CHECK((tab.GetStyle() & TCS_BOTTOM) != 0);

    REQUIRE(tab.GetItemCount() == 3);
    CHECK_EQ(TabText(tab, 0), std::string("Alpha"));
    CHECK_EQ(TabText(tab, 1), std::string("Beta"));
    CHECK_EQ(TabText(tab, 2), std::string("Gamma"));
    CHECK_EQ(tab.GetPageCount(), 3);
    CHECK(tab.GetPage(1) == pages.pBeta);
    CHECK_EQ(tab.m_pages[2].nItem, 2);

    // The tabs are drawn below the pages.
    const CRect rcDisplay = DisplayArea(tab);
    CRect rcTab;
    tab.GetItemRect(0, &rcTab);
    CHECK(rcTab.top >= rcDisplay.bottom);

    for (CTestPage* pPage : {pages.pAlpha, pages.pBeta, pages.pGamma})
    {
        CHECK((pPage->GetStyle() & WS_CAPTION) == 0);
        CHECK(GetParent(pPage->m_hWnd) == tab.m_hWnd);
        const CRect rcPage = RectInParent(pPage->m_hWnd);
        if (rcPage != rcDisplay)
            printf("  page %s at %s, display area %s\n", pPage->m_strName.c_str(), Show(rcPage).c_str(),
                   Show(rcDisplay).c_str());
        CHECK(rcPage == rcDisplay);
    }

    // Only the first page is shown, and its tab is the selected one.
    CHECK_EQ(tab.GetCurSel(), 0);
    CHECK(pages.pAlpha->IsWindowVisible());
    CHECK(!pages.pBeta->IsWindowVisible());
    CHECK(!pages.pGamma->IsWindowVisible());
    host.DestroyWindow();
}

TEST_CASE(resizing_the_control_fits_every_page_to_the_new_display_area)
{
    struct Case
    {
        bool bResizePages;
    };
    for (const Case c : {Case{true}, Case{false}})
    {
        CTabHost host;
        Pages pages = MakeHost(host, [&](CTabbedPageEx& tab) { tab.m_bResizePages = c.bResizePages; });
        REQUIRE(pages.pGamma && pages.pGamma->m_hWnd);
        CTabbedPageEx& tab = host.m_tab;
        const CRect rcBefore = DisplayArea(tab);

        tab.MoveWindow(4, 4, 250, 180);
        kit::PumpFor(30);
        const CRect rcAfter = DisplayArea(tab);
        REQUIRE(rcAfter != rcBefore);
        for (CTestPage* pPage : {pages.pAlpha, pages.pBeta, pages.pGamma})
        {
            // Visible or hidden, each page covers exactly the display area,
            // or keeps its old place when the control does not resize pages.
            const CRect rcPage = RectInParent(pPage->m_hWnd);
            if (c.bResizePages)
                CHECK(rcPage == rcAfter);
            else
                CHECK(rcPage == rcBefore);
        }
        host.DestroyWindow();
    }
}

TEST_CASE(update_data_on_the_control_reaches_every_page_and_stops_at_the_first_failure)
{
    CTabHost host;
    Pages pages = MakeHost(host);
    REQUIRE(pages.pGamma && pages.pGamma->m_hWnd);
    CTabbedPageEx& tab = host.m_tab;
    tab.SetCurSel(2);

    pages.pBeta->m_strText = "refreshed";
    g_exchanges.clear();
    CHECK(tab.UpdateData(FALSE));
    const std::vector<std::string> loads = {"Alpha load", "Beta load", "Gamma load"};
    CHECK(g_exchanges == loads);
    char szText[32] = {};
    GetDlgItemTextA(pages.pBeta->m_hWnd, IDC_TEXT, szText, sizeof(szText));
    CHECK_EQ(std::string(szText), std::string("refreshed"));
    CHECK_EQ(tab.GetCurSel(), 2); // the selection is put back

    pages.pBeta->m_bRefuse = TRUE;
    g_exchanges.clear();
    CHECK(!tab.UpdateData(TRUE));
    const std::vector<std::string> saves = {"Alpha save", "Beta save"};
    CHECK(g_exchanges == saves);
    CHECK_EQ(tab.GetCurSel(), 1); // the failing page's tab stays selected
    host.DestroyWindow();
}

TEST_CASE(pages_go_with_the_control_and_a_vanished_page_is_skipped)
{
    CTabHost host;
    Pages pages = MakeHost(host);
    REQUIRE(pages.pGamma && pages.pGamma->m_hWnd);
    CTabbedPageEx& tab = host.m_tab;

    // A page whose window was destroyed behind the control's back is gone:
    // the control no longer hands it out or touches it.
    ::DestroyWindow(pages.pBeta->m_hWnd);
    CHECK(tab.GetPage(1) == nullptr);
    g_exchanges.clear();
    CHECK(tab.UpdateData(FALSE));
    const std::vector<std::string> loads = {"Alpha load", "Gamma load"};
    CHECK(g_exchanges == loads);
    tab.MoveWindow(0, 0, 220, 160);
    kit::PumpFor(20);
    tab.SetCurSel(1);
    tab.SetCurSel(0);
    host.DestroyWindow();
    CHECK(tab.m_hWnd == nullptr);
}

namespace
{
// A control made by the program.
class CPlainTabHost : public CDialog
{
public:
    CPlainTabHost() : CDialog(IDD_PLAIN, nullptr) {}
    CTabCtrlEx m_tab;
};
} // namespace

TEST_CASE(an_image_list_gives_existing_tabs_their_images_in_order)
{
    CPlainTabHost host;
    REQUIRE(host.Create(IDD_PLAIN));
    REQUIRE(host.m_tab.Create(WS_CHILD | WS_VISIBLE, CRect(5, 5, 200, 100), &host, IDC_TAB));
    CTabCtrlEx& tab = host.m_tab;
    CImageList images;
    REQUIRE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 4, 1));
    CImageList other;
    REQUIRE(other.Create(16, 16, ILC_COLOR24 | ILC_MASK, 4, 1));

    auto imageOf = [&](int nItem) {
        TCITEMA item = {};
        item.mask = TCIF_IMAGE;
        item.iImage = -7;
        tab.GetItem(nItem, &item);
        return item.iImage;
    };

    // No tabs yet: only the list is set; later tabs keep their own image.
    CHECK(tab.SetImageList(&other, TRUE) == nullptr);
    tab.InsertItem(0, "Zero", 3);
    tab.InsertItem(1, "One", -1);
    tab.InsertItem(2, "Two", 2);
    CHECK_EQ(imageOf(0), 3);
    CHECK_EQ(imageOf(2), 2);

    // With tabs: tab i shows image i; the previous list comes back.
    CImageList* pPrevious = tab.SetImageList(&images, TRUE);
    REQUIRE(pPrevious != nullptr);
    CHECK(pPrevious->m_hImageList == other.m_hImageList);
    CHECK(pPrevious != &other); // a temporary that will not destroy the list
    CHECK_EQ(imageOf(0), 0);
    CHECK_EQ(imageOf(1), 1);
    CHECK_EQ(imageOf(2), 2);
    CImageList::DeleteTempMap();
    CHECK(ImageList_SetImageCount(other.m_hImageList, 2)); // still a list after the temporary went
    CHECK_EQ(ImageList_GetImageCount(other.m_hImageList), 2);

    // Without assigning, the tabs keep what they have.
    tab.SetImageList(&other, FALSE);
    CHECK_EQ(imageOf(0), 0);
    CHECK_EQ(imageOf(1), 1);
    host.DestroyWindow();
}
