// The dialog base of the Assist Window's pages on real windows in this
// process: a page deletes itself once, whichever way its window goes; Enter
// and Esc end a page only through its OK and Cancel buttons; a failing data
// exchange keeps it open.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CDockPage.h"
#include "InProcess.h"
#include "TestRunner.h"

#include <map>
#include <string>

namespace
{
struct Fate
{
    int nDeletes = 0;
    std::string strText; // the page's text member when it was deleted
};
std::map<int, Fate> g_fates; // by page serial

// A page as the Project page is made, with a text field; "bad" fails the
// exchange.
class CPage : public CDockPage
{
public:
    explicit CPage(UINT nIDTemplate, CWnd* pParent = nullptr, const char* pszText = "")
        : CDockPage(nIDTemplate, pParent, nullptr), m_nSerial(static_cast<int>(g_fates.size()) + 1), m_strText(pszText)
    {
        g_fates[m_nSerial];
        Create(TRUE);
    }
    ~CPage() override
    {
        g_fates[m_nSerial].nDeletes++;
        g_fates[m_nSerial].strText = static_cast<LPCSTR>(m_strText);
    }
    void OnInitPage() override
    {
        m_nInits++;
        UpdateData(FALSE); // an exchange from inside must not start it again
    }
    void OnHostMessage(const HookRecord*) override {}

    const int m_nSerial;
    int m_nInits = 0;
    CString m_strText;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDockPage::DoDataExchange(pDX);
        DDX_Text(pDX, IDC_TEXT, m_strText);
        if (pDX->m_bSaveAndValidate && m_strText == "bad")
            pDX->Fail();
    }
};
} // namespace

TEST_CASE(a_modeless_page_deletes_itself_once_whichever_way_its_window_goes)
{
    qt::TestFrame frame;
    const std::function<void(CPage*)> ways[] = {
        [](CPage* p) { ::DestroyWindow(p->m_hWnd); },
        [](CPage* p) { ::SendMessageA(p->m_hWnd, WM_CLOSE, 0, 0); },
        [](CPage* p) { p->Close(IDOK); },
        [](CPage* p) { p->Close(IDCANCEL); },
        [&](CPage*) { frame.DestroyWindow(); },
    };
    for (const auto& fnEnd : ways)
    {
        CPage* pPage = new CPage(IDD_PAGE_ALPHA, &frame);
        const HWND hWnd = pPage->m_hWnd;
        const int nSerial = pPage->m_nSerial;
        REQUIRE(hWnd != nullptr);
        fnEnd(pPage);
        CHECK(qt::PumpUntil([&] { return !IsWindow(hWnd); })); // deleted by then
        CHECK_EQ(g_fates[nSerial].nDeletes, 1);
    }
}

TEST_CASE(enter_and_escape_end_a_page_only_through_its_ok_and_cancel_buttons)
{
    const struct
    {
        UINT nTemplate;
        WORD wVk;
        bool bEnds;
    } cases[] = {{IDD_PLAIN, VK_RETURN, false}, {IDD_PLAIN, VK_ESCAPE, false},
                 {IDD_OKCANCEL, VK_RETURN, true}, {IDD_OKCANCEL, VK_ESCAPE, true}};
    for (const auto& c : cases)
    {
        CPage* pPage = new CPage(c.nTemplate);
        const HWND hWnd = pPage->m_hWnd;
        const int nSerial = pPage->m_nSerial;
        REQUIRE(hWnd && qt::MakeForeground(hWnd));
        // Without Cancel there is no Close on the system menu either.
        CHECK_EQ((GetMenuState(GetSystemMenu(hWnd, FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED) != 0, !c.bEnds);
        ::SetFocus(GetDlgItem(hWnd, IDC_TEXT));
        const bool bMarkerSeen = qt::PressKeys({c.wVk, c.wVk}); // a window that ends takes the marker along
        CHECK(c.bEnds ? qt::PumpUntil([&] { return !IsWindow(hWnd); }) : bMarkerSeen && IsWindow(hWnd));
        CHECK_EQ(g_fates[nSerial].nDeletes, c.bEnds ? 1 : 0);
        if (IsWindow(hWnd))
            ::DestroyWindow(hWnd);
    }
}

TEST_CASE(a_failing_exchange_keeps_a_page_open_ok_saves_and_cancel_saves_nothing)
{
    CPage* pPage = new CPage(IDD_OKCANCEL, nullptr, "loaded");
    const HWND hWnd = pPage->m_hWnd;
    const HWND hWndEdit = GetDlgItem(hWnd, IDC_TEXT);
    const int nSerial = pPage->m_nSerial;
    REQUIRE(hWnd && qt::MakeForeground(hWnd));
    char szLoaded[16] = {};
    GetWindowTextA(hWndEdit, szLoaded, sizeof(szLoaded));
    CHECK_EQ(std::string(szLoaded), std::string("loaded"));
    CHECK(pPage->UpdateData(TRUE) && pPage->UpdateData(FALSE));
    CHECK_EQ(pPage->m_nInits, 1); // set up once, at the creation's exchange

    SetWindowTextA(hWndEdit, "bad");
    pPage->Close(IDOK);
    CHECK(IsWindow(hWnd));
    CHECK(GetFocus() == hWndEdit); // back on the field for the user to put right
    SetWindowTextA(hWndEdit, "good");
    pPage->Close(IDOK);
    CHECK(!IsWindow(hWnd));
    CHECK_EQ(g_fates[nSerial].strText, std::string("good"));

    CPage* pCancelled = new CPage(IDD_OKCANCEL, nullptr, "kept");
    SetDlgItemTextA(pCancelled->m_hWnd, IDC_TEXT, "typed");
    pCancelled->Close(IDCANCEL);
    CHECK_EQ(g_fates[nSerial + 1].strText, std::string("kept"));
}
