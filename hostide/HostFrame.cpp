#include "HostFrame.h"

#include "EditorWindow.h"
#include "HostLog.h"
#include "HostVariant.h"
#include "MdiChild.h"
#include "ToolBar.h"
#include "ViewCatalog.h"
#include "ViewWindow.h"

#include <shellapi.h>

#include <ctype.h>
#include <string.h>

#include <vector>

namespace hostide
{
namespace
{
const UINT kFirstChildId = 50000; // the Window menu's list of MDI children

WNDPROC g_pfnClientProc = nullptr;

// The MDI client is the system's; its focus is logged on the way through.
LRESULT CALLBACK ClientProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage == WM_SETFOCUS)
        HostLog::Write("SETFOCUS MDIClient");
    return CallWindowProcA(g_pfnClientProc, hWnd, nMessage, wParam, lParam);
}

// The menu bar as text: "&File" starts a popup, "-" is a separator.
struct MenuLine
{
    UINT nCommand; // 0: a popup's title or a separator
    const char* pszText;
};

const MenuLine kMenu[] = {
    {0, "&File"}, {1001, "&New"}, {1002, "&Open..."}, {1006, "&Save"}, {1007, "&Close"}, {1008, "Close A&ll"},
    {0, "&Edit"}, {1040, "&Paste"},
    {0, "&Project"}, {1018, "&New..."}, {1019, "&Open..."}, {1030, "&Close"}, {1031, "&Save"}, {1032, "&Edit..."},
    {0, "-"}, {1033, "&Build"}, {1035, "Build &Node"},
    {0, "&View"}, // its items come from the view catalogue
    {0, "&Window"}, {1097, "&Save Window Set"}, {1098, "&Open Window Set"}, {0, "-"},
    {ViewCatalog::kWatchNew, "&Watch New"}, {ViewCatalog::kWatchOpen, "Watch O&pen"},
};

HMENU BuildMenu(HMENU& hWindowMenu)
{
    HMENU hMenu = CreateMenu();
    HMENU hPopup = nullptr;
    for (const MenuLine& line : kMenu)
    {
        if (line.nCommand != 0)
        {
            AppendMenuA(hPopup, MF_STRING, line.nCommand, line.pszText);
            continue;
        }
        if (strcmp(line.pszText, "-") == 0)
        {
            AppendMenuA(hPopup, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        hPopup = CreatePopupMenu();
        AppendMenuA(hMenu, MF_POPUP, reinterpret_cast<UINT_PTR>(hPopup), line.pszText);
        if (strcmp(line.pszText, "&View") == 0)
        {
            int nViews = 0;
            const ViewCatalog::Entry* pViews = ViewCatalog::Entries(nViews);
            // "Build Results" has no command of its own: the command line opens it (/view 0).
            for (int i = 0; i < nViews; ++i)
            {
                if (pViews[i].nCommand != ViewCatalog::kBuildResults)
                    AppendMenuA(hPopup, MF_STRING, pViews[i].nCommand, pViews[i].pszMenuText);
            }
        }
    }
    hWindowMenu = hPopup; // the last popup lists the MDI children
    return hMenu;
}

// The clipboard's CF_TEXT, or an empty string.
std::string ClipboardText(HWND hWnd)
{
    std::string strText;
    if (!OpenClipboard(hWnd))
        return strText;
    HANDLE hData = GetClipboardData(CF_TEXT);
    if (const char* pszText = hData ? static_cast<const char*>(GlobalLock(hData)) : nullptr)
    {
        strText = pszText;
        GlobalUnlock(hData);
    }
    CloseClipboard();
    return strText;
}

std::string Escaped(std::string strText)
{
    for (size_t i = strText.find_first_of("\r\n"); i != std::string::npos; i = strText.find_first_of("\r\n", i + 2))
        strText.replace(i, 1, strText[i] == '\r' ? "\\r" : "\\n");
    return strText;
}
} // namespace

const char HostFrame::kClass[] = "PFE_Frame";

bool HostFrame::Register()
{
    return RegisterWindowClass(kClass, 0, reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1),
                               LoadCursor(nullptr, IDC_ARROW), LoadIcon(nullptr, IDI_APPLICATION));
}

