#include "CHostSession.h"

#include <string.h>

#include "HostIde.h"
#include "HostWindows.h"
#include "ReportRules.h"
#include "Subclass.h"
#include "WheelRule.h"

CHostSession g_hostSession;

const char CHostSession::kLeaveMessageName[] = "QUORVANT.HookLeave.5D3A9C14";
const char CHostSession::kHostStartedMessageName[] = "QUORVANT.HostStarted.2B7E61C3";
const char CHostSession::kListenerClassName[] = "QUORVANT.HostListener";

namespace
{
using HostIde::kClientClass;
using HostIde::kFrameClass;
using HostIde::kMaxFrames;
using HostIde::kTextClass;

// Registered messages and registered window classes both start here.
const UINT kFirstRegistered = 0xC000;

const unsigned kMaxChildren = 512;
const unsigned kMaxInner = 64;

using HostWindows::CollectChildren;
using HostWindows::IsClass;

using ReportRules::IsControlDown;
} // namespace

UINT CHostSession::LeaveMessage()
{
    return RegisterWindowMessageA(kLeaveMessageName);
}

UINT CHostSession::HostStartedMessage()
{
    return RegisterWindowMessageA(kHostStartedMessageName);
}

bool CHostSession::IsSessionKey(uint32_t nKey0, uint32_t nKey1) const
{
    const uint32_t key[2] = {nKey0, nKey1};
    return m_bEntered && IsHookKey(key, m_reporter.Channel().Key());
}

void CHostSession::AskToBeEntered(HWND hWndFrame)
{
    // Nothing of the tool is known in here: no memory of the library is
    // shared between processes, so that no other program can point the host
    // elsewhere. The tool that installed the library hears this and enters
    // the host itself, handing over its window and its key.
    // Posted to the listeners alone, not broadcast: other programs' windows,
    // other hosts among them, have no business with it.
    if (!m_uHostStarted)
        m_uHostStarted = HostStartedMessage();
    for (HWND hWnd = FindWindowExA(nullptr, nullptr, kListenerClassName, nullptr); hWnd;
         hWnd = FindWindowExA(nullptr, hWnd, kListenerClassName, nullptr))
        PostMessageA(hWnd, m_uHostStarted, reinterpret_cast<WPARAM>(hWndFrame), 0);
}

// Entering and leaving ---------------------------------------------------------

void CHostSession::OnCbtCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs)
{
    if (!m_hostThread.ClaimOnCreate(hWnd, pcs->lpszClass))
        return;
    if (!m_bEntered)
    {
        if (IsClass(hWnd, pcs->lpszClass, kFrameClass))
            AskToBeEntered(hWnd);
        return;
    }
    OnCreateWindow(hWnd, pcs);
}

void CHostSession::OnCbtActivate(HWND hWnd)
{
    // installHook gives a host one second to let itself be entered; one that
    // was busy then is found here, when the user turns to it.
    if (!m_hostThread.ClaimOnActivate(hWnd))
        return;
    if (!m_bEntered && hWnd && IsClass(hWnd, kFrameClass))
        AskToBeEntered(hWnd);
}

void CHostSession::OnEnterRequest(HMODULE hModule, const HostEnterRequest& request)
{
    if (IsSessionKey(request.key[0], request.key[1]))
        return;
    if (!m_hostThread.ClaimOnEnter())
        return;
    Enter(hModule, HandleFromWord<HWND>(request.hWndTool), request.key, request.nWheelStep);
}

