// Our window procedure in front of a host window's own, and out again. A
// window keeps its character set: a Unicode window gets the W procedure, so
// the host's messages are never converted on our account.
#pragma once

#include <windows.h>

#include "CWatchTable.h"

namespace Subclass
{
// Puts ours in front of the window's procedure and keeps the window's in the
// entry (pfnOriginal, bUnicode). False when the window refused.
bool Install(WatchEntry& entry, WNDPROC pfnAnsi, WNDPROC pfnUnicode);

// Gives every window of the table its own procedure back where ours is still
// the outermost, and drops those entries and the gone ones. Where another
// subclass sits on top of ours, ours must stay in the chain: such an entry
// becomes pass-through and forwards everything until the window goes.
void RemoveAll(CWatchTable& table, WNDPROC pfnAnsi, WNDPROC pfnUnicode);

template <bool bUnicode> LRESULT CallOriginal(WNDPROC pfn, HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return bUnicode ? CallWindowProcW(pfn, hWnd, uMsg, wParam, lParam)
                    : CallWindowProcA(pfn, hWnd, uMsg, wParam, lParam);
}
} // namespace Subclass
