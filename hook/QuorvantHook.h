// The contract between QUORVANT.exe and its hook library QUORVANT.dll.
//
// The library runs inside the host IDE's process. It reports the host's windows
// and the messages the tool acts on as WM_COPYDATA records sent to the window
// given to installHook, and it carries out the few requests that only work from
// inside the host's process (moving the focus). This header is all the two
// share: the library includes nothing of the tool, the tool nothing of the
// library's inner working.
#pragma once

#include <windows.h>
#include <stdint.h>

#ifdef QUORVANT_HOOK_BUILD
#define QUORVANT_HOOK_API extern "C" __declspec(dllexport)
#else
#define QUORVANT_HOOK_API extern "C" __declspec(dllimport)
#endif

// Starts reporting to hWndTool: every host IDE window that exists already is
// reported at once (parents before children), later ones as they are created.
QUORVANT_HOOK_API BOOL __cdecl installHook(HWND hWndTool);
// Stops reporting: every window still reported gets its HOOK_DESTROY record,
// delivered asynchronously by each host; the tool waits for them. A popup
// that the tool had appended to a host's menu bar is taken out first; so is
// one of a tool that ended without uninstalling, as soon as the host notices
// (at the latest when the user opens its menus).
QUORVANT_HOOK_API BOOL __cdecl uninstallHook();

// Besides the records the tool acts on, the host frame reports, as
// HOOK_MESSAGE_DONE, WM_MOVE, WM_SHOWWINDOW and those WM_WINDOWPOSCHANGED that
// move, size, show or hide it (not those of activation or z-order alone): a
// window of the tool that floats over the frame follows it with them.

// WM_COPYDATA dwData: the record code.
enum HookCode
{
    HOOK_CREATE = 1,       // a host window exists; word 0 holds its kind
    HOOK_MESSAGE = 2,      // the host window is about to handle a message
    HOOK_MESSAGE_DONE = 3, // the host window has handled a message (or a posted one arrived)
    HOOK_DESTROY = 4       // the host window is gone; always the window's last record
};

// Word 0 of a HOOK_CREATE record.
enum HookKind
{
    KIND_FRAME = 1,  // the host frame, class "PFE_Frame"
    KIND_CLIENT = 2, // its MDI client, class "MDIClient"
    KIND_CHILD = 3,  // an MDI child: child of "MDIClient" under "PFE_Frame"
    KIND_TEXT = 4,   // a "PFE_Text" window inside an MDI child: its parent scrolls
    KIND_NUM = 5     // any other window inside an MDI child: its parent takes the focus
};

// Word 4 of a message record: the host's key state when the message arrived.
// The tool's own thread has a key state of its own on Windows, so a shortcut
// must not rely on GetKeyState in the tool alone.
enum HookFlags
{
    HOOK_FLAG_CONTROL = 1 // Ctrl was held in the host
};

// Five 32-bit words, whatever the bitness: window handles are 32-bit values
// on 64-bit Windows too, so one layout serves both builds.
struct HookRecord
{
    uint32_t nKind;    // word 0: kind, creation records only
    uint32_t hWnd;     // word 1: the host window
    uint32_t nMessage; // word 2: message number, message records only
    uint32_t wParam;   // word 3: the message's wParam, message records only
    uint32_t nFlags;   // word 4: HookFlags, message records only
};

static_assert(sizeof(HookRecord) == 20, "a record is five 32-bit words");

inline HWND HookRecordWindow(const HookRecord* pRecord)
{
    // Sign-extend: that is how 64-bit Windows widens a 32-bit handle.
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(static_cast<int32_t>(pRecord->hWnd)));
}

inline uint32_t HookWindowWord(HWND hWnd)
{
    return static_cast<uint32_t>(reinterpret_cast<UINT_PTR>(hWnd));
}

// Requests the tool makes of the library inside the host. Each is a registered
// message posted to a reported host window; the library's subclass of that
// window carries it out on the host's own thread.
//
// Windows refuses SetFocus on a window of another thread, and Wine does too
// (it returns NULL and the host gets no WM_SETFOCUS), so the focus is moved
// from inside the host.
#define QUORVANT_REQUEST_SETFOCUS "QUORVANT.HostSetFocus.7C1E2B90"

inline UINT HostSetFocusMessage()
{
    static const UINT uMessage = RegisterWindowMessageA(QUORVANT_REQUEST_SETFOCUS);
    return uMessage;
}

// Asks the host to give hWnd the keyboard focus. Fails silently when hWnd is
// gone or is not a reported window.
inline void RequestHostFocus(HWND hWnd)
{
    PostMessageA(hWnd, HostSetFocusMessage(), 0, 0);
}

