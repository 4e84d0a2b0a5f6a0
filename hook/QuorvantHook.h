// The contract between QUORVANT.exe and its hook library QUORVANT.dll.
//
// The library runs inside the host IDE's process. It reports the host's windows
// and the messages the tool acts on as WM_COPYDATA records sent to the window
// given to installHook, and it carries out the few requests that only work from
// inside the host's process (moving the focus). This header is all the two
// share: the library includes nothing of the tool, the tool nothing of the
// library's inner working.
//
// Any program can send messages to the host's windows and to the tool, and
// load this library. So installHook makes a key, a random 64-bit number that
// only the installing tool and the hosts it entered know: the tool hands it
// to each host itself, while entering it, and every record and every request
// carries it. A record or request without the key is refused unread.
#pragma once

#include <windows.h>
#include <stdint.h>
#include <string.h>

#include "HookWire.h"

#ifdef QUORVANT_HOOK_BUILD
#define QUORVANT_HOOK_API extern "C" __declspec(dllexport)
#else
#define QUORVANT_HOOK_API extern "C" __declspec(dllimport)
#endif

// Starts reporting to hWndTool: every host IDE window that exists already is
// reported at once (parents before children), later ones as they are created.
QUORVANT_HOOK_API BOOL __cdecl installHook(HWND hWndTool);
// The key of the current installHook in this process, {0, 0} when there is
// none: the tool checks records with it, and the request functions below send
// it.
QUORVANT_HOOK_API void __cdecl hookKey(uint32_t key[2]);
// The wheel policy the next installHook hands to every host it enters; a
// tool that sets none scrolls on the wheel records itself.
QUORVANT_HOOK_API void __cdecl setHookWheelPolicy(const HookWheelPolicy* pPolicy);
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


// A handle of the wire's 32-bit form, sign-extended: that is how 64-bit
// Windows widens a 32-bit handle.
template <class THandle> THandle HandleFromWord(uint32_t nWord)
{
    return reinterpret_cast<THandle>(static_cast<LONG_PTR>(static_cast<int32_t>(nWord)));
}

inline HWND HookRecordWindow(const HookRecord* pRecord)
{
    return HandleFromWord<HWND>(pRecord->hWnd);
}

template <class THandle> uint32_t HandleWord(THandle hHandle)
{
    return static_cast<uint32_t>(reinterpret_cast<UINT_PTR>(hHandle));
}

inline uint32_t HookWindowWord(HWND hWnd)
{
    return HandleWord(hWnd);
}

// The record in a WM_COPYDATA the tool received, when it is one of the
// current installHook's records; NULL for anything else.
inline const HookRecord* HookRecordOf(const COPYDATASTRUCT* pData)
{
    if (!pData || pData->cbData != sizeof(HookRecord) || !pData->lpData)
        return nullptr;
    const HookRecord* pRecord = static_cast<const HookRecord*>(pData->lpData);
    uint32_t key[2] = {};
    hookKey(key);
    return IsHookKey(pRecord->key, key) ? pRecord : nullptr;
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
// gone or is not a reported window. Posted, with the key in wParam and
// lParam.
inline void RequestHostFocus(HWND hWnd)
{
    uint32_t key[2] = {};
    hookKey(key);
    PostMessageA(hWnd, HostSetFocusMessage(), key[0], key[1]);
}

// Requests that carry data go as WM_COPYDATA sent to the host frame, with one
// of these codes as dwData and the key in front of the data; the library's
// subclass of the frame carries them out on the host's thread and answers
// nonzero when it did. The host's own procedure never sees them. They are sent, not posted, so that what the tool
// posts to the frame afterwards (the close command after a drop) comes after
// them; SMTO_ABORTIFHUNG and a short limit keep a hung host from holding the
// tool.
//
// Both Windows and Wine take these from inside the host only: a drop block
// lives in the memory of the process that made it (the host's DragFinish frees
// it), and Wine refuses to edit another process's menus (IsMenu fails on the
// host's menu bar handle and AppendMenu does nothing). Doing them in the host
// is right on both, so there is one path.
const UINT kHostRequestTimeout = 1000; // ms
static_assert(kCheckOn == MF_CHECKED && kCheckOff == MF_UNCHECKED, "check states as the system has them");
static_assert(kMaxDropPath == MAX_PATH, "drop paths as long as the system's");


inline BOOL SendHostRequest(HWND hWndFrame, ULONG_PTR nCode, const void* pData, DWORD cbData)
{
    // The key, then the data, in one block.
    BYTE buffer[sizeof(HostRequestHeader) + sizeof(HostPopupRequest)] = {};
    if (cbData > sizeof(buffer) - sizeof(HostRequestHeader))
        return FALSE;
    HostRequestHeader header = {};
    hookKey(header.key);
    memcpy(buffer, &header, sizeof(header));
    if (cbData)
        memcpy(buffer + sizeof(header), pData, cbData);
    COPYDATASTRUCT cds = {nCode, static_cast<DWORD>(sizeof(header) + cbData), buffer};
    DWORD_PTR dwResult = 0;
    if (!SendMessageTimeoutA(hWndFrame, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&cds),
                             SMTO_NORMAL | SMTO_ABORTIFHUNG, kHostRequestTimeout, &dwResult))
        return FALSE;
    return dwResult != 0;
}

