// The library's side inside one host IDE process: which of the host's windows
// are watched, their subclass, the records they cause, and entering and
// leaving the host. One object per process (g_hostSession); everything in it
// runs on the host's GUI thread, the thread that created its "PFE_Frame".
#pragma once

#include <windows.h>

#include "CHostRequests.h"
#include "CToolChannel.h"
#include "CWatchTable.h"

class CHostSession
{
public:
    // A private message of the library: posted by uninstallHook to every host
    // frame, wParam the generation that ends the current session.
    static const char kLeaveMessageName[];
    static UINT LeaveMessage();

    // HCBT_CREATEWND of the global hook. Cheap unless this process is a host
    // (or the window is a "PFE_Frame", which makes it one).
    void OnCbtCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs, HMODULE hModule, HWND hWndTool, LONG nGeneration);
    // HCBT_ACTIVATE: a host that was too busy to be entered by installHook
    // is entered when it is next activated.
    void OnCbtActivate(HWND hWnd, HMODULE hModule, HWND hWndTool, LONG nGeneration);
    // Called on a host thread while the tool pulls it in (installHook).
    void OnEnterRequest(HMODULE hModule, HWND hWndTool, LONG nGeneration);

private:
    bool IsHostThread() const { return m_dwThread == GetCurrentThreadId(); }
    void Enter(HMODULE hModule, HWND hWndTool, LONG nGeneration);
    void Leave(bool bReport);
    void WatchExisting();
    void Watch(HWND hWnd, UINT nKind);
    void OnCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs);
    void OnWindowGone(HWND hWnd);

    void ReportCreate(HWND hWnd);
    void ReportMessage(UINT nCode, HWND hWnd, UINT uMsg, WPARAM wParam, UINT nFlags);
    void OnToolSilent();
    void CatchUp();
    void OnProbeAnswered(ULONG_PTR dwData);
    void OnKey(WPARAM wParam, LPARAM lParam);

    template <bool bUnicode> LRESULT OnMessage(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    template <bool bUnicode> static LRESULT CALLBACK SubclassProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK KeyboardProc(int nCode, WPARAM wParam, LPARAM lParam);
    static VOID CALLBACK ProbeProc(HWND hWnd, UINT uMsg, ULONG_PTR dwData, LRESULT lResult);

    CWatchTable m_table;
    CHostRequests m_requests;
    CToolChannel m_channel;
    DWORD m_dwThread = 0;   // the host's GUI thread; 0 while this process is not a host
    bool m_bEntered = false;
    bool m_bLeaving = false;
    bool m_bPinned = false;
    LONG m_nGeneration = 0; // of the installHook that the current session belongs to
    HHOOK m_hKeyboardHook = nullptr;
    WPARAM m_uHookedKey = 0; // a shortcut key already reported from the keyboard hook
    UINT m_uCreateDockBar = 0;
    UINT m_uSetFocus = 0;
    UINT m_uLeave = 0;
};

extern CHostSession g_hostSession;
