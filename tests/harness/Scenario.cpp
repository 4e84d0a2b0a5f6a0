#include "Scenario.h"

#include "HostInput.h"
#include "Pixels.h"
#include "RealMouse.h"
#include "Tray.h"

#include <functional>

namespace qt
{
namespace
{
const char kMarker[] = "COMMAND 1196";

// Sends a message whose lParam points at a block: tree messages that carry
// pointers are not carried across processes, so the block is copied into
// the window's process and back. fnFix sets pointers within the block.
LRESULT SendBlock(HWND hWnd, UINT nMessage, WPARAM wParam, std::vector<char>& block,
                  const std::function<void(char*)>& fnFix = nullptr)
{
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hWnd, &dwProcess);
    HANDLE hProcess = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, dwProcess);
    char* p = hProcess ? static_cast<char*>(VirtualAllocEx(hProcess, nullptr, block.size(), MEM_COMMIT, PAGE_READWRITE))
                       : nullptr;
    LRESULT lResult = 0;
    if (p)
    {
        if (fnFix)
            fnFix(p);
        if (WriteProcessMemory(hProcess, p, block.data(), block.size(), nullptr))
            lResult = SendMessageA(hWnd, nMessage, wParam, reinterpret_cast<LPARAM>(p));
        ReadProcessMemory(hProcess, p, block.data(), block.size(), nullptr);
        VirtualFreeEx(hProcess, p, 0, MEM_RELEASE);
    }
    if (hProcess)
        CloseHandle(hProcess);
    return lResult;
}

HTREEITEM Next(HWND hWndTree, HTREEITEM hItem, WPARAM code)
{
    return reinterpret_cast<HTREEITEM>(SendMessageA(hWndTree, TVM_GETNEXTITEM, code, reinterpret_cast<LPARAM>(hItem)));
}

bool IsHostEffect(const std::string& strLine)
{
    for (const char* psz : {"COMMAND ", "DROP ", "OPEN ", "CLOSE ", "VIEW ", "LBUTTON", "BUILD ", "SAVE ", "PROJECT "})
        if (strLine.compare(0, strlen(psz), psz) == 0 && strLine != kMarker)
            return true;
    return false;
}

BOOL CALLBACK FindTreeChild(HWND hWnd, LPARAM lParam)
{
    char szClass[32] = "";
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return lstrcmpA(szClass, WC_TREEVIEWA) != 0 || (*reinterpret_cast<HWND*>(lParam) = hWnd, FALSE);
}
} // namespace

std::string MakeProject(const char* pszTag, const std::vector<std::string>& names)
{
    const std::string strDir = MakeScratchDir(pszTag);
    for (const std::string& strName : names)
        WriteTextFile(strDir + strName, "; " + strName + "\r\n");
    return strDir;
}

std::vector<std::string> UntilMarker(const Host& host)
{
    const int nBefore = host.CountLog(kMarker);
    PostMessageA(host.Frame(), WM_COMMAND, 1196, 0);
    if (!host.WaitLog(kMarker, 5000, nBefore + 1))
        return {"no marker"};
    std::vector<std::string> lines;
    int nMarkers = 0;
    for (const std::string& strLine : host.Log())
    {
        if (strLine == kMarker && ++nMarkers > nBefore)
            break;
        if (nMarkers == nBefore && IsHostEffect(strLine))
            lines.push_back(strLine);
    }
    return lines;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string s;
    for (const std::string& strLine : lines)
        s += (s.empty() ? "" : " | ") + strLine;
    return s;
}

std::string NodeText(HWND hWndTree, HTREEITEM hItem)
{
    std::vector<char> block(sizeof(TVITEMA) + 512);
    TVITEMA* pItem = reinterpret_cast<TVITEMA*>(block.data());
    pItem->mask = TVIF_TEXT;
    pItem->hItem = hItem;
    pItem->cchTextMax = 511;
    if (!SendBlock(hWndTree, TVM_GETITEMA, 0, block, [&](char* p) { pItem->pszText = p + sizeof(TVITEMA); }))
        return "<unread>";
    return block.data() + sizeof(TVITEMA);
}

std::vector<std::string> NodeChildren(HWND hWndTree, HTREEITEM hParent)
{
    std::vector<std::string> texts;
    for (HTREEITEM h = Next(hWndTree, hParent, hParent ? TVGN_CHILD : TVGN_ROOT); h; h = Next(hWndTree, h, TVGN_NEXT))
        texts.push_back(NodeText(hWndTree, h));
    return texts;
}

HTREEITEM FindNode(HWND hWndTree, const std::string& strPath)
{
    HTREEITEM h = Next(hWndTree, nullptr, TVGN_ROOT);
    for (size_t nAt = 0; h && nAt < strPath.size();)
    {
        size_t nEnd = strPath.find('/', nAt);
        nEnd = nEnd == std::string::npos ? strPath.size() : nEnd;
        for (h = Next(hWndTree, h, TVGN_CHILD); h && NodeText(hWndTree, h) != strPath.substr(nAt, nEnd - nAt);)
            h = Next(hWndTree, h, TVGN_NEXT);
        nAt = nEnd + 1;
    }
    return h;
}

Scene::Scene(const char* pszTag, const std::string& strHostArguments, const std::string& strSettings)
    : HostAndTool(pszTag, strHostArguments, strSettings)
{
    hWndFrame = host.Frame();
    ok = ok && WaitFor(
                   [&] {
                       hWndDock = FindDockBar(hWndFrame);
                       if (hWndDock && !hWndTree)
                           EnumChildWindows(hWndDock, FindTreeChild, reinterpret_cast<LPARAM>(&hWndTree));
                       return hWndTree && IsWindowVisible(hWndTree);
                   },
                   10000);
    // Then until the Assist Window has its place beside the laid-out frame
    // and the first fill of the tree is done.
    ok = ok && WaitStill([&] {
             RECT rc = {};
             GetWindowRect(hWndTree, &rc);
             return std::to_string(rc.left) + "," + std::to_string(rc.top) + "," + std::to_string(rc.bottom) + "," +
                    std::to_string(SendMessageA(hWndTree, TVM_GETCOUNT, 0, 0));
         });
}