// Has the host frame open a file as if it had been dropped on it: the library
// builds the DROPFILES block (one ANSI name) in the host and posts the frame
// WM_DROPFILES with it. Only an existing regular file on a local drive is
// opened: no network path (it would hand the user's credentials to a
// server), no device, pipe or directory.
inline BOOL RequestHostDropFile(HWND hWndFrame, LPCSTR pszPath)
{
    const int nPath = lstrlenA(pszPath);
    if (nPath >= MAX_PATH)
        return FALSE;
    return SendHostRequest(hWndFrame, REQUEST_DROPFILE, pszPath, static_cast<DWORD>(nPath + 1));
}

// The request for a copy of hPopup, a popup menu of the tool, under pszText.
inline HostPopupRequest MakePopupRequest(HMENU hPopup, LPCSTR pszText)
{
    HostPopupRequest request = {};
    lstrcpynA(request.szText, pszText, sizeof(request.szText));
    const int nCount = GetMenuItemCount(hPopup);
    for (int i = 0; i < nCount && request.nItems < kMaxPopupItems; ++i)
    {
        HostPopupRequest::Item& item = request.items[request.nItems++];
        const UINT nId = GetMenuItemID(hPopup, i);
        item.nId = nId == static_cast<UINT>(-1) ? 0 : nId;
        GetMenuStringA(hPopup, i, item.szText, sizeof(item.szText), MF_BYPOSITION);
    }
    return request;
}

// Appends a copy of hPopup, a popup menu of the tool, to the end of the host
// frame's menu bar under pszText and redraws the bar. One popup per frame:
// a second request replaces nothing and fails.
inline BOOL RequestHostAppendPopup(HWND hWndFrame, HMENU hPopup, LPCSTR pszText)
{
    const HostPopupRequest request = MakePopupRequest(hPopup, pszText);
    return SendHostRequest(hWndFrame, REQUEST_APPENDPOPUP, &request, sizeof(request));
}

// Removes the popup that RequestHostAppendPopup appended to the frame's menu
// bar (that item alone, wherever it stands now) and redraws the bar.
inline BOOL RequestHostRemovePopup(HWND hWndFrame)
{
    return SendHostRequest(hWndFrame, REQUEST_REMOVEPOPUP, nullptr, 0);
}

// Chooses a command of the popup the tool appended, as the user would in the
// host's menu: the tool hears it as a WM_COMMAND record of the frame, and the
// host's own procedure never sees it.
inline BOOL RequestHostChoose(HWND hWndFrame, UINT nId)
{
    const uint32_t nCommand = nId;
    return SendHostRequest(hWndFrame, REQUEST_CHOOSE, &nCommand, sizeof(nCommand));
}

// CheckMenuItem(hMenu, nId, MF_BYCOMMAND | nCheck) inside the host, and
// EnableMenuItem greying the item when nCheck holds kItemGrayed.
inline BOOL RequestHostCheckMenuItem(HWND hWndFrame, HMENU hMenu, UINT nId, UINT nCheck)
{
    const HostCheckRequest request = {HandleWord(hMenu), nId, nCheck};
    return SendHostRequest(hWndFrame, REQUEST_CHECKMENUITEM, &request, sizeof(request));
}
