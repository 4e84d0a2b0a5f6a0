// The framework's dialogs and the modeless dialog base of the Assist Window,
// on real windows in this process: who deletes a page and when, what Enter
// and Esc do, data exchange (modal and modeless), and how commands are
// updated and routed.
#include "AssistTestIds.h"
#include "CDataExchange.h"
#include "CDockPage.h"
#include "CFrameWnd.h"
#include "CModelessDialogEx.h"
#include "TestRunner.h"
#include "WindowTestKit.h"

#include <map>
#include <string>

namespace
{
// Every page object, by serial number: constructions and destructions.
struct Census
{
    int nConstructed = 0;
    std::map<int, int> destroyed; // serial -> number of destructor runs
    int nDestroyed() const
    {
        int n = 0;
        for (const auto& entry : destroyed)
            n += entry.second;
        return n;
    }
};
Census g_census;

class CCountedPage : public CModelessDialogEx
{
public:
    CCountedPage(UINT nIDTemplate, CWnd* pParent) : CModelessDialogEx(nIDTemplate, pParent)
    {
        m_nSerial = ++g_census.nConstructed;
    }
    ~CCountedPage() override { g_census.destroyed[m_nSerial]++; }

    BOOL OnReturnKey() override
    {
        m_nReturnKeys++;
        return CModelessDialogEx::OnReturnKey();
    }
    BOOL OnEscapeKey() override
    {
        m_nEscapeKeys++;
        return CModelessDialogEx::OnEscapeKey();
    }

    int m_nSerial = 0;
    int m_nReturnKeys = 0;
    int m_nEscapeKeys = 0;
};

// A top-level window to be the parent of pages.
class CParentFrame : public CFrameWnd
{
public:
    BOOL Make()
    {
        return CreateEx(0, nullptr, "Parent", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 400, 300, nullptr, nullptr);
    }

protected:
    void PostNcDestroy() override {} // on the stack in these tests
};

HWND FindTopLevel(const char* pszTitle)
{
    return FindWindowA(nullptr, pszTitle);
}
} // namespace

TEST_CASE(a_modeless_page_deletes_itself_once_whichever_way_its_window_goes)
{
    g_census = Census();
    CParentFrame parent;
    REQUIRE(parent.Make());

    // Each way a page's window can go; the page must be deleted by itself,
    // exactly once, and only after its window is gone.
    CCountedPage* pByParent = new CCountedPage(IDD_PAGE_ALPHA, &parent);
    pByParent->Create(TRUE);
    CCountedPage* pByDestroy = new CCountedPage(IDD_PAGE_BETA, &parent);
    pByDestroy->Create(FALSE);
    CCountedPage* pByClose = new CCountedPage(IDD_PAGE_GAMMA, &parent);
    pByClose->Create(FALSE);
    CCountedPage* pByCloseOk = new CCountedPage(IDD_PAGE_ALPHA, &parent);
    pByCloseOk->Create(FALSE);
    CCountedPage* pByCloseCancel = new CCountedPage(IDD_PAGE_ALPHA, &parent);
    pByCloseCancel->Create(FALSE);
    REQUIRE(g_census.nConstructed == 5);
    HWND hWndByParent = pByParent->m_hWnd;
    HWND hWndByDestroy = pByDestroy->m_hWnd;
    HWND hWndByClose = pByClose->m_hWnd;
    HWND hWndByCloseOk = pByCloseOk->m_hWnd;
    HWND hWndByCloseCancel = pByCloseCancel->m_hWnd;
    REQUIRE(IsWindow(hWndByParent) && IsWindow(hWndByDestroy) && IsWindow(hWndByClose));
    CHECK(IsWindowVisible(hWndByParent));
    CHECK(!IsWindowVisible(hWndByDestroy));

    ::DestroyWindow(hWndByDestroy);
    CHECK(!IsWindow(hWndByDestroy));
    CHECK_EQ(g_census.destroyed[2], 1);

    // WM_CLOSE, as the window manager or the user sends it.
    ::SendMessageA(hWndByClose, WM_CLOSE, 0, 0);
    kit::PumpFor(50);
    CHECK(!IsWindow(hWndByClose));
    CHECK_EQ(g_census.destroyed[3], 1);

    pByCloseOk->Close(IDOK);
    CHECK(!IsWindow(hWndByCloseOk));
    CHECK_EQ(g_census.destroyed[4], 1);

    pByCloseCancel->Close(IDCANCEL);
    CHECK(!IsWindow(hWndByCloseCancel));
    CHECK_EQ(g_census.destroyed[5], 1);

    CHECK_EQ(g_census.destroyed[1], 0);
    parent.DestroyWindow();
    CHECK(!IsWindow(hWndByParent));
    CHECK_EQ(g_census.destroyed[1], 1);

    kit::PumpFor(50);
    CHECK_EQ(g_census.nDestroyed(), 5);
    for (const auto& entry : g_census.destroyed)
        CHECK_EQ(entry.second, 1);
}

