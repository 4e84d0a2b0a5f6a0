#include "CHostSession.h"

#include <string.h>

#include "HostIde.h"

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
// Ancestors looked at for a destruction in progress: frame, MDI client,
// MDI child and the window itself are all there is.
const int kMaxDestroyDepth = 8;

// Class names are compared exactly. A class given at creation may be an
// atom instead of a string; the window already exists then, so its name is
// read back from it.
bool IsClass(HWND hWnd, LPCSTR pszGiven, const char* pszClass)
{
    if (pszGiven && !IS_INTRESOURCE(pszGiven))
        return strcmp(pszGiven, pszClass) == 0;
    char szClass[64];
    return GetClassNameA(hWnd, szClass, sizeof(szClass)) > 0 && strcmp(szClass, pszClass) == 0;
}

bool IsClass(HWND hWnd, const char* pszClass)
{
    return IsClass(hWnd, nullptr, pszClass);
}

uint32_t Word(HWND hWnd)
{
    return HookWindowWord(hWnd);
}

template <bool bUnicode> LRESULT CallOriginal(WNDPROC pfn, HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return bUnicode ? CallWindowProcW(pfn, hWnd, uMsg, wParam, lParam)
                    : CallWindowProcA(pfn, hWnd, uMsg, wParam, lParam);
}

bool IsControlDown()
{
    return (GetKeyState(VK_CONTROL) & 0x8000) != 0;
}

// The reported mouse messages, whose wParam holds the keys held with them.
bool IsMouseMessage(UINT uMsg)
{
    return uMsg == WM_MOUSEWHEEL || uMsg == WM_LBUTTONDOWN || uMsg == WM_MBUTTONDOWN || uMsg == WM_RBUTTONDOWN;
}

BOOL CALLBACK CollectFrames(HWND hWnd, LPARAM lParam)
{
    HWND* pFrames = reinterpret_cast<HWND*>(lParam);
    if (IsClass(hWnd, kFrameClass))
    {
        for (unsigned nIndex = 0; nIndex < kMaxFrames; ++nIndex)
        {
            if (!pFrames[nIndex])
            {
                pFrames[nIndex] = hWnd;
                break;
            }
        }
    }
    return TRUE;
}

// Direct children of a window, collected first: reporting them may let the
// tool change the window tree before the walk is done.
unsigned CollectChildren(HWND hWndParent, HWND* pChildren, unsigned nMax)
{
    unsigned nCount = 0;
    for (HWND hWnd = GetWindow(hWndParent, GW_CHILD); hWnd && nCount < nMax; hWnd = GetWindow(hWnd, GW_HWNDNEXT))
        pChildren[nCount++] = hWnd;
    return nCount;
}
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
    return m_bEntered && IsHookKey(key, m_channel.Key());
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
    if (!m_dwThread)
    {
        // Not a host yet: the one string comparison other processes pay, and
        // only when they create a window.
        if (!IsClass(hWnd, pcs->lpszClass, kFrameClass))
            return;
        m_dwThread = GetCurrentThreadId();
    }
    else if (!IsHostThread())
    {
        return;
    }
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
    if (!m_dwThread)
    {
        // installHook gives a host one second to let itself be entered; one
        // that was busy then is found here, when the user turns to it. A
        // window's activation is rare enough for a class name comparison.
        if (!hWnd || GetWindowThreadProcessId(hWnd, nullptr) != GetCurrentThreadId() || !IsClass(hWnd, kFrameClass))
            return;
        m_dwThread = GetCurrentThreadId();
    }
    else if (!IsHostThread())
    {
        return;
    }
    if (!m_bEntered && hWnd && IsClass(hWnd, kFrameClass))
        AskToBeEntered(hWnd);
}

