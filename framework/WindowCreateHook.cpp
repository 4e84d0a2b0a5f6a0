// Binds a window object to its window from the window's first message on:
// a CBT hook of the creating thread sees the window made and subclasses it
// with the framework's procedure before CreateWindowEx returns.
#include "CWnd.h"

namespace
{
// The system may create a thread's input method window inside the first
// CreateWindowEx of a thread, before the window asked for: that one must not
// be bound to the object waiting for its window.
BOOL IsImeWindow(HWND hWnd)
{
    if (GetClassLongA(hWnd, GCL_STYLE) & CS_IME)
        return TRUE;
    char szClass[16] = {};
    GetClassNameA(hWnd, szClass, sizeof(szClass));
    return lstrcmpiA(szClass, "IME") == 0;
}

// Per thread: windows belong to the thread that made them.
struct CreateHookState
{
    CWnd* pWndInit = nullptr; // the object the window being created will be bound to
    HHOOK hHookCbt = nullptr;
};

CreateHookState& CreateState()
{
    static thread_local CreateHookState state;
    return state;
}
} // namespace


LRESULT CALLBACK AfxCbtFilterHook(int nCode, WPARAM wParam, LPARAM lParam)
{
    CreateHookState& state = CreateState();
    if (nCode == HCBT_CREATEWND && state.pWndInit && !IsImeWindow(reinterpret_cast<HWND>(wParam)))
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
    CreateHookState& state = CreateState();
    if (!state.hHookCbt)
        state.hHookCbt = SetWindowsHookExA(WH_CBT, AfxCbtFilterHook, nullptr, GetCurrentThreadId());
    state.pWndInit = pWnd;
}

BOOL AfxUnhookWindowCreate()
{
    CreateHookState& state = CreateState();
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
