// Which host messages the tool hears of and when, for the messages the
// library itself does nothing with: the tool follows the frame's moves,
// sizes, paints and menus, and the clicks that move the focus.
#pragma once

#include <windows.h>

namespace ReportRules
{
struct When
{
    bool bBefore; // a HOOK_MESSAGE record before the host's procedure runs
    bool bAfter;  // a HOOK_MESSAGE_DONE record after it
};

// For a message of a watched window of this kind (HookKind); lParam is read
// for WM_WINDOWPOSCHANGED only. Neither for any other message.
When WhenToReport(UINT uMsg, UINT nKind, LPARAM lParam);

// Whether the host's Ctrl is down now, as its thread sees it.
bool IsControlDown();

// HOOK_FLAG_CONTROL when Ctrl was down as the message arrived, else 0. The
// host's key state goes with every record: the tool's thread has a key state
// of its own. A mouse message carries it in wParam, as it was at the click
// or the notch; asking for it costs a server call under Wine (40 us here),
// once per wheel notch otherwise.
UINT ControlFlag(UINT uMsg, WPARAM wParam);
} // namespace ReportRules
