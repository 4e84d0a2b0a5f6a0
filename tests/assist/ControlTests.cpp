// The reusable controls of the Assist Window and the Comment Editor on real
// windows in this process: the pages' dialog base (deleted once, whichever
// way the window goes; Enter and Esc end a page only through its OK and
// Cancel buttons; a failing data exchange keeps it open), the tab control of
// pages, the flat button under the real mouse and the image button's drawing.
// Pictures are read back from the screen or a memory DC; images come from the
// tool's own strip.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CDockPage.h"
#include "CFlatButton.h"
#include "CImages.h"
#include "CLBitmapButton.h"
#include "CTabbedPageEx.h"
#include "InProcess.h"
#include "TestRunner.h"

#include <string>

namespace
{
// A page as the Project page is made, with a text field; "bad" fails the
// exchange. Shown at once unless a tab control is to create it.
class CPage : public CDockPage
{
public:
    explicit CPage(UINT nIDTemplate, CWnd* pParent = nullptr, const char* pszText = "", bool bCreate = true)
        : CDockPage(nIDTemplate, pParent, nullptr), m_strText(pszText)
    {
        if (bCreate)
            Create(TRUE);
    }
    ~CPage() override
    {
        s_nDeletes++;
        s_strDeletedText = static_cast<LPCSTR>(m_strText);
    }
    void OnInitPage() override
    {
        m_nInits++;
        UpdateData(FALSE); // an exchange from inside must not start it again
    }
    void OnHostMessage(const HookRecord*) override {}

    static int s_nDeletes;
    static std::string s_strDeletedText; // the text member of the page deleted last
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
int CPage::s_nDeletes = 0;
std::string CPage::s_strDeletedText;

// The tab control and the flat button on one dialog, taken over as the
// Assist Window takes its own.
class CControlHost : public CDialog
{
public:
    CControlHost() : CDialog(IDD_TABHOST, nullptr) {}
    CTabbedPageEx m_tab;
    CFlatButton m_flat;
    int m_nClicks = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_TAB, m_tab);
        DDX_Control(pDX, IDC_FLAT, m_flat);
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        m_nClicks += wParam == MAKEWPARAM(IDC_FLAT, BN_CLICKED);
        return CDialog::OnCommand(wParam, lParam);
    }
};

std::string TabText(CTabCtrl& tab, int nItem)
{
    char sz[64] = {};
    TCITEMA item = {TCIF_TEXT, 0, 0, sz, sizeof(sz), 0, 0};
    tab.GetItem(nItem, &item);
    return sz;
}

// Whether the strip's image n, drawn on the face colour, lies at (x, y).
bool ImageAt(const Canvas& canvas, int nImage, int x, int y)
{
    CImages images;
    Canvas expected(16, 16, GetSysColor(COLOR_3DFACE));
    ImageList_Draw(images, nImage, expected.Dc(), 0, 0, ILD_TRANSPARENT);
    for (int j = 0; j < 16; ++j)
        for (int i = 0; i < 16; ++i)
            if (canvas.Pixel(x + i, y + j) != expected.Pixel(i, j))
                return false;
    return true;
}

// The leftmost column and the topmost row of anything but the button's face
// in a rectangle, or -1.
POINT FirstInk(const Canvas& canvas, int xFrom, int xTo, int yFrom, int yTo)
{
    POINT pt = {-1, -1};
    for (int y = yFrom; y < yTo; ++y)
        for (int x = xFrom; x < xTo; ++x)
            if (canvas.Pixel(x, y) != GetSysColor(COLOR_3DFACE))
                pt = {pt.x < 0 || x < pt.x ? x : pt.x, pt.y < 0 ? y : pt.y};
    return pt;
}
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
        CPage* pPage = new CPage(IDD_PAGE, &frame);
        const HWND hWnd = pPage->m_hWnd;
        const int nDeletes = CPage::s_nDeletes;
        fnEnd(pPage);
        CHECK(qt::PumpUntil([&] { return !IsWindow(hWnd); })); // deleted by then
        CHECK_EQ(CPage::s_nDeletes - nDeletes, 1);
    }
}