TEST_CASE(a_page_that_is_not_modeless_or_not_auto_deleting_is_left_to_its_owner)
{
    g_census = Census();
    CParentFrame parent;
    REQUIRE(parent.Make());

    // Never made modeless: Close does nothing at all.
    CCountedPage* pNever = new CCountedPage(IDD_PAGE_ALPHA, &parent);
    pNever->Close(IDOK);
    pNever->Close(IDCANCEL);
    CHECK_EQ(g_census.nDestroyed(), 0);
    CHECK(pNever->m_hWnd == nullptr);
    delete pNever;
    CHECK_EQ(g_census.destroyed[1], 1);

    // Modeless without auto-delete: the window goes, the object stays.
    CCountedPage* pKept = new CCountedPage(IDD_PAGE_ALPHA, &parent);
    pKept->m_bAutoDelete = FALSE;
    pKept->Create(FALSE);
    REQUIRE(pKept->m_hWnd != nullptr);
    pKept->Close(IDCANCEL);
    CHECK(pKept->m_hWnd == nullptr);
    CHECK_EQ(g_census.destroyed[2], 0);
    delete pKept;
    CHECK_EQ(g_census.destroyed[2], 1);

    // A template that does not exist: no window, no report, and the object
    // is never deleted by the framework.
    CCountedPage* pMissing = new CCountedPage(9999, &parent);
    pMissing->Create(TRUE);
    CHECK(pMissing->m_hWnd == nullptr);
    CHECK(pMissing->m_bModeless);
    parent.DestroyWindow();
    CHECK_EQ(g_census.destroyed[3], 0);
    delete pMissing;
    CHECK_EQ(g_census.destroyed[3], 1);
}

