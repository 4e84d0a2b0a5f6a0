#include "CDestroyWatch.h"

CDestroyWatch* CDestroyWatch::s_pInstance = nullptr;

namespace
{
// Ancestors looked at for a destruction in progress: frame, MDI client,
// MDI child and the window itself are all there is.
const int kMaxDestroyDepth = 8;
} // namespace

CDestroyWatch::CDestroyWatch(CWatchTable& table) : m_table(table)
{
    s_pInstance = this;
}

bool CDestroyWatch::Start(HMODULE hModule, DWORD dwThread)
{
    if (!m_hHook)
        m_hHook = SetWindowsHookExA(WH_CBT, HookProc, hModule, dwThread);
    return m_hHook != nullptr;
}

void CDestroyWatch::StopWhenEmpty()
{
    if (m_hHook && m_table.Count() == 0)
    {
        UnhookWindowsHookEx(m_hHook);
        m_hHook = nullptr;
    }
}

LRESULT CALLBACK CDestroyWatch::HookProc(int nCode, WPARAM wParam, LPARAM lParam)
{
    if (nCode == HCBT_DESTROYWND)
    {
        if (WatchEntry* pEntry = s_pInstance ? s_pInstance->m_table.Find(reinterpret_cast<HWND>(wParam)) : nullptr)
            pEntry->bDestroying = true;
    }
    return CallNextHookEx(nullptr, nCode, wParam, lParam);
}

bool CDestroyWatch::IsBeingDestroyed(HWND hWnd) const
{
    // Without the hook there is no telling: every WM_NCDESTROY counts, as
    // the window's last message it is meant to be.
    if (!m_hHook)
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