namespace
{
std::string FrameTitle(const std::string& strProject)
{
    return strProject.empty() ? "Host IDE" : "Host IDE - " + strProject;
}
} // namespace

HWND HostFrame::Create(const std::string& strProject, int x, int y, int cx, int cy)
{
    const std::string strTitle = FrameTitle(strProject);
    return HostWindow::Create(std::unique_ptr<HostWindow>(new HostFrame(strProject)), 0, kClass, strTitle.c_str(),
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, x, y, cx, cy, nullptr, nullptr);
}

HostFrame* HostFrame::From(HWND hWnd)
{
    return dynamic_cast<HostFrame*>(FromHandle(hWnd));
}

LRESULT HostFrame::DefaultProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return DefFrameProcA(m_hWnd, m_hWndClient, nMessage, wParam, lParam);
}

LRESULT HostFrame::HandleMessage(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (nMessage >= 0xC000 && nMessage <= 0xFFFF)
    {
        OnRegisteredMessage(nMessage);
        return DefaultProc(nMessage, wParam, lParam);
    }
    switch (nMessage)
    {
    case WM_CREATE:
        return OnCreate() ? 0 : -1;
    case WM_SIZE:
        // Not DefFrameProc: it would lay the client over the tool bar.
        if (wParam != SIZE_MINIMIZED)
            OnSize(lParam);
        return 0;
    case WM_COMMAND:
        if (LOWORD(wParam) == kLogMenuCheck)
        {
            LogMenuCheck(static_cast<UINT>(lParam));
            return 0;
        }
        if (LOWORD(wParam) == kLogDeactivations)
        {
            HostLog::Write("DEACTIVATED " + std::to_string(m_nDeactivations));
            return 0;
        }
        if (OnCommand(LOWORD(wParam)))
            return 0;
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            ++m_nDeactivations;
        break;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        break;
    }
    return DefaultProc(nMessage, wParam, lParam);
}

bool HostFrame::OnCreate()
{
    HMENU hWindowMenu = nullptr;
    SetMenu(m_hWnd, BuildMenu(hWindowMenu));
    m_hWndToolBar = ToolBar::Create(m_hWnd);

    CLIENTCREATESTRUCT ccs = {};
    ccs.hWindowMenu = hWindowMenu;
    ccs.idFirstChild = kFirstChildId;
    m_hWndClient = CreateWindowExA(WS_EX_CLIENTEDGE, "MDIClient", nullptr,
                                   WS_CHILD | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL | WS_VISIBLE, 0, 0, 0, 0,
                                   m_hWnd, nullptr, GetModuleHandleA(nullptr), &ccs);
    if (!m_hWndToolBar || !m_hWndClient)
        return false;
    g_pfnClientProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(m_hWndClient, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ClientProc)));
    DragAcceptFiles(m_hWnd, TRUE);
    return true;
}

void HostFrame::OnSize(LPARAM lParam)
{
    // The size is read back, or taken from lParam as a frame built on
    // DefFrameProc does (the lparam variant): a tool that posts WM_SIZE must
    // give the true size for both. The tool narrows the client afterwards;
    // only this message puts it back over everything.
    RECT rc;
    GetClientRect(m_hWnd, &rc);
    if (HostVariant::Current().bLayoutFromLParam)
        SetRect(&rc, 0, 0, LOWORD(lParam), HIWORD(lParam));
    const int nBar = ToolBar::Height();
    RECT rcBar = rc;
    RECT rcClient = rc;
    // The bar's inner edge is the client's outer one.
    if (m_toolBarSide == ToolBar::Side::Top)
        rcBar.bottom = rcClient.top = rc.top + nBar;
    else if (m_toolBarSide == ToolBar::Side::Bottom)
        rcBar.top = rcClient.bottom = rc.bottom - nBar;
    else if (m_toolBarSide == ToolBar::Side::Left)
        rcBar.right = rcClient.left = rc.left + nBar;
    else
        rcBar.left = rcClient.right = rc.right - nBar;
    // A frame narrower than the bar leaves the client empty, not negative.
    const int cxClient = rcClient.right > rcClient.left ? rcClient.right - rcClient.left : 0;
    const int cyClient = rcClient.bottom > rcClient.top ? rcClient.bottom - rcClient.top : 0;
    MoveWindow(m_hWndToolBar, rcBar.left, rcBar.top, rcBar.right - rcBar.left, rcBar.bottom - rcBar.top, TRUE);
    MoveWindow(m_hWndClient, rcClient.left, rcClient.top, cxClient, cyClient, TRUE);
}

