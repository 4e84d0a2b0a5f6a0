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
// delivered asynchronously by each host; the tool waits for them.
QUORVANT_HOOK_API BOOL __cdecl uninstallHook();

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