void CHostSession::Enter(HMODULE hModule, HWND hWndTool, const uint32_t key[2], uint32_t nWheelStep)
{
    if (m_bLeaving)
        return;
    if (m_bEntered)
        Leave(true); // a newer tool: the previous one hears that our windows are gone
    if (!hWndTool || !IsWindow(hWndTool) || (key[0] | key[1]) == 0)
        return;
    if (!m_uLeave)
    {
        m_uCreateDockBar = RegisterWindowMessageA(HostIde::kCreateDockBarMessage);
        m_uSetFocus = HostSetFocusMessage();
        m_uLeave = LeaveMessage();
    }
    if (!m_bPinned)
    {
        // Our window procedures stay in the host's windows for as long as the
        // host lives (a subclass that someone else has stacked on ours cannot
        // be taken out). Windows and Wine unload a hook library as soon as its
        // last hook is gone, which would leave those windows calling unmapped
        // code; pinned, the library stays until the host ends.
        HMODULE hPinned = nullptr;
        m_bPinned = GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                       reinterpret_cast<LPCSTR>(&SubclassProc<false>), &hPinned) != FALSE;
    }
    if (!m_bPinned)
        return; // no subclass without the library staying: the host is not entered
    // Only DestroyWindow makes a window go, not a forged WM_NCDESTROY.
    m_destroyWatch.Start(hModule, m_hostThread.Id());
    m_reporter.Open(hWndTool, key);
    m_toolWatch.Start(hWndTool);
    m_nWheelStep = nWheelStep;
    m_uHookedKey = 0;
    m_bEntered = true;
    // Keys may be taken by the host's accelerator table and never reach a
    // window procedure (the host has Ctrl+E as an accelerator). A keyboard
    // hook of the host's GUI thread alone sees them, and it runs for key
    // messages only.
    m_hKeyboardHook = SetWindowsHookExA(WH_KEYBOARD, KeyboardProc, hModule, m_hostThread.Id());
    WatchExisting();
}

void CHostSession::WatchExisting()
{
    // Parents before children, level by level: the tool may look at a
    // window's parent item when it gets a child.
    HWND frames[kMaxFrames] = {};
    HostWindows::CollectFrames(m_hostThread.Id(), frames);
    HWND clients[kMaxFrames] = {};
    for (unsigned nFrame = 0; nFrame < kMaxFrames && frames[nFrame] && m_bEntered; ++nFrame)
    {
        Watch(frames[nFrame], KIND_FRAME);
        clients[nFrame] = FindWindowExA(frames[nFrame], nullptr, kClientClass, nullptr);
        if (clients[nFrame])
            Watch(clients[nFrame], KIND_CLIENT);
    }
    for (unsigned nFrame = 0; nFrame < kMaxFrames && clients[nFrame] && m_bEntered; ++nFrame)
    {
        HWND children[kMaxChildren];
        const unsigned nChildren = CollectChildren(clients[nFrame], children, kMaxChildren);
        for (unsigned nChild = 0; nChild < nChildren && m_bEntered; ++nChild)
            Watch(children[nChild], KIND_CHILD);
        for (unsigned nChild = 0; nChild < nChildren && m_bEntered; ++nChild)
        {
            if (!m_table.Find(children[nChild]))
                continue;
            HWND inner[kMaxInner];
            const unsigned nInner = CollectChildren(children[nChild], inner, kMaxInner);
            for (unsigned nIndex = 0; nIndex < nInner && m_bEntered; ++nIndex)
                Watch(inner[nIndex], IsClass(inner[nIndex], kTextClass) ? KIND_TEXT : KIND_NUM);
        }
    }
}

void CHostSession::Leave(bool bReport)
{
    if (!m_bEntered || m_bLeaving)
        return;
    m_bLeaving = true; // from here on the subclass only forwards
    // First of all, while the tool may be gone: its popup's commands would
    // go nowhere.
    m_requests.RemoveAllPopups();
    // Every window the tool may know of hears that it is gone.
    m_reporter.ReportAllLeft(bReport);
    // Every window gets its own procedure back where ours is still the
    // outermost; the others forward everything until they are destroyed.
    Subclass::RemoveAll(m_table, &SubclassProc<false>, &SubclassProc<true>);
    if (m_hKeyboardHook)
    {
        UnhookWindowsHookEx(m_hKeyboardHook);
        m_hKeyboardHook = nullptr;
    }
    m_reporter.Close();
    m_toolWatch.Stop();
    m_bEntered = false;
    m_bLeaving = false;
    m_destroyWatch.StopWhenEmpty();
}

// Watched windows --------------------------------------------------------------