TEST_CASE(enter_and_escape_neither_close_nor_destroy_a_page_without_ok_or_cancel)
{
    g_census = Census();
    CCountedPage* pPage = new CCountedPage(IDD_PLAIN, nullptr);
    pPage->Create(TRUE);
    HWND hWnd = pPage->m_hWnd;
    REQUIRE(hWnd != nullptr);
    CHECK(pPage->m_bHookReturn);
    CHECK(pPage->m_bHookEscape);
    // No Cancel button: the system menu's Close is grayed.
    HMENU hSysMenu = GetSystemMenu(hWnd, FALSE);
    REQUIRE(hSysMenu != nullptr);
    CHECK((GetMenuState(hSysMenu, SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED) != 0);

    REQUIRE(kit::MakeForeground(hWnd));
    SetFocus(GetDlgItem(hWnd, IDC_TEXT));
    kit::PressKey(VK_RETURN);
    kit::PressKey(VK_ESCAPE);
    kit::PressKey(VK_RETURN);
    kit::PumpFor(100);

    CHECK(IsWindow(hWnd));
    CHECK(IsWindowVisible(hWnd));
    CHECK_EQ(g_census.nDestroyed(), 0);
    CHECK_EQ(pPage->m_nReturnKeys, 2);
    CHECK_EQ(pPage->m_nEscapeKeys, 1);

    ::DestroyWindow(hWnd);
    CHECK_EQ(g_census.nDestroyed(), 1);
}

TEST_CASE(with_ok_and_cancel_buttons_enter_and_escape_reach_the_dialog_manager)
{
    struct Case
    {
        WORD wVk;
        const char* pszName;
    };
    const Case cases[] = {{VK_RETURN, "Enter"}, {VK_ESCAPE, "Esc"}};
    for (const Case& c : cases)
    {
        g_census = Census();
        CCountedPage* pPage = new CCountedPage(IDD_OKCANCEL, nullptr);
        pPage->Create(TRUE);
        HWND hWnd = pPage->m_hWnd;
        REQUIRE(hWnd != nullptr);
        CHECK(!pPage->m_bHookReturn);
        CHECK(!pPage->m_bHookEscape);
        HMENU hSysMenu = GetSystemMenu(hWnd, FALSE);
        REQUIRE(hSysMenu != nullptr);
        CHECK((GetMenuState(hSysMenu, SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED) == 0);

        REQUIRE(kit::MakeForeground(hWnd));
        SetFocus(GetDlgItem(hWnd, IDC_TEXT));
        kit::PressKey(c.wVk);
        // The default button (Enter) or Cancel (Esc) ended the modeless
        // dialog, and it deleted itself without hearing of the key.
        const bool bGone = kit::PumpUntil([&] { return !IsWindow(hWnd); }, 2000);
        if (!bGone)
        {
            printf("  %s did not end the dialog\n", c.pszName);
            ::DestroyWindow(hWnd);
        }
        CHECK(bGone);
        CHECK_EQ(g_census.nDestroyed(), 1);
    }
}

namespace
{
// A modeless dialog with a validated text field.
class CValidatedPage : public CModelessDialogEx
{
public:
    CValidatedPage() : CModelessDialogEx(IDD_OKCANCEL, nullptr) {}
    ~CValidatedPage() override { s_strSavedAtEnd = m_strText; }

    CString m_strText;
    static CString s_strSavedAtEnd;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CModelessDialogEx::DoDataExchange(pDX);
        DDX_Text(pDX, IDC_TEXT, m_strText);
        if (pDX->m_bSaveAndValidate && m_strText == "bad")
            pDX->Fail();
    }
};
CString CValidatedPage::s_strSavedAtEnd;
} // namespace

TEST_CASE(close_with_ok_saves_the_data_and_a_failing_exchange_keeps_the_window)
{
    CValidatedPage::s_strSavedAtEnd = "";
    CValidatedPage* pPage = new CValidatedPage;
    pPage->m_strText = "loaded";
    pPage->Create(TRUE);
    HWND hWnd = pPage->m_hWnd;
    REQUIRE(hWnd != nullptr);
    HWND hWndEdit = GetDlgItem(hWnd, IDC_TEXT);
    char szText[64] = {};
    GetWindowTextA(hWndEdit, szText, sizeof(szText));
    CHECK_EQ(std::string(szText), std::string("loaded")); // OnInitDialog loaded the controls

    REQUIRE(kit::MakeForeground(hWnd));
    SetFocus(GetDlgItem(hWnd, IDOK));
    SetWindowTextA(hWndEdit, "bad");
    pPage->Close(IDOK);
    CHECK(IsWindow(hWnd));
    // The failed exchange put the focus back on the field, text selected.
    CHECK(GetFocus() == hWndEdit);
    DWORD dwStart = 0;
    DWORD dwEnd = 0;
    SendMessageA(hWndEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&dwStart), reinterpret_cast<LPARAM>(&dwEnd));
    CHECK_EQ(dwStart, 0ul);
    CHECK_EQ(dwEnd, 3ul);

    SetWindowTextA(hWndEdit, "good");
    pPage->Close(IDOK);
    CHECK(!IsWindow(hWnd));
    CHECK_EQ(std::string(CValidatedPage::s_strSavedAtEnd), std::string("good"));

    // Close with anything else destroys without an exchange.
    CValidatedPage* pCancelled = new CValidatedPage;
    pCancelled->m_strText = "kept";
    pCancelled->Create(FALSE);
    HWND hWndCancelled = pCancelled->m_hWnd;
    SetWindowTextA(GetDlgItem(hWndCancelled, IDC_TEXT), "typed");
    pCancelled->Close(IDCANCEL);
    CHECK(!IsWindow(hWndCancelled));
    CHECK_EQ(std::string(CValidatedPage::s_strSavedAtEnd), std::string("kept"));
}

