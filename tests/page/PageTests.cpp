// The Project page beside the stand-in host IDE, two processes under Wine.
// This program hosts the page as the Assist Window does (page in a tab
// control in a window of its own) with the real application object, and
// feeds it as the host frame item does: a loading data exchange after each
// change of the host frame's title, and the frame's WM_ACTIVATEAPP records.
// Its main window owns the context menus and offers their commands to
// g_pCommandPage first, as the tool's main frame does.
//
// File drops reach the host through the hook library, which builds the drop
// inside the host: this program installs the hook with a window of its own
// that ignores the records, as the tool would with its main frame.
//
// Effects are read from the host's log (COMMAND, DROP, CLOSE, VIEW lines),
// from the tree itself and from the popup as it was shown.
#include "CApp.h"
#include "CFrameWnd.h"
#include "CProjectDlg.h"
#include "CTabbedPageEx.h"
#include "CWinApp.h"
#include "Fixture.h"
#include "HostInput.h"
#include "Pixels.h"
#include "ProgramLauncher.h"
#include "QuorvantHook.h"
#include "TestRunner.h"
#include "Tray.h"
#include "resource.h"

#include <commctrl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

using namespace qt;

namespace
{
// A change on disk shows within one 500 ms poll; the rest is room for a
// machine busy with other tests.
const DWORD kPollWait = 2500;
// A change the directory's write time does not show (an attribute alone,
// or a file system without directory times) is seen by the full search of
// every tenth poll: within 5 s, and the same room besides.
const DWORD kSearchWait = 7500;

// Runs this thread's messages through the application's pre-translation, as
// the tool's message loop does (Enter reaches the page's OnReturnKey so).
void PumpFor(DWORD dwMs)
{
    const DWORD dwStart = GetTickCount();
    do
    {
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE))
        {
            if (!AfxPumpMessage())
                return;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    } while (GetTickCount() - dwStart < dwMs);
}

bool PumpUntil(const std::function<bool()>& fnCondition, DWORD dwTimeoutMs)
{
    const DWORD dwStart = GetTickCount();
    for (;;)
    {
        if (fnCondition())
            return true;
        if (GetTickCount() - dwStart >= dwTimeoutMs)
            return false;
        PumpFor(10);
    }
}

struct MenuItem
{
    std::string strText;
    UINT nID;
    bool bEnabled;
};

// The program's main window, standing in for the tool's main frame: the
// context menus' owner.
class CTestFrame : public CFrameWnd
{
public:
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override
    {
        if (g_pCommandPage && g_pCommandPage->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
            return TRUE;
        return CFrameWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
    }

    std::vector<MenuItem> m_popup;        // the last popup, after its update
    std::function<void()> m_fnInMenu;     // run once while the popup is open
    int m_nPopups = 0;
    POINT m_ptPopup = {};                 // where the last popup was shown

protected:
    void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu)
    {
        CFrameWnd::OnInitMenuPopup(pPopupMenu, nIndex, bSysMenu);
        m_popup.clear();
        ++m_nPopups;
        for (int i = 0; i < pPopupMenu->GetMenuItemCount(); ++i)
        {
            const UINT nID = pPopupMenu->GetMenuItemID(i);
            if (nID == 0)
                continue;
            CString strText;
            pPopupMenu->GetMenuString(static_cast<UINT>(i), strText, MF_BYPOSITION);
            const UINT nState = pPopupMenu->GetMenuState(static_cast<UINT>(i), MF_BYPOSITION);
            m_popup.push_back({static_cast<LPCSTR>(strText), nID, (nState & (MF_GRAYED | MF_DISABLED)) == 0});
        }
    }
    LRESULT OnEnterIdle(WPARAM wParam, LPARAM lParam)
    {
        if (wParam == MSGF_MENU && m_fnInMenu)
        {
            RECT rc = {};
            ::GetWindowRect(reinterpret_cast<HWND>(lParam), &rc);
            m_ptPopup = POINT{rc.left, rc.top};
            std::function<void()> fn;
            fn.swap(m_fnInMenu);
            fn();
        }
        return 0;
    }
    LRESULT OnRunCommand(WPARAM, LPARAM)
    {
        // As the main frame does: start the external editor's command line.
        std::vector<char> command(static_cast<LPCSTR>(g_strPendingCommand),
                                  static_cast<LPCSTR>(g_strPendingCommand) + g_strPendingCommand.GetLength() + 1);
        if (HANDLE hProcess = LaunchProgram(command.data(), SW_SHOWNORMAL))
            CloseHandle(hProcess);
        return 0;
    }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTestFrame, CFrameWnd)
    ON_WM_INITMENUPOPUP()
    ON_MESSAGE(WM_ENTERIDLE, OnEnterIdle)
    ON_REGISTERED_MESSAGE(WM_RUNCOMMAND, OnRunCommand)
END_MESSAGE_MAP()

// Standing in for the dock bar: the page's grandparent, holding its tab control.
class CTestDock : public CFrameWnd
{
public:
    CTabbedPageEx m_tab;
};

// Receives the hook library's records: the hook is there so that the
// library carries out drops inside the host, and choices in the "&Assist"
// popup (appended here as the frame's item would) come back as records.
int g_nAssistChoices = 0;

LRESULT CALLBACK SinkProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_COPYDATA)
    {
        const HookRecord* pRecord = HookRecordOf(reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        if (pRecord && pRecord->nMessage == WM_COMMAND && pRecord->wParam == ID_VIEW_ASSISTWINDOW &&
            (pRecord->nFlags & HOOK_FLAG_POPUP) != 0)
            ++g_nAssistChoices;
        return TRUE;
    }
    return DefWindowProcA(hWnd, nMessage, wParam, lParam);
}

HWND MakeSink()
{
    WNDCLASSA wc = {};
    wc.lpfnWndProc = SinkProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "QvPageTestSink";
    RegisterClassA(&wc);
    return CreateWindowExA(0, wc.lpszClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, wc.hInstance, nullptr);
}

void TouchFile(const std::string& strPath, const char* pszText = "; a line\r\n")
{
    WriteTextFile(strPath, pszText);
}