TEST_CASE(enter_and_escape_end_a_page_only_through_its_ok_and_cancel_buttons)
{
    const struct { UINT nTemplate; WORD wVk; bool bEnds; } cases[] = {
        {IDD_PLAIN, VK_RETURN, false}, {IDD_PLAIN, VK_ESCAPE, false}, {IDD_OKCANCEL, VK_RETURN, true}, {IDD_OKCANCEL, VK_ESCAPE, true}};
    for (const auto& c : cases)
    {
        CPage* pPage = new CPage(c.nTemplate);
        const HWND hWnd = pPage->m_hWnd;
        const int nDeletes = CPage::s_nDeletes;
        REQUIRE(hWnd && qt::MakeForeground(hWnd));
        // Without Cancel there is no Close on the system menu either.
        CHECK_EQ((GetMenuState(GetSystemMenu(hWnd, FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED) != 0, !c.bEnds);
        ::SetFocus(GetDlgItem(hWnd, IDC_TEXT));
        const bool bMarkerSeen = qt::PressKeys({c.wVk, c.wVk}); // a window that ends takes the marker along
        CHECK(c.bEnds ? qt::PumpUntil([&] { return !IsWindow(hWnd); }) : bMarkerSeen && IsWindow(hWnd));
        CHECK_EQ(CPage::s_nDeletes - nDeletes, c.bEnds ? 1 : 0);
        if (IsWindow(hWnd))
            ::DestroyWindow(hWnd);
    }
}

TEST_CASE(a_failing_exchange_keeps_a_page_open_ok_saves_and_cancel_saves_nothing)
{
    CPage* pPage = new CPage(IDD_OKCANCEL, nullptr, "loaded");
    const HWND hWnd = pPage->m_hWnd;
    const HWND hWndEdit = GetDlgItem(hWnd, IDC_TEXT);
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
    CHECK_EQ(CPage::s_strDeletedText, std::string("good"));

    CPage* pCancelled = new CPage(IDD_OKCANCEL, nullptr, "kept");
    SetDlgItemTextA(pCancelled->m_hWnd, IDC_TEXT, "typed");
    pCancelled->Close(IDCANCEL);
    CHECK_EQ(CPage::s_strDeletedText, std::string("kept"));
}

TEST_CASE(tabs_at_the_bottom_name_the_pages_that_fill_the_display_area_and_the_exchange_stops_on_the_failing_page)
{
    CControlHost host;
    CTabbedPageEx& tab = host.m_tab;
    tab.m_bTabsAtBottom = TRUE;
    tab.m_bResizePages = true;
    REQUIRE(host.Create(IDD_TABHOST));
    host.ShowWindow(SW_SHOW);
    CPage* pages[] = {new CPage(IDD_PAGE, &tab, "", false), new CPage(IDD_PAGE, &tab, "", false)};
    for (CPage* pPage : pages)
        tab.AddPage(pPage, -1);
    CHECK_EQ(TabText(tab, 0) + "," + TabText(tab, 1), std::string("Page,Page"));
    CHECK(pages[0]->IsWindowVisible() && !pages[1]->IsWindowVisible());

    tab.MoveWindow(4, 4, 254, 184);
    CRect rcDisplay, rcTab;
    tab.GetClientRect(&rcDisplay);
    tab.AdjustRect(FALSE, &rcDisplay);
    tab.GetItemRect(0, &rcTab);
    CHECK(rcTab.top >= rcDisplay.bottom);
    for (CPage* pPage : pages)
    {
        CRect rcPage;
        pPage->GetWindowRect(&rcPage);
        MapWindowPoints(nullptr, tab.m_hWnd, reinterpret_cast<LPPOINT>(&rcPage), 2);
        CHECK(rcPage == rcDisplay && (pPage->GetStyle() & WS_CAPTION) == 0); // hidden or not
    }

    SetDlgItemTextA(pages[1]->m_hWnd, IDC_TEXT, "bad");
    CHECK(!tab.UpdateData(TRUE) && tab.GetCurSel() == 1);
    ::DestroyWindow(pages[1]->m_hWnd); // the page deleted itself
    CHECK(tab.GetPage(1) == nullptr && tab.UpdateData(TRUE));
    host.DestroyWindow();
    CHECK(tab.m_hWnd == nullptr);
}

TEST_CASE(the_flat_button_is_flat_at_rest_raised_under_the_pointer_sunken_while_pressed_and_flat_once_it_leaves)
{
    CControlHost host;
    REQUIRE(host.Create(IDD_TABHOST));
    host.SetWindowPos(nullptr, 100, 100, 300, 200, SWP_NOZORDER);
    host.m_tab.ShowWindow(SW_HIDE);
    host.m_flat.MoveWindow(160, 40, 40, 30);
    CImages images;
    REQUIRE(host.m_flat.SetImage(&images, 3));
    host.ShowWindow(SW_SHOW);
    REQUIRE(qt::MakeForeground(host.m_hWnd));
    const HWND hWnd = host.m_flat.m_hWnd;
    const COLORREF clrFace = GetSysColor(COLOR_BTNFACE);
    const COLORREF clrLight = GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF clrShadow = GetSysColor(COLOR_BTNSHADOW);
    // Waits until the button shows these corners (CLR_INVALID: not sunken)
    // and its image centred, moved by nShift.
    auto looks = [&](COLORREF clrTopLeft, COLORREF clrBottomRight, int nShift) {
        return qt::PumpUntil([&] {
            const ScreenShot shot(hWnd, ScreenShot::CLIENT_AREA);
            const COLORREF clrCorner = shot.Pixel(0, 0);
            return (clrTopLeft == CLR_INVALID ? clrCorner != clrShadow : clrCorner == clrTopLeft) &&
                   (clrBottomRight == CLR_INVALID || shot.Pixel(39, 29) == clrBottomRight) &&
                   ImageAt(shot, 3, 12 + nShift, 7 + nShift);
        });
    };

    // At rest; under the pointer, and after it left onto the dialog, which
    // sends the button no hit tests.
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150));
    CHECK(looks(clrFace, clrFace, 0));
    REQUIRE(qt::MouseTo(hWnd, 20, 15));
    CHECK(looks(clrLight, clrShadow, 0));
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150));
    CHECK(looks(clrFace, clrFace, 0));

    // A press that started elsewhere neither lights it up nor clicks it.
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150) && qt::LeftButton(true));
    REQUIRE(qt::MouseTo(hWnd, 20, 15) && qt::PressKeys({}));
    CHECK_EQ(ScreenShot(hWnd, ScreenShot::CLIENT_AREA).Pixel(0, 0), clrFace);
    REQUIRE(qt::MouseTo(host.m_hWnd, 100, 150) && qt::LeftButton(false) && qt::PressKeys({}));
    CHECK_EQ(host.m_nClicks, 0);

    REQUIRE(qt::MouseTo(hWnd, 20, 15));
    REQUIRE(qt::LeftButton(true));
    CHECK(looks(clrShadow, clrLight, 1));
    REQUIRE(qt::LeftButton(false));
    CHECK(qt::PumpUntil([&] { return host.m_nClicks == 1; }));
    CHECK(looks(CLR_INVALID, CLR_INVALID, 0));
    host.DestroyWindow();
}