namespace
{
class CCountingDockPage : public CDockPage
{
public:
    CCountingDockPage(CWnd* pParent, HWND hWndHost) : CDockPage(IDD_PAGE_ALPHA, pParent, hWndHost) {}

    void OnInitPage() override
    {
        m_nInitPages++;
        m_bWindowAtInit = m_hWnd != nullptr;
        m_bVisibleAtInit = m_hWnd && IsWindowVisible();
        // An exchange from inside the initialisation must not start it again.
        UpdateData(FALSE);
    }
    void OnHostMessage(const HookRecord* /*pRecord*/) override { m_nHostMessages++; }

    int m_nInitPages = 0;
    int m_nHostMessages = 0;
    bool m_bWindowAtInit = false;
    bool m_bVisibleAtInit = true;
};
} // namespace

TEST_CASE(a_dock_page_initialises_once_at_its_first_exchange_in_either_direction)
{
    CParentFrame parent;
    REQUIRE(parent.Make());
    HWND hWndHost = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x1234));

    // The usual way: the exchange of OnInitDialog, while the window is being
    // created and before it is shown.
    CCountingDockPage* pPage = new CCountingDockPage(&parent, hWndHost);
    CHECK(pPage->m_hWndHost == hWndHost);
    CHECK(!pPage->m_bInitialized);
    pPage->Create(FALSE);
    REQUIRE(pPage->m_hWnd != nullptr);
    CHECK_EQ(pPage->m_nInitPages, 1);
    CHECK(pPage->m_bWindowAtInit);
    CHECK(!pPage->m_bVisibleAtInit);
    CHECK(pPage->UpdateData(TRUE));
    CHECK(pPage->UpdateData(FALSE));
    CHECK_EQ(pPage->m_nInitPages, 1);

    // A first exchange that saves still initialises once.
    CCountingDockPage* pSavedFirst = new CCountingDockPage(&parent, hWndHost);
    pSavedFirst->UpdateData(TRUE);
    CHECK_EQ(pSavedFirst->m_nInitPages, 1);
    pSavedFirst->Create(FALSE);
    CHECK_EQ(pSavedFirst->m_nInitPages, 1);

    parent.DestroyWindow(); // both pages delete themselves
}

namespace
{
class CModalDlg : public CDialog
{
public:
    explicit CModalDlg(CWnd* pParent) : CDialog(IDD_MODAL, pParent) {}