void CHostSession::Watch(HWND hWnd, UINT nKind)
{
    WatchEntry* pEntry = m_table.Find(hWnd);
    if (pEntry)
    {
        // Left earlier under another subclass: ours is still in the chain.
        if (pEntry->nState == STATE_PASSTHROUGH)
        {
            pEntry->nState = STATE_WATCHED;
            pEntry->nKind = static_cast<uint8_t>(nKind);
            pEntry->nReport = REPORT_NONE;
        }
    }
    else
    {
        pEntry = m_table.Add(hWnd);
        if (!pEntry)
            return; // table full: the window keeps its own procedure and is not reported
        if (!Subclass::Install(*pEntry, &SubclassProc<false>, &SubclassProc<true>))
        {
            m_table.Remove(pEntry);
            return;
        }
        pEntry->nKind = static_cast<uint8_t>(nKind);
        pEntry->nState = STATE_WATCHED;
        pEntry->nReport = REPORT_NONE;
    }
    m_reporter.ReportCreate(hWnd);
}

void CHostSession::OnCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs)
{
    if (!m_bEntered || m_bLeaving || m_table.Find(hWnd))
        return;
    const WatchEntry* pParent = pcs->hwndParent ? m_table.Find(pcs->hwndParent) : nullptr;
    const UINT nKind = HostWindows::KindAtCreation(hWnd, pcs, pParent && pParent->nState == STATE_WATCHED
                                                                  ? static_cast<UINT>(pParent->nKind)
                                                                  : 0);
    if (nKind)
        Watch(hWnd, nKind);
}

void CHostSession::OnWindowGone(HWND hWnd)
{
    WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry)
        return;
    if (pEntry->nReport == REPORT_NONE)
    {
        m_table.Remove(pEntry);
        return;
    }
    // Kept as gone until the tool has heard it; while the tool does not
    // answer, or while we are leaving, the destroy is sent later.
    pEntry->nState = STATE_GONE;
    if (m_bEntered && !m_bLeaving)
        m_reporter.ReportGone(hWnd);
}

// The wheel ----------------------------------------------------------------------

void CHostSession::Scroll(HWND hWnd, UINT nKind, WPARAM wParam)
{
    // As the tool's policy says (see HookWheelPolicy), sent to the window on
    // its own thread: the host's procedure scrolls at once.
    const WheelRule::Scroll scroll = WheelRule::ForNotch(nKind, GET_WHEEL_DELTA_WPARAM(wParam),
                                                         (wParam & 0xFFFFFFFFu) == 0, m_nWheelStep);
    HWND hWndTarget = scroll.bParent ? GetParent(hWnd) : hWnd;
    const WPARAM nCode = scroll.bUp ? SB_LINEUP : SB_LINEDOWN;
    for (int i = 0; i < scroll.nLines && hWndTarget && IsWindow(hWndTarget); ++i)
        SendMessageA(hWndTarget, WM_VSCROLL, nCode, 0);
}

// Keys -------------------------------------------------------------------------

LRESULT CALLBACK CHostSession::KeyboardProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    // HC_ACTION only: HC_NOREMOVE is a peek that is seen again when the key
    // is taken from the queue.
    if (nCode == HC_ACTION)
        g_hostSession.OnKey(wParam, lParam);
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

void CHostSession::OnKey(WPARAM wParam, LPARAM lParam)
{
    // A shortcut reported here is not reported again when the same key
    // reaches the MDI child's procedure; the next key message ends that.
    m_uHookedKey = 0;
    if (!m_bEntered || m_bLeaving || (lParam & 0x80000000) != 0)
        return;
    if (wParam != VK_RETURN && wParam != 'E')
        return;
    if (!IsControlDown())
        return;
    // The MDI child that holds the focus, also when the focus is in one of
    // its inner windows.
    HWND hWnd = GetFocus();
    for (; hWnd; hWnd = GetAncestor(hWnd, GA_PARENT))
    {
        const WatchEntry* pEntry = m_table.Find(hWnd);
        if (pEntry && pEntry->nKind == KIND_CHILD && pEntry->nState == STATE_WATCHED)
            break;
    }
    if (!hWnd)
        return;
    m_uHookedKey = wParam;
    m_reporter.ReportMessage(HOOK_MESSAGE_DONE, hWnd, WM_KEYDOWN, wParam, HOOK_FLAG_CONTROL);
}

// The subclass -----------------------------------------------------------------