void CHostSession::OnEnterRequest(HMODULE hModule, const HostEnterRequest& request)
{
    if (IsSessionKey(request.key[0], request.key[1]))
        return;
    if (!m_dwThread)
    {
        HWND frames[kMaxFrames] = {};
        EnumThreadWindows(GetCurrentThreadId(), CollectFrames, reinterpret_cast<LPARAM>(frames));
        if (!frames[0])
            return;
        m_dwThread = GetCurrentThreadId();
    }
    else if (!IsHostThread())
    {
        return;
    }
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
    // Only DestroyWindow makes a window go; a WM_NCDESTROY that any thread
    // can send does not (see IsBeingDestroyed). A hook of the host's thread
    // sees each DestroyWindow.
    if (!m_hDestroyHook)
        m_hDestroyHook = SetWindowsHookExA(WH_CBT, DestroyWatchProc, hModule, m_dwThread);
    m_channel.Open(hWndTool, key);
    m_nWheelStep = nWheelStep;
    ++m_nSession;
    m_uHookedKey = 0;
    m_bEntered = true;
    // Keys may be taken by the host's accelerator table and never reach a
    // window procedure (the host has Ctrl+E as an accelerator). A keyboard
    // hook of the host's GUI thread alone sees them, and it runs for key
    // messages only.
    m_hKeyboardHook = SetWindowsHookExA(WH_KEYBOARD, KeyboardProc, hModule, m_dwThread);
    WatchExisting();
}

void CHostSession::WatchExisting()
{
    // Parents before children, level by level: the tool may look at a
    // window's parent item when it gets a child.
    HWND frames[kMaxFrames] = {};
    EnumThreadWindows(m_dwThread, CollectFrames, reinterpret_cast<LPARAM>(frames));
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
    // Every window the tool may know of hears that it is gone, children
    // before parents. The scan restarts after each send: the tool may make
    // the host destroy windows while it handles a record.
    for (int nKind = KIND_NUM; nKind >= KIND_FRAME; --nKind)
    {
        for (;;)
        {
            WatchEntry* pEntry = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
            {
                WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind && entry.nReport != REPORT_NONE)
                    pEntry = &entry;
            }
            if (!pEntry)
                break;
            const HWND hWnd = pEntry->hWnd;
            if (pEntry->nState == STATE_GONE)
                m_table.Remove(pEntry);
            else
                pEntry->nReport = REPORT_NONE;
            if (bReport)
            {
                const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
                bReport = m_channel.Send(HOOK_DESTROY, record, hWnd) == SEND_DELIVERED;
            }
        }
    }
    // Give every window its own procedure back where ours is still the
    // outermost; where another subclass sits on top of ours, ours stays in
    // the chain and forwards everything until the window is destroyed.
    for (;;)
    {
        WatchEntry* pEntry = nullptr;
        for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
        {
            WatchEntry& entry = m_table.Slot(nIndex);
            if (entry.hWnd && entry.nState != STATE_PASSTHROUGH)
                pEntry = &entry;
        }
        if (!pEntry)
            break;
        if (pEntry->nState == STATE_GONE)
        {
            m_table.Remove(pEntry);
            continue;
        }
        const HWND hWnd = pEntry->hWnd;
        const LONG_PTR lOurs = pEntry->bUnicode ? reinterpret_cast<LONG_PTR>(&SubclassProc<true>)
                                                : reinterpret_cast<LONG_PTR>(&SubclassProc<false>);
        const LONG_PTR lCurrent =
            pEntry->bUnicode ? GetWindowLongPtrW(hWnd, GWLP_WNDPROC) : GetWindowLongPtrA(hWnd, GWLP_WNDPROC);
        if (lCurrent == lOurs)
        {
            const LONG_PTR lOriginal = reinterpret_cast<LONG_PTR>(pEntry->pfnOriginal);
            if (pEntry->bUnicode)
                SetWindowLongPtrW(hWnd, GWLP_WNDPROC, lOriginal);
            else
                SetWindowLongPtrA(hWnd, GWLP_WNDPROC, lOriginal);
            m_table.Remove(pEntry);
        }
        else if (!IsWindow(hWnd))
        {
            m_table.Remove(pEntry);
        }
        else
        {
            pEntry->nState = STATE_PASSTHROUGH;
        }
    }
    if (m_hKeyboardHook)
    {
        UnhookWindowsHookEx(m_hKeyboardHook);
        m_hKeyboardHook = nullptr;
    }
    m_channel.Close();
    m_bEntered = false;
    m_bLeaving = false;
    StopWatchingDestroysWhenEmpty();
}

