// The wire between QUORVANT.exe and QUORVANT.dll: record and request
// layouts, codes and limits, in fixed-size 32-bit words whatever the
// bitness. Plain C++ without the system's headers, so that the rules that
// check them are tested natively too; QuorvantHook.h adds the calls.
#pragma once

#include <stdint.h>

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
    HOOK_FLAG_CONTROL = 1, // Ctrl was held in the host
    HOOK_FLAG_POPUP = 2    // WM_COMMAND: chosen in the tool's popup; wParam is the tool's command
};

// Seven 32-bit words, whatever the bitness: window handles are 32-bit values
// on 64-bit Windows too, so one layout serves both builds.
struct HookRecord
{
    uint32_t nKind;    // word 0: kind, creation records only
    uint32_t hWnd;     // word 1: the host window
    uint32_t nMessage; // word 2: message number, message records only
    uint32_t wParam;   // word 3: the message's wParam, message records only
    uint32_t nFlags;   // word 4: HookFlags, message records only
    uint32_t key[2];   // words 5 and 6: the key of the installHook that entered the host
};

static_assert(sizeof(HookRecord) == 28, "a record is seven 32-bit words");

inline bool IsHookKey(const uint32_t key[2], const uint32_t keyExpected[2])
{
    return (key[0] | key[1]) != 0 && key[0] == keyExpected[0] && key[1] == keyExpected[1];
}

enum HostRequestCode
{
    REQUEST_DROPFILE = 0x51560101,      // data: the file's ANSI path with its NUL
    REQUEST_APPENDPOPUP = 0x51560102,   // data: HostPopupRequest
    REQUEST_REMOVEPOPUP = 0x51560103,   // no data: removes what REQUEST_APPENDPOPUP appended
    REQUEST_CHECKMENUITEM = 0x51560104, // data: HostCheckRequest
    REQUEST_CHOOSE = 0x51560105         // data: one uint32_t, a command of the tool's popup
};

// A drop's path is shorter than this, as the host's drop buffers are.
const uint32_t kMaxDropPath = 260;
// HostCheckRequest::nCheck, as the system's MF_CHECKED and MF_UNCHECKED,
// with kItemGrayed (MF_GRAYED) added for an item that cannot be chosen now.
const uint32_t kCheckOn = 0x8;
const uint32_t kCheckOff = 0x0;
const uint32_t kItemGrayed = 0x1;

// The commands of the tool's popup in the host's menu bar come from this
// range only: "&Assist Window" and the user tools. The library gives them
// ids of the host's menus that nothing else uses, so that the host's own
// commands of the same numbers stay the host's, and reports a choice with
// the tool's id.
const uint32_t kFirstPopupCommand = 32771;
const uint32_t kLastPopupCommand = 32799;
const unsigned kMaxPopupItems = 16;

// installHook's way into a host, as the host's side of the library receives
// it (see QuorvantHook.cpp): the only way the host learns the tool and the
// key, with no shared memory that others could write.
struct HostEnterRequest
{
    uint32_t hWndTool;    // the tool's window, as a 32-bit word
    uint32_t key[2];
    uint32_t nWheelStep;  // see HookWheelPolicy; 0: the tool scrolls
};

// How the wheel scrolls, handed to the library by the tool so that the host
// scrolls on the wheel message itself and never waits for the tool: an MDI
// child scrolls one line per nStep of the delta (a delta below nStep
// scrolls nothing, a delta of 0 nothing), a text window scrolls its parent
// one line per wheel message (a delta of 0 down). With a policy the library
// reports no wheel message: the tool has nothing left to do for one.
struct HookWheelPolicy
{
    uint32_t nStep; // 30: a notch of 120 is four lines
};

// Every request's data starts with the key.
struct HostRequestHeader
{
    uint32_t key[2];
};

// A popup to append to the host frame's menu bar: its text and up to
// kMaxPopupItems plain items (separators have id 0 and no text).
struct HostPopupRequest
{
    char szText[64];
    uint32_t nItems;
    struct Item
    {
        uint32_t nId;
        char szText[64];
    } items[kMaxPopupItems];
};

// Checks or unchecks an item of the popup the tool appended, found in the
// menu that WM_INITMENUPOPUP named, and greys it or lets it be chosen.
struct HostCheckRequest
{
    uint32_t hMenu;  // the menu, as a 32-bit word: must be the tool's popup
    uint32_t nId;    // item by the tool's command
    uint32_t nCheck; // kCheckOn or kCheckOff, with kItemGrayed or not
};