template <bool bUnicode>
LRESULT CALLBACK CHostSession::SubclassProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    // Only while a record waits for the tool: the host's time on a message
    // sent to it is the host's, not the tool's (see CToolChannel).
    if (g_hostSession.m_reporter.Channel().IsWaiting() && InSendMessage())
    {
        const DWORD dwStart = GetTickCount();
        g_hostSession.m_bToolActed = false;
        const LRESULT lResult = g_hostSession.OnMessage<bUnicode>(hWnd, uMsg, wParam, lParam);
        g_hostSession.m_reporter.Channel().NoteIncoming(g_hostSession.m_bToolActed, GetTickCount() - dwStart);
        return lResult;
    }
    return g_hostSession.OnMessage<bUnicode>(hWnd, uMsg, wParam, lParam);
}

template <bool bUnicode> LRESULT CHostSession::OnMessage(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    // The host's hot path: one lookup and a switch. Nothing below allocates,
    // touches a string or leaves the process unless the tool acts on the
    // message. The entry is read once: the table may change while the host
    // handles the message.
    const WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry)
        return bUnicode ? DefWindowProcW(hWnd, uMsg, wParam, lParam) : DefWindowProcA(hWnd, uMsg, wParam, lParam);
    const WNDPROC pfnOriginal = pEntry->pfnOriginal;
    if (pEntry->nState != STATE_WATCHED || !m_bEntered || m_bLeaving)
    {
        if (uMsg == WM_NCDESTROY)
        {
            // A pass-through entry goes with its window: its handle may come
            // back for a new window, which must be subclassed afresh.
            if (!m_destroyWatch.IsBeingDestroyed(hWnd))
                return 0; // forged: see the watched case below
            const LRESULT lResult = Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
            OnWindowGone(hWnd);
            m_destroyWatch.StopWhenEmpty();
            return lResult;
        }
        if (uMsg == m_uLeave && uMsg >= kFirstRegistered)
            return 0; // a late leave of ours: not the host's business
        if (uMsg == WM_COPYDATA && CHostRequests::IsRequest(reinterpret_cast<const COPYDATASTRUCT*>(lParam)))
            return 0; // a request of a tool we no longer serve: refused, and never the host's
        return Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
    }
    const UINT nKind = pEntry->nKind;
    UINT nFlags = 0;
    bool bBefore = false;
    bool bAfter = false;
    switch (uMsg)
    {
    case WM_NCDESTROY:
    {
        // A WM_NCDESTROY that some thread sent to a window that lives on is
        // dropped: the window stays watched with the host's procedure in the
        // chain, and the host does not tear down its own object for a window
        // it will go on using (a framework's window object deletes itself
        // here). The host's handling first otherwise: its HOOK_DESTROY is
        // the window's last record.
        if (!m_destroyWatch.IsBeingDestroyed(hWnd))
            return 0;
        const LRESULT lResult = Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
        if (nKind == KIND_FRAME)
            m_requests.ForgetFrame(hWnd); // our popup went with the frame's menu bar
        OnWindowGone(hWnd);
        return lResult;
    }
    case WM_COPYDATA:
    {
        // The tool's requests are carried out here, on the host's thread, and
        // never reach the host; any other WM_COPYDATA is the host's.
        const COPYDATASTRUCT* pData = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        if (!CHostRequests::IsRequest(pData))
            break;
        // With the key it is the tool at work, whatever it asks.
        m_bToolActed = CHostRequests::HasKey(pData, m_reporter.Channel().Key());
        return nKind == KIND_FRAME ? m_requests.Carry(hWnd, pData, m_reporter.Channel().Key()) : 0;
    }
    case WM_INITMENU:
        // The user opens the frame's menus. A tool that was killed has not
        // been noticed yet if the host sent it nothing since; its popup must
        // not be offered with commands that would go nowhere, and it is taken
        // out here, before the menu loop looks at the bar.
        // Wine: without this the WM_INITMENUPOPUP record finds the tool gone
        // and the popup is destroyed inside the menu loop, which Wine then
        // simply does not show (tested); Windows need not take that as well.
        if (nKind == KIND_FRAME && m_requests.HasPopup(hWnd) && !IsWindow(m_reporter.Channel().Tool()))
            Leave(false);
        break;
    case WM_COMMAND:
        if (nKind != KIND_FRAME)
            break;
        // A choice in the tool's popup is the tool's alone: the host's own
        // procedure never sees it (its own commands may have the same
        // numbers), and the tool hears its own command id.
        if (lParam == 0 && HIWORD(wParam) == 0)
        {
            if (const UINT nToolCommand = m_requests.ToolCommand(hWnd, LOWORD(wParam)))
            {
                m_reporter.ReportMessage(HOOK_MESSAGE_DONE, hWnd, WM_COMMAND, nToolCommand,
                              HOOK_FLAG_POPUP | (IsControlDown() ? HOOK_FLAG_CONTROL : 0));
                return 0;
            }
        }
        bAfter = true;
        break;
    case WM_MOUSEWHEEL:
    {
        // One notch, one scroll: a host that passes an unhandled wheel on to
        // the parent (DefWindowProc does) sends the parent the same notch
        // while the child still handles it. Only the outermost of such nested
        // wheel messages of windows that scroll is reported; a gutter's
        // (which scrolls nothing) passed on to its editor scrolls the editor.
        if ((nKind != KIND_CHILD && nKind != KIND_TEXT) || m_nWheelDepth > 0)
            break;
        ++m_nWheelDepth;
        const LRESULT lResult = Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
        --m_nWheelDepth;
        // A tool that has ended takes its scrolling along: the host is as
        // it was without it.
        if (m_nWheelStep && m_toolWatch.IsToolGone())
            Leave(false);
        else if (m_nWheelStep)
            Scroll(hWnd, nKind, wParam); // the host's own thread: no wait for the tool
        else
            m_reporter.ReportMessage(HOOK_MESSAGE_DONE, hWnd, uMsg, wParam,
                          (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0 ? HOOK_FLAG_CONTROL : 0);
        return lResult;
    }
    case WM_KEYDOWN:
        // Only the two shortcuts, and only once: a real key press has been
        // reported by the keyboard hook already; a posted one arrives here.
        // Wine: the keyboard hook is not called for posted key messages (a
        // posted Ctrl+Enter reaches only this procedure); where a system calls
        // it for them too, m_uHookedKey keeps the record single.
        if (nKind == KIND_CHILD && (wParam == VK_RETURN || wParam == 'E'))
        {
            if (m_uHookedKey == wParam)
                m_uHookedKey = 0;
            else if (IsControlDown())
            {
                nFlags = HOOK_FLAG_CONTROL;
                bAfter = true;
            }
        }
        break;
    default:
        if (uMsg >= kFirstRegistered)
        {
            if (uMsg == m_uSetFocus)
            {
                // Only the window's own thread may move the focus to it, and
                // only the tool may ask.
                if (IsSessionKey(static_cast<uint32_t>(wParam), static_cast<uint32_t>(lParam)))
                    SetFocus(hWnd);
                return 0;
            }
            if (uMsg == m_uLeave)
            {
                // Posted by uninstallHook with the key of the session it
                // ends; any other is not ours to obey.
                if (IsSessionKey(static_cast<uint32_t>(wParam), static_cast<uint32_t>(lParam)))
                    Leave(true);
                return 0;
            }
            bAfter = uMsg == m_uCreateDockBar && nKind == KIND_FRAME;
            break;
        }
        const ReportRules::When when = ReportRules::WhenToReport(uMsg, nKind, lParam);
        bBefore = when.bBefore;
        bAfter = when.bAfter;
        break;
    }
    if (!bBefore && !bAfter)
        return Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
    if (!nFlags)
        nFlags = ReportRules::ControlFlag(uMsg, wParam);
    if (bBefore)
        m_reporter.ReportMessage(HOOK_MESSAGE, hWnd, uMsg, wParam, nFlags);
    const LRESULT lResult = Subclass::CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
    if (bAfter)
        m_reporter.ReportMessage(HOOK_MESSAGE_DONE, hWnd, uMsg, wParam, nFlags);
    return lResult;
}

template LRESULT CALLBACK CHostSession::SubclassProc<false>(HWND, UINT, WPARAM, LPARAM);
template LRESULT CALLBACK CHostSession::SubclassProc<true>(HWND, UINT, WPARAM, LPARAM);