void HostFrame::PlaceToolBar(ToolBar::Side side)
{
    m_toolBarSide = side;
    if (ToolBar* pBar = ToolBar::From(m_hWndToolBar))
        pBar->SetSide(side);
    RECT rcClient;
    GetClientRect(m_hWnd, &rcClient);
    OnSize(MAKELPARAM(rcClient.right, rcClient.bottom));
    RECT rc;
    GetWindowRect(m_hWndToolBar, &rc);
    MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rc), 2);
    HostLog::Write(std::string("TOOLBAR ") + ToolBar::SideName(side) + " " + std::to_string(rc.left) + "," +
                   std::to_string(rc.top) + "," + std::to_string(rc.right) + "," + std::to_string(rc.bottom));
}

void HostFrame::SetProject(const std::string& strProject)
{
    m_strProject = strProject;
    SetWindowTextA(m_hWnd, FrameTitle(strProject).c_str());
    HostLog::Write(strProject.empty() ? std::string("PROJECT CLOSE") : "PROJECT " + strProject);
}

void HostFrame::LogMenuBar() const
{
    // "MENUBAR 2 &File &Assist", then each popup's items, "-" for a
    // separator: "POPUP &Assist: &Assist Window|-|&Make".
    HMENU hMenu = GetMenu(m_hWnd);
    const int nCount = hMenu ? GetMenuItemCount(hMenu) : 0;
    auto text = [](HMENU hOf, int i) {
        char szText[128] = {};
        GetMenuStringA(hOf, static_cast<UINT>(i), szText, sizeof(szText), MF_BYPOSITION);
        return std::string(szText);
    };
    std::string strLine = "MENUBAR " + std::to_string(nCount < 0 ? 0 : nCount);
    std::vector<std::string> popups;
    for (int i = 0; i < nCount; ++i)
    {
        strLine += " " + text(hMenu, i);
        HMENU hPopup = GetSubMenu(hMenu, i);
        std::string strItems;
        for (int j = 0; hPopup && j < GetMenuItemCount(hPopup); ++j)
            strItems += (j ? "|" : "") + (text(hPopup, j).empty() ? std::string("-") : text(hPopup, j));
        popups.push_back("POPUP " + text(hMenu, i) + ": " + strItems);
    }
    HostLog::Write(strLine);
    for (const std::string& strPopup : popups)
        HostLog::Write(strPopup);
}

void HostFrame::LogMenuCheck(UINT nCommand) const
{
    // By command, the menu bar's popups and theirs included: whatever popup
    // holds the item, appended by someone else or not.
    HMENU hMenu = GetMenu(m_hWnd);
    const UINT nState = hMenu ? GetMenuState(hMenu, nCommand, MF_BYCOMMAND) : static_cast<UINT>(-1);
    const char* pszState = nState == static_cast<UINT>(-1) ? "absent" : (nState & MF_CHECKED) ? "checked" : "unchecked";
    HostLog::Write("MENUCHECK " + std::to_string(nCommand) + " " + pszState);
}

