#include "CWnd.h"

#include "CDataExchange.h"
#include "CUserException.h"
#include "CWinApp.h"

#include <commctrl.h>
#include <memory>
#include <unordered_map>

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

namespace
{
// Everything here is per thread: windows belong to the thread that made them.
struct WindowThreadState
{
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary;
    MSG msgCurrent = {};
    HWND hWndLockoutNotify = nullptr; // the window whose UpdateData is running
};

WindowThreadState& ThreadState()
{
    static thread_local WindowThreadState state;
    return state;
}

// Changes the style bits at nIndex (GWL_STYLE, GWL_EXSTYLE); with nFlags the
// frame is told through SetWindowPos. FALSE when nothing changed.
BOOL ModifyStyleBits(HWND hWnd, int nIndex, DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    const DWORD dwStyle = static_cast<DWORD>(::GetWindowLongA(hWnd, nIndex));
    const DWORD dwNewStyle = (dwStyle & ~dwRemove) | dwAdd;
    if (dwStyle == dwNewStyle)
        return FALSE;
    ::SetWindowLongA(hWnd, nIndex, static_cast<LONG>(dwNewStyle));
    if (nFlags)
        ::SetWindowPos(hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}
} // namespace

const AFX_MSGMAP* CWnd::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP messageMap = {&CCmdTarget::GetThisMessageMap, &entries[0]};
    return &messageMap;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const
{
    return GetThisMessageMap();
}

CWnd::~CWnd()
{
    // A window that outlives its object would call into freed memory.
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this)
    {
        if (m_pfnSuper)
            SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
        ::DestroyWindow(m_hWnd);
        Detach();
    }
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    auto& map = ThreadState().permanent;
    auto it = map.find(hWnd);
    return it == map.end() ? nullptr : it->second;
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (!hWnd)
        return nullptr;
    if (CWnd* pWnd = FromHandlePermanent(hWnd))
        return pWnd;
    auto& temporary = ThreadState().temporary;
    auto& slot = temporary[hWnd];
    if (!slot)
    {
        slot.reset(new CWnd);
        slot->m_hWnd = hWnd; // not in the permanent map: never destroyed by us
    }
    return slot.get();
}

void CWnd::DeleteTempMap()
{
    auto& temporary = ThreadState().temporary;
    for (auto& entry : temporary)
        entry.second->m_hWnd = nullptr;
    temporary.clear();
}

BOOL CWnd::Attach(HWND hWnd)
{
    if (!hWnd || m_hWnd)
        return FALSE;
    m_hWnd = hWnd;
    ThreadState().permanent[hWnd] = this;
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND hWnd = m_hWnd;
    if (hWnd)
    {
        auto& map = ThreadState().permanent;
        auto it = map.find(hWnd);
        if (it != map.end() && it->second == this)
            map.erase(it);
    }
    m_hWnd = nullptr;
    return hWnd;
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    const LONG_PTR pfnOld = GetWindowLongPtrA(hWnd, GWLP_WNDPROC);
    if (reinterpret_cast<WNDPROC>(pfnOld) != AfxWndProc)
    {
        m_pfnSuper = reinterpret_cast<WNDPROC>(pfnOld);
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc));
    }
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    HWND hWndControl = pParent ? ::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID)) : nullptr;
    return hWndControl ? SubclassWindow(hWndControl) : FALSE;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& /*cs*/)
{
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                    int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu, LPVOID lpParam)
{
    CREATESTRUCT cs = {};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = dwStyle;
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = hMenu;
    cs.hInstance = GetModuleHandleA(nullptr);
    cs.lpCreateParams = lpParam;
    if (!PreCreateWindow(cs))
    {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    HWND hWnd = ::CreateWindowExA(cs.dwExStyle, cs.lpszClass, cs.lpszName, cs.style, cs.x, cs.y,
                                  cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy(); // the window was never bound: clean up as after a failed create
    return hWnd != nullptr;
}

BOOL CWnd::CreateControl(LPCSTR lpszClassName, DWORD dwICC, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                         CWnd* pParentWnd, UINT nID)
{
    if (dwICC != 0)
    {
        INITCOMMONCONTROLSEX icc = {sizeof(icc), dwICC};
        InitCommonControlsEx(&icc);
    }
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)));
}