void CHostSession::StopWatchingDestroysWhenEmpty()
{
    // Windows left under another subclass keep ours in their chain until they
    // are destroyed: their destruction must still be told from a forgery.
    if (m_hDestroyHook && m_table.Count() == 0)
    {
        UnhookWindowsHookEx(m_hDestroyHook);
        m_hDestroyHook = nullptr;
    }
}

LRESULT CALLBACK CHostSession::DestroyWatchProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    if (nCode == HCBT_DESTROYWND)
    {
        if (WatchEntry* pEntry = g_hostSession.m_table.Find(reinterpret_cast<HWND>(wParam)))
            pEntry->bDestroying = true;
    }
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

bool CHostSession::IsBeingDestroyed(HWND hWnd)
{
    // Without the hook there is no telling: every WM_NCDESTROY counts, as
    // the window's last message it is meant to be.
    if (!m_hDestroyHook)
        return true;
    // Children go with their parent's DestroyWindow; Wine calls the hook for
    // the parent alone, so an ancestor being destroyed counts too.
    int nDepth = 0;
    for (HWND h = hWnd; h && nDepth < kMaxDestroyDepth; h = GetAncestor(h, GA_PARENT), ++nDepth)
    {
        const WatchEntry* pEntry = m_table.Find(h);
        if (pEntry && pEntry->bDestroying)
            return true;
    }
    return false;
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
        const bool bUnicode = IsWindowUnicode(hWnd) != FALSE;
        // A window keeps its character set: the W procedure for a Unicode
        // window, so the host's messages are not converted on our account.
        const LONG_PTR lOriginal =
            bUnicode ? SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SubclassProc<true>))
                     : SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SubclassProc<false>));
        if (!lOriginal)
        {
            m_table.Remove(pEntry);
            return;
        }
        pEntry->pfnOriginal = reinterpret_cast<WNDPROC>(lOriginal);
        pEntry->nKind = static_cast<uint8_t>(nKind);
        pEntry->bUnicode = bUnicode;
        pEntry->nState = STATE_WATCHED;
        pEntry->nReport = REPORT_NONE;
    }
    ReportCreate(hWnd);
}

void CHostSession::OnCreateWindow(HWND hWnd, const CREATESTRUCTA* pcs)
{
    if (!m_bEntered || m_bLeaving || m_table.Find(hWnd))
        return;
    // Classified once, here, by the parent given at creation: a window that
    // the host moves elsewhere later keeps its kind.
    UINT nKind = 0;
    // A pop-up names its owner where a child names its parent, hence the
    // WS_CHILD tests; every window whose parent is an MDI client is an MDI
    // child, whatever its style said at creation.
    const bool bChild = (pcs->style & WS_CHILD) != 0;
    WatchEntry* pParent = pcs->hwndParent ? m_table.Find(pcs->hwndParent) : nullptr;
    if (pParent && pParent->nState == STATE_WATCHED)
    {
        switch (pParent->nKind)
        {
        case KIND_FRAME:
            nKind = bChild && IsClass(hWnd, pcs->lpszClass, kClientClass) ? KIND_CLIENT : 0;
            break;
        case KIND_CLIENT:
            nKind = KIND_CHILD;
            break;
        case KIND_CHILD:
            nKind = !bChild ? 0 : IsClass(hWnd, pcs->lpszClass, kTextClass) ? KIND_TEXT : KIND_NUM;
            break;
        default:
            break;
        }
    }
    else if (IsClass(hWnd, pcs->lpszClass, kFrameClass))
    {
        nKind = KIND_FRAME;
    }
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
    if (!m_bEntered || m_bLeaving)
        return;
    if (!m_channel.IsResponsive())
    {
        OnToolSilent();
        return;
    }
    const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
    switch (m_channel.Send(HOOK_DESTROY, record, hWnd))
    {
    case SEND_DELIVERED:
        if (WatchEntry* pGone = m_table.FindGone(hWnd))
            m_table.Remove(pGone);
        break;
    case SEND_HUNG:
        OnToolSilent();
        break;
    case SEND_NO_TOOL:
        Leave(false);
        break;
    }
}

// Records ----------------------------------------------------------------------