std::string ItemText(HWND hWndTree, HTREEITEM hItem)
{
    char szText[512] = {};
    TVITEMA item = {};
    item.mask = TVIF_TEXT;
    item.hItem = hItem;
    item.pszText = szText;
    item.cchTextMax = sizeof(szText);
    SendMessageA(hWndTree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    return szText;
}

// The page with its tree in a dock-like window beside a running host.
struct PageFixture
{
    explicit PageFixture(const char* pszTag)
        : strDir(MakeScratchDir(pszTag)), strProjectDir(strDir + "proj\\"), host(strDir)
    {
        CreateDirectoryA(strProjectDir.c_str(), nullptr);
        CApp* pApp = GetApp();
        pApp->m_strSource = "*.asm;*.c";
        pApp->m_strHeader = "*.inc;*.h";
        pApp->m_bReloadFileAutomatically = TRUE;
        pApp->m_bSaveAutomatically = FALSE;
        pApp->m_strExternalEditor = ("\"" + ExeDir() + "RECORDER.exe\" \"" + strDir + "editor.txt\" %FILENAME%").c_str();
    }
    ~PageFixture()
    {
        if (pDock && pDock->m_hWnd)
            pDock->DestroyWindow(); // the page deletes itself with its window
        if (hWndSink)
        {
            uninstallHook();
            PumpFor(200);
            DestroyWindow(hWndSink);
        }
        // Not the main window any more first: the main window's end would
        // end the message loop of the next test.
        AfxGetApp()->m_pMainWnd = nullptr;
        if (pFrame && pFrame->m_hWnd)
            pFrame->DestroyWindow();
        host.Close();
    }
    PageFixture(const PageFixture&) = delete;
    PageFixture& operator=(const PageFixture&) = delete;

    // The host with these arguments, then the page; the hook only when
    // drops are needed.
    bool Start(const std::string& strHostArguments, bool bHook = true)
    {
        if (!host.Start(strHostArguments))
            return false;
        hWndHost = host.Frame();
        if (!hWndHost)
            return false;

        pFrame = new CTestFrame;
        if (!pFrame->CreateEx(0, nullptr, "page test frame", WS_OVERLAPPEDWINDOW, 0, 0, 50, 50, nullptr, nullptr))
            return false;
        AfxGetApp()->m_pMainWnd = pFrame;

        pDock = new CTestDock;
        if (!pDock->CreateEx(WS_EX_TOOLWINDOW, nullptr, "Assist", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 900, 40,
                             260, 560, nullptr, nullptr))
            return false;
        CRect rc;
        pDock->GetClientRect(&rc);
        if (!pDock->m_tab.Create(WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, rc, pDock, IDC_DOCK_TAB))
            return false;
        pDock->m_tab.m_bResizePages = true;
        pPage = new CProjectDlg(&pDock->m_tab, hWndHost);
        pDock->m_tab.AddPage(pPage, 4);
        if (!pPage->m_hWnd)
            return false;
        hWndTree = pPage->m_tree.m_hWnd;

        if (bHook)
        {
            hWndSink = MakeSink();
            if (!installHook(hWndSink))
                return false;
            HMENU hPopup = CreatePopupMenu();
            AppendMenuA(hPopup, MF_STRING, ID_VIEW_ASSISTWINDOW, "&Assist Window");
            const BOOL bAppended = RequestHostAppendPopup(hWndHost, hPopup, "&Assist");
            DestroyMenu(hPopup);
            if (!bAppended)
                return false;
        }
        PumpFor(100);
        return true;
    }

    std::string Project(const char* pszName = "demo.mcp") const { return strProjectDir + pszName; }
    // The title the stand-in shows for a project.
    static std::string TitleOf(const std::string& strProject) { return "Host IDE - " + strProject; }

    // A title change at the host frame, fed to the page as the host frame
    // item feeds it (WM_SETTEXT reaches the host from here).
    void SetTitle(const std::string& strTitle)
    {
        SetWindowTextA(hWndHost, strTitle.c_str());
        pPage->UpdateData(FALSE);
    }
    void Activate(bool bActive)
    {
        const HookRecord record = {0, HookWindowWord(hWndHost), WM_ACTIVATEAPP, bActive ? 1u : 0u, 0, {0, 0}};
        pPage->OnHostMessage(&record);
    }

    std::string RootText() const { return ItemText(hWndTree, pPage->m_cursorProject.GetHandle()); }
    std::vector<std::string> Children(const CTreeCursor& cursor) const
    {
        std::vector<std::string> texts;
        for (HTREEITEM h = TreeView_GetChild(hWndTree, cursor.GetHandle()); h; h = TreeView_GetNextSibling(hWndTree, h))
            texts.push_back(ItemText(hWndTree, h));
        return texts;
    }
    std::vector<std::string> Sources() const { return Children(pPage->m_cursorSourceFiles); }
    std::vector<std::string> Headers() const { return Children(pPage->m_cursorHeaderFiles); }
    HTREEITEM Find(const CTreeCursor& parent, const std::string& strText) const
    {
        for (HTREEITEM h = TreeView_GetChild(hWndTree, parent.GetHandle()); h; h = TreeView_GetNextSibling(hWndTree, h))
            if (ItemText(hWndTree, h) == strText)
                return h;
        return nullptr;
    }

    // The screen point at the middle of a node's text, scrolled and unfolded
    // into view first (groups filled after the page was built start folded:
    // a node without children does not expand). (-1, -1) when it has none.
    POINT OnScreen(HTREEITEM hItem) const
    {
        TreeView_EnsureVisible(hWndTree, hItem);
        RECT rc = {};
        if (!hItem || !TreeView_GetItemRect(hWndTree, hItem, &rc, TRUE))
            return POINT{-1, -1};
        POINT pt = {(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
        ClientToScreen(hWndTree, &pt);
        return pt;
    }

    // Waits for a line in the host's log, handling this program's messages
    // meanwhile (the host sends it records while the hook is in).
    bool WaitLog(const std::string& strLine, DWORD dwTimeoutMs = 5000, int nCount = 1)
    {
        return PumpUntil([&] { return host.CountLog(strLine) >= nCount; }, dwTimeoutMs);
    }
    // A marker through the host's queue after everything posted before it.
    bool Settle()
    {
        const int n = host.CountLog("COMMAND 1191") + 1;
        PumpFor(50);
        PostMessageA(hWndHost, WM_COMMAND, 1191, 0); // Tile: harmless, and logged
        return WaitLog("COMMAND 1191", 5000, n);
    }

    // Selects the node, opens its context menu as the context-menu key
    // does and, while the popup is open, runs fnInMenu (which presses keys).
    std::vector<MenuItem> Menu(HTREEITEM hItem, const std::function<void()>& fnInMenu)
    {
        TreeView_SelectItem(hWndTree, hItem);
        pFrame->m_popup.clear();
        pFrame->m_fnInMenu = fnInMenu;
        SetForegroundWindow(pDock->m_hWnd);
        ::SetFocus(hWndTree);
        pPage->SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(hWndTree), MAKELPARAM(-1, -1));
        pFrame->m_fnInMenu = nullptr;
        PumpFor(50);
        return pFrame->m_popup;
    }
    // The popup's items, closed again with Esc.
    std::vector<MenuItem> Peek(HTREEITEM hItem)
    {
        return Menu(hItem, [] { SendKeys({VK_ESCAPE}); });
    }
    // Chooses the item of the node's popup by its mnemonic. The key of a
    // greyed item leaves the popup open: Esc closes it then (and otherwise
    // reaches the page, which swallows it).
    std::vector<MenuItem> Choose(HTREEITEM hItem, char chKey)
    {
        return Menu(hItem, [chKey] {
            SendKeys({static_cast<WORD>(chKey)});
            SendKeys({VK_ESCAPE});
        });
    }

    std::string strDir;
    std::string strProjectDir;
    Host host;
    HWND hWndHost = nullptr;
    CTestFrame* pFrame = nullptr;
    CTestDock* pDock = nullptr;
    CProjectDlg* pPage = nullptr;
    HWND hWndTree = nullptr;
    HWND hWndSink = nullptr;
};

std::string Join(const std::vector<std::string>& items)
{
    std::string s;
    for (const std::string& item : items)
        s += (s.empty() ? "" : ",") + item;
    return s;
}

bool EnabledOf(const std::vector<MenuItem>& popup, UINT nID)
{
    for (const MenuItem& item : popup)
        if (item.nID == nID)
            return item.bEnabled;
    return false;
}

// Every node kind's popup (by the node's text under its parent) and, for
// each item, the host's log line that must follow when it is chosen.
struct MenuCase
{
    const char* pszNode;   // "" for the project node itself
    const char* pszParent; // "" root, "S" Source Files, "W" Windows, "G" the project node's groups
    char chKey;
    UINT nID;
    const char* pszHostLine; // %F is the file's path, %D the scratch folder
};
} // namespace

TEST_CASE(tree_follows_the_host_title)
{
    PageFixture f("title");
    TouchFile(f.strProjectDir + "main.asm");
    TouchFile(f.strProjectDir + "util.c");
    TouchFile(f.strProjectDir + "defs.inc");
    REQUIRE(f.Start("", false));

    // No project in the title: "(Empty)", groups empty, the fixed nodes there.
    CHECK_EQ(f.RootText(), std::string("(Empty)"));
    CHECK_EQ(Join(f.Sources()), std::string(""));
    CHECK_EQ(Join(f.Headers()), std::string(""));
    CHECK_EQ(Join(f.Children(f.pPage->m_cursorProject)), std::string("Source Files,Header Files,Windows"));
    CHECK_EQ(Join(f.Children(f.pPage->m_cursorWindows)),
             std::string("Program Memory,Trace Memory,EEPROM,Absolute Listing,Map File,Stack,File Register,"
                         "Special Function Register,Project,Build Results,Watch"));

    // A project: its name, its files sorted.
    f.SetTitle(PageFixture::TitleOf(f.Project()));
    CHECK_EQ(f.RootText(), std::string("demo"));
    CHECK_EQ(Join(f.Sources()), std::string("main.asm,util.c"));
    CHECK_EQ(Join(f.Headers()), std::string("defs.inc"));
    CHECK(std::string(f.pPage->m_strProject) == f.Project());
    // The groups unfold when their first files come: empty, they could not.
    const auto expanded = [&f](const CTreeCursor& cursor) {
        return (TreeView_GetItemState(f.hWndTree, cursor.GetHandle(), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    };
    CHECK(expanded(f.pPage->m_cursorSourceFiles));
    CHECK(expanded(f.pPage->m_cursorHeaderFiles));

    // Only the case differs: the stored path and the node text stay.
    std::string strUpper = f.Project();
    for (char& ch : strUpper)
        ch = static_cast<char>(toupper(static_cast<unsigned char>(ch)));
    HTREEITEM hMain = f.Find(f.pPage->m_cursorSourceFiles, "main.asm");
    f.SetTitle(PageFixture::TitleOf(strUpper));
    CHECK_EQ(f.RootText(), std::string("demo"));
    CHECK(std::string(f.pPage->m_strProject) == f.Project());
    CHECK(f.Find(f.pPage->m_cursorSourceFiles, "main.asm") == hMain);

    // Another project file in the same folder: the file nodes stay.
    f.SetTitle(PageFixture::TitleOf(f.Project("other.mcp")));
    CHECK_EQ(f.RootText(), std::string("other"));
    CHECK(f.Find(f.pPage->m_cursorSourceFiles, "main.asm") == hMain);

    // A project in another folder replaces every file node in one refresh.
    const std::string strOther = f.strDir + "second\\";
    CreateDirectoryA(strOther.c_str(), nullptr);
    TouchFile(strOther + "boot.asm");
    TouchFile(strOther + "io.h");
    // The user folds Source Files: it stays folded whatever comes.
    TreeView_Expand(f.hWndTree, f.pPage->m_cursorSourceFiles.GetHandle(), TVE_COLLAPSE);
    f.SetTitle(PageFixture::TitleOf(strOther + "second.mcp"));
    CHECK_EQ(f.RootText(), std::string("second"));
    CHECK_EQ(Join(f.Sources()), std::string("boot.asm"));
    CHECK_EQ(Join(f.Headers()), std::string("io.h"));

    // Two words only, and a title with the path cut at a blank.
    f.SetTitle("Host IDE");
    CHECK_EQ(f.RootText(), std::string("(Empty)"));
    CHECK_EQ(Join(f.Sources()), std::string(""));
    CHECK_EQ(Join(f.Headers()), std::string(""));
    CHECK(f.pPage->m_strProject.IsEmpty());
    f.SetTitle("Host IDE - " + f.strDir + "My Work\\demo.mcp");
    CHECK(std::string(f.pPage->m_strProject) == f.strDir + "My");
    CHECK_EQ(f.RootText(), std::string("My"));
    // Hyphens separate words too; an empty title is no project.
    f.SetTitle("Host-IDE-" + f.Project());
    CHECK(std::string(f.pPage->m_strProject) == f.Project());
    CHECK(!expanded(f.pPage->m_cursorSourceFiles));
    CHECK(expanded(f.pPage->m_cursorHeaderFiles));
    f.SetTitle("");
    CHECK_EQ(f.RootText(), std::string("(Empty)"));
}

TEST_CASE(poll_follows_the_project_directory)
{
    PageFixture f("poll");
    const std::string& d = f.strProjectDir;
    TouchFile(d + "main.asm");
    TouchFile(d + "zeta.asm");
    REQUIRE(f.Start("/project \"" + f.Project() + "\"", false));
    f.pPage->UpdateData(FALSE); // as the host frame item does at the start
    CHECK_EQ(Join(f.Sources()), std::string("main.asm,zeta.asm"));

    // The timer finds new files within about one period, in name order.
    HTREEITEM hMain = f.Find(f.pPage->m_cursorSourceFiles, "main.asm");
    TreeView_SelectItem(f.hWndTree, hMain);
    CTreeItem* pMainRecord = f.pPage->GetSelectedItem();
    TouchFile(d + "beta.asm");
    TouchFile(d + "alpha.c");
    TouchFile(d + "gamma.inc");
    CHECK(PumpUntil([&] { return Join(f.Sources()) == "alpha.c,beta.asm,main.asm,zeta.asm"; }, kPollWait));
    CHECK(PumpUntil([&] { return Join(f.Headers()) == "gamma.inc"; }, kPollWait));
    // A file that stays keeps its node, its record and its selection.
    CHECK(f.Find(f.pPage->m_cursorSourceFiles, "main.asm") == hMain);
    CHECK(f.pPage->GetSelectedItem() == pMainRecord);

    // Deleted and renamed files.
    DeleteFileA((d + "beta.asm").c_str());
    MoveFileA((d + "zeta.asm").c_str(), (d + "omega.asm").c_str());
    CHECK(PumpUntil([&] { return Join(f.Sources()) == "alpha.c,main.asm,omega.asm"; }, kPollWait));

    // What is not listed: folders (they carry no archive attribute, which is
    // all that keeps them out), files in subfolders, other extensions, and
    // files whose archive attribute is cleared.
    // Wine: the archive attribute of a file cannot be cleared: SetFileAttributes
    // with FILE_ATTRIBUTE_NORMAL succeeds and the file still reports 0x20, in
    // FindFirstFile too. There such a file is listed, as its attributes say.
    TouchFile(d + "plain.asm");
    SetFileAttributesA((d + "plain.asm").c_str(), FILE_ATTRIBUTE_NORMAL);
    const bool bArchiveStays = (GetFileAttributesA((d + "plain.asm").c_str()) & FILE_ATTRIBUTE_ARCHIVE) != 0;
    CreateDirectoryA((d + "folder.asm").c_str(), nullptr);
    CreateDirectoryA((d + "sub").c_str(), nullptr);
    TouchFile(d + "sub\\deep.asm");
    TouchFile(d + "readme.txt");
    TouchFile(d + "trigger.c"); // something that must appear, to know a poll ran
    const std::string strExpected =
        bArchiveStays ? "alpha.c,main.asm,omega.asm,plain.asm,trigger.c" : "alpha.c,main.asm,omega.asm,trigger.c";
    CHECK(PumpUntil([&] { return Join(f.Sources()) == strExpected; }, kPollWait));
    PumpFor(600);
    CHECK_EQ(Join(f.Sources()), strExpected);
    // The archive attribute back: listed, by the next full search.
    SetFileAttributesA((d + "plain.asm").c_str(), FILE_ATTRIBUTE_ARCHIVE);
    CHECK(PumpUntil([&] { return Join(f.Sources()) == "alpha.c,main.asm,omega.asm,plain.asm,trigger.c"; }, kSearchWait));

    // Patterns are read at each poll; a file two patterns match is listed
    // once; a blank after ";" belongs to the next pattern.
    TouchFile(d + " lead.c");
    GetApp()->m_strSource = "*.asm;m*.asm;;*.ASM";
    CHECK(PumpUntil([&] { return Join(f.Sources()) == "main.asm,omega.asm,plain.asm"; }, kPollWait));
    CHECK_EQ(f.pPage->m_sourceFiles.size(), static_cast<size_t>(3));
    // The same for a file that is new at that poll (looked at right after
    // the one poll that finds it: a later poll would drop a twin again).
    TouchFile(d + "mnew.asm");
    f.pPage->UpdateData(FALSE);
    CHECK_EQ(Join(f.Sources()), std::string("main.asm,mnew.asm,omega.asm,plain.asm"));
    CHECK_EQ(f.pPage->m_sourceFiles.size(), static_cast<size_t>(4));
    GetApp()->m_strSource = "*.asm; *.c";
    CHECK(PumpUntil([&] { return Join(f.Sources()) == " lead.c,main.asm,mnew.asm,omega.asm,plain.asm"; }, kPollWait));

    // Patterns that make no sense list nothing and break nothing.
    for (const char* pszPatterns : {"", ";;;", "\\\\?\\<>|", "..\\*.asm", "*.asm\\*"})
    {
        GetApp()->m_strSource = pszPatterns;
        f.pPage->UpdateData(FALSE);
        CHECK(f.pPage->m_hWnd != nullptr);
    }
    GetApp()->m_strSource = "*.asm";
    f.pPage->UpdateData(FALSE);
    CHECK_EQ(Join(f.Sources()), std::string("main.asm,mnew.asm,omega.asm,plain.asm"));
    CHECK(f.pPage->m_nTimer != 0);
}

TEST_CASE(vanished_or_unsearchable_directory_empties_the_groups_and_recovers)
{
    PageFixture f("vanish");
    TouchFile(f.strProjectDir + "main.asm");
    TouchFile(f.strProjectDir + "defs.h");
    REQUIRE(f.Start("/project \"" + f.Project() + "\"", false));
    f.pPage->UpdateData(FALSE);
    REQUIRE(Join(f.Sources()) == "main.asm");

    // The folder goes away (renamed) and comes back.
    const std::string strAway = f.strDir + "away";
    REQUIRE(MoveFileA(f.strProjectDir.substr(0, f.strProjectDir.size() - 1).c_str(), strAway.c_str()));
    CHECK(PumpUntil([&] { return f.Sources().empty() && f.Headers().empty(); }, kPollWait));
    CHECK_EQ(f.RootText(), std::string("demo")); // the project is still the host's
    REQUIRE(MoveFileA(strAway.c_str(), f.strProjectDir.substr(0, f.strProjectDir.size() - 1).c_str()));
    CHECK(PumpUntil([&] { return Join(f.Sources()) == "main.asm" && Join(f.Headers()) == "defs.h"; }, kPollWait));

    // Paths whose folder cannot be searched: a file as folder, a drive that
    // does not exist, a folder name too long for the system.
    const std::string strLong = f.strDir + std::string(300, 'x') + "\\demo.mcp";
    for (const std::string& strProject :
         {f.strProjectDir + "main.asm\\demo.mcp", std::string("Q:\\nowhere\\demo.mcp"), strLong})
    {
        f.SetTitle(PageFixture::TitleOf(strProject));
        CHECK(f.Sources().empty());
        CHECK(f.Headers().empty());
        PumpFor(600); // a poll or so on it
        CHECK(f.pPage->m_hWnd != nullptr);
    }
    f.SetTitle(PageFixture::TitleOf(f.Project()));
    CHECK_EQ(Join(f.Sources()), std::string("main.asm"));
}

TEST_CASE(host_that_vanished_leaves_an_empty_project_and_a_working_page)
{
    PageFixture f("gone");
    TouchFile(f.strProjectDir + "main.asm");
    REQUIRE(f.Start("/project \"" + f.Project() + "\"", false));
    f.pPage->UpdateData(FALSE);
    REQUIRE(Join(f.Sources()) == "main.asm");

    f.host.Kill();
    REQUIRE(WaitFor([&] { return !IsWindow(f.hWndHost); }, 5000));
    f.pPage->UpdateData(FALSE); // the title of a window that is no more
    CHECK_EQ(f.RootText(), std::string("(Empty)"));
    CHECK(f.Sources().empty());
    // Every node still answers: menus, Enter, double click go nowhere.
    HTREEITEM hStack = f.Find(f.pPage->m_cursorWindows, "Stack");
    const std::vector<MenuItem> popup = f.Choose(hStack, 'O');
    CHECK(!popup.empty());
    f.Activate(false);
    f.Activate(true);
    PumpFor(600);
    CHECK(f.pPage->m_hWnd != nullptr);
}

TEST_CASE(changed_files_reload_when_the_host_is_active_again)
{
    PageFixture f("reload");
    const std::string strMain = f.strProjectDir + "main.asm";
    const std::string strDefs = f.strProjectDir + "defs.inc";
    const std::string strLone = f.strProjectDir + "lone.asm";
    TouchFile(strMain);
    TouchFile(strDefs);
    TouchFile(strLone);
    REQUIRE(f.Start("/project \"" + f.Project() + "\" /open \"" + strMain + "\" /open \"" + strDefs + "\""));
    f.pPage->UpdateData(FALSE);
    REQUIRE(f.pPage->m_sourceFiles.size() == 2);

    // Nothing changed: nothing happens.
    f.host.ClearLog();
    f.Activate(false);
    f.Activate(true);
    REQUIRE(f.Settle());
    CHECK_EQ(f.host.CountLogPrefix("CLOSE "), 0);
    CHECK_EQ(f.host.CountLogPrefix("DROP "), 0);

    // Changed in the background (even to an older time): closed, then
    // dropped again; the file that is not open in the host is left alone.
    f.Activate(false);
    ShiftWriteTime(strMain, -3600);
    ShiftWriteTime(strLone, 60);
    f.host.ClearLog();
    f.Activate(true);
    CHECK(f.WaitLog("DROP " + strMain));
    REQUIRE(f.Settle());
    const std::vector<std::string> log = f.host.Log();
    int nClose = -1, nDrop = -1;
    for (int i = 0; i < static_cast<int>(log.size()); ++i)
    {
        if (log[i] == "CLOSE " + strMain && nClose < 0)
            nClose = i;
        if (log[i] == "DROP " + strMain && nDrop < 0)
            nDrop = i;
    }
    CHECK(nClose >= 0);
    CHECK(nClose < nDrop);
    CHECK_EQ(f.host.CountLog("DROP " + strMain), 1);
    CHECK_EQ(f.host.CountLog("CLOSE " + strDefs), 0); // unchanged: stays open
    CHECK_EQ(f.host.CountLogPrefix("DROP " + strLone), 0);

    // Changed while the host lost the activation, but the setting is off.
    f.Activate(false);
    ShiftWriteTime(strDefs, 120);
    GetApp()->m_bReloadFileAutomatically = FALSE;
    f.host.ClearLog();
    f.Activate(true);
    REQUIRE(f.Settle());
    CHECK_EQ(f.host.CountLogPrefix("CLOSE "), 0);
    CHECK_EQ(f.host.CountLogPrefix("DROP "), 0);

    // Records of other messages, and a change made while the setting was
    // off, do nothing once it is back on: the times were not taken then.
    GetApp()->m_bReloadFileAutomatically = TRUE;
    const HookRecord other = {0, HookWindowWord(f.hWndHost), WM_SIZE, 0, 0, {0, 0}};
    f.pPage->OnHostMessage(&other);
    f.pPage->OnHostMessage(nullptr);
    f.Activate(true);
    CHECK(f.WaitLog("DROP " + strDefs)); // recorded before: still differs
    REQUIRE(f.Settle());
}

TEST_CASE(every_context_menu_command_reaches_the_host)
{
    PageFixture f("menus");
    const std::string strMain = f.strProjectDir + "main.asm";
    TouchFile(strMain);
    TouchFile(f.strProjectDir + "defs.inc");
    REQUIRE(f.Start("/project \"" + f.Project() + "\" /open \"" + strMain + "\""));
    f.pPage->UpdateData(FALSE);

    // Close All Windows last in each popup, so that the file stays open for
    // the popups after it; "&Close" of the file comes after its other items.
    const MenuCase cases[] = {
        {"", "", 'N', 32773, "COMMAND 1018"},
        {"", "", 'O', 32774, "COMMAND 1019"},
        {"", "", 'E', 32775, "COMMAND 1032"},
        {"", "", 'S', 32777, "COMMAND 1031"},
        {"", "", 'B', 32780, "BUILD 1033"},
        {"", "", 'H', 32781, "ASSIST"},
        {"Source Files", "G", 'N', 32773, "COMMAND 1001"},
        {"Source Files", "G", 'O', 32774, "COMMAND 1002"},
        {"Source Files", "G", 'S', 32778, "COMMAND 1006"},
        {"Source Files", "G", 'B', 32780, "BUILD 1033"},
        {"Source Files", "G", 'H', 32781, "ASSIST"},
        {"Header Files", "G", 'N', 32773, "COMMAND 1001"},
        {"Header Files", "G", 'O', 32774, "COMMAND 1002"},
        {"Header Files", "G", 'S', 32778, "COMMAND 1006"},
        {"Header Files", "G", 'H', 32781, "ASSIST"},
        {"main.asm", "S", 'O', 32774, "DROP %F"},
        {"main.asm", "S", 'B', 32780, "BUILD 1035"},
        {"main.asm", "S", 'H', 32781, "ASSIST"},
        {"main.asm", "S", 'C', 32776, "CLOSE %F"},
        {"Windows", "G", 'O', 32774, "COMMAND 1098"},
        {"Windows", "G", 'S', 32777, "COMMAND 1097"},
        {"Windows", "G", 'H', 32781, "ASSIST"},
        {"Stack", "W", 'O', 32774, "VIEW 1121 Stack Window"},
        {"Stack", "W", 'C', 32776, "CLOSE Stack Window"},
        {"Stack", "W", 'H', 32781, "ASSIST"},
        {"Watch", "W", 'N', 32773, "VIEW 1129 Watch 1"},
        {"Watch", "W", 'O', 32774, "VIEW 1130 Watch 2"},
        {"Watch", "W", 'H', 32781, "ASSIST"},
        {"Watch", "W", 'A', 32782, "CLOSE Watch 2"},
    };
    for (const MenuCase& c : cases)
    {
        HTREEITEM hItem = nullptr;
        switch (c.pszParent[0])
        {
        case 'S':
            hItem = f.Find(f.pPage->m_cursorSourceFiles, c.pszNode);
            break;
        case 'W':
            hItem = f.Find(f.pPage->m_cursorWindows, c.pszNode);
            break;
        case 'G':
            hItem = f.Find(f.pPage->m_cursorProject, c.pszNode);
            break;
        default:
            hItem = f.pPage->m_cursorProject.GetHandle();
            break;
        }
        const std::string strWhat = std::string(c.pszNode) + " '" + c.chKey + "'";
        REQUIRE(hItem != nullptr);
        std::string strLine = c.pszHostLine;
        if (strLine.find("%F") != std::string::npos)
            strLine.replace(strLine.find("%F"), 2, strMain);
        f.host.ClearLog();
        const int nChoices = g_nAssistChoices;
        const std::vector<MenuItem> popup = f.Choose(hItem, c.chKey);
        if (!EnabledOf(popup, c.nID))
            Fail(__FILE__, __LINE__, strWhat + ": not offered enabled");
        if (strLine == "ASSIST")
        {
            // "&Hide Assist Window" is chosen in our popup inside the host:
            // the tool hears it, the host's own procedure never sees it.
            if (!PumpUntil([&] { return g_nAssistChoices > nChoices; }, 5000))
                Fail(__FILE__, __LINE__, strWhat + ": no choice of the Assist popup");
            if (f.host.CountLog("COMMAND 32771") != 0)
                Fail(__FILE__, __LINE__, strWhat + ": the host got our command");
        }
        else if (!f.WaitLog(strLine, 5000))
            Fail(__FILE__, __LINE__, strWhat + ": no \"" + strLine + "\" in the host log");
        REQUIRE(f.Settle());
    }
    // The file's Close drops it first (the host makes it active), then closes.
    // External Editor: the recorder gets the file's path.
    HTREEITEM hDefs = f.Find(f.pPage->m_cursorHeaderFiles, "defs.inc");
    REQUIRE(hDefs != nullptr);
    const std::vector<MenuItem> popup = f.Choose(hDefs, 'E');
    CHECK(EnabledOf(popup, 32779));
    CHECK(WaitFor([&] { return ReadTextFile(f.strDir + "editor.txt").find("defs.inc") != std::string::npos; }, 5000));

    // Close Project last: the host's title loses the project with it.
    f.host.ClearLog();
    CHECK(EnabledOf(f.Choose(f.pPage->m_cursorProject.GetHandle(), 'C'), 32776));
    CHECK(f.WaitLog("PROJECT CLOSE"));
}

TEST_CASE(commands_that_need_a_project_or_a_window_are_greyed)
{
    PageFixture f("grey");
    TouchFile(f.strProjectDir + "main.asm");
    REQUIRE(f.Start("", false));
    // Without a project.
    struct Expect
    {
        HTREEITEM hItem;
        const char* pszWhat;
        std::map<UINT, bool> enabled;
    };
    HTREEITEM hRoot = f.pPage->m_cursorProject.GetHandle();
    const Expect before[] = {
        {hRoot, "project",
         {{32773, true}, {32774, true}, {32775, false}, {32776, false}, {32777, false}, {32780, false},
          {32781, true}, {32782, true}}},
        {f.pPage->m_cursorSourceFiles.GetHandle(), "Source Files",
         {{32773, true}, {32774, true}, {32778, false}, {32780, false}, {32781, true}, {32782, true}}},
        {f.pPage->m_cursorHeaderFiles.GetHandle(), "Header Files",
         {{32773, true}, {32774, true}, {32778, true}, {32781, true}, {32782, true}}},
        {f.Find(f.pPage->m_cursorWindows, "Build Results"), "Build Results (closed)",
         {{32774, true}, {32776, false}, {32781, true}, {32782, true}}},
        {f.Find(f.pPage->m_cursorWindows, "Watch"), "Watch",
         {{32773, true}, {32774, true}, {32781, true}, {32782, true}}},
        {f.pPage->m_cursorWindows.GetHandle(), "Windows",
         {{32774, true}, {32777, true}, {32781, true}, {32782, true}}},
    };
    for (const Expect& e : before)
    {
        const std::vector<MenuItem> popup = f.Peek(e.hItem);
        if (popup.size() != e.enabled.size())
            Fail(__FILE__, __LINE__, std::string(e.pszWhat) + ": " + std::to_string(popup.size()) + " items");
        for (const MenuItem& item : popup)
        {
            auto it = e.enabled.find(item.nID);
            if (it == e.enabled.end() || it->second != item.bEnabled)
                Fail(__FILE__, __LINE__, std::string(e.pszWhat) + ": " + item.strText + " wrongly " +
                                             (item.bEnabled ? "enabled" : "greyed"));
        }
    }
    // A disabled entry cannot be chosen: its key does nothing at the host.
    f.host.ClearLog();
    f.Choose(hRoot, 'B');
    PumpFor(300);
    CHECK_EQ(f.host.CountLogPrefix("BUILD"), 0);

    // With a project, the file not open: its Close and Build Node greyed.
    f.SetTitle(PageFixture::TitleOf(f.Project()));
    const std::vector<MenuItem> project = f.Peek(hRoot);
    CHECK(EnabledOf(project, 32775) && EnabledOf(project, 32776) && EnabledOf(project, 32777) &&
          EnabledOf(project, 32780));
    CHECK(EnabledOf(f.Peek(f.pPage->m_cursorSourceFiles.GetHandle()), 32778));
    const std::vector<MenuItem> file = f.Peek(f.Find(f.pPage->m_cursorSourceFiles, "main.asm"));
    CHECK_EQ(file.size(), static_cast<size_t>(6));
    CHECK(EnabledOf(file, 32774) && EnabledOf(file, 32779) && EnabledOf(file, 32781) && EnabledOf(file, 32782));
    CHECK(!EnabledOf(file, 32776));
    CHECK(!EnabledOf(file, 32780));
}

TEST_CASE(right_click_selects_the_node_and_opens_its_menu_at_the_mouse)
{
    PageFixture f("rclick");
    TouchFile(f.strProjectDir + "main.asm");
    TouchFile(f.strProjectDir + "util.asm");
    REQUIRE(f.Start("/project \"" + f.Project() + "\"", false));
    f.pPage->UpdateData(FALSE);
    HTREEITEM hUtil = f.Find(f.pPage->m_cursorSourceFiles, "util.asm");
    REQUIRE(hUtil != nullptr);
    TreeView_SelectItem(f.hWndTree, f.pPage->m_cursorProject.GetHandle());

    const POINT pt = f.OnScreen(hUtil);
    REQUIRE(pt.x >= 0);
    PumpFor(100);
    SetForegroundWindow(f.pDock->m_hWnd);
    f.pFrame->m_popup.clear();
    f.pFrame->m_fnInMenu = [] { SendKeys({VK_ESCAPE}); };
    const int nPopups = f.pFrame->m_nPopups;
    ClickAt(pt, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    CHECK(PumpUntil([&] { return f.pFrame->m_nPopups > nPopups && !VisibleMenu(); }, 5000));
    CHECK(f.pPage->GetSelectedItem() != nullptr);
    CHECK(TreeView_GetSelection(f.hWndTree) == hUtil);
    CHECK_EQ(f.pFrame->m_popup.size(), static_cast<size_t>(6)); // the file's popup
    CHECK(EnabledOf(f.pFrame->m_popup, 32779));
    CHECK(abs(f.pFrame->m_ptPopup.x - pt.x) <= 2 && abs(f.pFrame->m_ptPopup.y - pt.y) <= 2);

    // From the keyboard: the project's popup at the page's corner + (5, 5).
    f.Peek(f.pPage->m_cursorProject.GetHandle());
    POINT ptCorner = {5, 5};
    ClientToScreen(f.pPage->m_hWnd, &ptCorner);
    CHECK(abs(f.pFrame->m_ptPopup.x - ptCorner.x) <= 2 && abs(f.pFrame->m_ptPopup.y - ptCorner.y) <= 2);
    CHECK_EQ(f.pFrame->m_popup.size(), static_cast<size_t>(8));

    // Nothing selected: no menu at all.
    TreeView_SelectItem(f.hWndTree, nullptr);
    const int nBefore = f.pFrame->m_nPopups;
    f.pPage->SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(f.hWndTree), MAKELPARAM(-1, -1));
    CHECK_EQ(f.pFrame->m_nPopups, nBefore);
    CHECK(g_pCommandPage == f.pPage);

    // The page that opened the menu goes: the main frame no longer names it.
    f.pDock->DestroyWindow(); // the dock, the tab and the page delete themselves
    f.pDock = nullptr;
    f.pPage = nullptr;
    CHECK(g_pCommandPage == nullptr);
    f.pFrame->SendMessage(WM_COMMAND, 32774, 0); // nobody to take it; nothing breaks
    PumpFor(100);
}

TEST_CASE(double_click_and_enter_open_files_and_views)
{
    PageFixture f("open");
    const std::string strMain = f.strProjectDir + "main.asm";
    TouchFile(strMain);
    REQUIRE(f.Start("/project \"" + f.Project() + "\" /view 1121"));
    f.pPage->UpdateData(FALSE);

    auto dblclk = [&](HTREEITEM hItem) {
        const POINT pt = f.OnScreen(hItem);
        CHECK(pt.x >= 0);
        PumpFor(100);
        SetForegroundWindow(f.pDock->m_hWnd);
        ClickAt(pt, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        INPUT inputs[2] = {};
        inputs[0].type = inputs[1].type = INPUT_MOUSE;
        inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
        inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
        SendInput(2, inputs, sizeof(INPUT));
        PumpFor(300);
    };
    auto enter = [&](HTREEITEM hItem) {
        TreeView_SelectItem(f.hWndTree, hItem);
        SetForegroundWindow(f.pDock->m_hWnd);
        ::SetFocus(f.hWndTree);
        SendKeys({VK_RETURN});
        PumpFor(300);
    };

    // A file: dropped on the host, which opens it.
    HTREEITEM hMain = f.Find(f.pPage->m_cursorSourceFiles, "main.asm");
    f.host.ClearLog();
    dblclk(hMain);
    CHECK(f.WaitLog("DROP " + strMain));
    CHECK(f.WaitLog("OPEN " + strMain));
    f.host.ClearLog();
    enter(hMain);
    CHECK(f.WaitLog("DROP " + strMain));

    // An open view comes to the top with a click into its text; a closed
    // one is opened with its command.
    HTREEITEM hStack = f.Find(f.pPage->m_cursorWindows, "Stack");
    f.host.ClearLog();
    dblclk(hStack);
    CHECK(f.WaitLog("LBUTTONDOWN Stack Window 0,0"));
    CHECK(f.WaitLog("LBUTTONUP Stack Window 0,0"));
    CHECK_EQ(f.host.CountLog("COMMAND 1121"), 0);
    HTREEITEM hMemory = f.Find(f.pPage->m_cursorWindows, "Program Memory");
    f.host.ClearLog();
    enter(hMemory);
    CHECK(f.WaitLog("COMMAND 1117"));
    CHECK(f.WaitLog("VIEW 1117 Program Memory Window"));
    // Watch opens a stored watch, Build Results has no command.
    f.host.ClearLog();
    enter(f.Find(f.pPage->m_cursorWindows, "Watch"));
    CHECK(f.WaitLog("COMMAND 1130"));
    f.host.ClearLog();
    enter(f.Find(f.pPage->m_cursorWindows, "Build Results"));
    dblclk(f.Find(f.pPage->m_cursorWindows, "Build Results"));

    // Groups: Enter does nothing, a double click only folds or unfolds.
    HTREEITEM hSources = f.pPage->m_cursorSourceFiles.GetHandle();
    enter(hSources);
    const UINT nBefore = TreeView_GetItemState(f.hWndTree, hSources, TVIS_EXPANDED) & TVIS_EXPANDED;
    dblclk(hSources);
    const UINT nAfter = TreeView_GetItemState(f.hWndTree, hSources, TVIS_EXPANDED) & TVIS_EXPANDED;
    CHECK(nBefore != nAfter);
    // Enter with nothing selected is swallowed: the page stays.
    TreeView_SelectItem(f.hWndTree, nullptr);
    enter(nullptr);
    REQUIRE(f.Settle());
    CHECK_EQ(f.host.CountLogPrefix("COMMAND 1") - 1, 0); // only the marker
    CHECK_EQ(f.host.CountLogPrefix("DROP "), 0);
    CHECK(IsWindowVisible(f.pPage->m_hWnd));
}

TEST_CASE(screenshot_of_a_sample_project)
{
    PageFixture f("shot");
    for (const char* pszName : {"main.asm", "delay.asm", "isr.asm", "lcd.c", "p16f84.inc", "macros.inc", "lcd.h"})
        TouchFile(f.strProjectDir + pszName);
    REQUIRE(f.Start("/project \"" + f.Project("Blink.mcp") + "\"", false));
    f.pPage->UpdateData(FALSE);
    TreeView_SelectItem(f.hWndTree, f.Find(f.pPage->m_cursorSourceFiles, "isr.asm"));
    SetForegroundWindow(f.pDock->m_hWnd);
    ::SetFocus(f.hWndTree);
    PumpFor(300);
    RedrawWindow(f.pDock->m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    PumpFor(200);

    // The tree fills the page but for two pixels at the bottom.
    RECT rcPage = {}, rcTree = {};
    GetClientRect(f.pPage->m_hWnd, &rcPage);
    GetWindowRect(f.hWndTree, &rcTree);
    MapWindowPoints(nullptr, f.pPage->m_hWnd, reinterpret_cast<POINT*>(&rcTree), 2);
    CHECK_EQ(rcTree.left, 0L);
    CHECK_EQ(rcTree.top, 0L);
    CHECK_EQ(rcTree.right, rcPage.right);
    CHECK_EQ(rcTree.bottom, rcPage.bottom - 2);

    ScreenShot shot(f.pDock->m_hWnd);
    REQUIRE(shot.IsValid());
    // The tree shows pictures: more than the window's and the text's colours.
    std::map<COLORREF, int> colours;
    for (int y = 0; y < shot.Height(); ++y)
        for (int x = 0; x < shot.Width(); ++x)
            ++colours[shot.Pixel(x, y)];
    CHECK(colours.size() > 8);

    const std::string strDir = ExeDir() + "..\\artefacts\\";
    CreateDirectoryA(strDir.c_str(), nullptr);
    CHECK(SaveBitmap(shot, strDir + "project-tree.bmp"));
}

namespace
{
// The real tool's Assist Window beside the host: a child of the host frame
// on Windows, a pop-up that the frame owns under Wine.
struct TreeSearch
{
    HWND hWndFrame;
    HWND hWndTree;
};

BOOL CALLBACK FindTreeChild(HWND hWnd, LPARAM lParam)
{
    char szClass[32] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (lstrcmpA(szClass, WC_TREEVIEWA) != 0)
        return TRUE;
    reinterpret_cast<TreeSearch*>(lParam)->hWndTree = hWnd;
    return FALSE;
}

BOOL CALLBACK FindTreeInOwned(HWND hWnd, LPARAM lParam)
{
    TreeSearch* p = reinterpret_cast<TreeSearch*>(lParam);
    if (GetWindow(hWnd, GW_OWNER) == p->hWndFrame)
        EnumChildWindows(hWnd, FindTreeChild, lParam);
    return p->hWndTree == nullptr;
}

// Any visible popup menu window: Wine keeps menu windows of other
// programs (hidden) that FindWindow may name first.
BOOL CALLBACK FindVisibleMenu(HWND hWnd, LPARAM lParam)
{
    char szClass[16] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (lstrcmpA(szClass, "#32768") != 0 || !IsWindowVisible(hWnd))
        return TRUE;
    *reinterpret_cast<HWND*>(lParam) = hWnd;
    return FALSE;
}

HWND AnyVisibleMenu()
{
    HWND hWnd = nullptr;
    EnumWindows(FindVisibleMenu, reinterpret_cast<LPARAM>(&hWnd));
    return hWnd;
}

HWND FindToolTree(HWND hWndFrame)
{
    TreeSearch search = {hWndFrame, nullptr};
    EnumWindows(FindTreeInOwned, reinterpret_cast<LPARAM>(&search));
    if (!search.hWndTree)
        EnumChildWindows(hWndFrame, FindTreeChild, reinterpret_cast<LPARAM>(&search));
    return search.hWndTree;
}
} // namespace

// The whole way in the real tool: the page inside its Assist Window opens a
// popup owned by the tool's main frame, whose command routing brings the
// chosen command back to the page and its selected node.
TEST_CASE(real_tool_routes_a_context_menu_command_through_its_main_frame)
{
    const std::string strProjectDir = MakeScratchDir("e2eproj");
    TouchFile(strProjectDir + "main.asm");
    TouchFile(strProjectDir + "defs.inc");
    HostAndTool ht("e2e", "/project \"" + strProjectDir + "demo.mcp\"");
    REQUIRE(ht.ok);
    HWND hWndFrame = ht.host.Frame();
    HWND hWndTree = nullptr;
    REQUIRE(WaitFor([&] { return (hWndTree = FindToolTree(hWndFrame)) != nullptr; }, 10000));
    // The fixed nodes and both files.
    CHECK(WaitFor([&] { return SendMessageA(hWndTree, TVM_GETCOUNT, 0, 0) == 17; }, 5000));

    // The Assist Window is placed beside the MDI client once the host frame
    // has been laid out: wait until it shows and stays put.
    RECT rcLast = {};
    int nStill = 0;
    CHECK(WaitFor(
        [&] {
            RECT rc = {};
            GetWindowRect(hWndTree, &rc);
            nStill = IsWindowVisible(hWndTree) && EqualRect(&rc, &rcLast) ? nStill + 1 : 0;
            rcLast = rc;
            return nStill >= 20;
        },
        10000));

    // The root's row: its text after the button column and the picture.
    const int nHeight = static_cast<int>(SendMessageA(hWndTree, TVM_GETITEMHEIGHT, 0, 0));
    const int nIndent = static_cast<int>(SendMessageA(hWndTree, TVM_GETINDENT, 0, 0));
    POINT pt = {nIndent + 16 + 12, nHeight / 2};
    ClientToScreen(hWndTree, &pt);
    ht.host.ClearLog();
    // Under Wine the Assist Window is a pop-up that the tool keeps above the
    // frame as the frame is activated and moved: click once it is on top.
    CHECK(WaitFor([&] { return WindowFromPoint(pt) == hWndTree; }, 5000));
    HWND hWndUnder = WindowFromPoint(pt);
    ClickAt(pt, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    if (!WaitFor([] { return AnyVisibleMenu() != nullptr; }, 5000))
    {
        char szClass[64] = "";
        GetClassNameA(hWndUnder, szClass, sizeof(szClass));
        POINT ptNow = {};
        GetCursorPos(&ptNow);
        Fail(__FILE__, __LINE__,
             "no popup; under the point " + std::to_string(pt.x) + "," + std::to_string(pt.y) + " was a " + szClass +
                 (hWndUnder == hWndTree ? " (the tree)" : "") + ", cursor now at " + std::to_string(ptNow.x) + "," +
                 std::to_string(ptNow.y) + ", selected item " +
                 std::to_string(SendMessageA(hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) != 0));
        return;
    }
    DWORD dwMenuProcess = 0;
    GetWindowThreadProcessId(AnyVisibleMenu(), &dwMenuProcess);
    CHECK_EQ(dwMenuProcess, ht.tool.GetProcess().Id());
    SendKeys({'B'}); // "&Build", enabled with a project open
    CHECK(ht.host.WaitLog("BUILD 1033", 5000));
    CHECK(WaitFor([] { return AnyVisibleMenu() == nullptr; }, 5000));
}