bool HostFrame::OnCommand(UINT nCommand)
{
    HostLog::Write("COMMAND " + std::to_string(nCommand));
    if (ViewCatalog::IsView(nCommand) && nCommand != ViewCatalog::kBuildResults)
    {
        OpenView(nCommand);
        return true;
    }
    switch (nCommand)
    {
    case 1001:
        EditorWindow::Open(m_hWndClient, "Untitled", false);
        return true;
    case 1006:
    {
        EditorWindow* pEditor = EditorWindow::From(ActiveChild());
        if (pEditor && pEditor->Save())
            HostLog::Write("SAVE " + pEditor->Path());
        return true;
    }
    case 1007:
        if (HWND hWndChild = ActiveChild())
            SendMessageA(hWndChild, WM_CLOSE, 0, 0);
        return true;
    case 1008:
        CloseAll();
        return true;
    case 1040:
        Paste();
        return true;
    case 1033:
    case 1035:
        HostLog::Write("BUILD " + std::to_string(nCommand));
        return true;
    case kCtrlE:
        HostLog::Write("HOSTKEY " + std::to_string(kCtrlE));
        return true;
    case ViewCatalog::kWatchNew:
    case ViewCatalog::kWatchOpen:
    {
        const std::string strTitle = "Watch " + std::to_string(++m_nWatches);
        if (ViewWindow::Open(m_hWndClient, strTitle, ViewCatalog::WatchContent()))
            HostLog::Write("VIEW " + std::to_string(nCommand) + " " + strTitle);
        return true;
    }
    case 1018:
    case 1019:
        if (!m_strNextProject.empty())
            SetProject(m_strNextProject);
        return true;
    case 1030:
        if (!m_strProject.empty())
            SetProject(std::string());
        return true;
    case kToolBarTop:
    case kToolBarLeft:
    case kToolBarBottom:
    case kToolBarRight:
        PlaceToolBar(static_cast<ToolBar::Side>(nCommand - kToolBarTop)); // in the order of the sides
        return true;
    case kLogMenuBar:
        LogMenuBar();
        return true;
    case 1002:
    case 1031:
    case 1032:
    case 1097:
    case 1098:
        return true; // the real host shows a dialog here; the stand-in only logs
    default:
        return false; // the Window menu's child list and the children's own commands
    }
}

void HostFrame::OnDropFiles(HDROP hDrop)
{
    // Full paths only: a list that starts a byte late (":\dir\file") opens nothing.
    const UINT nFiles = DragQueryFileA(hDrop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < nFiles; ++i)
    {
        char szPath[MAX_PATH] = {};
        DragQueryFileA(hDrop, i, szPath, MAX_PATH);
        const bool bDrive = isalpha(static_cast<unsigned char>(szPath[0])) && szPath[1] == ':' && szPath[2] == '\\';
        if (!bDrive && !(szPath[0] == '\\' && szPath[1] == '\\'))
            continue;
        HostLog::Write(std::string("DROP ") + szPath);
        OpenFile(szPath);
    }
    DragFinish(hDrop);
}

void HostFrame::OnRegisteredMessage(UINT nMessage)
{
    char szName[256] = {};
    if (GetClipboardFormatNameA(nMessage, szName, sizeof(szName)) > 0)
        HostLog::Write(std::string("REGMSG ") + szName);
}

void HostFrame::OpenFile(const std::string& strPath)
{
    // Paths are compared as Windows does, without regard to case.
    if (HWND hWndEditor = MdiChild::Find(m_hWndClient, EditorWindow::kClass, strPath, true))
        MdiChild::Activate(hWndEditor);
    else
        EditorWindow::Open(m_hWndClient, strPath, true);
}

void HostFrame::OpenView(UINT nCommand)
{
    const std::string strTitle = ViewCatalog::Title(nCommand, m_strProject);
    if (strTitle.empty())
        return;
    HWND hWndView = MdiChild::Find(m_hWndClient, ViewWindow::kClass, strTitle, false);
    if (hWndView)
        MdiChild::Activate(hWndView);
    else
        hWndView = ViewWindow::Open(m_hWndClient, strTitle, ViewCatalog::Content(nCommand, m_strProject, strTitle));
    if (hWndView)
        HostLog::Write("VIEW " + std::to_string(nCommand) + " " + strTitle);
}

HWND HostFrame::ActiveChild() const
{
    return reinterpret_cast<HWND>(SendMessageA(m_hWndClient, WM_MDIGETACTIVE, 0, 0));
}

void HostFrame::Paste()
{
    // The sender waits for this message: the text is in the editor before
    // SendMessage returns there.
    EditorWindow* pEditor = EditorWindow::From(ActiveChild());
    if (!pEditor)
        return;
    const std::string strText = ClipboardText(m_hWnd);
    if (strText.empty())
        return;
    pEditor->InsertText(strText);
    UpdateWindow(pEditor->Handle());
    HostLog::Write("PASTE " + Escaped(strText));
}

void HostFrame::CloseAll()
{
    const std::vector<HWND> children = MdiChild::Children(m_hWndClient);
    for (HWND hWnd : children)
    {
        if (IsWindow(hWnd))
            SendMessageA(hWnd, WM_CLOSE, 0, 0);
    }
}
} // namespace hostide
