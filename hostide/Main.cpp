// The stand-in host IDE: a plain MDI program that honours the host side of
// the tool's contract and logs what reaches it, so tests can drive real
// windows in a second process.
//
// Command line (HostOptions.h):
//   /log <file>          append the event log to this file
//   /project <path>      the open project: the frame's title is "Host IDE - <path>"
//   /open <file>         open an editor for the file (repeatable, in order)
//   /view <id>           open the view of this command id, 0 for Build Results
//   /size <w>x<h>, /pos <x>,<y>   the frame's size and place
//   /nextproject <path>  the project that New Project (1018) and Open
//                        Project (1019) open; without it they do nothing
//
// Commands the frame takes (WM_COMMAND, lParam 0), each logged first as
// "COMMAND <id>":
//   1001 new editor "Untitled"; 1002 open file (a dialog in the real host)
//   1006 save the active editor; 1007 close the active child (WM_CLOSE);
//   1008 close every child; 1040 paste the clipboard's text into the active
//   editor; 1033, 1035 build, build node; 1018, 1019 open /nextproject;
//   1030 close the project (the title loses the path); 1031, 1032, 1097,
//   1098 only logged (dialogs in the real host); 1117-1123, 1128, 1164 open
//   or activate their view; 1129, 1130 open a new watch window "Watch <n>";
//   1099 Ctrl+E, the frame's accelerator.
//   Private, for tests: 1192 to 1195 move the tool bar to the top, left,
//   bottom or right edge (upright at left and right) and lay the MDI client
//   out in the rest of the client area; 1196 logs the menu bar; 1197 logs
//   the check state of the menu item whose command id is in lParam, 1198
//   how often the frame has lost the activation (neither logged as COMMAND).
// Views: titles as in ViewCatalog ("Program Memory Window"...; the listing
// and map views are titled with the project's path ending in .lst, .map);
// each holds one text window of class "PFE_Text", which activates the view
// on a click. A file dropped on the frame (WM_DROPFILES) opens in an editor
// titled with its full path, or activates the editor that shows it.
//
// Log lines (one event each, flushed at once):
//   START pid=<n> / READY / EXIT         the program's life
//   COMMAND <id>                          any WM_COMMAND reaching the frame
//   OPEN <path>                           an editor opened
//   DROP <path>                           a file of a drop, before it opens
//   VIEW <id> <title>                     a view or watch opened or activated
//   CLOSE <title>                         an MDI child got WM_CLOSE
//   SAVE <path> / BUILD <id> / PASTE <text, \r \n escaped> / HOSTKEY 1099
//   SETFOCUS <class> <title>, SETFOCUS MDIClient
//   KEYDOWN <title> <key> ctrl=<0|1>      a key in an editor
//   VSCROLL <title> <code>                a scroll-bar message to a child
//   LBUTTONDOWN <view title> <x>,<y>, LBUTTONUP ...   a click on a view's text
//   REGMSG <name>                         a registered message at the frame
//   PROJECT <path> / PROJECT CLOSE        the open project changed
//   TOOLBAR <side> <l>,<t>,<r>,<b>        the tool bar moved (frame client coordinates)
//   MENUBAR <n> <text> <text>...          the menu bar's top-level items (1196)
//   MENUCHECK <id> checked|unchecked|absent   a menu item's check mark (1197)
//   DEACTIVATED <n>                       the frame's WM_ACTIVATE WA_INACTIVE count (1198)
#include "EditorWindow.h"
#include "HostFrame.h"
#include "HostLog.h"
#include "HostOptions.h"
#include "LineNumbers.h"
#include "ToolBar.h"
#include "ViewWindow.h"

#include <windows.h>

#include <stdlib.h>

using namespace hostide;

namespace
{
bool RegisterClasses()
{
    return HostFrame::Register() && ToolBar::Register() && EditorWindow::Register() && LineNumbers::Register() &&
           ViewWindow::Register();
}
} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int nShowCmd)
{
    const HostOptions options = HostOptions::Parse(__argc, __argv);
    HostLog::SetPath(options.strLog);
    HostLog::Write("START pid=" + std::to_string(GetCurrentProcessId()));

    if (!RegisterClasses())
        return 1;
    HWND hWndFrame = HostFrame::Create(options.strProject, options.x, options.y, options.cx, options.cy);
    HostFrame* pFrame = HostFrame::From(hWndFrame);
    if (!pFrame)
        return 1;
    pFrame->SetNextProject(options.strNextProject);
    ShowWindow(hWndFrame, nShowCmd == SW_HIDE ? SW_SHOWNORMAL : nShowCmd);
    UpdateWindow(hWndFrame);

    for (const HostOptions::Window& window : options.windows)
    {
        if (window.bView)
        {
            char* pszEnd = nullptr;
            const unsigned long nCommand = strtoul(window.strArgument.c_str(), &pszEnd, 10);
            if (pszEnd && *pszEnd == '\0' && pszEnd != window.strArgument.c_str())
                pFrame->OpenView(static_cast<UINT>(nCommand));
        }
        else
            pFrame->OpenFile(window.strArgument);
    }
    HostLog::Write("READY");

    // Ctrl+E is the host's own accelerator: the tool must still see the key
    // although the loop turns it into a command. Ctrl+Enter is not one; it
    // reaches the editor as WM_KEYDOWN. The table lives as long as the process.
    ACCEL accel = {FCONTROL | FVIRTKEY, 'E', static_cast<WORD>(HostFrame::kCtrlE)};
    HACCEL hAccel = CreateAcceleratorTableA(&accel, 1);
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
    {
        // The frame may be gone while messages are still queued.
        HWND hWndClient = IsWindow(hWndFrame) ? pFrame->Client() : nullptr;
        if (hWndClient && TranslateMDISysAccel(hWndClient, &msg))
            continue;
        if (IsWindow(hWndFrame) && TranslateAcceleratorA(hWndFrame, hAccel, &msg))
            continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    HostLog::Write("EXIT");
    return static_cast<int>(msg.wParam);
}