void CHostSession::ReportCreate(HWND hWnd)
{
    WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry || pEntry->nReport != REPORT_NONE || !m_bEntered || m_bLeaving)
        return;
    if (!m_channel.IsResponsive())
    {
        OnToolSilent(); // reported when the tool answers again
        return;
    }
    const HookRecord record = {pEntry->nKind, Word(hWnd), 0, 0, 0, {0, 0}};
    // Marked before sending: the tool may send the window messages, or even
    // have it destroyed, while it handles the record.
    pEntry->nReport = REPORT_SENT;
    switch (m_channel.Send(HOOK_CREATE, record, hWnd))
    {
    case SEND_DELIVERED:
        break;
    case SEND_HUNG:
        // Unanswered: the record may still be handled when the tool wakes
        // up, or may have been dropped. Catching up later sends a destroy
        // (harmless when the tool never had the window) before a new create.
        // Wine: a sent message that times out before the receiver took it is
        // dropped, never delivered late (the tests see DESTROY, CREATE and no
        // earlier CREATE); Windows may still deliver it, so both are handled.
        if (WatchEntry* pLater = m_table.Find(hWnd))
            pLater->nReport = REPORT_UNCERTAIN;
        else if (WatchEntry* pGone = m_table.FindGone(hWnd))
            pGone->nReport = REPORT_UNCERTAIN;
        OnToolSilent();
        break;
    case SEND_NO_TOOL:
        Leave(false);
        break;
    }
}

void CHostSession::ReportMessage(UINT nCode, HWND hWnd, UINT uMsg, WPARAM wParam, UINT nFlags)
{
    if (!m_bEntered || m_bLeaving)
        return;
    if (!m_channel.IsResponsive())
    {
        OnToolSilent(); // dropped: a late scroll or layout is worse than none
        return;
    }
    const WatchEntry* pEntry = m_table.Find(hWnd);
    if (!pEntry || pEntry->nState != STATE_WATCHED || pEntry->nReport != REPORT_SENT)
        return; // the tool has no item for it: nothing would act on the record
    const HookRecord record = {0, Word(hWnd), uMsg, static_cast<uint32_t>(wParam), nFlags, {0, 0}};
    switch (m_channel.Send(nCode, record, hWnd))
    {
    case SEND_DELIVERED:
        break;
    case SEND_HUNG:
        OnToolSilent();
        break;
    case SEND_NO_TOOL:
        Leave(false);
        break;
    }
}

void CHostSession::OnToolSilent()
{
    // The tool did not answer. From now on message records are dropped at no
    // cost, and creations and destructions wait in the table until a probe
    // comes back. A tool that has ended makes us leave at once, so the host
    // stops paying for us.
    if (!IsWindow(m_channel.Tool()))
    {
        Leave(false);
        return;
    }
    if (!m_channel.StartProbe(ProbeProc, static_cast<ULONG_PTR>(m_nSession)) && !IsWindow(m_channel.Tool()))
        Leave(false);
}

// Wine: SendMessageCallback works across processes; the callback runs in
// the host's message retrieval once the tool has answered (the hung-tool
// tests catch up through it).
VOID CALLBACK CHostSession::ProbeProc(HWND, UINT, ULONG_PTR dwData, LRESULT)
{
    g_hostSession.OnProbeAnswered(dwData);
}

void CHostSession::OnProbeAnswered(ULONG_PTR dwData)
{
    if (!m_bEntered || m_bLeaving || dwData != static_cast<ULONG_PTR>(m_nSession))
        return;
    m_channel.ProbeAnswered();
    CatchUp();
}

