#include "CToolWatch.h"

void CToolWatch::Start(HWND hWndTool)
{
    Stop();
    m_hWndTool = hWndTool;
    m_bEnded = false;
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hWndTool, &dwProcess);
    m_hProcess = dwProcess ? OpenProcess(SYNCHRONIZE, FALSE, dwProcess) : nullptr;
    // The callback only sets the flag, on a thread of the pool: the host's
    // thread reads it at the next message that needs the tool.
    if (m_hProcess && !RegisterWaitForSingleObject(&m_hWait, m_hProcess, OnEnded, this, INFINITE,
                                                   WT_EXECUTEONLYONCE | WT_EXECUTEINWAITTHREAD))
        m_hWait = nullptr;
}

void CToolWatch::Stop()
{
    // INVALID_HANDLE_VALUE: returns once a callback that runs has ended, so
    // that nothing touches this object after.
    if (m_hWait)
        UnregisterWaitEx(m_hWait, INVALID_HANDLE_VALUE);
    m_hWait = nullptr;
    if (m_hProcess)
        CloseHandle(m_hProcess);
    m_hProcess = nullptr;
    m_hWndTool = nullptr;
}

bool CToolWatch::IsToolGone() const
{
    return m_hWait ? m_bEnded.load() : !IsWindow(m_hWndTool);
}

VOID CALLBACK CToolWatch::OnEnded(PVOID pContext, BOOLEAN /*bTimedOut*/)
{
    static_cast<CToolWatch*>(pContext)->m_bEnded = true;
}
