// The demo's scripted tour, one step per run, with real input as a user's:
//   DEMOTOUR wheel | ctrl-e | close-editor | comment-editor | paste | tray-menu | exit
// The demo script takes a screenshot after each step.
#include "Fixture.h"
#include "Tray.h"

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
        // The menu is open: its first item is "&Exit".
        HWND hWndMenu = VisibleMenu();
        if (!hWndMenu)
            return 1;
        RECT rc = {};
        GetWindowRect(hWndMenu, &rc);
        ClickAt(POINT{rc.left + 20, rc.top + 10}, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
        return 0;
    }
    fprintf(stderr, "usage: DEMOTOUR wheel|ctrl-e|close-editor|comment-editor|paste|tray-menu|exit\n");
    return 2;
}