BOOL CWnd::DestroyWindow()
{
    return m_hWnd ? ::DestroyWindow(m_hWnd) : FALSE;
}

const MSG* CWnd::GetCurrentMessage()
{
    return &ThreadState().msgCurrent;
}

LRESULT CWnd::Default()
{
    const MSG& msg = ThreadState().msgCurrent;
    return DefWindowProc(msg.message, msg.wParam, msg.lParam);
}

LRESULT CWnd::DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper)
        return ::CallWindowProcA(m_pfnSuper, m_hWnd, nMessage, wParam, lParam);
    return ::DefWindowProcA(m_hWnd, nMessage, wParam, lParam);
}

BOOL CWnd::PreTranslateMessage(MSG* /*pMsg*/)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND hWnd = pMsg->hwnd; hWnd; hWnd = ::GetParent(hWnd))
    {
        if (CWnd* pWnd = FromHandlePermanent(hWnd))
        {
            if (pWnd->PreTranslateMessage(pMsg))
                return TRUE;
        }
        if (hWnd == hWndStop)
            break;
    }
    return FALSE;
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyleBits(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyleBits(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

void CWnd::GetWindowText(CString& rString) const
{
    const int nLength = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, rString.GetBuffer(nLength), nLength + 1);
    rString.ReleaseBuffer();
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange dx(this, bSaveAndValidate);
    // Setting a control's text or check state makes it notify its parent;
    // those notifications are echoes of the exchange, not the user's doing.
    WindowThreadState& state = ThreadState();
    const HWND hWndOldLockout = state.hWndLockoutNotify;
    state.hWndLockoutNotify = m_hWnd;
    BOOL bOK = FALSE;
    try
    {
        DoDataExchange(&dx);
        bOK = TRUE;
    }
    catch (const CUserException&)
    {
        // The exchange failed on purpose (Fail); the window stays as it is.
    }
    state.hWndLockoutNotify = hWndOldLockout;
    return bOK;
}

void CWnd::DoDataExchange(CDataExchange* /*pDX*/)
{
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT nID = LOWORD(wParam);
    HWND hWndCtrl = reinterpret_cast<HWND>(lParam);
    int nCode = HIWORD(wParam);
    if (!hWndCtrl)
    {
        // A menu item or an accelerator: the command may have become
        // disabled since its menu was shown, and then it does not run.
        CCmdUI state;
        state.m_nID = nID;
        OnCmdMsg(nID, CN_UPDATE_COMMAND_UI, &state, nullptr);
        if (!state.m_bEnabled)
            return TRUE;
        nCode = CN_COMMAND;
    }
    else
    {
        if (ThreadState().hWndLockoutNotify == m_hWnd)
            return TRUE; // an echo of UpdateData
        if (ReflectLastMsg(hWndCtrl))
            return TRUE; // the control took it
        if (nID == 0)
            return FALSE;
    }
    return OnCmdMsg(nID, nCode, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM /*wParam*/, LPARAM lParam, LRESULT* pResult)
{
    NMHDR* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
    HWND hWndCtrl = pNMHDR->hwndFrom;
    // By the sender's window id, as for WM_COMMAND (a tool tip window has 0).
    const UINT nID = static_cast<UINT>(::GetDlgCtrlID(hWndCtrl));
    if (ReflectLastMsg(hWndCtrl, pResult))
        return TRUE; // the control took it
    AFX_NOTIFY notify = {pResult, pNMHDR};
    return OnCmdMsg(nID, static_cast<int>(MAKELONG(static_cast<WORD>(pNMHDR->code), WM_NOTIFY)), &notify,
                    nullptr);
}

BOOL CWnd::OnChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(nMessage, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (nMessage)
    {
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_DRAWITEM:
    case WM_DELETEITEM:
    case WM_COMPAREITEM:
    {
        // Through the control's map as WM_REFLECT_BASE + the message.
        LRESULT lResult = 0;
        if (!CWnd::OnWndMsg(WM_REFLECT_BASE + nMessage, wParam, lParam, &lResult))
            return FALSE;
        if (pResult)
            *pResult = lResult;
        return TRUE;
    }
    case WM_COMMAND:
        if (CCmdTarget::OnCmdMsg(0, static_cast<int>(MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND)),
                                 nullptr, nullptr))
        {
            if (pResult)
                *pResult = 1;
            return TRUE;
        }
        return FALSE;
    case WM_NOTIFY:
    {
        NMHDR* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
        LRESULT lDummy = 0;
        AFX_NOTIFY notify = {pResult ? pResult : &lDummy, pNMHDR};
        return CCmdTarget::OnCmdMsg(
            0, static_cast<int>(MAKELONG(static_cast<WORD>(pNMHDR->code), WM_REFLECT_BASE + WM_NOTIFY)), &notify,
            nullptr);
    }
    default:
        return FALSE;
    }
}

BOOL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    // Only controls with an object of their own take part.
    CWnd* pWnd = hWndChild ? FromHandlePermanent(hWndChild) : nullptr;
    if (!pWnd)
        return FALSE;
    const MSG& msg = ThreadState().msgCurrent;
    return pWnd->OnChildNotify(msg.message, msg.wParam, msg.lParam, pResult);
}