// Requests that carry data go as WM_COPYDATA sent to the host frame, with one
// of these codes as dwData; the library's subclass of the frame carries them
// out on the host's thread and answers nonzero when it did. The host's own
// procedure never sees them. They are sent, not posted, so that what the tool
// posts to the frame afterwards (the close command after a drop) comes after
// them; SMTO_ABORTIFHUNG and a short limit keep a hung host from holding the
// tool.
//
// Both Windows and Wine take these from inside the host only: a drop block
// lives in the memory of the process that made it (the host's DragFinish frees
// it), and Wine refuses to edit another process's menus (IsMenu fails on the
// host's menu bar handle and AppendMenu does nothing). Doing them in the host
// is right on both, so there is one path.
enum HostRequestCode
{
    REQUEST_DROPFILE = 0x51560101,      // lpData: the file's ANSI path with its NUL
    REQUEST_APPENDPOPUP = 0x51560102,   // lpData: HostPopupRequest
    REQUEST_REMOVEPOPUP = 0x51560103,   // no data: removes what REQUEST_APPENDPOPUP appended
    REQUEST_CHECKMENUITEM = 0x51560104  // lpData: HostCheckRequest
};

const UINT kHostRequestTimeout = 1000; // ms

// A popup to append to the host frame's menu bar: its text and up to eight
// plain items (separators have id 0 and no text).
struct HostPopupRequest
{
    char szText[64];
    uint32_t nItems;
    struct Item
    {
        uint32_t nId;
        char szText[64];
    } items[8];
};

struct HostCheckRequest
{
    uint32_t hMenu;  // a menu of the host, as a 32-bit word
    uint32_t nId;    // item by command
    uint32_t nCheck; // MF_CHECKED or MF_UNCHECKED
};

inline BOOL SendHostRequest(HWND hWndFrame, ULONG_PTR nCode, const void* pData, DWORD cbData)
{
    COPYDATASTRUCT cds = {nCode, cbData, const_cast<void*>(pData)};
    DWORD_PTR dwResult = 0;
    if (!SendMessageTimeoutA(hWndFrame, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds),
                             SMTO_NORMAL | SMTO_ABORTIFHUNG, kHostRequestTimeout, &dwResult))
        return FALSE;
    return dwResult != 0;
}

// Has the host frame open a file as if it had been dropped on it: the library
// builds the DROPFILES block (one ANSI name) in the host and posts the frame
// WM_DROPFILES with it.
inline BOOL RequestHostDropFile(HWND hWndFrame, LPCSTR pszPath)
{
    return SendHostRequest(hWndFrame, REQUEST_DROPFILE, pszPath, static_cast<DWORD>(lstrlenA(pszPath) + 1));
}

// Appends a copy of hPopup, a popup menu of the tool, to the end of the host
// frame's menu bar under pszText and redraws the bar. One popup per frame:
// a second request replaces nothing and fails.
inline BOOL RequestHostAppendPopup(HWND hWndFrame, HMENU hPopup, LPCSTR pszText)
{
    HostPopupRequest request = {};
    lstrcpynA(request.szText, pszText, sizeof(request.szText));
    const int nCount = GetMenuItemCount(hPopup);
    for (int i = 0; i < nCount && request.nItems < 8; ++i)
    {
        HostPopupRequest::Item& item = request.items[request.nItems++];
        const UINT nId = GetMenuItemID(hPopup, i);
        item.nId = nId == static_cast<UINT>(-1) ? 0 : nId;
        GetMenuStringA(hPopup, i, item.szText, sizeof(item.szText), MF_BYPOSITION);
    }
    return SendHostRequest(hWndFrame, REQUEST_APPENDPOPUP, &request, sizeof(request));
}

// Removes the popup that RequestHostAppendPopup appended to the frame's menu
// bar (that item alone, wherever it stands now) and redraws the bar.
inline BOOL RequestHostRemovePopup(HWND hWndFrame)
{
    return SendHostRequest(hWndFrame, REQUEST_REMOVEPOPUP, nullptr, 0);
}

// CheckMenuItem(hMenu, nId, MF_BYCOMMAND | nCheck) inside the host.
inline BOOL RequestHostCheckMenuItem(HWND hWndFrame, HMENU hMenu, UINT nId, UINT nCheck)
{
    const HostCheckRequest request = {HookWindowWord(reinterpret_cast<HWND>(hMenu)), nId, nCheck};
    return SendHostRequest(hWndFrame, REQUEST_CHECKMENUITEM, &request, sizeof(request));
}
