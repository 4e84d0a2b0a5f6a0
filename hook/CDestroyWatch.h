// Tells a window's real destruction from a forged WM_NCDESTROY. Any thread
// may send a window WM_NCDESTROY; only DestroyWindow makes it go. A CBT hook
// of the host's thread sees each DestroyWindow and marks the watched window
// (or, under Wine, the ancestor it was called for) as being destroyed.
#pragma once

#include <windows.h>

#include "CWatchTable.h"

class CDestroyWatch
{
public:
    // One per process: the hook procedure finds it.
    explicit CDestroyWatch(CWatchTable& table);
    CDestroyWatch(const CDestroyWatch&) = delete;
    CDestroyWatch& operator=(const CDestroyWatch&) = delete;

    // Starts watching the host's thread; true when the hook is in place.
    bool Start(HMODULE hModule, DWORD dwThread);
    // Stops once no window is in the table: windows left under another
    // subclass keep ours in their chain until they are destroyed, and their
    // destruction must still be told from a forgery.
    void StopWhenEmpty();
    // Whether hWnd is really being destroyed (DestroyWindow was called on it
    // or on an ancestor), not merely sent a WM_NCDESTROY by someone.
    bool IsBeingDestroyed(HWND hWnd) const;

private:
    static LRESULT CALLBACK HookProc(int nCode, WPARAM wParam, LPARAM lParam);

    static CDestroyWatch* s_pInstance;
    CWatchTable& m_table;
    HHOOK m_hHook = nullptr;
};