    CString m_strText;
    int m_nFailures = 0; // validation fails this many more times
    int m_nTextChanges = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CDialog::DoDataExchange(pDX);
        DDX_Text(pDX, IDC_TEXT, m_strText);
        if (pDX->m_bSaveAndValidate && m_nFailures > 0)
        {
            m_nFailures--;
            pDX->Fail();
        }
    }
    void OnTextChange() { m_nTextChanges++; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CModalDlg, CDialog)
    ON_EN_CHANGE(IDC_TEXT, OnTextChange)
END_MESSAGE_MAP()

// What a timer sees and does while DoModal runs.
struct ModalScript
{
    std::function<void(HWND hWndDlg)> fnAct;
    HWND hWndSeen = nullptr;
    bool bParentDisabled = false;
    std::string strTextSeen;
};
ModalScript* g_pScript = nullptr;

void CALLBACK ModalTimer(HWND, UINT, UINT_PTR nId, DWORD)
{
    HWND hWndDlg = FindTopLevel("Modal");
    if (!hWndDlg || !IsWindowVisible(hWndDlg) || !g_pScript)
        return;
    KillTimer(nullptr, nId);
    g_pScript->hWndSeen = hWndDlg;
    g_pScript->bParentDisabled = !IsWindowEnabled(GetWindow(hWndDlg, GW_OWNER));
    char szText[64] = {};
    GetDlgItemTextA(hWndDlg, IDC_TEXT, szText, sizeof(szText));
    g_pScript->strTextSeen = szText;
    g_pScript->fnAct(hWndDlg);
}

INT_PTR RunModal(CModalDlg& dlg, ModalScript& script)
{
    g_pScript = &script;
    SetTimer(nullptr, 0, 50, ModalTimer);
    const INT_PTR nResult = dlg.DoModal();
    g_pScript = nullptr;
    return nResult;
}
} // namespace

TEST_CASE(a_modal_dialog_loads_and_saves_its_controls_and_ends_with_ok)
{
    CParentFrame parent;
    REQUIRE(parent.Make());
    CModalDlg dlg(&parent);
    dlg.m_strText = "before";
    ModalScript script;
    script.fnAct = [](HWND hWndDlg) {
        // Typed text, then Enter.
        SetDlgItemTextA(hWndDlg, IDC_TEXT, "after");
        kit::MakeForeground(hWndDlg);
        SetFocus(GetDlgItem(hWndDlg, IDC_TEXT));
        kit::PressKey(VK_RETURN);
    };
    const INT_PTR nResult = RunModal(dlg, script);
    CHECK_EQ(static_cast<int>(nResult), IDOK);
    CHECK(script.hWndSeen != nullptr);
    CHECK(script.bParentDisabled);
    CHECK_EQ(script.strTextSeen, std::string("before"));
    CHECK_EQ(std::string(dlg.m_strText), std::string("after"));
    // Loading the field was no change of the user's; typing was.
    CHECK_EQ(dlg.m_nTextChanges, 1);
    CHECK(!IsWindow(script.hWndSeen));
    CHECK(dlg.m_hWnd == nullptr);
    CHECK(IsWindowEnabled(parent.m_hWnd));
}

