// The library's side inside one host IDE process: which of the host's windows
// are watched, their subclass, the records they cause, and entering and
// leaving the host. One object per process (g_hostSession); everything in it
// runs on the host's GUI thread, the thread that created its "PFE_Frame".
#pragma once

#include <windows.h>

#include "CDestroyWatch.h"
#include "CHostRequests.h"
#include "CRecordReporter.h"
#include "CToolWatch.h"
#include "CWatchTable.h"
#include "HostWindows.h"

class CHostSession : private CRecordReporter::Owner
{
public:
    CHostSession() : m_reporter(m_table, *this), m_destroyWatch(m_table) {}

    // Private messages of the library. Leave: posted by uninstallHook to
    // every host frame with the key in wParam and lParam. Host started:
    // posted by a host to the installing tools' listener windows when its
    // frame is made or activated while no tool is in it; the library of the
    // tool then enters it (wParam: the frame).
    static const char kLeaveMessageName[];
    static UINT LeaveMessage();
    static const char kHostStartedMessageName[];
    static UINT HostStartedMessage();
    // The class of the installing tool's hidden listener window, which hears
    // the host-started message.
    static const char kListenerClassName[];

    // HCBT_CREATEWND of the global hook. Cheap unless this process is a host
    // (or the window is a "PFE_Frame", which makes it one).
    void OnCbtCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs);
    // HCBT_ACTIVATE: a host that was too busy to be entered by installHook
    // asks to be entered when it is next activated.
    void OnCbtActivate(HWND hWnd);
    // Called on a host thread while the installing tool pulls it in, with
    // what the tool sent: its window and the key.
    void OnEnterRequest(HMODULE hModule, const HostEnterRequest& request);

private:
    bool IsSessionKey(uint32_t nKey0, uint32_t nKey1) const;
    void AskToBeEntered(HWND hWndFrame);
    void Enter(HMODULE hModule, HWND hWndTool, const uint32_t key[2], uint32_t nWheelStep);
    void Scroll(HWND hWnd, UINT nKind, WPARAM wParam);
    void Leave(bool bReport);
    void WatchExisting();
    void Watch(HWND hWnd, UINT nKind);
    void OnCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs);
    void OnWindowGone(HWND hWnd);

    // CRecordReporter::Owner
    bool IsReporting() const override { return m_bEntered && !m_bLeaving; }
    void OnToolGone() override { Leave(false); }
    void OnKey(WPARAM wParam, LPARAM lParam);

    template <bool bUnicode> LRESULT OnMessage(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    template <bool bUnicode> static LRESULT CALLBACK SubclassProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK KeyboardProc(int nCode, WPARAM wParam, LPARAM lParam);

    CWatchTable m_table;
    CHostRequests m_requests;
    CRecordReporter m_reporter;
    CDestroyWatch m_destroyWatch;
    CToolWatch m_toolWatch;
    HostWindows::CHostThread m_hostThread;
    bool m_bEntered = false;
    bool m_bLeaving = false;
    bool m_bPinned = false;
    HHOOK m_hKeyboardHook = nullptr;
    WPARAM m_uHookedKey = 0; // a shortcut key already reported from the keyboard hook
    bool m_bToolActed = false; // the message just handled was a request with the tool's key
    unsigned m_nWheelDepth = 0; // wheel messages of scrolling windows being handled, nested
    uint32_t m_nWheelStep = 0;  // the tool's wheel policy; 0: the tool scrolls on records
    UINT m_uCreateDockBar = 0;
    UINT m_uSetFocus = 0;
    UINT m_uLeave = 0;
    UINT m_uHostStarted = 0;
};

extern CHostSession g_hostSession;