void CHostSession::CatchUp()
{
    // The tool answers again: first the destructions it has not heard of,
    // children before parents, then the windows it does not know, parents
    // first. A window whose creation is in doubt gets a destroy first, so the
    // tool ends up with exactly one item for it either way.
    for (int nKind = KIND_NUM; nKind >= KIND_FRAME; --nKind)
    {
        for (;;)
        {
            if (!m_bEntered || m_bLeaving || !m_channel.IsResponsive())
                return;
            WatchEntry* pEntry = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !pEntry; ++nIndex)
            {
                WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind &&
                    ((entry.nState == STATE_GONE && entry.nReport != REPORT_NONE) ||
                     (entry.nState == STATE_WATCHED && entry.nReport == REPORT_UNCERTAIN)))
                    pEntry = &entry;
            }
            if (!pEntry)
                break;
            const HWND hWnd = pEntry->hWnd;
            const bool bGone = pEntry->nState == STATE_GONE;
            if (!bGone)
                pEntry->nReport = REPORT_NONE;
            const HookRecord record = {0, Word(hWnd), 0, 0, 0, {0, 0}};
            switch (m_channel.Send(HOOK_DESTROY, record, hWnd))
            {
            case SEND_DELIVERED:
                if (bGone)
                {
                    if (WatchEntry* pGone = m_table.FindGone(hWnd))
                        m_table.Remove(pGone);
                }
                break;
            case SEND_HUNG:
                if (!bGone)
                {
                    if (WatchEntry* pLive = m_table.Find(hWnd))
                        pLive->nReport = REPORT_UNCERTAIN;
                }
                OnToolSilent();
                return;
            case SEND_NO_TOOL:
                Leave(false);
                return;
            }
        }
    }
    for (int nKind = KIND_FRAME; nKind <= KIND_NUM; ++nKind)
    {
        for (;;)
        {
            if (!m_bEntered || m_bLeaving || !m_channel.IsResponsive())
                return;
            HWND hWnd = nullptr;
            for (unsigned nIndex = 0; nIndex < CWatchTable::kCapacity && !hWnd; ++nIndex)
            {
                const WatchEntry& entry = m_table.Slot(nIndex);
                if (entry.hWnd && entry.nKind == nKind && entry.nState == STATE_WATCHED &&
                    entry.nReport == REPORT_NONE)
                    hWnd = entry.hWnd;
            }
            if (!hWnd)
                break;
            ReportCreate(hWnd);
        }
    }
}

// The wheel ----------------------------------------------------------------------

void CHostSession::Scroll(HWND hWnd, UINT nKind, WPARAM wParam)
{
    // As the tool's policy says (see HookWheelPolicy), sent to the window on
    // its own thread: the host's procedure scrolls at once.
    const int nDelta = GET_WHEEL_DELTA_WPARAM(wParam);
    const WPARAM nCode = nDelta > 0 ? SB_LINEUP : SB_LINEDOWN;
    if (nKind == KIND_TEXT)
    {
        if (HWND hWndParent = GetParent(hWnd))
            SendMessageA(hWndParent, WM_VSCROLL, nCode, 0);
        return;
    }
    if ((wParam & 0xFFFFFFFFu) == 0)
        return;
    const int nLines = (nDelta < 0 ? -nDelta : nDelta) / static_cast<int>(m_nWheelStep);
    for (int i = 0; i < nLines && IsWindow(hWnd); ++i)
        SendMessageA(hWnd, WM_VSCROLL, nCode, 0);
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
    ReportMessage(HOOK_MESSAGE_DONE, hWnd, WM_KEYDOWN, wParam, HOOK_FLAG_CONTROL);
}

// The subclass -----------------------------------------------------------------