TEST_CASE(a_failing_exchange_keeps_a_modal_dialog_open_and_cancel_saves_nothing)
{
    CParentFrame parent;
    REQUIRE(parent.Make());

    // OK twice: the first exchange fails and the dialog stays.
    CModalDlg dlg(&parent);
    dlg.m_strText = "x";
    dlg.m_nFailures = 1;
    int nStillOpen = -1;
    ModalScript script;
    script.fnAct = [&](HWND hWndDlg) {
        SetDlgItemTextA(hWndDlg, IDC_TEXT, "first");
        SendMessageA(GetDlgItem(hWndDlg, IDOK), BM_CLICK, 0, 0);
        nStillOpen = IsWindowVisible(hWndDlg) ? 1 : 0;
        SetDlgItemTextA(hWndDlg, IDC_TEXT, "second");
        SendMessageA(GetDlgItem(hWndDlg, IDOK), BM_CLICK, 0, 0);
    };
    CHECK_EQ(static_cast<int>(RunModal(dlg, script)), IDOK);
    CHECK_EQ(nStillOpen, 1);
    CHECK_EQ(std::string(dlg.m_strText), std::string("second"));

    // Esc: IDCANCEL, and the members keep what they had.
    CModalDlg dlgCancel(&parent);
    dlgCancel.m_strText = "untouched";
    ModalScript scriptCancel;
    scriptCancel.fnAct = [](HWND hWndDlg) {
        SetDlgItemTextA(hWndDlg, IDC_TEXT, "typed");
        kit::MakeForeground(hWndDlg);
        SetFocus(GetDlgItem(hWndDlg, IDC_TEXT));
        kit::PressKey(VK_ESCAPE);
    };
    CHECK_EQ(static_cast<int>(RunModal(dlgCancel, scriptCancel)), IDCANCEL);
    CHECK_EQ(std::string(dlgCancel.m_strText), std::string("untouched"));
    CHECK(IsWindowEnabled(parent.m_hWnd));

    // A template that does not exist: -1 at once, parent left enabled.
    CDialog missing(9999, &parent);
    CHECK_EQ(static_cast<int>(missing.DoModal()), -1);
    CHECK(IsWindowEnabled(parent.m_hWnd));

    // A parent that was disabled already stays disabled.
    parent.EnableWindow(FALSE);
    CModalDlg dlgDisabled(&parent);
    ModalScript scriptDisabled;
    scriptDisabled.fnAct = [](HWND hWndDlg) { SendMessageA(GetDlgItem(hWndDlg, IDOK), BM_CLICK, 0, 0); };
    CHECK_EQ(static_cast<int>(RunModal(dlgDisabled, scriptDisabled)), IDOK);
    CHECK(!IsWindowEnabled(parent.m_hWnd));
}