bool WaitStill(const std::function<std::string()>& fnState, DWORD dwStillMs, DWORD dwTimeoutMs)
{
    std::string strLast = "\1";
    DWORD dwSince = GetTickCount();
    return WaitFor(
        [&] {
            const std::string strNow = fnState();
            if (strNow != strLast)
                dwSince = GetTickCount();
            strLast = strNow;
            return !strNow.empty() && GetTickCount() - dwSince >= dwStillMs;
        },
        dwTimeoutMs);
}

POINT Scene::NodePoint(HTREEITEM hItem) const
{
    SendMessageA(hWndTree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(hItem));
    std::vector<char> block(sizeof(RECT));
    *reinterpret_cast<HTREEITEM*>(block.data()) = hItem;
    if (!SendBlock(hWndTree, TVM_GETITEMRECT, TRUE, block))
        return POINT{-1, -1};
    const RECT* prc = reinterpret_cast<const RECT*>(block.data());
    POINT pt = {(prc->left + prc->right) / 2, (prc->top + prc->bottom) / 2};
    ClientToScreen(hWndTree, &pt);
    return pt;
}

// The node's point once it can take a click: a click soon after the last
// would make a double click of the two, and under Wine the Assist Window is
// a pop-up the tool keeps above the frame as it is activated and moved.
static POINT ClickPoint(const Scene& s, const std::string& strNode)
{
    static DWORD s_dwLast = GetTickCount() - GetDoubleClickTime();
    HTREEITEM hItem = FindNode(s.hWndTree, strNode);
    POINT pt = {-1, -1};
    if (!hItem || !WaitFor([] { return VisibleMenu() == nullptr; }, 3000))
        return pt;
    while (GetTickCount() - s_dwLast <= GetDoubleClickTime())
        Sleep(50);
    pt = s.NodePoint(hItem);
    s_dwLast = GetTickCount();
    return WaitFor([&] { return WindowFromPoint(pt) == s.hWndTree; }, 5000) ? pt : POINT{-1, -1};
}

bool Scene::ClickNode(const std::string& strNode, int nClicks)
{
    const POINT pt = ClickPoint(*this, strNode);
    return pt.x >= 0 && XDo("mousemove " + std::to_string(pt.x) + " " + std::to_string(pt.y) + " click --repeat " +
                                std::to_string(nClicks) + " --delay 80 1",
                            pt);
}

bool Scene::EnterOn(const std::string& strNode)
{
    HTREEITEM hItem = FindNode(hWndTree, strNode);
    return ClickNode(strNode, 1) &&
           WaitFor([&] { return SendMessageA(hWndTree, TVM_GETNEXTITEM, TVGN_CARET, 0) == reinterpret_cast<LRESULT>(hItem); },
                   3000) &&
           XKeys("Return");
}

bool Scene::ClickIntoHost() const
{
    RECT rc = {};
    HWND hWndClient = host.FindChildOfClass(hWndFrame, "MDIClient");
    GetClientRect(hWndClient, &rc);
    MapWindowPoints(hWndClient, nullptr, reinterpret_cast<POINT*>(&rc), 2);
    const POINT pt = {rc.right - 40, rc.bottom - 40};
    return XDo("mousemove " + std::to_string(pt.x) + " " + std::to_string(pt.y) + " click 1", pt) &&
           WaitFor([&] { return GetForegroundWindow() == hWndFrame; }, 3000);
}

bool Scene::ChooseFromMenu(const std::string& strNode, const std::string& strKeys)
{
    const POINT pt = ClickPoint(*this, strNode);
    if (pt.x < 0)
        return false;
    ClickAt(pt, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    HWND hWndMenu = nullptr;
    if (!WaitFor([&] { return (hWndMenu = VisibleMenu()) != nullptr; }, 5000))
        return false;
    RECT rc = {};
    GetWindowRect(hWndMenu, &rc);
    ptMenu = POINT{rc.left, rc.top};
    // Greyed items are those drawn in grey text: bands of rows with grey
    // pixels, the border and the separators' single rows aside. Counted
    // once the menu is painted: its bands of text unchanged for a while.
    WaitStill([&] {
        ScreenShot shot(hWndMenu);
        int nBands[2] = {}, nRun[2] = {}; // grey, black
        for (int y = 3; y < shot.Height() - 3; ++y)
        {
            bool b[2] = {};
            for (int x = 4; x < shot.Width() - 4; ++x)
            {
                b[0] = b[0] || shot.Pixel(x, y) == RGB(128, 128, 128);
                b[1] = b[1] || shot.Pixel(x, y) == GetSysColor(COLOR_MENUTEXT);
            }
            for (int i : {0, 1})
                nBands[i] += (nRun[i] = b[i] ? nRun[i] + 1 : 0) == 3 ? 1 : 0;
        }
        nGreyed = nBands[0];
        return nBands[0] + nBands[1] ? std::to_string(nBands[0]) + "," + std::to_string(nBands[1]) : std::string();
    }, 300, 3000);
    for (char ch : strKeys)
        SendKeys({static_cast<WORD>(ch == '\x1b' ? VK_ESCAPE : ch)});
    return WaitFor([] { return VisibleMenu() == nullptr; }, 5000);
}
} // namespace qt
