// The host IDE as QUORVANT knows it: the window classes it registers, the
// menu commands we post to its frame, the limits we keep per host, and how
// its windows are found from one another. Plain Win32 and nothing else: the
// tool and the hook library (which runs inside the host) both include it.
#pragma once

#include <windows.h>

namespace HostIde
{
// Window classes. Class names compare exactly.
const char kFrameClass[] = "PFE_Frame";   // the main window
const char kClientClass[] = "MDIClient";  // the MDI client inside the frame
const char kTextClass[] = "PFE_Text";     // an editor, or a view's text pane
const char kToolBarClass[] = "PFE_TBar";  // a tool bar along the frame's top

// WM_COMMAND ids of the host frame's menus (lParam 0), menu by menu: File,
// Edit, Project, Window.
// CloseActive closes the active document, BuildActive builds the active node.
enum Command : UINT
{
    kCmdNewFile = 1001, kCmdOpenFile = 1002, kCmdSaveAll = 1006, kCmdCloseActive = 1007, kCmdCloseAll = 1008,
    kCmdPaste = 1040,
    kCmdNewProject = 1018, kCmdOpenProject = 1019, kCmdCloseProject = 1030, kCmdSaveProject = 1031,
    kCmdEditProject = 1032, kCmdBuild = 1033, kCmdBuildActive = 1035,
    kCmdSaveWindowSet = 1097, kCmdOpenWindowSet = 1098, kCmdNewWatch = 1129, kCmdOpenWatch = 1130
};

// Host frames one instance of the tool serves at a time.
const unsigned kMaxFrames = 16;

// Registered message the tool posts to a host frame and the hook library
// reports back, so that the Assist Window is created inside a record.
const char kCreateDockBarMessage[] = "49ED7A1D-5042-42B2-9095-89DBDA86205C";

inline HWND FindMdiClient(HWND hWndFrame)
{
    return ::FindWindowExA(hWndFrame, nullptr, kClientClass, nullptr);
}

// Has the frame lay out its MDI client again, as after a resize: WM_SIZE
// with its true state and client size, so that a host that lays out from
// the message's lParam (as DefFrameProc does) gets it right as well as one
// that reads its size back.
inline void RelayoutFrame(HWND hWndFrame)
{
    RECT rect;
    if (!::GetClientRect(hWndFrame, &rect))
        return;
    const WPARAM nState = ::IsIconic(hWndFrame) ? SIZE_MINIMIZED : ::IsZoomed(hWndFrame) ? SIZE_MAXIMIZED : SIZE_RESTORED;
    ::PostMessageA(hWndFrame, WM_SIZE, nState, MAKELPARAM(rect.right - rect.left, rect.bottom - rect.top));
}

// The text pane of an MDI child (an editor is its own text window; a view
// holds one as a child), or NULL.
inline HWND FindTextPane(HWND hWndChild)
{
    return ::FindWindowExA(hWndChild, nullptr, kTextClass, nullptr);
}
} // namespace HostIde