namespace
{
// A command target that is offered every command first, as the Project
// page is by the main frame.
class CCommandPage : public CCmdTarget
{
public:
    int m_nRuns[8] = {};
    BOOL m_bEnable100 = FALSE;

protected:
    void OnCommand100() { m_nRuns[0]++; }
    void OnCommand101() { m_nRuns[1]++; }
    void OnRange(UINT nID) { m_nRuns[nID - 200 + 4]++; }
    void OnUpdate100(CCmdUI* pCmdUI) { pCmdUI->Enable(m_bEnable100); }
    void OnUpdate103(CCmdUI* pCmdUI)
    {
        pCmdUI->SetCheck(1);
        pCmdUI->SetText("Renamed");
    }
    void OnUpdateRange(CCmdUI* pCmdUI) { pCmdUI->Enable(pCmdUI->m_nID != 201); }
    void OnUpdatePassOn(CCmdUI* pCmdUI) { pCmdUI->ContinueRouting(); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CCommandPage, CCmdTarget)
    ON_COMMAND(100, OnCommand100)
    ON_UPDATE_COMMAND_UI(100, OnUpdate100)
    ON_COMMAND(101, OnCommand101)
    ON_UPDATE_COMMAND_UI(103, OnUpdate103)
    ON_COMMAND_RANGE(200, 202, OnRange)
    ON_UPDATE_COMMAND_UI_RANGE(200, 202, OnUpdateRange)
    ON_UPDATE_COMMAND_UI(104, OnUpdatePassOn)
END_MESSAGE_MAP()

class CRoutingFrame : public CParentFrame
{
public:
    CCommandPage* m_pPage = nullptr;
    int m_nFrameUpdates104 = 0;

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override
    {
        if (m_pPage && m_pPage->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
            return TRUE;
        return CParentFrame::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
    }

protected:
    void OnUpdate104(CCmdUI* pCmdUI)
    {
        m_nFrameUpdates104++;
        pCmdUI->Enable(FALSE);
    }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CRoutingFrame, CParentFrame)
    ON_UPDATE_COMMAND_UI(104, OnUpdate104)
END_MESSAGE_MAP()

struct MenuState
{
    HMENU hPopup = nullptr;
    UINT nStates[16] = {};
    char szText103[32] = {};
    bool bSeen = false;
};
MenuState g_menu;

void CALLBACK MenuTimer(HWND, UINT, UINT_PTR nId, DWORD)
{
    KillTimer(nullptr, nId);
    // The popup is open: its items are as the update pass left them.
    for (int i = 0; i < GetMenuItemCount(g_menu.hPopup) && i < 16; i++)
        g_menu.nStates[i] = GetMenuState(g_menu.hPopup, static_cast<UINT>(i), MF_BYPOSITION);
    GetMenuStringA(g_menu.hPopup, 103, g_menu.szText103, sizeof(g_menu.szText103), MF_BYCOMMAND);
    g_menu.bSeen = true;
    EndMenu();
}
} // namespace

TEST_CASE(a_popup_menu_is_updated_through_the_command_routing_before_it_opens)
{
    CRoutingFrame frame;
    CCommandPage page;
    frame.m_pPage = &page;
    REQUIRE(frame.Make());

    CMenu menu;
    menu.Attach(CreatePopupMenu());
    AppendMenuA(menu.m_hMenu, MF_STRING, 100, "Update disables");  // 0
    AppendMenuA(menu.m_hMenu, MF_STRING, 101, "Handler only");     // 1
    AppendMenuA(menu.m_hMenu, MF_STRING, 102, "Nobody");           // 2
    AppendMenuA(menu.m_hMenu, MF_STRING, 103, "Old text");         // 3
    AppendMenuA(menu.m_hMenu, MF_SEPARATOR, 0, nullptr);           // 4
    AppendMenuA(menu.m_hMenu, MF_STRING, 200, "Range first");      // 5
    AppendMenuA(menu.m_hMenu, MF_STRING, 201, "Range second");     // 6
    AppendMenuA(menu.m_hMenu, MF_STRING, 104, "Passed on");        // 7
    g_menu = MenuState();
    g_menu.hPopup = menu.m_hMenu;

    kit::MakeForeground(frame.m_hWnd);
    SetTimer(nullptr, 0, 200, MenuTimer);
    TrackPopupMenu(menu.m_hMenu, TPM_LEFTALIGN | TPM_RIGHTBUTTON, 100, 100, 0, frame.m_hWnd, nullptr);
    kit::PumpFor(50);
    REQUIRE(g_menu.bSeen);

    auto grayed = [](UINT nState) { return (nState & MF_GRAYED) != 0; };
    CHECK(grayed(g_menu.nStates[0]));  // its update handler said no
    CHECK(!grayed(g_menu.nStates[1])); // a command handler and no update handler
    CHECK(grayed(g_menu.nStates[2]));  // no handler anywhere
    CHECK((g_menu.nStates[3] & MF_CHECKED) != 0);
    CHECK_EQ(std::string(g_menu.szText103), std::string("Renamed"));
    CHECK(!grayed(g_menu.nStates[5]));
    CHECK(grayed(g_menu.nStates[6]));
    // The page passed 104 on; the frame's own handler decided.
    CHECK(grayed(g_menu.nStates[7]));
    CHECK_EQ(frame.m_nFrameUpdates104, 1);

    // A chosen command runs only while its update handler allows it.
    frame.SendMessage(WM_COMMAND, MAKEWPARAM(100, 0), 0);
    CHECK_EQ(page.m_nRuns[0], 0);
    page.m_bEnable100 = TRUE;
    frame.SendMessage(WM_COMMAND, MAKEWPARAM(100, 0), 0);
    CHECK_EQ(page.m_nRuns[0], 1);
    frame.SendMessage(WM_COMMAND, MAKEWPARAM(101, 1), 0); // an accelerator
    CHECK_EQ(page.m_nRuns[1], 1);
    frame.SendMessage(WM_COMMAND, MAKEWPARAM(200, 0), 0);
    frame.SendMessage(WM_COMMAND, MAKEWPARAM(201, 0), 0);
    CHECK_EQ(page.m_nRuns[4], 1);
    CHECK_EQ(page.m_nRuns[5], 0);
    frame.DestroyWindow();
}