template <bool bUnicode>
LRESULT CALLBACK CHostSession::SubclassProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    // Only while a record waits for the tool: the host's time on a message
    // sent to it is the host's, not the tool's (see CToolChannel).
    if (g_hostSession.m_channel.IsWaiting() && InSendMessage())
    {
        const DWORD dwStart = GetTickCount();
        g_hostSession.m_bToolActed = false;
        const LRESULT lResult = g_hostSession.OnMessage<bUnicode>(hWnd, uMsg, wParam, lParam);
        g_hostSession.m_channel.NoteIncoming(g_hostSession.m_bToolActed, GetTickCount() - dwStart);
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
            if (!IsBeingDestroyed(hWnd))
                return 0; // forged: see the watched case below
            const LRESULT lResult = CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
            OnWindowGone(hWnd);
            StopWatchingDestroysWhenEmpty();
            return lResult;
        }
        if (uMsg == m_uLeave && uMsg >= kFirstRegistered)
            return 0; // a late leave of ours: not the host's business
        if (uMsg == WM_COPYDATA && CHostRequests::IsRequest(reinterpret_cast<const COPYDATASTRUCT*>(lParam)))
            return 0; // a request of a tool we no longer serve: refused, and never the host's
        return CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
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
        if (!IsBeingDestroyed(hWnd))
            return 0;
        const LRESULT lResult = CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
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
        m_bToolActed = CHostRequests::HasKey(pData, m_channel.Key());
        return nKind == KIND_FRAME ? m_requests.Carry(hWnd, pData, m_channel.Key()) : 0;
    }
    case WM_INITMENU:
        // The user opens the frame's menus. A tool that was killed has not
        // been noticed yet if the host sent it nothing since; its popup must
        // not be offered with commands that would go nowhere, and it is taken
        // out here, before the menu loop looks at the bar.
        // Wine: without this the WM_INITMENUPOPUP record finds the tool gone
        // and the popup is destroyed inside the menu loop, which Wine then
        // simply does not show (tested); Windows need not take that as well.
        if (nKind == KIND_FRAME && m_requests.HasPopup(hWnd) && !IsWindow(m_channel.Tool()))
            Leave(false);
        break;
    case WM_MOVE:
    case WM_SHOWWINDOW:
        // The tool keeps a window of its own over the frame and follows it.
        bAfter = nKind == KIND_FRAME;
        break;
    case WM_WINDOWPOSCHANGED:
        // Only when the frame moved, changed size, or was shown or hidden:
        // activation and z-order changes come by the dozen and nothing
        // follows them.
        if (nKind == KIND_FRAME && lParam)
        {
            const UINT uFlags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
            bAfter = (uFlags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE) ||
                     (uFlags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0;
        }
        break;
    case WM_SIZE:
    case WM_ACTIVATEAPP:
        bBefore = bAfter = nKind == KIND_FRAME;
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
                ReportMessage(HOOK_MESSAGE_DONE, hWnd, WM_COMMAND, nToolCommand,
                              HOOK_FLAG_POPUP | (IsControlDown() ? HOOK_FLAG_CONTROL : 0));
                return 0;
            }
        }
        bAfter = true;
        break;
    case WM_PAINT:
    case WM_SETTEXT:
    case WM_INITMENUPOPUP:
        bAfter = nKind == KIND_FRAME;
        break;
    case WM_LBUTTONDOWN:
    case WM_MBUTTONDOWN:
        bAfter = nKind == KIND_CLIENT || nKind == KIND_TEXT || nKind == KIND_NUM;
        break;
    case WM_RBUTTONDOWN:
        bAfter = nKind == KIND_CLIENT;
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
        const LRESULT lResult = CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
        --m_nWheelDepth;
        // A tool that has ended takes its scrolling along: the host is as
        // it was without it.
        if (m_nWheelStep && !IsWindow(m_channel.Tool()))
            Leave(false);
        else if (m_nWheelStep)
            Scroll(hWnd, nKind, wParam); // the host's own thread: no wait for the tool
        else
            ReportMessage(HOOK_MESSAGE_DONE, hWnd, uMsg, wParam,
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
        }
        break;
    }
    if (!bBefore && !bAfter)
        return CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
    // The host's key state as the message arrives goes with every record:
    // the tool's thread has a key state of its own. A mouse message carries
    // it in wParam, as it was at the click or the notch; asking for it costs
    // a server call under Wine (40 us here), once per wheel notch otherwise.
    if (!nFlags)
    {
        if (IsMouseMessage(uMsg))
            nFlags = (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0 ? HOOK_FLAG_CONTROL : 0;
        else if (IsControlDown())
            nFlags = HOOK_FLAG_CONTROL;
    }
    if (bBefore)
        ReportMessage(HOOK_MESSAGE, hWnd, uMsg, wParam, nFlags);
    const LRESULT lResult = CallOriginal<bUnicode>(pfnOriginal, hWnd, uMsg, wParam, lParam);
    if (bAfter)
        ReportMessage(HOOK_MESSAGE_DONE, hWnd, uMsg, wParam, nFlags);
    return lResult;
}

template LRESULT CALLBACK CHostSession::SubclassProc<false>(HWND, UINT, WPARAM, LPARAM);
template LRESULT CALLBACK CHostSession::SubclassProc<true>(HWND, UINT, WPARAM, LPARAM);
