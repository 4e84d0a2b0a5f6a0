// The demo's scripted tour, one step per run, with real input as a user's:
//   DEMOTOUR assist | wheel | ctrl-e | close-editor | comment-editor | paste | tree-menu |
//            tree-open | assist-menu | close-menu | about | close-about | tray-menu | exit
// The demo script takes a screenshot after each step.
#include "Fixture.h"
#include "RealMouse.h"
#include "Tray.h"

#include <commctrl.h>
#include <stdio.h>
#include <string.h>

using namespace qt;

namespace
{
HWND HostFrame()
{
    return FindWindowA("PFE_Frame", nullptr);
}

HWND ChildEndingWith(HWND hWndClient, const char* pszEnd)
{
    for (HWND hWnd = GetWindow(hWndClient, GW_CHILD); hWnd; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
    {
        char szTitle[MAX_PATH] = {};
        GetWindowTextA(hWnd, szTitle, sizeof(szTitle));
        const size_t nTitle = strlen(szTitle);
        const size_t nEnd = strlen(pszEnd);
        if (nTitle >= nEnd && _stricmp(szTitle + nTitle - nEnd, pszEnd) == 0)
            return hWnd;
    }
    return nullptr;
}

void Key(WORD vk, bool bUp)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = vk;
    input.ki.dwFlags = bUp ? KEYEVENTF_KEYUP : 0;
    SendInput(1, &input, sizeof(INPUT));
}

// The Comment Editor the tool shows over the host frame, or NULL.
HWND CommentEditor()
{
    return FindWindowA("#32770", "Comment Editor");
}

// The main.asm editor active, in front, with the pointer over it.
HWND FocusEditor()
{
    HWND hWndFrame = HostFrame();
    HWND hWndClient = FindWindowExA(hWndFrame, nullptr, "MDIClient", nullptr);
    HWND hWndEditor = ChildEndingWith(hWndClient, "main.asm");
    if (!hWndEditor)
        return nullptr;
    SetForegroundWindow(hWndFrame);
    SendMessageA(hWndClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hWndEditor), 0);
    ClickAt(Centre(hWndEditor), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Sleep(200);
    return hWndEditor;
}
struct TreeSearch
{
    HWND hWndOwner;
    HWND hWndTree;
};

BOOL CALLBACK FindTreeIn(HWND hWnd, LPARAM lParam)
{
    TreeSearch* pSearch = reinterpret_cast<TreeSearch*>(lParam);
    char szClass[64] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    if (strcmp(szClass, WC_TREEVIEWA) == 0 && IsWindowVisible(hWnd))
    {
        pSearch->hWndTree = hWnd;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK FindTreeOwnedBy(HWND hWnd, LPARAM lParam)
{
    TreeSearch* pSearch = reinterpret_cast<TreeSearch*>(lParam);
    if (GetWindow(hWnd, GW_OWNER) == pSearch->hWndOwner || GetParent(hWnd) == pSearch->hWndOwner)
        EnumChildWindows(hWnd, FindTreeIn, lParam);
    return pSearch->hWndTree == nullptr;
}

// The Project tree of the Assist Window: a pop-up owned by the host frame
// under Wine, a child of it on Windows.
HWND ProjectTree()
{
    TreeSearch search = {HostFrame(), nullptr};
    if (!search.hWndOwner)
        return nullptr;
    EnumChildWindows(search.hWndOwner, FindTreeIn, reinterpret_cast<LPARAM>(&search));
    if (!search.hWndTree)
        EnumWindows(FindTreeOwnedBy, reinterpret_cast<LPARAM>(&search));
    return search.hWndTree;
}

// Tree messages that take a pointer read and write it in the tree's own
// process, so the buffer is made there.
class RemoteBuffer
{
public:
    RemoteBuffer(HWND hWnd, SIZE_T nSize) : m_nSize(nSize)
    {
        DWORD dwProcessId = 0;
        GetWindowThreadProcessId(hWnd, &dwProcessId);
        m_hProcess = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, dwProcessId);
        if (m_hProcess)
            m_pRemote = VirtualAllocEx(m_hProcess, nullptr, nSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    ~RemoteBuffer()
    {
        if (m_pRemote)
            VirtualFreeEx(m_hProcess, m_pRemote, 0, MEM_RELEASE);
        if (m_hProcess)
            CloseHandle(m_hProcess);
    }
    RemoteBuffer(const RemoteBuffer&) = delete;
    RemoteBuffer& operator=(const RemoteBuffer&) = delete;

    LPARAM Address() const { return reinterpret_cast<LPARAM>(m_pRemote); }
    bool Write(const void* pData, SIZE_T nSize) const
    {
        return m_pRemote && nSize <= m_nSize && WriteProcessMemory(m_hProcess, m_pRemote, pData, nSize, nullptr);
    }
    bool Read(void* pData, SIZE_T nSize) const
    {
        return m_pRemote && nSize <= m_nSize && ReadProcessMemory(m_hProcess, m_pRemote, pData, nSize, nullptr);
    }

private:
    SIZE_T m_nSize;
    HANDLE m_hProcess = nullptr;
    void* m_pRemote = nullptr;
};

std::string ItemText(HWND hWndTree, HTREEITEM hItem)
{
    struct Block
    {
        TVITEMA item;
        char szText[MAX_PATH];
    };
    RemoteBuffer remote(hWndTree, sizeof(Block));
    Block block = {};
    block.item.mask = TVIF_TEXT | TVIF_HANDLE;
    block.item.hItem = hItem;
    block.item.pszText = reinterpret_cast<char*>(remote.Address() + offsetof(Block, szText));
    block.item.cchTextMax = MAX_PATH;
    if (!remote.Write(&block, sizeof(block)) || !SendMessageA(hWndTree, TVM_GETITEMA, 0, remote.Address()) ||
        !remote.Read(&block, sizeof(block)))
        return std::string();
    block.szText[MAX_PATH - 1] = 0;
    return block.szText;
}

// The node named pszName anywhere in the tree (depth first), or NULL.
HTREEITEM FindItem(HWND hWndTree, HTREEITEM hItem, const char* pszName)
{
    for (; hItem; hItem = TreeView_GetNextSibling(hWndTree, hItem))
    {
        if (_stricmp(ItemText(hWndTree, hItem).c_str(), pszName) == 0)
            return hItem;
        if (HTREEITEM hFound = FindItem(hWndTree, TreeView_GetChild(hWndTree, hItem), pszName))
            return hFound;
    }
    return nullptr;
}

// The middle of a node's text on the screen.
bool ItemPoint(HWND hWndTree, HTREEITEM hItem, POINT& pt)
{
    RemoteBuffer remote(hWndTree, sizeof(RECT));
    RECT rc = {};
    memcpy(&rc, &hItem, sizeof(hItem)); // the message reads the item from the rectangle's place
    if (!remote.Write(&rc, sizeof(rc)) || !SendMessageA(hWndTree, TVM_GETITEMRECT, TRUE, remote.Address()) ||
        !remote.Read(&rc, sizeof(rc)))
        return false;
    pt = POINT{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
    ClientToScreen(hWndTree, &pt);
    return true;
}

bool PointAtNode(const char* pszName, POINT& pt)
{
    HWND hWndTree = ProjectTree();
    if (!hWndTree)
        return false;
    HTREEITEM hItem = FindItem(hWndTree, TreeView_GetRoot(hWndTree), pszName);
    if (!hItem)
        return false;
    // A node in a folded group has no place on the screen until it is unfolded.
    TreeView_EnsureVisible(hWndTree, hItem);
    return hItem && ItemPoint(hWndTree, hItem, pt);
}
} // namespace

int main(int argc, char** argv)
{
    const char* pszStep = argc > 1 ? argv[1] : "";
    if (strcmp(pszStep, "wheel") == 0)
    {
        if (!FocusEditor())
            return 1;
        for (int i = 0; i < 5; ++i)
        {
            INPUT input = {};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = MOUSEEVENTF_WHEEL;
            input.mi.mouseData = static_cast<DWORD>(-WHEEL_DELTA);
            SendInput(1, &input, sizeof(INPUT));
            Sleep(80);
        }
        return 0;
    }
    if (strcmp(pszStep, "ctrl-e") == 0)
    {
        if (!FocusEditor())
            return 1;
        Key(VK_CONTROL, false);
        Key('E', false);
        Key('E', true);
        Key(VK_CONTROL, true);
        return 0;
    }
    if (strcmp(pszStep, "comment-editor") == 0)
    {
        // At the end of the line under the pointer, Ctrl+Enter opens the
        // Comment Editor; a comment is typed into it.
        if (!FocusEditor())
            return 1;
        Key(VK_END, false);
        Key(VK_END, true);
        Key(VK_CONTROL, false);
        Key(VK_RETURN, false);
        Key(VK_RETURN, true);
        Key(VK_CONTROL, true);
        if (!WaitFor([] { return CommentEditor() != nullptr && IsWindowVisible(CommentEditor()); }, 5000))
            return 1;
        SetForegroundWindow(CommentEditor());
        Sleep(200);
        for (const wchar_t* p = L"    ; the LED shows the loop count"; *p; ++p)
        {
            INPUT input[2] = {};
            input[0].type = input[1].type = INPUT_KEYBOARD;
            input[0].ki.wScan = input[1].ki.wScan = *p;
            input[0].ki.dwFlags = KEYEVENTF_UNICODE;
            input[1].ki.dwFlags = KEYEVENTF_UNICODE | KEYEVENTF_KEYUP;
            SendInput(2, input, sizeof(INPUT));
        }
        return 0;
    }
    if (strcmp(pszStep, "paste") == 0)
    {
        // A real click on " Paste": the line goes into main.asm through the clipboard.
        HWND hWndDialog = CommentEditor();
        if (!hWndDialog)
            return 1;
        ClickAt(Centre(GetDlgItem(hWndDialog, IDOK)), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        return WaitFor([] { return CommentEditor() == nullptr || !IsWindowVisible(CommentEditor()); }, 10000) ? 0 : 1;
    }
    if (strcmp(pszStep, "close-editor") == 0)
    {
        // The external editor of the demo is Wine's notepad: it covers the tray.
        HWND hWnd = FindWindowA("Notepad", nullptr);
        if (!hWnd)
            return 1;
        PostMessageA(hWnd, WM_CLOSE, 0, 0);
        return WaitFor([] { return FindWindowA("Notepad", nullptr) == nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "assist") == 0)
    {
        // The Assist Window is up with the project's files in its tree.
        return WaitFor([] { return ProjectTree() != nullptr && TreeView_GetCount(ProjectTree()) > 16; }, 15000) ? 0 : 1;
    }
    if (strcmp(pszStep, "tree-menu") == 0)
    {
        // A right click on util.c in the Project tree: its context menu.
        POINT pt = {};
        if (!PointAtNode("util.c", pt))
        {
            fprintf(stderr, "DEMOTOUR: no util.c node in the Project tree\n");
            return 1;
        }
        ClickAt(pt, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
        return WaitFor([] { return VisibleMenu() != nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "tree-open") == 0)
    {
        // The menu's "&Open" (its first item) has the host open util.c.
        HWND hWndMenu = VisibleMenu();
        if (!hWndMenu)
            return 1;
        RECT rc = {};
        GetWindowRect(hWndMenu, &rc);
        if (!RealClick(POINT{rc.left + 20, rc.top + 10}))
            return 1;
        HWND hWndClient = FindWindowExA(HostFrame(), nullptr, "MDIClient", nullptr);
        return WaitFor([hWndClient] { return ChildEndingWith(hWndClient, "util.c") != nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "assist-menu") == 0)
    {
        // The host's "&Assist" menu, opened with the keyboard as a user would.
        if (!FocusEditor())
            return 1;
        return XKeys("alt+a") && WaitFor([] { return VisibleMenu() != nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "close-menu") == 0)
        return XKeys("Escape Escape") && WaitFor([] { return VisibleMenu() == nullptr; }, 5000) ? 0 : 1;
    if (strcmp(pszStep, "about") == 0)
    {
        const std::vector<HWND> icons = TrayIcons();
        return !icons.empty() && ChooseFromTrayMenu(icons.back(), 'A') &&
                       WaitFor([] { return FindWindowA(nullptr, "About QUORVANT") != nullptr; }, 5000)
                   ? 0
                   : 1;
    }
    if (strcmp(pszStep, "close-about") == 0)
    {
        PostMessageA(FindWindowA(nullptr, "About QUORVANT"), WM_COMMAND, IDOK, 0);
        return WaitFor([] { return FindWindowA(nullptr, "About QUORVANT") == nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "tray-menu") == 0)
    {
        const std::vector<HWND> icons = TrayIcons();
        if (icons.empty())
            return 1;
        ClickAt(Centre(icons.back()), MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        return WaitFor([] { return VisibleMenu() != nullptr; }, 5000) ? 0 : 1;
    }
    if (strcmp(pszStep, "exit") == 0)
    {
        // The menu is open: its last item is "E&xit".
        HWND hWndMenu = VisibleMenu();
        if (!hWndMenu)
            return 1;
        RECT rc = {};
        GetWindowRect(hWndMenu, &rc);
        ClickAt(POINT{rc.left + 20, rc.bottom - 10}, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        return 0;
    }
    fprintf(stderr, "usage: DEMOTOUR assist|wheel|ctrl-e|close-editor|comment-editor|paste|tree-menu|tree-open|"
                    "assist-menu|close-menu|about|close-about|tray-menu|exit\n");
    return 2;
}
