#include "CToolChannel.h"

void CToolChannel::Open(HWND hWndTool, const uint32_t key[2])
{
    m_hWndTool = hWndTool;
    m_key[0] = key[0];
    m_key[1] = key[1];
    m_bUnresponsive = false;
    m_bProbePending = false;
}

void CToolChannel::Close()
{
    m_hWndTool = nullptr;
    m_key[0] = m_key[1] = 0;
    m_bUnresponsive = false;
    m_bProbePending = false;
}

SendResult CToolChannel::Send(UINT nCode, const HookRecord& record, HWND hWndAbout)
{
    if (!m_hWndTool)
        return SEND_NO_TOOL;
    HookRecord keyed = record;
    keyed.key[0] = m_key[0];
    keyed.key[1] = m_key[1];
    COPYDATASTRUCT data;
    data.dwData = nCode;
    data.cbData = sizeof(HookRecord);
    data.lpData = &keyed;
    const DWORD dwHostBefore = m_dwHostMs;
    const unsigned nSignsBefore = m_nSignsOfLife;
    const DWORD dwStart = GetTickCount();
    ++m_nSendDepth;
    DWORD_PTR dwResult = 0;
    // SMTO_NORMAL, not SMTO_BLOCK: while we wait, the host must go on handling
    // what the tool sends it on behalf of this very record (the save command,
    // WM_VSCROLL, moves of the MDI client).
    const LRESULT lSent = SendMessageTimeoutA(m_hWndTool, WM_COPYDATA, reinterpret_cast<WPARAM>(hWndAbout),
                                              reinterpret_cast<LPARAM>(&data), SMTO_NORMAL | SMTO_ABORTIFHUNG,
                                              kRecordTimeoutMs, &dwResult);
    const DWORD dwError = lSent ? ERROR_SUCCESS : GetLastError();
    --m_nSendDepth;
    if (lSent)
        return SEND_DELIVERED;
    if (!IsWindow(m_hWndTool))
        return SEND_NO_TOOL;
    const DWORD dwWaited = GetTickCount() - dwStart;
    const DWORD dwHost = m_dwHostMs - dwHostBefore;
    return Classify(dwError, dwWaited, dwHost, m_nSignsOfLife != nSignsBefore);
}

SendResult CToolChannel::Classify(DWORD dwError, DWORD dwWaited, DWORD dwHostMs, bool bToolActed)
{
    // The tool's requests while the record waited: it is at work for us.
    if (bToolActed)
        return SEND_DELIVERED;
    // A tool that has not read its queue for seconds is one the system calls
    // hung: it aborts a send to it at once (SMTO_ABORTIFHUNG), and such a
    // record never reached the tool, however short the wait.
    if (m_hWndTool && IsHungAppWindow(m_hWndTool))
    {
        m_bUnresponsive = true;
        return SEND_HUNG;
    }
    // Otherwise: a wait that ran out while the host itself spent most of it
    // on messages sent to it is slow, but the record is in the tool's hands.
    // Wine: the error of a wait that ran out is not always ERROR_TIMEOUT, so
    // any timeout code (or none) counts, and the time waited decides.
    const bool bTimeoutError = dwError == ERROR_TIMEOUT || dwError == WAIT_TIMEOUT || dwError == ERROR_SUCCESS;
    if (bTimeoutError && dwWaited < dwHostMs + kRecordTimeoutMs / 2)
        return SEND_DELIVERED;
    m_bUnresponsive = true;
    return SEND_HUNG;
}

bool CToolChannel::StartProbe(SENDASYNCPROC pfnAnswered, ULONG_PTR dwData)
{
    if (!m_bProbePending && m_hWndTool)
        m_bProbePending = SendMessageCallbackA(m_hWndTool, WM_NULL, 0, 0, pfnAnswered, dwData) != FALSE;
    return m_bProbePending;
}

void CToolChannel::ProbeAnswered()
{
    m_bProbePending = false;
    m_bUnresponsive = false;
}