// Drawn through its own DrawItem into a memory DC with each state the system
// passes: the image keeps equal margins with the text close after it, pressed
// moves both a pixel, and the frame's rings and the focus rectangle show
// focus and press.
TEST_CASE(the_image_button_keeps_its_image_margins_and_its_frame_shows_focus_and_press)
{
    const int kWidth = 70, kHeight = 30, m = (kHeight - 16) / 2;
    const HWND hWndParent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    const COLORREF clrLight = GetSysColor(COLOR_3DHILIGHT), clrFace = GetSysColor(COLOR_3DFACE);
    const COLORREF clrShadow = GetSysColor(COLOR_3DSHADOW), clrDark = GetSysColor(COLOR_3DDKSHADOW);
    const struct
    {
        const char* pszText;
        UINT nState;
        int nShift;
        COLORREF clrRings[2][2]; // the outer ring and the next: top-left, bottom-right
        bool bFocusRect;
    } cases[] = {
        {" Paste", 0, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        {"", 0, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        // The keyboard-cue bits alone do not mark a button.
        {" Paste", ODS_NOACCEL | ODS_NOFOCUSRECT, 0, {{clrLight, clrDark}, {clrFace, clrShadow}}, false},
        {" Paste", ODS_FOCUS, 0, {{clrDark, clrDark}, {clrLight, clrDark}}, true},
        {" Paste", ODS_FOCUS | ODS_SELECTED, 1, {{clrDark, clrDark}, {clrShadow, clrShadow}}, true},
    };
    POINT ptTextAtRest = {-1, -1};
    for (const auto& c : cases)
    {
        CLBitmapButton button;
        CImages images;
        REQUIRE(button.Create(c.pszText, WS_CHILD | BS_LEFT, CRect(0, 0, kWidth, kHeight), CWnd::FromHandle(hWndParent), 1));
        REQUIRE(button.SetImage(&images, 1));
        Canvas canvas(kWidth, kHeight, RGB(0x12, 0x9A, 0x56));
        DRAWITEMSTRUCT dis = {ODT_BUTTON, 1, 0, ODA_DRAWENTIRE, c.nState, button.m_hWnd, canvas.Dc(), {0, 0, kWidth, kHeight}, 0};
        button.DrawItem(&dis);

        // With text the image keeps the margin at the left it has at the top.
        const int xImage = *c.pszText ? m : (kWidth - 16) / 2;
        CHECK(ImageAt(canvas, 1, xImage + c.nShift, m + c.nShift));
        const POINT ptText = FirstInk(canvas, xImage + 16 + c.nShift, kWidth - 6, 5, kHeight - 5);
        ptTextAtRest = ptTextAtRest.x < 0 ? ptText : ptTextAtRest;
        CHECK(!*c.pszText || (ptText.x > xImage + 16 && ptText.x <= xImage + 24 + c.nShift));
        CHECK(!*c.pszText || (ptText.x - ptTextAtRest.x == c.nShift && ptText.y - ptTextAtRest.y == c.nShift));
        for (int n = 0; n < 2; n++)
        {
            CHECK(canvas.Pixel(kWidth / 2, n) == c.clrRings[n][0] && canvas.Pixel(n, kHeight / 2) == c.clrRings[n][0]);
            CHECK(canvas.Pixel(kWidth / 2, kHeight - 1 - n) == c.clrRings[n][1] &&
                  canvas.Pixel(kWidth - 1 - n, kHeight / 2) == c.clrRings[n][1]);
        }
        // The dotted focus rectangle runs down column 4, where nothing else is.
        CHECK_EQ(FirstInk(canvas, 4, 5, 4, kHeight - 4).x == 4, c.bFocusRect);
    }
    DestroyWindow(hWndParent);
}
