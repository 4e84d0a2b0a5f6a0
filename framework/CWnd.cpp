#include "CWnd.h"

#include "CWinApp.h"

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
    CWnd* pWndInit = nullptr; // the object the window being created will be bound to
    HHOOK hHookCbt = nullptr;
    MSG msgCurrent = {};
};

WindowThreadState& ThreadState()
{
    static thread_local WindowThreadState state;
    return state;
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

LRESULT CALLBACK AfxCbtFilterHook(int nCode, WPARAM wParam, LPARAM lParam)
{
    WindowThreadState& state = ThreadState();
    if (nCode == HCBT_CREATEWND && state.pWndInit)
    {
        HWND hWnd = reinterpret_cast<HWND>(wParam);
        CWnd* pWnd = state.pWndInit;
        state.pWndInit = nullptr;
        pWnd->Attach(hWnd);
        pWnd->PreSubclassWindow();
        const LONG_PTR pfnOld = GetWindowLongPtrA(hWnd, GWLP_WNDPROC);
        if (reinterpret_cast<WNDPROC>(pfnOld) != AfxWndProc)
        {
            pWnd->m_pfnSuper = reinterpret_cast<WNDPROC>(pfnOld);
            SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc));
        }
    }
    return CallNextHookEx(state.hHookCbt, nCode, wParam, lParam);
}

void AfxHookWindowCreate(CWnd* pWnd)
{
    WindowThreadState& state = ThreadState();
    if (!state.hHookCbt)
        state.hHookCbt = SetWindowsHookExA(WH_CBT, AfxCbtFilterHook, nullptr, GetCurrentThreadId());
    state.pWndInit = pWnd;
}

BOOL AfxUnhookWindowCreate()
{
    WindowThreadState& state = ThreadState();
    if (state.hHookCbt)
    {
        UnhookWindowsHookEx(state.hHookCbt);
        state.hHookCbt = nullptr;
    }
    if (state.pWndInit)
    {
        state.pWndInit = nullptr;
        return FALSE;
    }
    return TRUE;
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

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM /*lParam*/)
{
    return OnCmdMsg(LOWORD(wParam), HIWORD(wParam), nullptr, nullptr);
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
    if (nMessage == WM_NCDESTROY)
    {
        OnNcDestroy();
        *pResult = 0;
        return TRUE;
    }
    const AFX_MSGMAP_ENTRY* pEntry = FindMessageEntry(GetMessageMap(), nMessage);
    if (!pEntry)
        return FALSE;
    *pResult = pEntry->pfn(this, wParam, lParam);
    return TRUE;
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