LRESULT CWnd::WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    LRESULT lResult = 0;
    if (!OnWndMsg(nMessage, wParam, lParam, &lResult))
        lResult = DefWindowProc(nMessage, wParam, lParam);
    return lResult;
}

BOOL CWnd::OnWndMsg(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (nMessage == WM_COMMAND)
    {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        *pResult = 0;
        return TRUE;
    }
    if (nMessage == WM_NOTIFY)
    {
        const NMHDR* pNMHDR = reinterpret_cast<const NMHDR*>(lParam);
        return pNMHDR && pNMHDR->hwndFrom && OnNotify(wParam, lParam, pResult);
    }
    if (nMessage == WM_NCDESTROY)
    {
        OnNcDestroy();
        *pResult = 0;
        return TRUE;
    }
    if (const AFX_MSGMAP_ENTRY* pEntry = FindMessageEntry(GetMessageMap(), nMessage))
    {
        *pResult = pEntry->pfn(this, wParam, lParam);
        return TRUE;
    }

    // Messages about a child control that the control may want to handle.
    HWND hWndChild = nullptr;
    switch (nMessage)
    {
    case WM_DRAWITEM:
    {
        const DRAWITEMSTRUCT* pDIS = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (pDIS->CtlType != ODT_MENU)
            hWndChild = pDIS->hwndItem;
        break;
    }
    case WM_DELETEITEM:
        hWndChild = reinterpret_cast<const DELETEITEMSTRUCT*>(lParam)->hwndItem;
        break;
    case WM_COMPAREITEM:
        hWndChild = reinterpret_cast<const COMPAREITEMSTRUCT*>(lParam)->hwndItem;
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        hWndChild = reinterpret_cast<HWND>(lParam);
        break;
    default:
        break;
    }
    return hWndChild && ReflectLastMsg(hWndChild, pResult);
}

void CWnd::OnNcDestroy()
{
    Default();
    WNDPROC pfnSuper = m_pfnSuper;
    HWND hWnd = Detach();
    if (pfnSuper && hWnd)
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(pfnSuper));
    m_pfnSuper = nullptr;
    // The main window's end is the end of the message loop.
    CWinApp* pApp = AfxGetApp();
    if (pApp && pApp->m_pMainWnd == this)
    {
        pApp->m_pMainWnd = nullptr;
        PostQuitMessage(0);
    }
    PostNcDestroy(); // may delete this
}

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    CWnd* pWnd = CWnd::FromHandlePermanent(hWnd);
    if (!pWnd)
        return ::DefWindowProcA(hWnd, nMessage, wParam, lParam);
    WindowThreadState& state = ThreadState();
    const MSG msgSaved = state.msgCurrent; // messages nest: restore on the way out
    state.msgCurrent = MSG{hWnd, nMessage, wParam, lParam, 0, {0, 0}};
    const LRESULT lResult = pWnd->WindowProc(nMessage, wParam, lParam);
    state.msgCurrent = msgSaved;
    return lResult;
}
